#include "kernels/kernvar.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <vector>

#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

// A float quotient with the program's faults: x/0 is 11, 0/0 is 6.
float fdiv(float a, float b) {
    if (b == 0.0f) raiseError(a == 0.0f || std::isnan(a) ? err::Overflow : err::DivisionByZero);
    return fp::checked(a / b);
}

// Reciprocals for the series of the dispersion integral: 1/n and 1/(2j + 1).
constexpr int kSeriesTerms = 30;
constexpr auto kReciprocal = [] {
    std::array<float, kSeriesTerms> r{};
    for (int n = 1; n < kSeriesTerms; ++n) r[n] = 1.0f / static_cast<float>(n);
    return r;
}();
constexpr auto kOddReciprocal = [] {
    std::array<float, kSeriesTerms> r{};
    for (int j = 0; j < kSeriesTerms; ++j) r[j] = 1.0f / static_cast<float>(2 * j + 1);
    return r;
}();

// The dispersion of one record, with the constant parts worked out once.
class Dispersion {
public:
    explicit Dispersion(const kernvarRecord& r)
        : function_(r.dispersionFunction),
          dm_(r.molecularDiffusion),
          doV_(r.maximumDispersivity * std::hypot(r.velocityX, r.velocityY)),
          k_(r.meanTravelTime),
          r_(r.retardation) {
        if (function_ < varfunction::Constant || function_ > varfunction::Exponential)
            raiseError(err::InvalidProcedureCall);
        if (function_ == varfunction::Linear && k_ == 0.0f) raiseError(err::DivisionByZero);
        if (r_ == 0.0f) raiseError(err::DivisionByZero);
        // With k = 0 the asymptotic and exponential growth is complete at once.
        if (k_ == 0.0f) function_ = varfunction::Constant;
    }

    // alpha(t) = (Dm t + Do |V| F(t)) / R, F the integral of f from 0 to t.
    float alpha(float t) const {
        if (std::isnan(t)) raiseError(err::Overflow);
        if (!(t > 0.0f)) return 0.0f;
        const float growth = doV_ == 0.0f ? 0.0f : doV_ * integralOfF(t);
        return fp::checked((dm_ * t + growth) / r_);
    }

private:
    float integralOfF(float t) const {
        switch (function_) {
        case varfunction::Linear: return fp::checked(t * (t / (2.0f * k_)));
        case varfunction::Asymptotic: return asymptotic(t);
        case varfunction::Exponential: return exponential(t);
        default: return t;
        }
    }

    // t - k ln(1 + t/k). For t/k <= 1 with w = r/(2 + r):
    // r - ln(1 + r) = 2w^2/(1 - w) - 2(w^3/3 + w^5/5 + ...), free of cancellation.
    float asymptotic(float t) const {
        const float r = t / k_;
        if (r > 0.0f && r <= 1.0f) {
            const float w = r / (2.0f + r);
            const float w2 = w * w;
            float sum = 2.0f * w2 / (1.0f - w);
            float power = 2.0f * w;
            for (int j = 1; j < kSeriesTerms; ++j) {
                power *= w2;
                const float term = power * kOddReciprocal[j];
                sum -= term;
                if (term < 1e-9f * sum) break;
            }
            return k_ * sum;
        }
        if (!(1.0f + r > 0.0f)) raiseError(err::InvalidProcedureCall);
        return fp::checked(t - k_ * std::log1p(r));
    }

    // t - k (1 - exp(-t/k)). For |t/k| <= 1: k * sum over n >= 2 of (-r)^n / n!.
    float exponential(float t) const {
        const float r = t / k_;
        if (std::fabs(r) <= 1.0f) {
            float term = 0.5f * r * r;
            float sum = term;
            for (int n = 3; n < kSeriesTerms; ++n) {
                term *= -r * kReciprocal[n];
                sum += term;
                if (std::fabs(term) < 1e-9f * std::fabs(sum)) break;
            }
            return k_ * sum;
        }
        return fp::checked(t + k_ * std::expm1(-r));
    }

    std::int16_t function_;
    float dm_, doV_, k_, r_;
};

