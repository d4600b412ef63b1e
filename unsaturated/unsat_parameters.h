#pragma once
// The working record of one unsaturated-zone calculation, rebuilt from the
// DataSet's texts for every run and every Monte Carlo iteration. The driver
// divides `dispersion` by the retardation in place, so a record serves one
// driver call only.

#include <string_view>

namespace bm {

struct DataSet;

struct UnsatParameters {
    double xMin = 0, xMax = 0, xInterval = 0;  // depth range (xRange)
    double tMin = 0, tMax = 0, tInterval = 0;  // time range (timeRange)
    double sourceConcentration = 0;            // Co of the first term; results are relative, so unused by the driver
    double bulkDensity = 0;                    // rho
    double dispersion = 0;                     // Dv as typed; Dv / R after the driver has run
    double halfLife = 0;                       // half-life of first-order degradation
    double distributionCoefficient = 0;        // Kdv
    double porosity = 0;                       // theta
    double saturation = 0;                     // Sw
    double percolationRate = 0;                // q, the steady-state percolation rate
    double sourceDecayRate = 0;                // gamma; 0 for a "Dirichlet" source
    // The Monte Carlo iteration the record was filled for (0 outside a
    // simulation); the driver reads varying term concentrations with it.
    int iteration = 0;
};

// The contaminant word of a constant inlet concentration, compared exactly.
inline constexpr std::string_view kUnsatDirichlet = "Dirichlet";
// The misspelt word that old data files may carry: it selects no solution.
inline constexpr std::string_view kUnsatOldDirichlet = "Dirichilet";

// Fills the record for the single-chemical screen. A range of one number
// without a colon starts at 0. In a simulation a field holding "Monte" takes
// the sample of its row for `iteration`; every other text is read leniently.
// The source decay rate is never sampled and is read only for a source other
// than "Dirichlet"; the first term's concentration in a simulation is the
// number its marker carries.
void fillUnsatParameters(const DataSet& data, UnsatParameters& parameters, bool monteCarlo, int iteration);

// The same for the multi-chemical screen; its samples are the working set of
// the multi-chemical unsaturated model, which holds them while it is open.
void fillUnsatChemicalParameters(const DataSet& data, UnsatParameters& parameters, bool monteCarlo, int iteration);

}  // namespace bm
