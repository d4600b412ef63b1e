#include "shell/base/checked_math.h"

#include "shell/base/runtime_error.h"

namespace bm::fp {

void raiseOverflow() { raiseError(err::Overflow); }

void raiseDivisionFault(double numerator) {
    raiseError(numerator == 0.0 || std::isnan(numerator) ? err::Overflow : err::DivisionByZero);
}

double exp(double x) {
    if (std::isnan(x)) raiseError(err::Overflow);
    return checked(std::exp(x));
}

double sqrt(double x) {
    if (x < 0.0) raiseError(err::InvalidProcedureCall);
    return checked(std::sqrt(x));
}

double log(double x) {
    if (!(x > 0.0)) raiseError(err::InvalidProcedureCall);
    return checked(std::log(x));
}

double pow(double base, double exponent) {
    if (base < 0.0 && exponent != std::floor(exponent)) raiseError(err::InvalidProcedureCall);
    if (base == 0.0 && exponent < 0.0) raiseError(err::DivisionByZero);
    return checked(std::pow(base, exponent));
}

}  // namespace bm::fp

namespace bm {

std::int16_t toInt16(double value) {
    if (std::isnan(value)) raiseError(err::Overflow);
    const double r = std::nearbyint(value);  // default rounding mode: half to even
    if (r < -32768.0 || r > 32767.0) raiseError(err::Overflow);
    return static_cast<std::int16_t>(r);
}

std::int16_t checkedInt16(long long value) {
    if (value < -32768 || value > 32767) raiseError(err::Overflow);
    return static_cast<std::int16_t>(value);
}

std::int32_t toInt32(double value) {
    if (std::isnan(value)) raiseError(err::Overflow);
    const double r = std::nearbyint(value);
    if (r < -2147483648.0 || r > 2147483647.0) raiseError(err::Overflow);
    return static_cast<std::int32_t>(r);
}

}  // namespace bm
