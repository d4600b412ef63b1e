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

// Whether any lane of the block is below kSmallExpm1 in magnitude, and whether all are.
template <class Ops>
[[gnu::always_inline]] inline void smallLanes(const typename Ops::Vector* x, bool& any, bool& all) {
    any = false;
    all = true;
    for (int b = 0; b < kBlock; ++b) {
        const int mask = Ops::smallMask(x[b], kSmallExpm1);
        any = any || mask != 0;
        all = all && mask == Ops::kAllLanes;
    }
}

// x times its Taylor series: expm1 where |x| < kSmallExpm1.
template <class Ops>
[[gnu::always_inline]] inline void expm1Series(const typename Ops::Vector* x, typename Ops::Vector* out) {
    using V = typename Ops::Vector;
    V sum[kBlock];
    for (int b = 0; b < kBlock; ++b) sum[b] = Ops::set(kExpm1[kExpm1Degree - 1]);
    for (int k = kExpm1Degree - 2; k >= 0; --k) {
        const V c = Ops::set(kExpm1[k]);
#pragma GCC unroll 8
        for (int b = 0; b < kBlock; ++b) sum[b] = Ops::fma(sum[b], x[b], c);
    }
    for (int b = 0; b < kBlock; ++b) out[b] = Ops::mul(x[b], sum[b]);
}

// e = exp(x), x = expm1(x). Each lane takes the series or exp less 1 by its
// own magnitude; a block whose lanes all take one of them skips the other.
template <class Ops>
[[gnu::always_inline]] inline void expAndExpm1(typename Ops::Vector* x, typename Ops::Vector* e) {
    using V = typename Ops::Vector;
    bool anySmall, allSmall;
    smallLanes<Ops>(x, anySmall, allSmall);
    for (int b = 0; b < kBlock; ++b) e[b] = Ops::exp(x[b]);
    if (!anySmall) {
        for (int b = 0; b < kBlock; ++b) x[b] = Ops::sub(e[b], Ops::set(1.0));
        return;
    }
    V series[kBlock];
    expm1Series<Ops>(x, series);
    for (int b = 0; b < kBlock; ++b)
        x[b] = Ops::selectSmall(x[b], kSmallExpm1, series[b], Ops::sub(e[b], Ops::set(1.0)));
}