// scale / spread * exp(-q) without an intermediate overflow; 0 where exp(-q)
// is below the smallest float.
float gaussian(float scale, float spread, float q) {
    if (scale == 0.0f || !(q < 110.0f)) return 0.0f;
    const float front = scale / spread;
    if (std::isfinite(front)) return fp::checked(front * std::exp(-q));
    const float magnitude = std::exp(std::log(std::fabs(scale)) - std::log(spread) - q);
    return fp::checked(scale < 0.0f ? -magnitude : magnitude);
}

// The point source's Gaussian: M/(4 pi sqrt(a) alpha) exp(-Q) for a scale M/(4 pi sqrt(a)).
struct PointPlume {
    float scale, x, y, uR, vR, a, mu;
    float at(float t, float alpha) const {
        const float dx = x - uR * t;
        const float dy = y - vR * t;
        const float q = dx * dx / (4.0f * alpha) + dy * dy / (4.0f * a * alpha) + mu * t;
        return gaussian(scale, alpha, q);
    }
};

// The line source's Gaussian: M/sqrt(4 pi alpha) exp(-Q) for a scale M/sqrt(4 pi).
struct LinePlume {
    float scale, x, uR, mu;
    float at(float t, float alpha) const {
        const float dx = x - uR * t;
        const float q = dx * dx / (4.0f * alpha) + mu * t;
        return gaussian(scale, std::sqrt(alpha), q);
    }
};

// No spreading at any time (Dm = 0 and Do |V| = 0).
bool noSpreading(const kernvarRecord& r) {
    return r.molecularDiffusion == 0.0f && r.maximumDispersivity * std::hypot(r.velocityX, r.velocityY) == 0.0f;
}

// The value of a plume at time t > 0 with a given alpha, with the rules on alpha.
template <class Plume>
float plumeValue(const Plume& plume, const kernvarRecord& r, float t, float alpha) {
    if (std::isnan(t) || std::isnan(alpha)) raiseError(err::Overflow);
    if (!(t > 0.0f)) return 0.0f;
    if (alpha < 0.0f) raiseError(err::InvalidProcedureCall);
    if (alpha == 0.0f) {
        if (noSpreading(r)) raiseError(err::DivisionByZero);
        return 0.0f;  // spread below the float range: nothing away from the centre
    }
    return plume.at(t, alpha);
}

float pointScale(const kernvarRecord& r, float factor) {
    const float a = r.dispersionRatio;
    if (a == 0.0f) raiseError(err::DivisionByZero);
    if (a < 0.0f) raiseError(err::InvalidProcedureCall);
    return fp::checked(factor / (a * std::sqrt(a)));
}

PointPlume pointPlume(const kernvarRecord& r, float x, float y, float scale) {
    return PointPlume{scale, x, y, fdiv(r.velocityX, r.retardation), fdiv(r.velocityY, r.retardation),
                      r.dispersionRatio, r.decay};
}

LinePlume linePlume(const kernvarRecord& r, float x, float scale) {
    return LinePlume{scale, x, fdiv(r.velocityX, r.retardation), r.decay};
}

// ---- the time integral of the continuous sources ----

// Gauss-Kronrod 7/15 nodes and weights.
constexpr double kXgk[8] = {0.991455371120812639206854697526329, 0.949107912342758524526189684047851,
                            0.864864423359769072789712788640926, 0.741531185599394439863864773280788,
                            0.586087235467691130294144845693013, 0.405845151377397166906606412076961,
                            0.207784955007898467600689403773245, 0.0};
constexpr double kWgk[8] = {0.022935322010529224963732008058970, 0.063092092629978553290700663189204,
                            0.104790010322250183839876322541518, 0.140653259715525918745189590510238,
                            0.169004726639267902826583426598550, 0.190350578064785409913256402421014,
                            0.204432940075298892414161999234649, 0.209482141084727828012999174891714};
constexpr double kWg[4] = {0.129484966168869693270611432679082, 0.279705391489276667901467771423780,
                           0.381830050505118944950369775488975, 0.417959183673469387755102040816327};

struct Piece {
    double a, b;
    double result, error, rawError, absolute;
    int depth;
};

