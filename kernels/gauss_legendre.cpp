#include "kernels/gauss_legendre.h"

#include <array>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <string>

namespace bm {

namespace {
// P_n(x) and P_n'(x) by the three-term recurrence.
void legendre(int n, long double x, long double& p, long double& dp) {
    long double p0 = 1.0L, p1 = x;
    for (int k = 2; k <= n; ++k) {
        const long double p2 = ((2 * k - 1) * x * p1 - (k - 1) * p0) / k;
        p0 = p1;
        p1 = p2;
    }
    p = n == 0 ? 1.0L : p1;
    dp = n * (x * p1 - p0) / (x * x - 1.0L);
}
}  // namespace

void gaussLegendre(int n, std::vector<double>& nodes, std::vector<double>& weights) {
    nodes.assign(static_cast<std::size_t>(n), 0.0);
    weights.assign(static_cast<std::size_t>(n), 0.0);
    gaussLegendre(n, nodes.data(), weights.data());
}

void gaussLegendre(int n, double* nodes, double* weights) {
    const long double pi = 3.141592653589793238462643383279502884L;
    const int half = (n + 1) / 2;
    for (int i = 1; i <= half; ++i) {
        long double x = std::cos(pi * (i - 0.25L) / (n + 0.5L));
        long double p = 0, dp = 1;
        for (int iter = 0; iter < 100; ++iter) {
            legendre(n, x, p, dp);
            const long double dx = p / dp;
            x -= dx;
            if (std::fabs(dx) <= 1e-19L) break;
        }
        legendre(n, x, p, dp);
        const long double w = 2.0L / ((1.0L - x * x) * dp * dp);
        // i-th largest node x and its mirror -x.
        nodes[static_cast<std::size_t>(n - i)] = static_cast<double>(x);
        nodes[static_cast<std::size_t>(i - 1)] = static_cast<double>(-x);
        weights[static_cast<std::size_t>(n - i)] = static_cast<double>(w);
        weights[static_cast<std::size_t>(i - 1)] = static_cast<double>(w);
    }
}

namespace {

// The built-in rule's nodes once it is built.
std::atomic<const double*> theBuiltinNodes{nullptr};

struct BuiltinRule {
    std::array<double, 256> nodes{}, weights{};
    BuiltinRule() {
        gaussLegendre(256, nodes.data(), weights.data());
        theBuiltinNodes.store(nodes.data());
    }
};

// Built at its first use, in static storage: a run that never needs it does
// not pay for it at start-up, and no kernel call allocates.
const BuiltinRule& builtinRule() {
    static const BuiltinRule rule;
    return rule;
}

}  // namespace

const double* builtinRuleNodes() { return builtinRule().nodes.data(); }
const double* builtinRuleWeights() { return builtinRule().weights.data(); }

namespace {
// Starts at 1, so that a kept rule never checked (generation 0) is checked.
std::atomic<unsigned long long> theRuleArraysGeneration{1};
}  // namespace

// Relaxed: callers refill their arrays, and say so, before they start the
// calculation that spreads over the threads, which orders the two.
void ruleArraysChanged() { theRuleArraysGeneration.fetch_add(1, std::memory_order_relaxed); }

unsigned long long ruleArraysGeneration() { return theRuleArraysGeneration.load(std::memory_order_relaxed); }

bool isBuiltinRule(const double* nodes, const double* weights) {
    const double* built = theBuiltinNodes.load();
    return built != nullptr && nodes == built && weights == builtinRule().weights.data();
}

std::string gaussPointsFileText() {
    std::vector<double> x, w;
    gaussLegendre(256, x, w);
    std::string out;
    out += "Gauss-Legendre quadrature rule of 256 points on [-1, 1]\r\n";
    out += "The rule is symmetric: each node x below stands for +x and -x, with the same weight\r\n";
    out += "Nodes are the roots of the Legendre polynomial P256, found by Newton's method\r\n";
    out += "128 positive nodes follow, largest first, then their 128 weights in the same order\r\n";
    out += "----\r\n";
    char buf[64];
    for (int i = 255; i >= 128; --i) {
        std::snprintf(buf, sizeof buf, "%.17e\r\n", x[static_cast<std::size_t>(i)]);
        out += buf;
    }
    for (int i = 255; i >= 128; --i) {
        std::snprintf(buf, sizeof buf, "%.17e\r\n", w[static_cast<std::size_t>(i)]);
        out += buf;
    }
    return out;
}

}  // namespace bm
