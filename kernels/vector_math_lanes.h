#pragma once
// One array function over SLEEF vectors of `Lanes` doubles, the tail padded.
// Included by the translation units of each instruction set only (the AVX2
// one is compiled for AVX2, so nothing from it may be shared with the rest):
// everything here has internal linkage.

namespace bm::vmath {
namespace {

template <class Vector, int Lanes, Vector (*Load)(const double*), void (*Store)(double*, Vector), Vector (*F)(Vector)>
void overArray(const double* x, double* out, int n) {
    int i = 0;
    for (; i + Lanes <= n; i += Lanes) Store(out + i, F(Load(x + i)));
    if (i == n) return;
    double in[Lanes] = {}, result[Lanes];
    for (int j = 0; i + j < n; ++j) in[j] = x[i + j];
    Store(result, F(Load(in)));
    for (int j = 0; i + j < n; ++j) out[i + j] = result[j];
}

}  // namespace
}  // namespace bm::vmath
