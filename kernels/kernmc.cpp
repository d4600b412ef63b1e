#include "kernels/kernmc.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace bm {

namespace {

// The library's own generator: no state of the program reaches it.
struct Generator {
    std::mt19937_64 engine;
    bool seeded = false;
};

Generator& generator() {
    static Generator g;
    if (!g.seeded) {
        std::random_device device;
        std::seed_seq seq{device(), device(), device(), device()};
        g.engine.seed(seq);
        g.seeded = true;
    }
    return g;
}

// Location and scale that the distribution of a record is drawn with.
struct Shape {
    double location = 0;  // normal: mean; lognormal: mu of ln X; Gumbel: location; triangle: mode
    double scale = 0;     // normal: sd; lognormal: sigma of ln X; Gumbel: beta; exponential: mean
};

constexpr double kEulerGamma = 0.5772157;  // the Gumbel location shift, to the places the model uses

bool finite(double x) { return std::isfinite(x); }

// The standard normal probability of (-inf, z] and of [z, inf), each accurate in its own tail.
double lowerNormal(double z) { return 0.5 * std::erfc(-z / std::numbers::sqrt2); }
double upperNormal(double z) { return 0.5 * std::erfc(z / std::numbers::sqrt2); }

// P(za <= Z <= zb) for a standard normal Z without cancellation in either tail.
double normalBetween(double za, double zb) {
    if (za > 0) return std::max(0.0, upperNormal(za) - upperNormal(zb));
    return std::max(0.0, lowerNormal(zb) - lowerNormal(za));
}

// False when the record's distribution cannot take its parameters.
bool shapeOf(const monteRecord& r, Shape& s) {
    const double mean = r.mean, sd = r.standardDeviation, variance = r.variance;
    const double lo = r.minimum, hi = r.maximum;
    if (!finite(lo) || !finite(hi)) return false;
    switch (r.distribution) {
    case dist::Normal:
        if (!finite(mean) || !finite(sd) || sd < 0) return false;
        s = {mean, sd};
        return true;
    case dist::Lognormal: {
        if (!finite(mean) || !finite(variance) || mean <= 0 || variance < 0) return false;
        const double sigma2 = std::log1p(variance / (mean * mean));
        if (!finite(sigma2)) return false;
        s = {std::log(mean) - sigma2 / 2, std::sqrt(sigma2)};
        return true;
    }
    case dist::Uniform:
        s = {lo, hi - lo};
        return true;
    case dist::Exponential:
        if (!finite(mean) || mean <= 0) return false;
        s = {0, mean};
        return true;
    case dist::Gumbel: {
        if (!finite(mean) || !finite(sd) || sd < 0) return false;
        const double beta = sd * std::sqrt(6.0) / std::numbers::pi;
        s = {mean - kEulerGamma * beta, beta};
        return true;
    }
    case dist::Triangle:
        if (!finite(mean)) return false;
        s = {std::clamp(3 * mean - lo - hi, std::min(lo, hi), std::max(lo, hi)), 0};
        return finite(s.location);
    case dist::Loguniform:
        if (lo <= 0) return false;
        s = {0, 0};
        return true;
    default:
        return false;
    }
}

// The share of the untruncated distribution inside [lo, hi].
double windowProbability(std::int16_t code, const Shape& s, double lo, double hi) {
    if (lo > hi) return 0;
    auto pointMass = [&](double x) { return x >= lo && x <= hi ? 1.0 : 0.0; };
    switch (code) {
    case dist::Normal:
        if (s.scale == 0) return pointMass(s.location);
        return normalBetween((lo - s.location) / s.scale, (hi - s.location) / s.scale);
    case dist::Lognormal: {
        if (s.scale == 0) return pointMass(std::exp(s.location));
        if (hi <= 0) return 0;
        const double za = lo <= 0 ? -std::numeric_limits<double>::infinity() : (std::log(lo) - s.location) / s.scale;
        return normalBetween(za, (std::log(hi) - s.location) / s.scale);
    }
    case dist::Exponential: {
        if (hi < 0) return 0;
        const double a = std::max(lo, 0.0);
        // exp(-a/m) - exp(-hi/m), formed without cancellation
        return std::exp(-a / s.scale) * -std::expm1(-(hi - a) / s.scale);
    }
    case dist::Gumbel: {
        if (s.scale == 0) return pointMass(s.location);
        const double za = (lo - s.location) / s.scale, zb = (hi - s.location) / s.scale;
        if (za > 0) {  // upper tail: through the survival function
            const double sa = -std::expm1(-std::exp(-za)), sb = -std::expm1(-std::exp(-zb));
            return std::max(0.0, sa - sb);
        }
        return std::max(0.0, std::exp(-std::exp(-zb)) - std::exp(-std::exp(-za)));
    }
    default:  // uniform, triangle, loguniform draw inside the window
        return 1;
    }
}

void fillNaN(float* out, std::int32_t count) {
    std::fill(out, out + count, std::numeric_limits<float>::quiet_NaN());
}

// Draws of the untruncated distribution. Built once per call, so that a
// generator of pairs (the normal) keeps its second value for the next draw.
class Sampler {
public:
    Sampler(std::int16_t code, const Shape& s, double lo, double hi)
        : code_(code), s_(s), lo_(lo), hi_(hi),
          normal_(s.location, s.scale > 0 ? s.scale : 1.0),
          exponential_(code == dist::Exponential ? 1.0 / s.scale : 1.0),
          gumbel_(s.location, s.scale > 0 ? s.scale : 1.0),
          uniform_(lo, lo < hi ? hi : lo + 1.0) {}

