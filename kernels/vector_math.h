#pragma once
// Element-wise functions over arrays of doubles for the quadrature kernels,
// in vectors: 4 lanes with AVX2 and FMA where the processor has them (chosen
// once, at run time), 2 lanes of SSE2 (every x86-64) otherwise. Both variants
// give the same bits for every argument (multiply-adds fused in both, SLEEF's
// deterministic exp), so a result file does not depend on the processor.
//
// exp is SLEEF's (within 1 ulp for every finite argument, 0 where the result
// underflows). The rest are our own, built on it where they need an
// exponential and only for the ranges the kernels need, because SLEEF's carry
// double-double arithmetic through and cost more than the kernels can spend
// (measured per value with AVX2 on this project's machine: erfcTail 5.3 ns
// against 15.4 for SLEEF's erfc and 15.5 for glibc's; expm1 3.6 against 4.1,
// and with exp beside it 3.8 against 6.0): expm1 within 2 ulp for every
// finite argument, erfcTail within 6 ulp of erfc on 0 <= x <= 6.5, erfSmall
// within 2 ulp of erf on 0 <= x <= 0.5 (vector_math_lanes.h; the kernels'
// tests hold them to these bounds).

namespace bm::vmath {

// out[i] = f(x[i]) for 0 <= i < n; x and out may be the same array.
using ArrayFunction = void (*)(const double* x, double* out, int n);

// e[i] = exp(x[i]) and out[i] = expm1(x[i]) at once, for 0 <= i < n.
using PairFunction = void (*)(const double* x, double* e, double* out, int n);

struct Functions {
    const char* name;
    ArrayFunction exp, expm1, erfcTail, erfSmall;
    PairFunction expAndExpm1;
};

// The variant this processor runs (the baseline one wherever the environment
// has BRENMOOR_VECTOR_BASELINE).
const Functions& functions();
// The SSE2 variant, which every x86-64 runs.
const Functions& baselineFunctions();
// The AVX2 variant; null when the processor lacks AVX2 or FMA.
const Functions* avx2Functions();

inline void exp(const double* x, double* out, int n) { functions().exp(x, out, n); }
inline void expm1(const double* x, double* out, int n) { functions().expm1(x, out, n); }
inline void erfcTail(const double* x, double* out, int n) { functions().erfcTail(x, out, n); }
inline void erfSmall(const double* x, double* out, int n) { functions().erfSmall(x, out, n); }
inline void expAndExpm1(const double* x, double* e, double* out, int n) { functions().expAndExpm1(x, e, out, n); }

}  // namespace bm::vmath
