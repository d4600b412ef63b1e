#pragma once
// The grid pieces of the spatial drivers, two and three dimensions alike:
// the count of a grid list and the inflow terms read once per driver call.
// Free of the library headers, so that either driver can include it.

#include <string>

#include "model/arrays.h"

namespace bm {

struct DataSet;

// Count of a list laid out from minimum by interval up to maximum: 1 for an
// interval of 0, otherwise (maximum - minimum) / interval + 1 rounded half to
// even (error 6 beyond 16 bits); a count below 1 becomes 1.
int gridCount(double minimum, double maximum, double interval);

// A list of `count` values: minimum + (i - 1) * interval, or `constant` alone
// when the count is 1.
void fillGridList(List<double>& list, int count, double minimum, double interval, double constant);

// The inflow terms of one driver call, read once before its loops: the start
// times and, through the MonteMarker of a simulation, the concentrations.
// Nothing is read when there is only one term.
class InflowTerms {
public:
    InflowTerms(const DataSet& data, bool monteCarlo, int iteration);

    // C plus, for every later term k that has started by t (t - time >= 0, so
    // a term starting at t itself takes part with the solution at 0), its
    // step (c_k - c_(k-1)) / c_1 times solution(t - time). A zero first
    // concentration is a division by zero once a later term takes part.
    template <class Solution>
    double superpose(double c, double t, Solution&& solution) const {
        for (int k = 2; k <= count_; ++k) {
            const double tau = elapsed(t, k);
            if (tau >= 0.0) add(c, k, solution(tau));
        }
        return c;
    }

private:
    double elapsed(double t, int k) const;
    void add(double& c, int k, double share) const;

    int count_ = 1;
    List<double> times_;
    List<double> concentrations_;
};

}  // namespace bm
