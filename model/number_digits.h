#pragma once
// The primitive conversion under every number text written: a double rounded
// to a number of significant decimal digits, correctly rounded as printf
// rounds: a fast path in 128-bit integer arithmetic with a proven error
// bound, and std::to_chars for the rare values too close to call. Reading
// texts back is model/number_reading.h.

#include <cstdint>

namespace bm::digits {

// |value| rounded to `significant` digits (at most 16), half to even on an
// exact tie of the binary value, as printf's "%.*e" rounds; trailing zeros
// dropped. Zero is the single digit "0" with exponent 0.
struct Decimal {
    char digit[17];
    int count = 0;     // digits kept, at least 1
    int exponent = 0;  // power of ten of the first digit
    bool isZero() const { return digit[0] == '0'; }
};

// `magnitude` finite and not negative.
Decimal rounded(double magnitude, int significant);

// The last `count` (1 to 16) decimal digits of n < 10^count, leading zeros
// included, at out. It stores whole words: out must have 16 characters of
// room (8 when count is at most 8).
void writeDigits(std::uint64_t n, int count, char* out);

// Longest text the general form can take ("-1.23456789012346E-308", or the
// plain "-0.000000000000001" and "-123456789012345.6" kinds).
inline constexpr int kGeneralTextRoom = 40;

// Writes the general text of a finite number with these digits (15 or 7
// significant): plain decimals while the integer part and the fraction each
// keep to `significant` digits, "d.dddE+XX" beyond. Returns the length.
int writeGeneral(char* out, const Decimal& d, bool negative, int significant);

}  // namespace bm::digits