    template <class Engine>
    double operator()(Engine& e) {
        switch (code_) {
        case dist::Normal:
            return s_.scale == 0 ? s_.location : normal_(e);
        case dist::Lognormal:
            return std::exp(s_.scale == 0 ? s_.location : normal_(e));
        case dist::Uniform:
            return lo_ == hi_ ? lo_ : uniform_(e);
        case dist::Exponential:
            return exponential_(e);
        case dist::Gumbel:
            return s_.scale == 0 ? s_.location : gumbel_(e);
        case dist::Triangle: {
            if (lo_ == hi_) return lo_;
            const double u = std::generate_canonical<double, 53>(e);
            const double width = hi_ - lo_, c = s_.location;
            if (u * width < c - lo_) return lo_ + std::sqrt(u * width * (c - lo_));
            return hi_ - std::sqrt((1 - u) * width * (hi_ - c));
        }
        case dist::Loguniform: {
            if (lo_ == hi_) return lo_;
            const double u = std::generate_canonical<double, 53>(e);
            const double la = std::log(lo_), lb = std::log(hi_);
            return std::clamp(std::exp(la + u * (lb - la)), lo_, hi_);  // the clamp only absorbs a last-place rounding
        }
        default:
            return std::numeric_limits<double>::quiet_NaN();
        }
    }

private:
    std::int16_t code_;
    Shape s_;
    double lo_, hi_;
    std::normal_distribution<double> normal_;
    std::exponential_distribution<double> exponential_;
    std::extreme_value_distribution<double> gumbel_;
    std::uniform_real_distribution<double> uniform_;
};

}  // namespace

double monteWindowProbability(const monteRecord& record) {
    Shape s;
    if (!shapeOf(record, s)) return std::numeric_limits<double>::quiet_NaN();
    return windowProbability(record.distribution, s, record.minimum, record.maximum);
}

std::int16_t monteCarlo(const monteRecord& record, float& firstSample) {
    const std::int32_t count = record.count;
    if (count < 0) return mcstatus::BadCount;
    float* out = &firstSample;
    if (record.distribution < dist::Normal || record.distribution > dist::Loguniform) {
        fillNaN(out, count);
        return mcstatus::UnknownDistribution;
    }
    Shape s;
    if (!shapeOf(record, s)) {
        fillNaN(out, count);
        return mcstatus::BadParameters;
    }
    const double lo = record.minimum, hi = record.maximum;
    if (!(windowProbability(record.distribution, s, lo, hi) >= kMinimumWindowProbability)) {
        fillNaN(out, count);
        return mcstatus::WindowEmpty;
    }
    auto& engine = generator().engine;
    Sampler draw(record.distribution, s, lo, hi);
    for (std::int32_t k = 0; k < count; ++k) {
        long tries = 0;
        double x;
        do {
            if (++tries > kMaximumTriesPerSample) {
                fillNaN(out, count);
                return mcstatus::WindowEmpty;
            }
            x = draw(engine);
        } while (!(x >= lo && x <= hi));
        // lo and hi are floats, so rounding a value between them to float stays between them.
        out[k] = static_cast<float>(x);
    }
    return mcstatus::Ok;
}

void seedMonteCarlo(std::uint64_t seed) {
    Generator& g = generator();
    g.engine.seed(seed);
}

void reseedMonteCarloFromDevice() {
    generator().seeded = false;
    generator();
}

}  // namespace bm
