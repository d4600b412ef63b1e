#include "apps/trazel/axis_ticks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace bm::trazel {

namespace {

double niceStep(double span, int count) {
    const double raw = span / std::max(1, count);
    const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
    const double f = raw / magnitude;
    const double nice = f < 1.5 ? 1 : f < 3 ? 2 : f < 7 ? 5 : 10;
    return nice * magnitude;
}

// Multiples of the step computed by multiplication, with the float dust of
// values that should be zero swept away.
double multiple(long long k, double step) {
    const double v = static_cast<double>(k) * step;
    return std::fabs(v) < step * 1e-9 ? 0.0 : v;
}

}  // namespace

Ticks niceTicks(double low, double high, int count) {
    Ticks ticks;
    if (!std::isfinite(low) || !std::isfinite(high)) return ticks;
    if (high < low) std::swap(low, high);
    double span = high - low;
    if (span <= 0) span = low != 0 ? std::fabs(low) * 0.1 : 1.0;
    ticks.step = niceStep(span, count);
    const long long first = static_cast<long long>(std::ceil(low / ticks.step - 1e-9));
    const long long last = static_cast<long long>(std::floor(high / ticks.step + 1e-9));
    for (long long k = first; k <= last && ticks.values.size() < 1000; ++k) ticks.values.push_back(multiple(k, ticks.step));
    return ticks;
}

std::string tickText(double value, double step) {
    char buffer[64];
    const double magnitude = std::max(std::fabs(value), step);
    if (value != 0 && (magnitude >= 1e6 || step < 1e-4)) {
        // Enough mantissa digits to tell neighbouring ticks apart.
        const int digits = std::clamp(static_cast<int>(std::floor(std::log10(magnitude)) - std::floor(std::log10(step))), 0, 8);
        std::snprintf(buffer, sizeof buffer, "%.*e", digits, value);
        std::string s = buffer;
        auto e = s.find('e');
        std::string mantissa = s.substr(0, e), exponent = s.substr(e + 1);
        if (mantissa.find('.') != std::string::npos) {
            while (mantissa.back() == '0') mantissa.pop_back();
            if (mantissa.back() == '.') mantissa.pop_back();
        }
        const char sign = exponent[0];
        exponent = exponent.substr(1);
        while (exponent.size() > 1 && exponent[0] == '0') exponent.erase(0, 1);
        return mantissa + "e" + (sign == '-' ? "-" : "+") + exponent;
    }
    const int decimals = std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-9)), 0, 10);
    std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
    std::string s = buffer;
    if (s == "-0" || (s.rfind("-0.", 0) == 0 && s.find_first_not_of("-0.") == std::string::npos)) s.erase(0, 1);
    return s;
}

std::vector<double> contourLevels(double low, double high, int bands) {
    if (!std::isfinite(low) || !std::isfinite(high)) return {0, 1};
    if (high < low) std::swap(low, high);
    if (high == low) {
        const double half = low != 0 ? std::fabs(low) * 0.05 : 0.5;
        return {low - half, low + half};
    }
    const double step = niceStep(high - low, bands);
    const long long first = static_cast<long long>(std::floor(low / step + 1e-9));
    const long long last = static_cast<long long>(std::ceil(high / step - 1e-9));
    std::vector<double> levels;
    for (long long k = first; k <= last; ++k) levels.push_back(multiple(k, step));
    if (levels.size() < 2) levels.push_back(multiple(last + 1, step));
    return levels;
}

}  // namespace bm::trazel
