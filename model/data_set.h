#pragma once
// The one record of the open model. Inputs stay text exactly as typed; only the
// result side holds numbers. One process-wide instance (theDataSet()); core
// routines take it by reference so that tests can use their own.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/arrays.h"
#include "model/model_kind.h"

namespace bm {

// One boundary term: the time it starts and its concentration, as typed.
struct Term {
    std::string time;
    std::string concentration;
    bool operator==(const Term&) const = default;
};

// One row of the variant table.
struct MonteInputRow {
    std::string variant, mean, minimum, maximum, variance, terms, distribution;
    bool inUse = false;
    bool operator==(const MonteInputRow&) const = default;
};

// One row of the simulation result table.
struct MonteResultRow {
    std::string variant, median, minimum, maximum, arithmeticMean, geometricMean, standardDeviation;
    bool inUse = false;
    std::string selection;
    bool operator==(const MonteResultRow&) const = default;
};

// A model kind's saved Monte Carlo set, and the shape of the working set.
struct MonteBlock {
    std::int16_t monteRowCount = 0;
    std::int16_t monteResultRowCount = 0;
    std::int32_t monteIterations = 0;
    Array<MonteInputRow, 2> InputTGData;   // (row, chemical)
    Array<MonteResultRow, 2> ResultTGData;  // (row, chemical)
    Array<double, 3> MonteSamples;           // (row, iteration, chemical)
    bool operator==(const MonteBlock&) const = default;
};

// dataState values.
inline constexpr std::int16_t kDataUnchanged = 0;
inline constexpr std::int16_t kParametersChanged = 1;
inline constexpr std::int16_t kNeedsSaving = 2;

struct DataSet {
    // Identity
    std::string modelType, aquiferType, contaminantType, calculationMode;
    bool multiChemical = false;
    std::string currentFileName, description, author, title, comments;

    // Units
    std::string lengthUnit, timeUnit, concentrationUnit;

    // Coordinates (RangeSpec texts)
    std::string xRange, yRange, zRange, timeRange;

    // Source position and size
    std::string sourceXc, sourceYc, sourceZc, sourceWidth, sourceHeight, sourceStdDev;

    // The point of a Monte Carlo simulation (and the selected point)
    std::string mcAtX, mcAtY, mcAtZ, mcAtT;

    // Field constants
    std::string velocity, halfLife, porosity, dispersionX, dispersionY, dispersionZ, injectionRate, netRecharge,
        aquiferThickness, retardation;

    // Shared by the unsaturated and the time-varying models (each model gives them a meaning of its own)
    std::string sourceMagnitude, velocityX, velocityY, sourceDecayRate, dispersionRatio, bulkDensity, saturation,
        distributionCoefficient;

    // Boundary terms of a single-chemical model
    std::int16_t superpositionIndex = 0;
    List<Term> terms;

    // Parsed by the calculation's parse step
    double xConstant = 0, yConstant = 0, zConstant = 0, tConstant = 0;
    double currentConcentration = 0;
    std::int16_t numXTerms = 0, numYTerms = 0, numZTerms = 0, numTTerms = 0;

    // Computed lists and results
    List<double> tValues, xValues, yValues, zValues;
    Array<double, 2> result1D;      // (x, t)
    Array<double, 3> result2D;      // (x, y, t)
    Array<double, 4> result3D;      // (x, y, z, t)
    Array<double, 2> resultUnsat;   // (x, t)
    List<float> varTValues, varXValues, varYValues;
    List<float> resultVar;          // flat list of nx*ny*nt
    List<double> mcResult1D, mcResult2D, mcResult3D, mcResultUnsat;  // 0 .. iterations - 1
    List<float> mcResultVar;

    // Multiple species (1-based over chemicals)
    std::int16_t numChemicals = 0;
    List<std::string> chemicalName, decayRate, yieldFactor, suppositionTime, suppositionConcentration, resultsInPoint,
        chemicalTermConcentration;
    List<std::int16_t> chemicalSuperpositionIndex;
    Array<double, 3> chemResult1D;     // (chemical, x, t)
    Array<double, 4> chemResult2D;     // (chemical, x, y, t)
    Array<double, 5> chemResult3D;     // (chemical, x, y, z, t)
    Array<double, 3> chemResultUnsat;  // (chemical, x, t)
    Array<double, 2> chemMcResult1D, chemMcResult2D, chemMcResult3D, chemMcResultUnsat;  // (chemical, iteration)
    std::int16_t selectedChemical = 0;
    std::int16_t numChemicalsSelected = 0;

    // Monte Carlo working set
    std::int16_t monteRowCount = 0;
    std::int16_t monteResultRowCount = 0;
    std::int32_t monteIterations = 0;
    Array<MonteInputRow, 2> InputTGData;
    Array<MonteResultRow, 2> ResultTGData;
    Array<double, 3> MonteSamples;
    // The model stores, indexed by ModelKind (the first nine kinds).
    std::array<MonteBlock, kMonteStoreCount> monteStores;

    // Change tracking and run control
    std::int16_t dataState = kDataUnchanged;
    bool needsDisplayRefresh = false;
    bool stopRequested = false;
    bool stopRequestedMulti = false;
    bool monteCarloValueInUse = false;
    bool monteCarloValueInUseMulti = false;  // its companion of the multi-chemical screens
    bool monteCarloModeOn = false;           // the boundary concentration (or a chemical's value) varies
    bool monteFreshFlag = false;             // samples were generated in this visit to the simulation screen
    std::array<bool, kModelKindCount> mcPointChanged{};
    bool newModelConfirmed = false;

    // The time-varying model's selected point as its result label shows it.
    std::string varResultText;
    // Stop ended the last run early: the results it left are partial.
    bool runStopped = false;

    DataSet();

    MonteBlock& monteStore(ModelKind kind) { return monteStores[static_cast<std::size_t>(kind)]; }
    const MonteBlock& monteStore(ModelKind kind) const { return monteStores[static_cast<std::size_t>(kind)]; }
};

// The process-wide instance.
DataSet& theDataSet();

// Empties every text field but modelType, aquiferType and contaminantType; one
// empty term; no chemicals; counters and mcPointChanged flags zeroed.
void clearDataSet(DataSet& data);
// Zeroes the row counts and iteration count of the store of the kind, then
// clears multiChemical (last, so a caller that needs the flag reads it before).
void clearMonteCarloCounters(DataSet& data, std::string_view modelType);
// "Complete" or "Partial"; any other word does nothing.
void closeModel(DataSet& data, std::string_view kind);
void setMcPointChanged(DataSet& data, std::string_view modelType, bool value);
bool mcPointChangedOf(const DataSet& data, std::string_view modelType);

// Copies between the working set and the store of a kind: true copies the store
// into the working set, false the working set into the store.
void copyMonteCarloStore(DataSet& data, ModelKind kind, bool storeIntoWorkingSet);
// The same for the kind of data.modelType and data.multiChemical (nothing for an unknown type).
void copyMonteCarloStore(DataSet& data, bool storeIntoWorkingSet);

// superpositionIndex with 0 treated as 1 and the 1 stored back; terms
// redimensioned to it, content kept.
std::int16_t settleSuperpositionIndex(DataSet& data);

}  // namespace bm
