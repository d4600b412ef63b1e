#pragma once
// The n-point Gauss-Legendre rule on [-1, 1], computed by Newton's method on
// P_n from Chebyshev-like starting points, in extended precision.

#include <string>
#include <vector>

namespace bm {

// Nodes ascending, weights to match.
void gaussLegendre(int n, std::vector<double>& nodes, std::vector<double>& weights);
// The same into n doubles at each pointer.
void gaussLegendre(int n, double* nodes, double* weights);

// The 256-point rule, built once in static storage at its first use (no
// kernel call allocates), shared by the kernels that carry their own rule:
// nodes ascending, weights to match.
const double* builtinRuleNodes();
const double* builtinRuleWeights();
// Whether these are the built-in rule's arrays, without building it (a run
// on the program's own rule never needs it, and building it takes a
// millisecond and more).
bool isBuiltinRule(const double* nodes, const double* weights);

// A caller that fills the arrays it passes to the kernels with another rule
// (at the same addresses or at addresses it passed before) says so here
// before its next call: the kernels keep values made from a rule and check
// the caller's arrays against it only when they are new or said to change.
// The program says so whenever it reads its points file.
void ruleArraysChanged();

// The text of the points file: five header lines, the 128 positive nodes of the
// 256-point rule (largest first), then their 128 weights; CR LF line ends.
std::string gaussPointsFileText();

}  // namespace bm
