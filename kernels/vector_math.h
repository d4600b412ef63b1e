#pragma once
// Element-wise functions over arrays of doubles for the quadrature kernels,
// in vectors: 4 lanes with AVX2 and FMA where the processor has them (chosen
// once, at run time), 2 lanes of SSE2 (every x86-64) otherwise.
//
// exp, sinh and expm1 are SLEEF's (within 1 ulp for every finite argument, 0
// where the result underflows). The error-function tails are our own, on the
// only ranges the kernels need (interval_masses.h) and about four times as
// fast as SLEEF's erfc (which carries double-double arithmetic through):
// erfcTail within 4 ulp of erfc on 0 <= x <= 6.5 (with FMA; 6 ulp without),
// erfSmall within 2 ulp of erf on 0 <= x <= 0.5 (vector_math_lanes.h).

namespace bm::vmath {

// out[i] = f(x[i]) for 0 <= i < n; x and out may be the same array.
using ArrayFunction = void (*)(const double* x, double* out, int n);

struct Functions {
    const char* name;
    ArrayFunction exp, sinh, expm1, erfcTail, erfSmall;
};

// The variant this processor runs.
const Functions& functions();
// The SSE2 variant, which every x86-64 runs.
const Functions& baselineFunctions();
// The AVX2 variant; null when the processor lacks AVX2 or FMA.
const Functions* avx2Functions();

inline void exp(const double* x, double* out, int n) { functions().exp(x, out, n); }
inline void sinh(const double* x, double* out, int n) { functions().sinh(x, out, n); }
inline void expm1(const double* x, double* out, int n) { functions().expm1(x, out, n); }
inline void erfcTail(const double* x, double* out, int n) { functions().erfcTail(x, out, n); }
inline void erfSmall(const double* x, double* out, int n) { functions().erfSmall(x, out, n); }

}  // namespace bm::vmath
