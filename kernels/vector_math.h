#pragma once
// Element-wise exp, erf, erfc, sinh and expm1 over arrays of doubles, on SLEEF's
// vector functions: 4 lanes with AVX2 and FMA where the processor has them
// (chosen once, at run time), 2 lanes of SSE2 (every x86-64) otherwise.
// SLEEF's bounds: exp, erf, sinh, expm1 within 1 ulp, erfc within 1.5 ulp, for
// every finite argument (0 where the result underflows). The quadrature
// kernels evaluate their rule's nodes through these.

namespace bm::vmath {

// out[i] = f(x[i]) for 0 <= i < n; x and out may be the same array.
using ArrayFunction = void (*)(const double* x, double* out, int n);

struct Functions {
    const char* name;
    ArrayFunction exp, erf, erfc, sinh, expm1;
};

// The variant this processor runs.
const Functions& functions();
// The SSE2 variant, which every x86-64 runs.
const Functions& baselineFunctions();
// The AVX2 variant; null when the processor lacks AVX2 or FMA.
const Functions* avx2Functions();

inline void exp(const double* x, double* out, int n) { functions().exp(x, out, n); }
inline void erf(const double* x, double* out, int n) { functions().erf(x, out, n); }
inline void erfc(const double* x, double* out, int n) { functions().erfc(x, out, n); }
inline void sinh(const double* x, double* out, int n) { functions().sinh(x, out, n); }
inline void expm1(const double* x, double* out, int n) { functions().expm1(x, out, n); }

}  // namespace bm::vmath
