#pragma once
// Variant tables for the simulation tests: rows filled as the screen would
// fill them, in a DataSet of the test's own.

#include <string>

#include "model/data_set.h"

namespace bm::testkit {

// A table of `capacity` rows (two chemical columns), every selection "Nothing",
// monteRowCount = capacity.
inline void makeMonteTables(DataSet& data, int capacity) {
    data.monteRowCount = static_cast<std::int16_t>(capacity);
    data.monteResultRowCount = static_cast<std::int16_t>(capacity);
    data.InputTGData.redim({capacity, 1});
    data.ResultTGData.redim({capacity, 1});
    for (int r = 0; r <= capacity; ++r)
        for (int c = 0; c <= 1; ++c) data.ResultTGData(r, c).selection = "Nothing";
}

inline MonteInputRow variantRow(const std::string& name, const std::string& mean, const std::string& minimum,
                                const std::string& maximum, const std::string& variance, const std::string& terms,
                                const std::string& distribution) {
    MonteInputRow row;
    row.variant = name;
    row.mean = mean;
    row.minimum = minimum;
    row.maximum = maximum;
    row.variance = variance;
    row.terms = terms;
    row.distribution = distribution;
    row.inUse = !name.empty();
    return row;
}

}  // namespace bm::testkit
