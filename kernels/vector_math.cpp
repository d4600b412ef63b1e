#include "kernels/vector_math.h"

#include <emmintrin.h>
#include <sleef.h>

#include "kernels/vector_math_lanes.h"

namespace bm::vmath {

extern const Functions kAvx2Functions;  // kernels/avx2/vector_math_avx2.cpp

namespace {

__m128d load(const double* p) { return _mm_loadu_pd(p); }
void store(double* p, __m128d v) { _mm_storeu_pd(p, v); }
__m128d expLanes(__m128d v) { return Sleef_expd2_u10sse2(v); }
__m128d erfLanes(__m128d v) { return Sleef_erfd2_u10sse2(v); }
__m128d erfcLanes(__m128d v) { return Sleef_erfcd2_u15sse2(v); }
__m128d sinhLanes(__m128d v) { return Sleef_sinhd2_u10sse2(v); }
__m128d expm1Lanes(__m128d v) { return Sleef_expm1d2_u10sse2(v); }

const Functions kSse2Functions = {"SSE2", overArray<__m128d, 2, load, store, expLanes>,
                                  overArray<__m128d, 2, load, store, erfLanes>,
                                  overArray<__m128d, 2, load, store, erfcLanes>,
                                  overArray<__m128d, 2, load, store, sinhLanes>,
                                  overArray<__m128d, 2, load, store, expm1Lanes>};

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
    static const Functions& chosen = avx2Functions() != nullptr ? *avx2Functions() : kSse2Functions;
    return chosen;
}

}  // namespace bm::vmath
