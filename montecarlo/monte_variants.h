#pragma once
// The inputs of a model that a Monte Carlo simulation may vary, and the set-up
// of the simulation screen built from them: the screen's title and panel
// caption, the two hidden lists (names and present values, "--REMOVE--"
// last), and whether the model's variant tables are kept or made anew.
//
// Each model kind says which of its inputs may vary (a MonteVariant per input
// row, named by the row's caption as its screen shows it, and bound to the
// DataSet text behind it); the inflow concentration and the chemicals' values
// of a multi-chemical kind join them here in the order the screen lists them.

#include <functional>
#include <string>
#include <vector>

#include "model/data_set.h"
#include "model/model_kinds.h"
#include "montecarlo/monte_check.h"

namespace bm {

// Where a varying value's marker goes: a field of the model's form, the first
// cell of the inflow grid, or a cell of the chemicals' table.
enum class MarkerPlace { FormField, BoundaryCell, ChemicalCell };

struct MonteVariant {
    std::string name;  // the trimmed caption of the input's row
    // The DataSet text the variant stands for; nullptr when the model has none.
    std::function<std::string*(DataSet&)> field;
    MarkerPlace place = MarkerPlace::FormField;
};

// A variant bound to a text field of the DataSet.
MonteVariant fieldVariant(const std::string& caption, std::string DataSet::*field);

inline constexpr const char* kRemoveVariant = "--REMOVE--";
inline constexpr const char* kInflowVariant = "Contaminant Conc. at Inflow Boundary";

// The inflow concentration: the first boundary term's concentration.
MonteVariant inflowVariant();

// For each chemical in order: its name + "'s Yield Factor", "'s Decay Rate"
// and "'s Concentration", bound to those cells of the chemicals' table
// (`concentration` names the list that holds the chemicals' concentrations).
std::vector<MonteVariant> chemicalVariants(const DataSet& data, List<std::string> DataSet::*concentration);

struct MonteCarloSetup {
    ModelKind kind = ModelKind::OneDimensional;
    std::string title;         // "Monte Carlo Simulation (" + model type + ")"
    std::string panelCaption;  // "AQUIFER: ...  CONTAMINANT: ..."
    std::vector<MonteVariant> variants;  // in list order, without "--REMOVE--"
    MonteVariantList list;               // variantLB1 and meanLB, "--REMOVE--" last
    bool previousTables = false;  // the model's block had rows before
    bool tablesNew = false;       // the list's length differs from the table: made anew on activation
    // The model was under simulation when the screen opened (its Monte Carlo
    // panel read "Monte Carlo"): new samples then leave it needing a save.
    bool modelUnderSimulation = false;
    std::string viewPath;         // where the file for viewing is written
};

// A kind's variants in list order: its own, then the inflow concentration
// (every kind but the time-varying one, with one inflow term), then the
// chemicals' values.
std::vector<MonteVariant> listedVariants(const DataSet& data, ModelKind kind, std::vector<MonteVariant> fields,
                                         std::vector<MonteVariant> chemicals);

// Builds the set-up of a kind, called before the screen is shown: copies the
// kind's block into the working tables, sets the title and the panel caption,
// lists the variants (listedVariants), then "--REMOVE--"; each listed with its present value (the constant inside
// a marker). A list whose length differs from monteRowCount marks the tables new.
MonteCarloSetup buildMonteCarloSetup(DataSet& data, ModelKind kind, std::vector<MonteVariant> fields,
                                     std::vector<MonteVariant> chemicals);

// The tables made anew for `rows` rows and two chemical columns, every
// selection "Nothing"; both row counts set to `rows`.
void makeNewMonteTables(DataSet& data, int rows);

}  // namespace bm
