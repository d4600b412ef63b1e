#pragma once
// An independent evaluation of the unsaturated closed form in long double,
// with its own exp(a) erfc(b): the library's erfcl where the product is
// representable term by term, and the continued fraction of erfc, carried in
// the exponent, where erfc alone would leave the range. The branches are
// those of the program (lambda exactly 0 in double arithmetic, the caps at 1,
// superposition of later terms for the constant inlet, the source decay
// factor otherwise), written again from the formulas.

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "model/data_set.h"
#include "montecarlo/pass/calculation_pass.h"

namespace bm::testkit {

// exp(a) * erfc(b) in long double.
inline long double exerfcReference(long double a, long double b) {
    if (b < 6.0L) return std::exp(a) * std::erfc(b);
    // erfc(b) = exp(-b^2) / sqrt(pi) / K, K = b + (1/2) / (b + 1 / (b + (3/2) / (b + ...))),
    // evaluated from the tail; 300 levels are far more than b >= 6 needs.
    long double tail = 0.0L;
    for (int n = 300; n >= 1; --n) tail = (n / 2.0L) / (b + tail);
    const long double K = b + tail;
    const long double sqrtPi = 1.772453850905516027298167483341145182L;
    return std::exp(a - b * b) / (sqrtPi * K);
}

struct UnsatInputs {
    double q = 0.05;        // percolation rate
    double Dv = 0.4;        // dispersion as typed
    double halfLife = 20;   // half-life
    double rho = 1.6;       // bulk density
    double Kd = 0.2;        // distribution coefficient
    double theta = 0.4;     // porosity
    double Sw = 0.6;        // saturation
    double gamma = 0.0;     // source decay rate
    bool constantInlet = true;
};

struct UnsatTerm {
    double time;
    double concentration;
};

// The retarded coefficients in long double; lambda is zero exactly when the
// program's double quotient is (an underflow or an infinite half-life).
struct ReferenceCoefficients {
    long double lambda, V, D, U;
};

inline ReferenceCoefficients referenceCoefficients(const UnsatInputs& in) {
    const long double ln2 = 0.693147180559945309417232121458176568L;
    const long double R = 1.0L + (static_cast<long double>(in.Kd) * in.rho) / (static_cast<long double>(in.Sw) * in.theta);
    const long double V = static_cast<long double>(in.q) / (static_cast<long double>(in.Sw) * in.theta) / R;
    const long double D = static_cast<long double>(in.Dv) / R;
    const double lambdaInDouble = std::log(2.0) / in.halfLife / static_cast<double>(R);
    const long double lambda = lambdaInDouble == 0.0 ? 0.0L : ln2 / in.halfLife / R;
    const long double rate = in.constantInlet ? lambda : lambda - in.gamma;
    return {lambda, V, D, std::sqrt(V * V + 4.0L * D * rate)};
}

// C/Co of a unit step at the inlet, T > 0.
inline long double referenceStep(const ReferenceCoefficients& k, long double X, long double T) {
    const long double s = 2.0L * std::sqrt(k.D * T);
    if (k.lambda == 0.0L)
        return (exerfcReference(0.0L, (X - k.V * T) / s) + exerfcReference(X * k.V / k.D, (X + k.V * T) / s)) / 2.0L;
    return (exerfcReference((k.V - k.U) * X / (2.0L * k.D), (X - k.U * T) / s) +
            exerfcReference((k.V + k.U) * X / (2.0L * k.D), (X + k.U * T) / s)) /
           2.0L;
}

// C/Co at depth x and time t of a grid whose range starts at xMin, tMin.
inline long double referenceRatio(const UnsatInputs& in, const std::vector<UnsatTerm>& terms, double xMin,
                                  double tMin, double x, double t) {
    const ReferenceCoefficients k = referenceCoefficients(in);
    const long double X = static_cast<long double>(x) - xMin;
    const long double T = static_cast<long double>(t) - tMin;
    long double c = T == 0.0L ? (X == 0.0L ? 1.0L : 0.0L) : referenceStep(k, X, T);
    if (in.constantInlet) {
        c = std::fmin(c, 1.0L);
        for (std::size_t j = 1; j < terms.size(); ++j) {
            const long double age = static_cast<long double>(t) - terms[j].time;
            if (age <= 0.0L) continue;
            const long double later = std::fmin(referenceStep(k, X, age), 1.0L);
            c += (terms[j].concentration - terms[j - 1].concentration) / terms[0].concentration * later;
        }
    } else {
        c = std::fmin(c * std::exp(-static_cast<long double>(in.gamma) * T), 1.0L);
    }
    return c;
}

inline std::string numberText(double v) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", v);
    return buffer;
}

// An unsaturated model as the screen leaves it in the DataSet.
inline DataSet unsatModel(const UnsatInputs& in, const std::string& xRange, const std::string& timeRange,
                          const std::vector<UnsatTerm>& terms = {{0, 1}}) {
    DataSet d;
    d.modelType = "Unsaturated One Dimensional";
    d.aquiferType = "Semi-Infinite";
    d.contaminantType = in.constantInlet ? "Dirichlet" : "Dirichlet/Exp. Decay";
    d.calculationMode = "Regular";
    d.velocity = numberText(in.q);
    d.dispersionX = numberText(in.Dv);
    d.halfLife = numberText(in.halfLife);
    d.bulkDensity = numberText(in.rho);
    d.distributionCoefficient = numberText(in.Kd);
    d.porosity = numberText(in.theta);
    d.saturation = numberText(in.Sw);
    d.sourceDecayRate = numberText(in.gamma);
    d.xRange = xRange;
    d.timeRange = timeRange;
    d.mcAtX = "1";
    d.mcAtT = "1";
    d.superpositionIndex = static_cast<std::int16_t>(terms.size());
    d.terms.redim(static_cast<int>(terms.size()));
    for (std::size_t j = 0; j < terms.size(); ++j) {
        d.terms(static_cast<int>(j) + 1).time = numberText(terms[j].time);
        d.terms(static_cast<int>(j) + 1).concentration = numberText(terms[j].concentration);
    }
    parseCoordinates(d);
    return d;
}

}  // namespace bm::testkit
