#include "saturated/one_dim_cauchy_decay.h"

#include <algorithm>
#include <cmath>

#include "kernels/erfc_scaled.h"

namespace bm {

namespace {

constexpr double kInvSqrtPi = 0.56418958354775628695;

// Eight-point Gauss-Legendre rule on [-1, 1] (positive half).
constexpr double kNodes[4] = {0.18343464249564980494, 0.52553240991632898582, 0.79666647741362673959,
                              0.96028985649753623168};
constexpr double kWeights[4] = {0.36268378337836198297, 0.31370664587788728734, 0.22238103445337447054,
                                0.10122853629037625915};

// Above this argument the slope comes from the continued fraction.
constexpr double kFractionFrom = 4.0;
constexpr int kFractionDepth = 60;

// Mean of erfcxSlope over [lo, lo + width].
double meanSlope(double lo, double width) {
    if (width > 0.25 * (1.0 + lo)) {
        // The interval is long against the scale on which erfcx varies: the
        // plain difference loses less than a factor of a few.
        return (erfcx(lo) - erfcx(lo + width)) / width;
    }
    const double centre = lo + 0.5 * width;
    const double half = 0.5 * width;
    double sum = 0.0;
    for (int k = 0; k < 4; ++k)
        sum += kWeights[k] * (erfcxSlope(centre - half * kNodes[k]) + erfcxSlope(centre + half * kNodes[k]));
    return 0.5 * sum;
}

}  // namespace

double erfcxSlope(double z) {
    if (z < kFractionFrom) return 2.0 * kInvSqrtPi - 2.0 * z * erfcx(z);
    // erfcx(z) = 1 / (sqrt(pi) K1) with K_n = z + (n/2) / K_{n+1}; then
    // 2/sqrt(pi) - 2 z erfcx(z) = (2/sqrt(pi)) (K1 - z) / K1 = 1 / (sqrt(pi) K1 K2).
    double k = z;
    for (int n = kFractionDepth; n >= 2; --n) k = z + 0.5 * n / k;
    const double k2 = k;
    const double k1 = z + 0.5 / k2;
    return kInvSqrtPi / (k1 * k2);
}

double semiInfiniteCauchyWithDecay(double V, double D, double lambda, double x, double t) {
    const double U = std::sqrt(V * V + 4.0 * D * lambda);
    const double excess = 4.0 * D * lambda / (U + V);  // U - V
    const double S = 2.0 * std::sqrt(D * t);
    const double e2 = expErfc(-excess * x / (2.0 * D), (x - U * t) / S);
    const double e3 = expErfc((U + V) * x / (2.0 * D), (x + U * t) / S);
    const double front = x - V * t;
    const double shared = std::exp(-front * front / (4.0 * D * t) - lambda * t);
    const double etaV = (x + V * t) / S;
    const double width = excess * t / S;
    const double slope = meanSlope(etaV, width);
    const double ratio = V / (U + V) * (e2 - e3) + shared * V * V * std::sqrt(t) / ((U + V) * std::sqrt(D)) * slope;
    // The solution lies in [0, 1]; rounding must not carry it past either end.
    return std::clamp(ratio, 0.0, 1.0);
}

}  // namespace bm