template <class F>
Piece kronrod(const F& f, double a, double b, int depth) {
    const double c = 0.5 * (a + b), h = 0.5 * (b - a);
    double fv1[7], fv2[7];
    const double fc = f(static_cast<float>(c));
    double resk = kWgk[7] * fc, resg = kWg[3] * fc, resabs = kWgk[7] * std::fabs(fc);
    for (int j = 0; j < 7; ++j) {
        const double dx = h * kXgk[j];
        const double f1 = f(static_cast<float>(c - dx)), f2 = f(static_cast<float>(c + dx));
        fv1[j] = f1;
        fv2[j] = f2;
        resk += kWgk[j] * (f1 + f2);
        resabs += kWgk[j] * (std::fabs(f1) + std::fabs(f2));
        if (j % 2 == 1) resg += kWg[j / 2] * (f1 + f2);
    }
    const double mean = 0.5 * resk;
    double resasc = kWgk[7] * std::fabs(fc - mean);
    for (int j = 0; j < 7; ++j) resasc += kWgk[j] * (std::fabs(fv1[j] - mean) + std::fabs(fv2[j] - mean));
    Piece p{a, b, resk * h, std::fabs((resk - resg) * h), 0.0, resabs * std::fabs(h), depth};
    p.rawError = p.error;
    resasc *= std::fabs(h);
    if (resasc != 0.0 && p.error != 0.0) p.error = resasc * std::min(1.0, std::pow(200.0 * p.error / resasc, 1.5));
    return p;
}

constexpr double kRelativeTolerance = 1e-8;  // per piece, of the whole integral's size
constexpr int kMaximumDepth = 60;
constexpr int kMaximumPieces = 20000;

// Integral over the elapsed time 0..t of g, in the program's steps, with extra
// breakpoints at `marks` (inside the range), each piece refined adaptively.
template <class F>
double elapsedTimeIntegral(const F& g, float t, float timeStep, int steps, std::vector<double> marks) {
    const double end = t;
    if (steps < 1 || !(timeStep > 0.0f)) steps = 1;
    for (int j = 1; j < steps; ++j) {
        const double b = static_cast<double>(timeStep) * j;
        if (b < end) marks.push_back(b);
    }
    marks.push_back(0.0);
    marks.push_back(end);
    std::sort(marks.begin(), marks.end());
    marks.erase(std::unique(marks.begin(), marks.end()), marks.end());

    std::vector<Piece> pending;
    double size = 0.0;
    for (std::size_t i = 0; i + 1 < marks.size(); ++i) {
        if (!(marks[i] >= 0.0) || !(marks[i + 1] <= end) || marks[i + 1] <= marks[i]) continue;
        pending.push_back(kronrod(g, marks[i], marks[i + 1], 0));
        size += pending.back().absolute;
    }
    if (size == 0.0) return 0.0;
    const double tolerance = std::max(kRelativeTolerance * size, DBL_MIN);

    double sum = 0.0;
    int pieces = static_cast<int>(pending.size());
    while (!pending.empty()) {
        const Piece p = pending.back();
        pending.pop_back();
        const bool settled = p.error <= tolerance || p.rawError <= 50.0 * FLT_EPSILON * p.absolute ||
                             p.depth >= kMaximumDepth || pieces >= kMaximumPieces ||
                             (p.b - p.a) <= 64.0 * FLT_EPSILON * std::fabs(p.b);
        if (settled) {
            sum += p.result;
            continue;
        }
        const double mid = 0.5 * (p.a + p.b);
        pending.push_back(kronrod(g, p.a, mid, p.depth + 1));
        pending.push_back(kronrod(g, mid, p.b, p.depth + 1));
        pieces += 2;
    }
    return sum;
}

// Breakpoints around the time of closest approach of the advected centre to the
// point: the integrand is a Gaussian in time there, possibly much narrower than a step.
// `curvature` is the coefficient of (t - t*)^2 / (4 alpha) in the exponent.
std::vector<double> arrivalMarks(const Dispersion& dispersion, double arrival, double curvature, float t) {
    std::vector<double> marks;
    if (!(curvature > 0.0) || !std::isfinite(arrival)) return marks;
    const double centre = std::clamp(arrival, 0.0, static_cast<double>(t));
    const float alphaThere = dispersion.alpha(static_cast<float>(centre > 0.0 ? centre : 0.01 * t));
    const double sigma = std::sqrt(2.0 * alphaThere / curvature);
    if (!(sigma > 0.0) || !std::isfinite(sigma)) return marks;
    for (double m : {-8.0, -4.0, -2.0, -1.0, -0.5, 0.0, 0.5, 1.0, 2.0, 4.0, 8.0}) {
        const double mark = centre + m * sigma;
        if (mark > 0.0 && mark < t) marks.push_back(mark);
    }
    return marks;
}

}  // namespace

