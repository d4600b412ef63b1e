#include "montecarlo/pass/line_grid.h"

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "shell/base/checked_math.h"

namespace bm {

LineGridCounts lineGridCounts(double xMin, double xMax, double xInterval, double tMin, double tMax, double tInterval,
                              bool monteCarlo) {
    LineGridCounts c;
    if (monteCarlo) return c;
    c.nx = rangeTermCount(xMin, xMax, xInterval);
    c.nt = rangeTermCount(tMin, tMax, tInterval);
    if (c.nx < 1) {
        c.nx = 1;
        if (c.nt < 1) c.nt = 1;
    }
    return c;
}

void layOutLineGrid(DataSet& data, const LineGridCounts& counts, double xMin, double xInterval, double tMin,
                    double tInterval, bool monteCarlo) {
    data.xValues.redim(counts.nx);
    data.tValues.redim(counts.nt);
    data.numXTerms = checkedInt16(counts.nx);
    data.numTTerms = checkedInt16(counts.nt);
    if (monteCarlo) {
        data.xValues(1) = textValue(data.mcAtX);
        data.tValues(1) = textValue(data.mcAtT);
        return;
    }
    if (counts.nx != 1) {
        for (int i = 1; i <= counts.nx; ++i) data.xValues(i) = rangeValue(i, xMin, xInterval);
    } else {
        data.xValues(1) = data.xConstant;
    }
    if (counts.nt != 1) {
        for (int j = 1; j <= counts.nt; ++j) data.tValues(j) = rangeValue(j, tMin, tInterval);
    } else {
        data.tValues(1) = data.tConstant;
    }
}

namespace {

template <class Read>
double cached(std::vector<std::optional<double>>& values, int k, Read read) {
    const auto index = static_cast<std::size_t>(k);
    if (values.size() <= index) values.resize(index + 1);
    if (!values[index]) values[index] = read();
    return *values[index];
}

}  // namespace

double InflowTermValues::time(int k) const {
    return cached(times_, k, [&] { return textValue(data_.terms(k).time); });
}

double InflowTermValues::concentration(int k) const {
    return cached(concentrations_, k,
                  [&] { return fieldValue(data_, data_.terms(k).concentration, monteCarlo_, iteration_); });
}

}  // namespace bm