// expm1 alone: a block of small lanes needs no exponential.
template <class Ops>
[[gnu::always_inline]] inline void expm1(typename Ops::Vector* x) {
    bool anySmall, allSmall;
    smallLanes<Ops>(x, anySmall, allSmall);
    if (allSmall) {
        expm1Series<Ops>(x, x);
        return;
    }
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

// Our own exponentials for the point source's sums: exp within 1 ulp and
// expm1 within 2 ulp where |x| < kQuickRange (SLEEF's exp, lane by lane,
// elsewhere). x = n ln 2 + r, |r| <= ln 2 / 2 (n rounded from x log2 e by
// adding 1.5 * 2^52, which leaves n in the low bits of the sum, whence 2^n).
// r = rHigh + rLow: ln 2's high part has 21 trailing zero bits, so n times it
// is exact, and so is x less it (the two are within a factor of 2 of each
// other); rLow = -n times ln 2's low part. p = expm1(r) = rHigh + (rLow + r^2
// (1/2! + r/3! + ... + r^11/13!)), rounded once (the first term left out is
// below 5e-18); exp(x) = 2^n (1 + p) and expm1(x) = 2^n p + (2^n - 1), each
// rounded once again.
constexpr double kQuickRange = 708.0;
constexpr double kLog2e = 1.4426950408889634;
constexpr double kLn2High = 0.6931471803691238;      // 0x1.62e42feep-1
constexpr double kLn2Low = 1.9082149292705877e-10;   // ln 2 - kLn2High
constexpr double kRoundingShift = 6755399441055744.0;  // 1.5 * 2^52
constexpr int kQuickDegree = 12;
constexpr double kQuickSeries[kQuickDegree] = {
    0.5,                    0.16666666666666666,   0.041666666666666664,  0.008333333333333333,
    0.001388888888888889,   0.0001984126984126984, 2.48015873015873e-05,  2.7557319223985893e-06,
    2.755731922398589e-07,  2.505210838544172e-08, 2.08767569878681e-09,  1.6059043836821613e-10};

// 2^n and expm1(r) for x = n ln 2 + r.
template <class Ops>
[[gnu::always_inline]] inline void quickReduce(typename Ops::Vector x, typename Ops::Vector& power,
                                               typename Ops::Vector& p) {
    using V = typename Ops::Vector;
    const V shifted = Ops::fma(x, Ops::set(kLog2e), Ops::set(kRoundingShift));
    const V minusN = Ops::sub(Ops::set(kRoundingShift), shifted);
    const V rHigh = Ops::fma(minusN, Ops::set(kLn2High), x);
    const V rLow = Ops::mul(minusN, Ops::set(kLn2Low));
    const V r = Ops::add(rHigh, rLow);
    V q = Ops::set(kQuickSeries[kQuickDegree - 1]);
    for (int k = kQuickDegree - 2; k >= 0; --k) q = Ops::fma(q, r, Ops::set(kQuickSeries[k]));
    p = Ops::add(rHigh, Ops::fma(Ops::mul(r, r), q, rLow));
    power = Ops::powerOfTwo(shifted);
}

template <class Ops>
[[gnu::always_inline]] inline typename Ops::Vector quickExp(typename Ops::Vector x) {
    typename Ops::Vector power, p;
    quickReduce<Ops>(x, power, p);
    const typename Ops::Vector e = Ops::fma(power, p, power);
    if (Ops::smallMask(x, kQuickRange) == Ops::kAllLanes) return e;
    return Ops::selectSmall(x, kQuickRange, e, Ops::exp(x));
}

// e = exp(x) and m = expm1(x); kInRange: the caller knows |x| < kQuickRange.
template <class Ops, bool kInRange = false>
[[gnu::always_inline]] inline void quickExpAndExpm1(typename Ops::Vector x, typename Ops::Vector& e,
                                                    typename Ops::Vector& m) {
    using V = typename Ops::Vector;
    V power, p;
    quickReduce<Ops>(x, power, p);
    e = Ops::fma(power, p, power);
    m = Ops::fma(power, p, Ops::sub(power, Ops::set(1.0)));
    if (kInRange || Ops::smallMask(x, kQuickRange) == Ops::kAllLanes) return;
    const V slow = Ops::exp(x);
    e = Ops::selectSmall(x, kQuickRange, e, slow);
    m = Ops::selectSmall(x, kQuickRange, m, Ops::sub(slow, Ops::set(1.0)));
}

template <class Ops>
void quickExpOverArray(const double* x, double* out, int n) {
    overArray<Ops, eachOf<Ops, quickExp<Ops>>>(x, out, n);
}

template <class Ops>
void quickExpAndExpm1OverArray(const double* x, double* e, double* out, int n) {
    constexpr int kLanes = Ops::kLanes;
    typename Ops::Vector ev, mv;
    int i = 0;
    for (; i + kLanes <= n; i += kLanes) {
        quickExpAndExpm1<Ops>(Ops::load(x + i), ev, mv);
        Ops::store(e + i, ev);
        Ops::store(out + i, mv);
    }
    if (i == n) return;
    double in[kLanes] = {}, first[kLanes], second[kLanes];
    for (int j = 0; i + j < n; ++j) in[j] = x[i + j];
    quickExpAndExpm1<Ops>(Ops::load(in), ev, mv);
    Ops::store(first, ev);
    Ops::store(second, mv);
    for (int j = 0; i + j < n; ++j) {
        e[i + j] = first[j];
        out[i + j] = second[j];
    }
}

// The sum of weights[i] * term(nodes[i]) in four running sums, node i in sum
// i % 4 (two vectors of two lanes hold them with SSE2, one of four with
// AVX2, so the two add alike), joined as (s0 + s1) + (s2 + s3): the terms
// are added independently, not one after another. A short tail is padded
// with nodes of weight 0.
constexpr int kRunningSums = 4;

template <class Ops, class Term>
[[gnu::always_inline]] inline double laneSum(const Term& term, const double* nodes, const double* weights, int n) {
    using V = typename Ops::Vector;
    constexpr int kLanes = Ops::kLanes, kVectors = kRunningSums / kLanes;
    V sums[kVectors];
    for (int k = 0; k < kVectors; ++k) sums[k] = Ops::set(0.0);
    int i = 0;
    for (; i + kRunningSums <= n; i += kRunningSums) {
#pragma GCC unroll 4
        for (int k = 0; k < kVectors; ++k) {
            const int at = i + k * kLanes;
            sums[k] = Ops::fma(Ops::load(weights + at), term(Ops::load(nodes + at)), sums[k]);
        }
    }
    if (i < n) {
        double x[kRunningSums] = {}, w[kRunningSums] = {};
        for (int j = 0; i + j < n; ++j) {
            x[j] = nodes[i + j];
            w[j] = weights[i + j];
        }
        for (int k = 0; k < kVectors; ++k)
            sums[k] = Ops::fma(Ops::load(w + k * kLanes), term(Ops::load(x + k * kLanes)), sums[k]);
    }
    double lanes[kRunningSums];
    for (int k = 0; k < kVectors; ++k) Ops::store(lanes + k * kLanes, sums[k]);
    return (lanes[0] + lanes[1]) + (lanes[2] + lanes[3]);
}

// Whether |scale x + offset| < kQuickRange at every node: the first
// exponential of a term then needs no check. (A rule's nodes lie in [-1, 1],
// but they come from a file, so they are looked at; a NaN node takes the
// checked path too.)
template <class Ops>
bool firstInRange(double scale, double offset, const double* nodes, int n) {
    const double a = scale < 0.0 ? -scale : scale, b = offset < 0.0 ? -offset : offset;
    if (!(a * 1.0 + b < kQuickRange)) return false;  // the nodes of [-1, 1]; NaN here too
    const double limit = (kQuickRange - b) / a * (1.0 - 1e-12);  // a > 0 unless every term is alike
    int i = 0;
    for (; i + Ops::kLanes <= n; i += Ops::kLanes)
        if (Ops::smallMask(Ops::load(nodes + i), limit) != Ops::kAllLanes) return false;
    for (; i < n; ++i)
        if (!(nodes[i] < limit && -nodes[i] < limit)) return false;
    return true;
}

// exp(-q u^2 / (1 + u)), u = expm1(|scale x + offset|).
template <class Ops, bool kInRange>
double peakedSumOf(const PeakedTerms& terms, const double* nodes, const double* weights, int n) {
    using V = typename Ops::Vector;
    const V scale = Ops::set(terms.scale), offset = Ops::set(terms.offset), minusQ = Ops::set(-terms.q),
            one = Ops::set(1.0);
    const auto term = [&](V x) {
        V e, u;
        quickExpAndExpm1<Ops, kInRange>(Ops::abs(Ops::add(Ops::mul(scale, x), offset)), e, u);
        return quickExp<Ops>(Ops::mul(Ops::mul(minusQ, u), Ops::div(u, Ops::add(one, u))));
    };
    return laneSum<Ops>(term, nodes, weights, n);
}

template <class Ops>
double peakedSum(const PeakedTerms& terms, const double* nodes, const double* weights, int n) {
    return firstInRange<Ops>(terms.scale, terms.offset, nodes, n) ? peakedSumOf<Ops, true>(terms, nodes, weights, n)
                                                   : peakedSumOf<Ops, false>(terms, nodes, weights, n);
}

// exp(expm1(z) * (aOverT / exp(z) - bT)), z = scale x + offset.
template <class Ops, bool kInRange>
double risingSumOf(const RisingTerms& terms, const double* nodes, const double* weights, int n) {
    using V = typename Ops::Vector;
    const V scale = Ops::set(terms.scale), offset = Ops::set(terms.offset), aOverT = Ops::set(terms.aOverT),
            bT = Ops::set(terms.bT);
    const auto term = [&](V x) {
        V e, m;
        quickExpAndExpm1<Ops, kInRange>(Ops::add(Ops::mul(scale, x), offset), e, m);
        return quickExp<Ops>(Ops::mul(m, Ops::sub(Ops::div(aOverT, e), bT)));
    };
    return laneSum<Ops>(term, nodes, weights, n);
}

template <class Ops>
double risingSum(const RisingTerms& terms, const double* nodes, const double* weights, int n) {
    return firstInRange<Ops>(terms.scale, terms.offset, nodes, n) ? risingSumOf<Ops, true>(terms, nodes, weights, n)
                                                   : risingSumOf<Ops, false>(terms, nodes, weights, n);
}

}  // namespace
}  // namespace bm::vmath