float alpha_t(const kernvarRecord& record, float t) { return Dispersion(record).alpha(t); }

void initialize_t_x_y(const kernvarRecord& record, float* firstTime, float* firstX, float* firstY) {
    const auto fill = [](float* first, std::int16_t count, float minimum, float interval) {
        if (first == nullptr) return;
        for (int i = 1; i <= count; ++i) first[i - 1] = minimum + static_cast<float>(i - 1) * interval;
    };
    fill(firstTime, record.timeCount, record.timeMinimum, record.timeInterval);
    fill(firstX, record.xCount, record.xMinimum, record.xInterval);
    fill(firstY, record.yCount, record.yMinimum, record.yInterval);
}

float point_instan_injection(const kernvarRecord& record, float t, float x, float y, float alpha, float factor) {
    if (!(t > 0.0f) && !std::isnan(t)) return 0.0f;
    return plumeValue(pointPlume(record, x, y, pointScale(record, factor)), record, t, alpha);
}

float point_initial_concentration(const kernvarRecord& record, float t, float x, float y, float alpha, float factor) {
    // The factor a M / (4 pi) carries no 1/R, nor does the solution.
    return point_instan_injection(record, t, x, y, alpha, factor);
}

float line_instan_injection(const kernvarRecord& record, float t, float x, float alpha, float factor) {
    if (!(t > 0.0f) && !std::isnan(t)) return 0.0f;
    return plumeValue(linePlume(record, x, factor), record, t, alpha);
}

float line_initial_concentration(const kernvarRecord& record, float t, float x, float alpha, float factor) {
    // The factor holds 1/R, which the dissolved initial mass does not have.
    if (!(t > 0.0f) && !std::isnan(t)) return 0.0f;
    return plumeValue(linePlume(record, x, fp::checked(factor * record.retardation)), record, t, alpha);
}

float point_contin_injection(const kernvarRecord& record, float t, float x, float y, float /*alpha*/, float factor,
                             float timeStep, std::int16_t steps) {
    const Dispersion dispersion(record);
    if (std::isnan(t)) raiseError(err::Overflow);
    if (!(t > 0.0f)) return 0.0f;
    const PointPlume plume = pointPlume(record, x, y, pointScale(record, factor));
    if (noSpreading(record)) raiseError(err::DivisionByZero);
    const auto g = [&](float s) -> double {
        const float alpha = dispersion.alpha(s);
        return alpha > 0.0f ? plume.at(s, alpha) : 0.0;
    };
    const double u = plume.uR, w = plume.vR, a = plume.a;
    const double curvature = u * u + w * w / a;
    const double arrival = curvature > 0.0 ? (u * x + w * y / a) / curvature : 0.0;
    return fp::checked(static_cast<float>(
        elapsedTimeIntegral(g, t, timeStep, steps, arrivalMarks(dispersion, arrival, curvature, t))));
}

float line_contin_injection(const kernvarRecord& record, float t, float x, float /*alpha*/, float factor,
                            float timeStep, std::int16_t steps) {
    const Dispersion dispersion(record);
    if (std::isnan(t)) raiseError(err::Overflow);
    if (!(t > 0.0f)) return 0.0f;
    const LinePlume plume = linePlume(record, x, factor);
    if (noSpreading(record)) raiseError(err::DivisionByZero);
    const auto g = [&](float s) -> double {
        const float alpha = dispersion.alpha(s);
        return alpha > 0.0f ? plume.at(s, alpha) : 0.0;
    };
    const double u = plume.uR;
    const double curvature = u * u;
    const double arrival = curvature > 0.0 ? u * x / curvature : 0.0;
    return fp::checked(static_cast<float>(
        elapsedTimeIntegral(g, t, timeStep, steps, arrivalMarks(dispersion, arrival, curvature, t))));
}

}  // namespace bm
