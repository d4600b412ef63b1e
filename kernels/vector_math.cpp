#include "kernels/vector_math.h"

#include <emmintrin.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <sleef.h>

#include "kernels/vector_math_lanes.h"

namespace bm::vmath {

extern const Functions kAvx2Functions;  // kernels/avx2/vector_math_avx2.cpp

namespace {

struct Sse2 {
    using Vector = __m128d;
    static constexpr int kLanes = 2;
    static Vector load(const double* p) { return _mm_loadu_pd(p); }
    static void store(double* p, Vector v) { _mm_storeu_pd(p, v); }
    static Vector set(double v) { return _mm_set1_pd(v); }
    static Vector add(Vector a, Vector b) { return _mm_add_pd(a, b); }
    static Vector sub(Vector a, Vector b) { return _mm_sub_pd(a, b); }
    static Vector mul(Vector a, Vector b) { return _mm_mul_pd(a, b); }
    static Vector div(Vector a, Vector b) { return _mm_div_pd(a, b); }
    // Fused, lane by lane (the processor's instruction where it has one, the C
    // library's exactly rounded one otherwise), so that this variant rounds
    // as the AVX2 one does and a result does not depend on the processor.
    static Vector fma(Vector a, Vector b, Vector c) {
        alignas(16) double x[2], y[2], z[2];
        _mm_store_pd(x, a);
        _mm_store_pd(y, b);
        _mm_store_pd(z, c);
        return _mm_set_pd(std::fma(x[1], y[1], z[1]), std::fma(x[0], y[0], z[0]));
    }
    // x * x - square exactly, by Veltkamp's split of x into two 26-bit halves.
    static Vector squareError(Vector x, Vector square) {
        const Vector scaled = _mm_mul_pd(x, _mm_set1_pd(134217729.0));  // 2^27 + 1
        const Vector high = _mm_sub_pd(scaled, _mm_sub_pd(scaled, x));
        const Vector low = _mm_sub_pd(x, high);
        const Vector cross = _mm_mul_pd(high, low);
        return _mm_add_pd(_mm_add_pd(_mm_sub_pd(_mm_mul_pd(high, high), square), _mm_add_pd(cross, cross)),
                          _mm_mul_pd(low, low));
    }
    // SLEEF's deterministic exp: bit for bit the AVX2 variant's.
    static Vector exp(Vector v) { return Sleef_cinz_expd2_u10sse2(v); }
    static Vector abs(Vector x) { return _mm_andnot_pd(_mm_set1_pd(-0.0), x); }
    // A bit for each lane whose magnitude is below limit.
    static int smallMask(Vector x, double limit) { return _mm_movemask_pd(_mm_cmplt_pd(abs(x), _mm_set1_pd(limit))); }
    static constexpr int kAllLanes = 0b11;
    // 2^n for shifted = n + 1.5 * 2^52 (|n| < 1022): n sits in the low bits of
    // shifted, and 1023 + n is the power's biased exponent.
    static Vector powerOfTwo(Vector shifted) {
        constexpr long long bias = 1023 - std::bit_cast<long long>(6755399441055744.0);
        return _mm_castsi128_pd(_mm_slli_epi64(_mm_add_epi64(_mm_castpd_si128(shifted), _mm_set1_epi64x(bias)), 52));
    }
    // small where |x| < limit, large elsewhere.
    static Vector selectSmall(Vector x, double limit, Vector small, Vector large) {
        const Vector magnitude = _mm_andnot_pd(_mm_set1_pd(-0.0), x);
        const Vector mask = _mm_cmplt_pd(magnitude, _mm_set1_pd(limit));
        return _mm_or_pd(_mm_and_pd(mask, small), _mm_andnot_pd(mask, large));
    }
};

const Functions kSse2Functions = {"SSE2",
                                  overArray<Sse2, eachOf<Sse2, Sse2::exp>>,
                                  overArray<Sse2, expm1<Sse2>>,
                                  overArray<Sse2, erfcTail<Sse2>>,
                                  overArray<Sse2, erfSmall<Sse2>>,
                                  expAndExpm1OverArray<Sse2>,
                                  peakedSum<Sse2>,
                                  risingSum<Sse2>,
                                  quickExpOverArray<Sse2>,
                                  quickExpAndExpm1OverArray<Sse2>};

bool hasAvx2() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
}

}  // namespace

const Functions& baselineFunctions() { return kSse2Functions; }

const Functions* avx2Functions() {
    static const bool supported = hasAvx2();
    return supported ? &kAvx2Functions : nullptr;
}

const Functions& functions() {
    // BRENMOOR_VECTOR_BASELINE (any value) runs the baseline variant on any
    // processor: the tests show with it that the result files are the same.
    static const Functions& chosen =
        avx2Functions() != nullptr && std::getenv("BRENMOOR_VECTOR_BASELINE") == nullptr ? *avx2Functions()
                                                                                          : kSse2Functions;
    return chosen;
}

}  // namespace bm::vmath
