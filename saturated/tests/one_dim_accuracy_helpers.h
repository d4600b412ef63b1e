#pragma once
// Shared pieces of the one-dimensional accuracy tests: parameter records,
// eigenvalue tables, and the tally of the largest deviations a comparison met
// (printed when it ends, so that the log shows the accuracy reached).

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "kernels/kern1d.h"
#include "model/arrays.h"
#include "saturated/one_dim_parameters.h"

namespace bm::testkit {

// ln 2 / inf is exactly 0: the kernels' no-decay branches.
inline const double kNoDecayHalfLife = std::numeric_limits<double>::infinity();

inline double halfLifeOf(double lambda) { return lambda == 0 ? kNoDecayHalfLife : std::log(2.0) / lambda; }

inline OneDimParameters kernelParameters(double V, double D, double halfLife) {
    OneDimParameters p;
    p.effectiveVelocity = V;
    p.effectiveDispersion = D;
    p.effectiveHalfLife = halfLife;
    return p;
}

// The eigenvalues the driver would hand to the finite kernels.
inline List<double> finiteRoots(bool cauchy, double V, double D, double L) {
    List<double> roots(kRootCount);
    if (cauchy)
        root3(V * 0.25 * L / D, D / (L * V), roots(1));
    else
        EXPECT_EQ(root1(V * L / (2 * D), roots(1)), 1);
    return roots;
}

inline std::string at(double x, double t) { return "x=" + std::to_string(x) + " t=" + std::to_string(t); }

// Largest deviations met by one comparison, each value checked against an
// absolute bound, and a relative one where the reference is above 1e-3.
struct Deviation {
    std::string name;
    double absoluteBound = 1e-9;
    double relativeBound = 1e-9;
    double absolute = 0;
    double relative = 0;
    int compared = 0;

    void check(double value, double reference, const std::string& where, double slack = 0) {
        const double difference = std::fabs(value - reference);
        EXPECT_LE(difference, absoluteBound + slack)
            << name << " " << where << " value " << value << " reference " << reference;
        absolute = std::max(absolute, difference);
        if (reference > 1e-3) {
            EXPECT_LE(difference, relativeBound * reference + slack)
                << name << " " << where << " value " << value << " reference " << reference;
            relative = std::max(relative, difference / reference);
        }
        ++compared;
    }
    ~Deviation() {
        std::printf("[ accuracy ] %-62s %5d values, max abs %.2e, max rel %.2e\n", name.c_str(), compared, absolute,
                    relative);
    }
};

}  // namespace bm::testkit
