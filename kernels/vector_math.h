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
//
// The point source's sums take our own exponentials instead (quickExp within
// 1 ulp, quickExpAndExpm1's expm1 within 2, SLEEF's exp lane by lane where
// |x| >= 708): inlined into one pass over the rule, with no call between a
// node's two exponentials, they cost 1.8 ns a value for exp and expm1
// together against 3.0 for the pair above, and the point source's kernel on
// a whole grid about 0.72 of its time with SLEEF.

namespace bm::vmath {

// out[i] = f(x[i]) for 0 <= i < n; x and out may be the same array.
using ArrayFunction = void (*)(const double* x, double* out, int n);

// e[i] = exp(x[i]) and out[i] = expm1(x[i]) at once, for 0 <= i < n.
using PairFunction = void (*)(const double* x, double* e, double* out, int n);

// The terms of the point source's integrals over a rule's nodes x (in
// [-1, 1]):
// exp(-q u^2 / (1 + u)) with u = expm1(|scale x + offset|) (a peak inside the
// interval), and exp(expm1(z) (aOverT / exp(z) - bT)) with z = scale x +
// offset (rising to the interval's end).
struct PeakedTerms {
    double scale, offset, q;
};
struct RisingTerms {
    double scale, offset, aOverT, bT;
};

// The sum of weights[i] * term(nodes[i]) over 0 <= i < n (the nodes in
// [-1, 1]), in one pass: four running sums, node i in sum i % 4, joined as
// (s0 + s1) + (s2 + s3), the same bits on every instruction set (not those of
// a plain loop adding one term after another).
using PeakedSum = double (*)(const PeakedTerms& terms, const double* nodes, const double* weights, int n);
using RisingSum = double (*)(const RisingTerms& terms, const double* nodes, const double* weights, int n);

struct Functions {
    const char* name;
    ArrayFunction exp, expm1, erfcTail, erfSmall;
    PairFunction expAndExpm1;
    PeakedSum peakedSum;
    RisingSum risingSum;
    // Our own exp and expm1 that the sums use (vector_math_lanes.h).
    ArrayFunction quickExp;
    PairFunction quickExpAndExpm1;
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
inline void quickExp(const double* x, double* out, int n) { functions().quickExp(x, out, n); }
inline void quickExpAndExpm1(const double* x, double* e, double* out, int n) {
    functions().quickExpAndExpm1(x, e, out, n);
}
inline double peakedSum(const PeakedTerms& terms, const double* nodes, const double* weights, int n) {
    return functions().peakedSum(terms, nodes, weights, n);
}
inline double risingSum(const RisingTerms& terms, const double* nodes, const double* weights, int n) {
    return functions().risingSum(terms, nodes, weights, n);
}

}  // namespace bm::vmath
