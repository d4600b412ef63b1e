// The walled strip's lateral factor at the nodes of a transit integral:
// against brute-force sums taken with the C library's error functions and
// cosines (many mirror images for short spreads, many modes for long ones),
// and the same bits whatever the order of the nodes and whatever points were
// asked for before.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "kernels/kept_nodes.h"
#include "kernels/walled_strip.h"
#include "testing/is_close.h"

using namespace bm;
using namespace bm::green;

namespace {

constexpr double kWidth = 100.0, kLow = 30.0, kHigh = 55.0;

WalledAquifer aquifer() {
    WalledAquifer aq;
    aq.width = kWidth;
    aq.a = kLow;
    aq.b = kHigh;
    aq.sourceInside = true;
    return aq;
}

// Share of a unit spread of scale sigma = sqrt(D tau) between lo and hi, at y.
double mass(double y, double lo, double hi, double sigma) {
    return 0.5 * (std::erf((y - lo) / (2.0 * sigma)) - std::erf((y - hi) / (2.0 * sigma)));
}

// The strip and its mirror images in both walls, 41 periods of 2W.
double imageSum(double y, double ratio) {
    const double sigma = ratio * kWidth;
    double sum = 0.0;
    for (int k = -20; k <= 20; ++k) {
        const double shift = 2.0 * kWidth * k;
        sum += mass(y, kLow + shift, kHigh + shift, sigma) + mass(y, -kHigh + shift, -kLow + shift, sigma);
    }
    return sum;
}

// The cosine series across the width, 4000 modes.
double modeSum(double y, double ratio) {
    double sum = (kHigh - kLow) / kWidth;
    for (int m = 1; m <= 4000; ++m) {
        const double k = m * M_PI / kWidth;
        sum += 2.0 * (std::sin(k * kHigh) - std::sin(k * kLow)) / (m * M_PI) * std::cos(k * y) *
               std::exp(-(m * M_PI * ratio) * (m * M_PI * ratio));
    }
    return sum;
}

// Nodes s ascending over 1e-3 .. 30 (geometric), as a transit integral makes them.
std::vector<double> ascendingNodes(int n) {
    std::vector<double> s(n);
    for (int j = 0; j < n; ++j) s[j] = 1e-3 * std::pow(3e4, j / (n - 1.0));
    return s;
}

std::vector<double> factors(double y, const std::vector<double>& s, double zeta) {
    std::vector<double> out(s.size());
    WalledStripFactor(aquifer(), y).many(nextNodeSet(), s.data(), static_cast<int>(s.size()), zeta, out.data());
    return out;
}

TEST(WalledStrip, MatchesImageAndModeSumsAtEveryNode) {
    const std::vector<double> s = ascendingNodes(300);
    const double zeta = 0.02;  // spread ratios 20 down to 7e-4: modes and images both
    for (const double y : {0.0, 10.0, kLow, 42.0, kHigh, 80.0, kWidth}) {
        const std::vector<double> got = factors(y, s, zeta);
        for (std::size_t j = 0; j < s.size(); ++j) {
            const double ratio = zeta / s[j];
            const double expected = ratio < 0.2 ? imageSum(y, ratio) : modeSum(y, ratio);
            EXPECT_CLOSE(got[j], expected, 1e-12, 1e-15) << "y " << y << " ratio " << ratio;
        }
    }
}

TEST(WalledStrip, NodesInAnyOrderGiveEachNodeTheSameBits) {
    const std::vector<double> s = ascendingNodes(256);
    std::vector<double> shuffled(s.rbegin(), s.rend());
    std::rotate(shuffled.begin(), shuffled.begin() + 77, shuffled.end());
    for (const double y : {3.0, kLow, 47.5, 90.0}) {
        const std::vector<double> ordered = factors(y, s, 0.01), mixed = factors(y, shuffled, 0.01);
        for (std::size_t j = 0; j < s.size(); ++j) {
            const auto at = static_cast<std::size_t>(std::find(shuffled.begin(), shuffled.end(), s[j]) - shuffled.begin());
            EXPECT_EQ(ordered[j], mixed[at]) << "y " << y << " node " << j;
        }
    }
}

TEST(WalledStrip, APointGetsTheSameBitsWhateverCameBefore) {
    const std::vector<double> s = ascendingNodes(256);
    const unsigned long long set = nextNodeSet();
    auto at = [&](double y) {
        std::vector<double> out(s.size());
        WalledStripFactor(aquifer(), y).many(set, s.data(), static_cast<int>(s.size()), 0.004, out.data());
        return out;
    };
    const std::vector<double> first = at(40.0);
    for (int k = 0; k <= 100; ++k) at(k * 1.0);  // every distance kept and many replaced
    EXPECT_EQ(at(40.0), first);
    // A fresh set of the same nodes keeps nothing of the last one.
    std::vector<double> fresh(s.size());
    WalledStripFactor(aquifer(), 40.0).many(nextNodeSet(), s.data(), static_cast<int>(s.size()), 0.004, fresh.data());
    EXPECT_EQ(fresh, first);
}

}  // namespace
