#pragma once
// The array functions over vectors of `Ops::kLanes` doubles, written once for
// every instruction set: Ops supplies the vector type and its arithmetic
// (fma is a fused multiply-add where the set has one, a multiply and an add
// otherwise) and SLEEF's exp. Included by the translation unit of each
// instruction set only (the AVX2 one is compiled for AVX2, so nothing from it
// may be shared with the rest): everything here has internal linkage.

namespace bm::vmath {
namespace {

// How many vectors the polynomial functions take at once: their steps are
// chains of dependent multiply-adds, and four chains side by side keep the
// arithmetic units busy where one would wait on each step's latency.
constexpr int kBlock = 2;

// f over an array, kBlock vectors at a time, the tail padded with zeros.
template <class Ops, void (*F)(typename Ops::Vector*)>
void overArray(const double* x, double* out, int n) {
    using V = typename Ops::Vector;
    constexpr int kLanes = Ops::kLanes, kStep = kLanes * kBlock;
    V v[kBlock];
    int i = 0;
    for (; i + kStep <= n; i += kStep) {
        for (int b = 0; b < kBlock; ++b) v[b] = Ops::load(x + i + b * kLanes);
        F(v);
        for (int b = 0; b < kBlock; ++b) Ops::store(out + i + b * kLanes, v[b]);
    }
    if (i == n) return;
    double in[kStep] = {}, result[kStep];
    for (int j = 0; i + j < n; ++j) in[j] = x[i + j];
    for (int b = 0; b < kBlock; ++b) v[b] = Ops::load(in + b * kLanes);
    F(v);
    for (int b = 0; b < kBlock; ++b) Ops::store(result + b * kLanes, v[b]);
    for (int j = 0; i + j < n; ++j) out[i + j] = result[j];
}

// A function of one vector applied to each of a block.
template <class Ops, typename Ops::Vector (*F)(typename Ops::Vector)>
void eachOf(typename Ops::Vector* v) {
    for (int b = 0; b < kBlock; ++b) v[b] = F(v[b]);
}

// erfc(x) = exp(-x^2) H(x) / (1 + sqrt(pi) x) on 0 <= x <= 6.5, H = (1 +
// sqrt(pi) x) exp(x^2) erfc(x) (between 1 and 1.13) a polynomial of degree
// 18 in t = (u - kMid) / kHalf, u = (x - 4) / (x + 4): H's interpolant at the
// Chebyshev points of t (computed in 50-digit arithmetic), within 4e-16 of
// it, its coefficients small enough (their magnitudes add up to 1.5) for
// Horner's rule to lose nothing. exp(-x^2) is taken as exp(-hi) (1 - lo)
// with hi + lo = x^2 exactly, so that the rounding of x^2 does not reach
// the result.
constexpr double kMid = -0.38095238095238093;
constexpr double kInverseHalf = 1.6153846153846154;
constexpr double kSqrtPi = 1.772453850905516;
constexpr int kTailDegree = 18;
constexpr double kTail[kTailDegree + 1] = {
    1.167506452063006,      -0.08411947403314723,   -0.05455603344486947,    0.08565366889190384,
    -0.06286295394427921,   0.032150597772613365,   -0.012261302689704115,   0.003450932404204265,
    -0.0006529430978783127, 5.2037218231036625e-05, 1.095804375807828e-05,   -3.6336565170270625e-06,
    9.056957882465293e-08,  1.2957200641753778e-07, -1.4379343987212385e-08, -4.4404312741568376e-09,
    7.851470014941081e-10,  1.4616737622474627e-10, -3.0384192266879374e-11};

template <class Ops>
void erfcTail(typename Ops::Vector* x) {
    using V = typename Ops::Vector;
    const V four = Ops::set(4.0), mid = Ops::set(kMid), inverseHalf = Ops::set(kInverseHalf);
    V t[kBlock], h[kBlock];
    for (int b = 0; b < kBlock; ++b) {
        t[b] = Ops::mul(Ops::sub(Ops::div(Ops::sub(x[b], four), Ops::add(x[b], four)), mid), inverseHalf);
        h[b] = Ops::set(kTail[kTailDegree]);
    }
    for (int k = kTailDegree - 1; k >= 0; --k) {
        const V c = Ops::set(kTail[k]);
        for (int b = 0; b < kBlock; ++b) h[b] = Ops::fma(h[b], t[b], c);
    }
    for (int b = 0; b < kBlock; ++b) {
        const V e = Ops::div(h[b], Ops::fma(Ops::set(kSqrtPi), x[b], Ops::set(1.0)));
        const V hi = Ops::mul(x[b], x[b]);
        const V lo = Ops::squareError(x[b], hi);
        const V gauss = Ops::exp(Ops::sub(Ops::set(0.0), hi));
        x[b] = Ops::mul(gauss, Ops::sub(e, Ops::mul(e, lo)));
    }
}

// erf(x) on 0 <= x <= 0.5: x times its Taylor series in x^2 to the x^24
// term (the first one left out is below 2e-18 of the sum).
constexpr int kSmallDegree = 12;
constexpr double kSmall[kSmallDegree + 1] = {
    1.1283791670955126,    -0.37612638903183754,  0.11283791670955126,   -0.026866170645131252, 0.005223977625442188,
    -0.0008548327023450853, 0.00012055332981789664, -1.492565035840625e-05, 1.6462114365889248e-06,
    -1.6365844691234924e-07, 1.4807192815879218e-08, -1.2290555301717928e-09, 9.422759064650411e-11};

template <class Ops>
void erfSmall(typename Ops::Vector* x) {
    using V = typename Ops::Vector;
    V x2[kBlock], sum[kBlock];
    for (int b = 0; b < kBlock; ++b) {
        x2[b] = Ops::mul(x[b], x[b]);
        sum[b] = Ops::set(kSmall[kSmallDegree]);
    }
    for (int k = kSmallDegree - 1; k >= 0; --k) {
        const V c = Ops::set(kSmall[k]);
        for (int b = 0; b < kBlock; ++b) sum[b] = Ops::fma(sum[b], x2[b], c);
    }
    for (int b = 0; b < kBlock; ++b) x[b] = Ops::mul(x[b], sum[b]);
}

// exp(x) - 1: SLEEF's exp less 1 where |x| >= 0.5 (exact subtraction, the
// result at least 0.39 in magnitude, so within 2 ulp), x times its Taylor
// series to the x^15 term where |x| < 0.5 (the first term left out is below
// 3e-17 of the sum).
constexpr double kSmallExpm1 = 0.5;
constexpr int kExpm1Degree = 15;
constexpr double kExpm1[kExpm1Degree] = {
    1.0,                   0.5,                    0.16666666666666666,   0.041666666666666664, 0.008333333333333333,
    0.001388888888888889,  0.0001984126984126984,  2.48015873015873e-05,  2.7557319223985893e-06,
    2.755731922398589e-07, 2.505210838544172e-08,  2.08767569878681e-09,  1.6059043836821613e-10,
    1.1470745597729725e-11, 7.647163731819816e-13};

template <class Ops>
void expAndExpm1(typename Ops::Vector* x, typename Ops::Vector* e) {
    using V = typename Ops::Vector;
    V sum[kBlock];
    for (int b = 0; b < kBlock; ++b) sum[b] = Ops::set(kExpm1[kExpm1Degree - 1]);
    for (int k = kExpm1Degree - 2; k >= 0; --k) {
        const V c = Ops::set(kExpm1[k]);
        for (int b = 0; b < kBlock; ++b) sum[b] = Ops::fma(sum[b], x[b], c);
    }
    for (int b = 0; b < kBlock; ++b) {
        e[b] = Ops::exp(x[b]);
        x[b] = Ops::selectSmall(x[b], kSmallExpm1, Ops::mul(x[b], sum[b]), Ops::sub(e[b], Ops::set(1.0)));
    }
}

template <class Ops>
void expm1(typename Ops::Vector* x) {
    typename Ops::Vector e[kBlock];
    expAndExpm1<Ops>(x, e);
}

// exp and expm1 of an array at once (exp into e, expm1 into out).
template <class Ops>
void expAndExpm1OverArray(const double* x, double* e, double* out, int n) {
    using V = typename Ops::Vector;
    constexpr int kLanes = Ops::kLanes, kStep = kLanes * kBlock;
    V v[kBlock], w[kBlock];
    int i = 0;
    for (; i + kStep <= n; i += kStep) {
        for (int b = 0; b < kBlock; ++b) v[b] = Ops::load(x + i + b * kLanes);
        expAndExpm1<Ops>(v, w);
        for (int b = 0; b < kBlock; ++b) {
            Ops::store(out + i + b * kLanes, v[b]);
            Ops::store(e + i + b * kLanes, w[b]);
        }
    }
    if (i == n) return;
    double in[kStep] = {}, first[kStep], second[kStep];
    for (int j = 0; i + j < n; ++j) in[j] = x[i + j];
    for (int b = 0; b < kBlock; ++b) v[b] = Ops::load(in + b * kLanes);
    expAndExpm1<Ops>(v, w);
    for (int b = 0; b < kBlock; ++b) {
        Ops::store(first + b * kLanes, v[b]);
        Ops::store(second + b * kLanes, w[b]);
    }
    for (int j = 0; i + j < n; ++j) {
        out[i + j] = first[j];
        e[i + j] = second[j];
    }
}

}  // namespace
}  // namespace bm::vmath
