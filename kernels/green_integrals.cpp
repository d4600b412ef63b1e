#include "kernels/green_integrals.h"

#include <algorithm>

#include "kernels/gauss_legendre.h"
#include "shell/base/checked_math.h"

namespace bm::green {

namespace {

// Half-width of the Gaussian's support in s - e/s: erfc(6.5) is 4e-20.
constexpr double kGaussReach = 6.5;
// Below this s the integrand (at most 2/sqrt(pi)) adds less than 1.2e-12.
constexpr double kSmallestS = 1e-12;


}  // namespace

double lossRate(double halfLife, double recharge, double porosity, double thickness) {
    double k = fp::div(0.69314718055994530942, halfLife);
    if (recharge != 0.0) k = fp::add(k, fp::div(recharge, fp::mul(porosity, thickness)));
    return k;
}

double lowerExponent(double x, double v, double d, double k, double u) {
    // (v - u) / (2 d) = -2 k / (u + v).
    return v > 0.0 ? -2.0 * k * x / (u + v) : (v - u) * x / (2.0 * d);
}

double upperExponent(double x, double v, double d, double k, double u) {
    return v < 0.0 ? 2.0 * k * x / (u - v) : (v + u) * x / (2.0 * d);
}

double semiInfiniteDirichlet(double x, double t, double v, double d, double k, double u) {
    const double spread = 2.0 * std::sqrt(d * t);
    const double first = expErfc(lowerExponent(x, v, d, k, u), (x - u * t) / spread);
    const double second = expErfc(upperExponent(x, v, d, k, u), (x + u * t) / spread);
    return 0.5 * (first + second);
}

TransitRange transitRange(double x, double t, double v, double d, double k, double u) {
    TransitRange r;
    r.e = fp::div(x * u, 4.0 * d);
    fp::div(1.0, d);
    r.logPrefactor = lowerExponent(x, v, d, k, u);
    const double s0 = fp::div(x, 2.0 * fp::sqrt(fp::mul(d, t)));
    const double root = std::sqrt(kGaussReach * kGaussReach + 4.0 * r.e);
    const double sLow = 2.0 * r.e / (kGaussReach + root);
    const double sHigh = 0.5 * (kGaussReach + root);
    const double lo = std::max({s0, sLow, kSmallestS});
    if (!(lo < sHigh)) return r;  // panels 0: the front has not arrived
    r.wLo = std::log(lo);
    r.wHi = std::log(sHigh);
    r.panels = std::max(1, static_cast<int>(std::ceil((r.wHi - r.wLo) / kTransitPanelLength)));
    return r;
}

WalledAquifer walledAquifer(double rangeMin, double rangeMax, double sourceCentre, double sourceWidth) {
    WalledAquifer aq;
    double lo = std::min(rangeMin, rangeMax), hi = std::max(rangeMin, rangeMax);
    if (hi - lo == 0.0) {
        lo = std::min(0.0, rangeMax);
        hi = std::max(0.0, rangeMax);
    }
    aq.low = lo;
    aq.width = hi - lo;
    const double half = 0.5 * std::fabs(sourceWidth);
    aq.a = std::max(sourceCentre - half - lo, 0.0);
    aq.b = std::min(sourceCentre + half - lo, aq.width);
    aq.sourceInside = aq.a <= aq.b;
    return aq;
}

double foldIntoAquifer(const WalledAquifer& aquifer, double y) {
    double local = y - aquifer.low;
    const double w = aquifer.width;
    if (!(w > 0.0) || (local >= 0.0 && local <= w)) return local;
    local = std::fmod(local, 2.0 * w);
    if (local < 0.0) local += 2.0 * w;
    if (local > w) local = 2.0 * w - local;
    return local;
}

StripModes::StripModes(double width, double a, double b, double y)
    : a_(kPi * a / width), b_(kPi * b / width), y_(kPi * y / width) {}

double StripModes::next() {
    ++m_;
    a_.advance();
    b_.advance();
    y_.advance();
    return 2.0 * (b_.sm - a_.sm) / (m_ * kPi) * y_.cm;
}

const double* builtinNodes() { return builtinRuleNodes(); }
const double* builtinWeights() { return builtinRuleWeights(); }

}  // namespace bm::green
