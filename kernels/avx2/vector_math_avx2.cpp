// The AVX2 variant of the array functions; this file alone is compiled for
// AVX2 and FMA, and only called where the processor has both.
#include <immintrin.h>
#include <sleef.h>

#include <bit>

#include "kernels/vector_math.h"
#include "kernels/vector_math_lanes.h"

namespace bm::vmath {

namespace {

struct Avx2 {
    using Vector = __m256d;
    static constexpr int kLanes = 4;
    static Vector load(const double* p) { return _mm256_loadu_pd(p); }
    static void store(double* p, Vector v) { _mm256_storeu_pd(p, v); }
    static Vector set(double v) { return _mm256_set1_pd(v); }
    static Vector add(Vector a, Vector b) { return _mm256_add_pd(a, b); }
    static Vector sub(Vector a, Vector b) { return _mm256_sub_pd(a, b); }
    static Vector mul(Vector a, Vector b) { return _mm256_mul_pd(a, b); }
    static Vector div(Vector a, Vector b) { return _mm256_div_pd(a, b); }
    static Vector fma(Vector a, Vector b, Vector c) { return _mm256_fmadd_pd(a, b, c); }
    // x * x - square exactly.
    static Vector squareError(Vector x, Vector square) { return _mm256_fmsub_pd(x, x, square); }
    // SLEEF's deterministic exp (the same bits on every instruction set).
    static Vector exp(Vector v) { return Sleef_cinz_expd4_u10avx(v); }
    static Vector abs(Vector x) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), x); }
    // A bit for each lane whose magnitude is below limit.
    static int smallMask(Vector x, double limit) {
        return _mm256_movemask_pd(_mm256_cmp_pd(abs(x), _mm256_set1_pd(limit), _CMP_LT_OQ));
    }
    static constexpr int kAllLanes = 0b1111;
    // 2^n for shifted = n + 1.5 * 2^52 (|n| < 1022): n sits in the low bits of
    // shifted, and 1023 + n is the power's biased exponent.
    static Vector powerOfTwo(Vector shifted) {
        constexpr long long bias = 1023 - std::bit_cast<long long>(6755399441055744.0);
        return _mm256_castsi256_pd(
            _mm256_slli_epi64(_mm256_add_epi64(_mm256_castpd_si256(shifted), _mm256_set1_epi64x(bias)), 52));
    }
    // small where |x| < limit, large elsewhere.
    static Vector selectSmall(Vector x, double limit, Vector small, Vector large) {
        const Vector magnitude = _mm256_andnot_pd(_mm256_set1_pd(-0.0), x);
        return _mm256_blendv_pd(large, small, _mm256_cmp_pd(magnitude, _mm256_set1_pd(limit), _CMP_LT_OQ));
    }
};

}  // namespace

extern const Functions kAvx2Functions;
const Functions kAvx2Functions = {"AVX2",
                                  overArray<Avx2, eachOf<Avx2, Avx2::exp>>,
                                  overArray<Avx2, expm1<Avx2>>,
                                  overArray<Avx2, erfcTail<Avx2>>,
                                  overArray<Avx2, erfSmall<Avx2>>,
                                  expAndExpm1OverArray<Avx2>,
                                  peakedSum<Avx2>,
                                  risingSum<Avx2>,
                                  quickExpOverArray<Avx2>,
                                  quickExpAndExpm1OverArray<Avx2>};

}  // namespace bm::vmath
