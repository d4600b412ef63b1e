// The AVX2 variant of the array functions; this file alone is compiled for
// AVX2 and FMA, and only called where the processor has both.
#include <immintrin.h>
#include <sleef.h>

#include "kernels/vector_math.h"
#include "kernels/vector_math_lanes.h"

namespace bm::vmath {

namespace {
__m256d load(const double* p) { return _mm256_loadu_pd(p); }
void store(double* p, __m256d v) { _mm256_storeu_pd(p, v); }
__m256d expLanes(__m256d v) { return Sleef_expd4_u10avx2(v); }
__m256d erfLanes(__m256d v) { return Sleef_erfd4_u10avx2(v); }
__m256d erfcLanes(__m256d v) { return Sleef_erfcd4_u15avx2(v); }
__m256d sinhLanes(__m256d v) { return Sleef_sinhd4_u10avx2(v); }
__m256d expm1Lanes(__m256d v) { return Sleef_expm1d4_u10avx2(v); }
}  // namespace

extern const Functions kAvx2Functions;
const Functions kAvx2Functions = {"AVX2", overArray<__m256d, 4, load, store, expLanes>,
                                  overArray<__m256d, 4, load, store, erfLanes>,
                                  overArray<__m256d, 4, load, store, erfcLanes>,
                                  overArray<__m256d, 4, load, store, sinhLanes>,
                                  overArray<__m256d, 4, load, store, expm1Lanes>};

}  // namespace bm::vmath
