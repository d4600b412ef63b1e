#pragma once
// Arithmetic of the program's own formulas, with faults turned into run-time
// errors: x/0 is 11, 0/0 and anything too large for a double is 6, the square
// root or logarithm of a negative (logarithm of 0 too) is 5. Underflow is no fault.
// The kernels use these where a formula of the program can divide by zero
// (a zero width, a zero dispersion); elsewhere they avoid faults themselves.

#include <cmath>
#include <cstdint>

namespace bm::fp {

// The faults, raised out of line so that the checks below stay small enough
// to inline into the kernels' inner loops.
[[noreturn]] void raiseOverflow();
[[noreturn]] void raiseDivisionFault(double numerator);

// A computed value that came out infinite is an overflow, one that came out NaN
// (an indeterminate form) an overflow as well, as 0/0 is.
inline double checked(double x) {
    if (std::isnan(x) || std::isinf(x)) raiseOverflow();
    return x;
}
inline float checked(float x) {
    if (std::isnan(x) || std::isinf(x)) raiseOverflow();
    return x;
}

inline double div(double a, double b) {
    if (b == 0.0) raiseDivisionFault(a);
    return checked(a / b);
}
inline double mul(double a, double b) { return checked(a * b); }
inline double add(double a, double b) { return checked(a + b); }
inline double sub(double a, double b) { return checked(a - b); }
double exp(double x);
double sqrt(double x);
double log(double x);
double pow(double base, double exponent);

}  // namespace bm::fp

namespace bm {

// Integer conversion of the runtime: round half to even, and a value outside
// -32768..32767 is error 6.
std::int16_t toInt16(double value);
// A 16-bit counter that has grown past its range is error 6.
std::int16_t checkedInt16(long long value);
// Rounding half to even to a 32-bit integer (the 4-byte fields), error 6 outside.
std::int32_t toInt32(double value);

}  // namespace bm
