#include "saturated/one_dim_kernels.h"

#include <cmath>
#include <numbers>

#include "kernels/kern1d.h"
#include "shell/checked_math.h"
#include "shell/runtime_error.h"

namespace bm {

namespace {

// Quantities shared by the two finite-aquifer series.
struct FiniteShared {
    double a;    // V / (2D)
    double aL;   // a L
    double aL2;  // (a L)^2
    double L2;   // L^2
    double B;    // lambda L^2 / D
    double G;    // V^2 t / (4D)
};

FiniteShared finiteShared(double V, double D, double L, double lambda, double t) {
    FiniteShared s{};
    s.a = fp::div(V, 2.0 * D);
    s.aL = fp::mul(s.a, L);
    s.aL2 = fp::mul(s.aL, s.aL);
    s.L2 = fp::mul(L, L);
    s.B = fp::div(fp::mul(lambda * L, L), D);
    s.G = fp::div(fp::mul(V * V, t), 4.0 * D);
    return s;
}

// Quantities shared by the two semi-infinite solutions.
struct SemiInfiniteShared {
    double V;       // effective velocity
    double D;       // effective dispersion
    double lambda;  // decay rate
    double S;       // 2 sqrt(D t)
    double U;       // sqrt(4 D lambda + V^2)
    double h;       // x / (2D)
};

SemiInfiniteShared semiInfiniteShared(const OneDimParameters& parameters, double x, double t);

// Value at t = 0: the inlet alone carries the source.
double initialRatio(double x) { return x == 0.0 ? 1.0 : 0.0; }

}  // namespace

double decayRateOf(const OneDimParameters& parameters) {
    return fp::div(std::numbers::ln2, parameters.effectiveHalfLife);
}

namespace {

SemiInfiniteShared semiInfiniteShared(const OneDimParameters& parameters, double x, double t) {
    SemiInfiniteShared s{};
    s.V = parameters.effectiveVelocity;
    s.D = parameters.effectiveDispersion;
    s.lambda = decayRateOf(parameters);
    s.S = 2.0 * fp::sqrt(s.D * t);
    s.U = fp::sqrt(4.0 * s.D * s.lambda + s.V * s.V);
    s.h = fp::div(x, 2.0 * s.D);
    return s;
}

}  // namespace

bool finiteDirichletRatio(const OneDimParameters& parameters, double length, double x, double t,
                          const List<double>& rootTable, double& result) {
    if (t == 0.0) {
        result = initialRatio(x);
        return true;
    }
    const double V = parameters.effectiveVelocity;
    const double D = parameters.effectiveDispersion;
    const double L = length;
    const double lambda = decayRateOf(parameters);
    const FiniteShared s = finiteShared(V, D, L, lambda, t);
    double sum = 0.0;
    bool converged = true;

    if (lambda == 0.0) {
        // Without decay the series is never entered: its loop asks for i = 500
        // on entry. The sum stays 0 and the ratio is exactly 1.
        result = fp::checked(1.0 - 2.0 * fp::exp(s.a * x - s.G) * sum);
        return converged;
    }

    int i = 1;
    while (i <= kRootCount) {
        const double beta = rootTable(i);
        const double b = beta * beta;
        const double E = fp::exp(-fp::div(b * D * t, s.L2));
        const double P = b + s.aL2;
        const double W = (P + s.aL) * (P + s.B);
        const double T = fp::checked(fp::div(std::sin(fp::div(beta * x, L)) * beta, W) * (P * E));
        sum += T;
        ++i;
        if (std::fabs(T) <= 1e-30) break;
    }
    if (i > kRootCount) converged = false;

    const double U = fp::sqrt(4.0 * D * lambda + V * V);
    const double Q = fp::div(U - V, U + V);
    const double F = fp::div(fp::exp(fp::div((V - U) * x, 2.0 * D)) +
                                 fp::exp(fp::div((U + V) * x - 2.0 * U * L, 2.0 * D)) * Q,
                             1.0 + fp::exp(-fp::div(U * L, D)) * Q);
    result = fp::checked(F - 2.0 * fp::exp(s.a * x - s.G - lambda * t) * sum);
    return converged;
}

bool finiteCauchyRatio(const OneDimParameters& parameters, double length, double x, double t,
                       const List<double>& rootTable, double& result) {
    if (t == 0.0) {
        result = initialRatio(x);
        return true;
    }
    // The mid-point of the aquifer is evaluated a little downstream of itself.
    if (x == length / 2.0) x = x * 1.001;

    const double V = parameters.effectiveVelocity;
    const double D = parameters.effectiveDispersion;
    const double L = length;
    const double lambda = decayRateOf(parameters);
    const FiniteShared s = finiteShared(V, D, L, lambda, t);
    const double M = fp::div(V * L, D);

    double sum = 0.0;
    bool converged = true;
    bool ranOut = false;
    double A = 1.0;
    double C = 1.0;
    int i = 1;
    while (true) {
        // Without decay only C is tested, so in practice all 500 terms run.
        const bool small = lambda != 0.0 ? std::fabs(A * C) <= 1e-20 : std::fabs(C) <= 1e-20;
        if (small) {
            if (i >= kRootCount + 1) ranOut = true;
            break;
        }
        if (i > kRootCount) {
            ranOut = true;
            break;
        }
        const double beta = rootTable(i);
        const double b = beta * beta;
        const double y = fp::div(beta * x, L);
        C = (std::cos(y) * beta + std::sin(y) * s.aL) * beta;
        const double P = b + s.aL2;
        const double W = lambda != 0.0 ? (P + M) * (P + s.B) : (P + M) * P;
        A = fp::div(fp::exp(-fp::div(b * D * t, s.L2)), W);
        sum = fp::checked(sum + A * C);
        ++i;
    }
    if (ranOut) {
        // With decay an unconverged series is a visible failure, as a type mismatch.
        if (lambda != 0.0) raiseError(err::TypeMismatch);
        converged = false;
    }

    if (lambda != 0.0) {
        const double U = fp::sqrt(4.0 * D * lambda + V * V);
        const double Q = fp::div(U - V, U + V);
        const double N = 2.0 * V *
                         (fp::exp(fp::div((V - U) * x, 2.0 * D)) +
                          fp::exp(fp::div((U + V) * x - 2.0 * U * L, 2.0 * D)) * Q);
        const double H = Q * (V - U) * fp::exp(-fp::div(U * L, D)) + (U + V);
        const double F = fp::div(N, H);
        result = fp::checked(F - 2.0 * M * fp::exp(s.a * x - s.G - lambda * t) * sum);
    } else {
        result = fp::checked(1.0 - 2.0 * M * fp::exp(s.a * x - s.G) * sum);
    }
    return converged;
}

bool semiInfiniteDirichletRatio(const OneDimParameters& parameters, double x, double t, double& result) {
    if (t == 0.0) {
        result = initialRatio(x);
        return true;
    }
    const SemiInfiniteShared s = semiInfiniteShared(parameters, x, t);
    const double V = s.V, D = s.D, U = s.U, S = s.S;
    double e1 = 0.0;
    double e2 = 0.0;
    if (s.lambda == 0.0) {
        exerfc(0.0, fp::div(x - t * V, S), e1);
        exerfc(fp::div(x * V, D), fp::div(x + t * V, S), e2);
    } else {
        exerfc((V - U) * s.h, fp::div(x - U * t, S), e1);
        exerfc((U + V) * s.h, fp::div(x + U * t, S), e2);
    }
    result = fp::checked((e1 + e2) / 2.0);
    return true;
}

bool semiInfiniteCauchyRatio(const OneDimParameters& parameters, double x, double t, double& result) {
    if (t == 0.0) {
        result = initialRatio(x);
        return true;
    }
    const SemiInfiniteShared s = semiInfiniteShared(parameters, x, t);
    const double V = s.V, D = s.D, U = s.U, S = s.S, h = s.h, lambda = s.lambda;
    const double M = fp::div(x * V, D);
    if (lambda == 0.0) {
        double e1 = 0.0;
        double e2 = 0.0;
        exerfc(0.0, fp::div(x - t * V, S), e1);
        exerfc(M, fp::div(t * V + x, S), e2);
        const double P = 0.5 * e2 * (1.0 + fp::div((t * V + x) * V, D));
        const double Z = fp::exp(-fp::div((x - t * V) * (x - t * V), 4.0 * D * t)) * V *
                         fp::sqrt(fp::div(t, D * 3.14159));
        // e1 enters whole, without the one half that e2 carries.
        result = fp::checked(e1 - P + Z);
        return true;
    }
    double e1 = 0.0;
    double e2 = 0.0;
    double e3 = 0.0;
    exerfc(M - lambda * t, fp::div(t * V + x, S), e1);
    exerfc((V - U) * h, fp::div(x - U * t, S), e2);
    exerfc((U + V) * h, fp::div(U * t + x, S), e3);
    const double ratio = fp::div(U, V);
    result = fp::checked(((ratio - 1.0) * e2 + 2.0 * e1 - (ratio + 1.0) * e3) * fp::div(V * V, 4.0 * lambda * D));
    return true;
}

}  // namespace bm
