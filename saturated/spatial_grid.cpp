#include "saturated/spatial_grid.h"

#include "model/data_set.h"
#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "shell/base/checked_math.h"

namespace bm {

int gridCount(double minimum, double maximum, double interval) {
    if (interval == 0.0) return 1;
    const int count = toInt16(fp::div(maximum - minimum, interval) + 1.0);
    return count < 1 ? 1 : count;
}

void fillGridList(List<double>& list, int count, double minimum, double interval, double constant) {
    if (count != 1) {
        for (int i = 1; i <= count; ++i) list(i) = rangeValue(i, minimum, interval);
    } else {
        list(1) = constant;
    }
}

InflowTerms::InflowTerms(const DataSet& data, bool monteCarlo, int iteration) {
    count_ = data.superpositionIndex;
    if (count_ < 2) return;
    times_.redim(count_);
    concentrations_.redim(count_);
    for (int k = 1; k <= count_; ++k) {
        times_(k) = textValue(data.terms(k).time);
        concentrations_(k) = fieldValue(data, data.terms(k).concentration, monteCarlo, iteration);
    }
}

double InflowTerms::elapsed(double t, int k) const { return fp::sub(t, times_(k)); }

void InflowTerms::add(double& c, int k, double share) const {
    const double step = fp::div(concentrations_(k) - concentrations_(k - 1), concentrations_(1));
    c = fp::checked(c + step * share);
}

}  // namespace bm
