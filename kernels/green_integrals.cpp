#include "kernels/green_integrals.h"

#include <algorithm>
#include <array>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "kernels/interval_masses.h"
#include "kernels/vector_math.h"
#include "shell/base/checked_math.h"

namespace bm::green {

namespace {

// Half-width of the Gaussian's support in s - e/s: erfc(6.5) is 4e-20.
constexpr double kGaussReach = 6.5;
// Below this s the integrand (at most 2/sqrt(pi)) adds less than 1.2e-12.
constexpr double kSmallestS = 1e-12;
// Mirror images of a walled strip give way to its cosine modes from this
// spread (sqrt(D tau) / W) on: 40 modes then reach 1e-16, and images only need
// the strip and its two nearest mirrors below it.
constexpr double kModeSpread = 0.05;


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

WalledStripFactor::WalledStripFactor(const WalledAquifer& aquifer, double y)
    : width_(aquifer.width), y_(y), a_(aquifer.a), b_(aquifer.b) {
    coefficient_[0] = fp::div(b_ - a_, width_);
    bound_ = std::min(4.0 / kPi, 2.0 * coefficient_[0]);
}

void WalledStripFactor::makeModes() const {
    if (modesMade_) return;
    StripModes modes(width_, a_, b_, y_);
    for (int m = 1; m <= kModes; ++m) coefficient_[m] = modes.next();
    modesMade_ = true;
}

double WalledStripFactor::modeSum(double r) const {
    // Sum of c_m cos(m pi y / W) r^(m^2), the powers built by
    // r^((m+1)^2) = r^(m^2) r^(2m+1).
    const double r2 = r * r;
    double sum = coefficient_[0];
    double power = 1.0, step = r;  // r^(m^2), r^(2m+1) before the update
    for (int m = 1; m <= kModes; ++m) {
        power *= step;
        step *= r2;
        sum += coefficient_[m] * power;
        // Remaining modes: |c| r^((m+1)^2) (1 + r^(2m+3) + ...).
        const double next = power * step;
        if (next * bound_ <= 1e-17 * (1.0 - step * r2)) break;
    }
    return sum;
}

void WalledStripFactor::many(const double* spreadRatio, int n, double* out) const {
    constexpr int kChunk = 256;
    constexpr int kImages = 3;
    const double images[kImages][2] = {{a_, b_}, {-b_, -a_}, {2.0 * width_ - b_, 2.0 * width_ - a_}};
    for (int from = 0; from < n; from += kChunk) {
        const int to = std::min(n, from + kChunk);
        // Short spreads: the strip, its mirror in the wall at 0 and its mirror
        // in the wall at W (the next ones lie a whole width away, beyond
        // erfc(10)), each only within erfc(6) = 2e-17 of the point. Long
        // spreads: the modes. The images' interval masses of every node in
        // one vector pass, the modes' exponentials in another.
        double p[kImages * kChunk], q[kImages * kChunk], r[kChunk];
        int owner[kImages * kChunk], modal[kChunk];
        int pairs = 0, modes = 0;
        for (int i = from; i < to; ++i) {
            const double ratio = spreadRatio[i];
            out[i] = 0.0;
            if (ratio >= kModeSpread) {
                modal[modes] = i;
                r[modes++] = -kPi * kPi * ratio * ratio;
                continue;
            }
            const double scale = 1.0 / (2.0 * ratio * width_);  // 1 / (2 sqrt(D tau))
            const double reach = 6.0 / scale;
            for (const auto& image : images) {
                if (y_ - image[1] > reach || image[0] - y_ > reach) continue;
                p[pairs] = (y_ - image[0]) * scale;
                q[pairs] = (y_ - image[1]) * scale;
                owner[pairs++] = i;
            }
        }
        intervalMasses(p, q, p, pairs, kPlanarReach);
        for (int j = 0; j < pairs; ++j) out[owner[j]] += p[j];
        if (modes == 0) continue;
        makeModes();
        vmath::exp(r, r, modes);
        for (int j = 0; j < modes; ++j) out[modal[j]] = modeSum(r[j]);
    }
}

const double* builtinNodes() { return builtinRuleNodes(); }
const double* builtinWeights() { return builtinRuleWeights(); }

}  // namespace bm::green
