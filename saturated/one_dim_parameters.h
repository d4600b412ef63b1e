#pragma once
// The working record of one one-dimensional calculation, rebuilt from the
// DataSet's texts for every run and every Monte Carlo iteration.

#include <cstdint>
#include <string>

namespace bm {

struct DataSet;

inline constexpr std::int16_t kDirichletBoundary = 1;
inline constexpr std::int16_t kCauchyBoundary = 3;
// aquiferCode is a fixed text of this many characters.
inline constexpr std::size_t kAquiferCodeLength = 20;

struct OneDimParameters {
    std::int16_t boundaryType = kCauchyBoundary;  // 1 Dirichlet, 3 Cauchy
    double xMin = 0, xMax = 0, xInterval = 0;
    double tMin = 0, tMax = 0, tInterval = 0;
    double effectiveVelocity = 0;    // velocity / porosity / retardation
    double effectiveDispersion = 0;  // dispersionX / retardation
    double effectiveHalfLife = 0;    // halfLife * retardation
    std::string aquiferCode;         // aquiferType, at most 20 characters
    // The Monte Carlo iteration the record was filled for (0 outside a simulation);
    // the driver reads a varying boundary concentration with it.
    int iteration = 0;
};

// Boundary type of a contaminant text: 1 when its first nine characters,
// upper-cased, are "DIRICHLET", else 3.
std::int16_t boundaryTypeOf(std::string_view contaminantType);

// Fills the record from the DataSet. In a simulation (monteCarlo true) a field
// holding a MonteMarker takes the sample of `iteration`; otherwise every field
// is read as a number. Divisions by a zero porosity or retardation are errors 11.
void fillOneDimParameters(const DataSet& data, OneDimParameters& parameters, bool monteCarlo, int iteration);

}  // namespace bm
