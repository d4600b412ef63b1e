#pragma once
// The decay chain: chemical 1 decays with rate k1 and a yield y2 of it appears
// as chemical 2, which decays with k2 and feeds chemical 3, and so on. All
// chemicals share the aquifer, the coordinates, retardation and dispersion; the
// chain is written as a lower bidiagonal matrix A, whose eigen decomposition
// A = Z diag(-k) Z⁻¹ turns it into independent single-species problems. With c
// the source concentrations, b = Z⁻¹ c and U_j the relative concentration of
// the ordinary solver for rate k_j, C_i = sum over j of Z(i, j) b(j) U_j.
//
// A regular run decomposes once, solves each chemical over the grid, scales
// it by b, couples the grids back and clamps negatives at 0. A simulation
// first solves every chemical at the simulation's point for all iterations
// (unit solutions), then scales and couples each iteration with its own
// samples, without a clamp: an iteration may come out negative and is kept.

#include <cstdint>
#include <optional>
#include <string>

#include "model/data_set.h"
#include "montecarlo/pass/calculation_pass.h"
#include "montecarlo/pass/kind_calculation.h"
#include "shell/base/user_interface.h"
#include "species/matrix_square.h"

namespace bm {

// The arrays of the last decomposition, valid from prepareChemicals on for a
// regular run or a simulation whose chain is not sampled.
struct ChainTransform {
    SquareMatrix chainMatrix;
    List<double> eigenValues;          // -k1, -k2, ... in chemical order
    List<double> eigenVectors;         // Z, flat, unit diagonal
    List<double> eigenVectorsInverse;  // Z⁻¹, flat
};
// The one process-wide transform of the open model.
ChainTransform& chainTransform();

// A(i, i) = -k(i), A(i, i - 1) = y(i) k(i - 1), all else 0; texts read leniently.
void buildChainMatrix(const DataSet& data, SquareMatrix& matrix);
// Some decayRate or yieldFactor text holds "Monte".
bool chainRatesSampled(const DataSet& data);
// Some suppositionConcentration text holds "Monte".
bool sourceConcentrationsSampled(const DataSet& data);

// The messages of a chain that cannot be decomposed.
inline constexpr const char* kChainErrorTitle = "Error in Data";
inline constexpr const char* kComplexEigenvaluesText = "Input checmical data result in complex eigen values.";
inline constexpr const char* kNoInverseText = "Input checmical data result in no inverse of eigen matrix.";

// Decomposes the chain of the DataSet: buildChainMatrix, eigenDecompose,
// invertEigenMatrix and chemicalTermConcentration = Z⁻¹ c, each step only
// when the one before succeeded. False after the critical message.
bool decomposeChain(DataSet& data, ChainTransform& transform, UserInterface& ui);

// The data side of holding the screen's tables: the chemical lists sized to
// numChemicals (the caller has filled them), every chemicalSuperpositionIndex
// set to superpositionIndex, and, unless the run will be a simulation whose
// chain or sources vary, the decomposition (its message on failure).
void prepareChemicals(DataSet& data, ChainTransform& transform, bool simulate, UserInterface& ui);

// The single-species kind that solves each chemical of a multi-chemical kind.
ModelKind singleSpeciesKind(ModelKind chainKind);

// The calculation, through the single-species kind's fill and solve. A regular
// run hands over to the simulation when `simulate` is set. Stop between or
// inside chemicals ends the run uncoupled (PassEnding::Stopped).
PassResult runChemicalsRegular(DataSet& data, ModelKind chainKind, bool simulate, UserInterface& ui);
PassResult runChemicalsMonteCarlo(DataSet& data, ModelKind chainKind, UserInterface& ui);

// Sizes chemResult of the kind to (chemical, grid of the counters) and its
// chemMcResult to (chemical, iterations less 1, at least 1).
void allocateChemicalResults(DataSet& data, ModelKind chainKind, int iterations);
// chemResult(i, point) = b(i) * the single-species grid at the point.
void storeChemicalResult(DataSet& data, ModelKind chainKind, int chemical);
// chemResult(., point) = Z chemResult(., point), negatives clamped at 0; then
// the point values resultsInPoint likewise (a text that is no number counts 0).
void backTransformResults(DataSet& data, ModelKind chainKind, const List<double>& eigenVectors);

// The coupling of a finished simulation, iteration by iteration.
void finishChemicalMonteCarlo(DataSet& data, ModelKind chainKind, ChainTransform& transform, UserInterface& ui);
// b = inverse * (each chemical's source: its number, or its sample of iteration m).
bool sampledConcentrations(const DataSet& data, int iteration, const List<double>& inverse, List<double>& b);
// The chain matrix with each rate and yield its number or its sample of iteration m.
void sampledChainMatrix(const DataSet& data, int iteration, SquareMatrix& matrix);
// chemMc(., m) = Z chemMc(., m), no clamp.
void backTransformIteration(Array<double, 2>& chemMc, int n, int iteration, const List<double>& eigenVectors);

// The (chemical, iteration) table of the kind.
Array<double, 2>& chemicalMonteCarloResults(DataSet& data, ModelKind chainKind);

}  // namespace bm
