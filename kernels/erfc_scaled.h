#pragma once
// The complementary error function in the forms the kernels need without
// overflow or underflow of intermediate factors.

namespace bm {

// exp(b^2) * erfc(b), for b >= 0.
double erfcx(double b);

// exp(a) * erfc(b) for all finite a and b, never forming a factor that would
// overflow or underflow on its own (a = 800, b = 30 is fine); relative accuracy
// near 1e-15 wherever the result is a normal double. A result too large for a
// double is infinity: the caller decides whether that is a fault.
double expErfc(double a, double b);

}  // namespace bm
