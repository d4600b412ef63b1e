#pragma once
// The rounding under every number text written (model/number_digits.h): a
// double rounded to a number of significant digits as a whole number, inline
// so that a writer with a fixed count of digits gets it folded for that count.

#include <bit>
#include <cstdint>

#include "model/powers_of_ten.h"

namespace bm::digits {

// |value| rounded to `significant` digits (at most 16), half to even on an
// exact tie of the binary value, as printf's "%.*e" rounds, as a whole number
// of exactly `significant` digits (trailing zeros kept): magnitude is about
// whole 10^(exponent + 1 - significant). Zero is whole 0, exponent 0.
struct RoundedWhole {
    std::uint64_t whole = 0;
    int exponent = 0;
};

// The same from the correctly rounded digits of to_chars: the rare values too
// close to a tie for the fast path.
RoundedWhole exactlyRoundedWhole(double magnitude, int significant);

// `magnitude` finite and not negative.
inline RoundedWhole roundedWhole(double magnitude, int significant) {
    if (magnitude == 0.0) return {};
    // magnitude = m 2^e exactly. m 2^e 10^k, k = significant - 1 - e10 and
    // e10 the decade of the first digit, is m F 2^(e + B) with 10^k = F 2^B:
    // a 128-bit product, whole part and fraction at once, within 2^-64 of its
    // value relative, that is within 6e-5 of a unit. Its nearest whole number
    // is the rounded digits unless the fraction lies within 2^-9 of a half (an
    // exact tie among them): those, about one in 250, take the correctly
    // rounded digits of to_chars instead. A product that lands on the wrong
    // side of a power of ten by that error rounds to the power of ten either way.
    const PowersOfTen& power = powersOfTen();
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const int biased = static_cast<int>(bits >> 52);
    const std::uint64_t m = biased == 0 ? (bits & 0xfffffffffffffull) : (bits & 0xfffffffffffffull) | (1ull << 52);
    const int e = (biased == 0 ? 1 : biased) - 1075;
    // floor(log10(2) * the leading bit's power), exact in this range: the decade or one below.
    int e10 = ((e + 63 - std::countl_zero(m)) * 78913) >> 18;
    const std::uint64_t upper = kTenTo[significant];
    std::uint64_t whole = 0, fraction = 0;  // the fraction's first 64 bits
    for (;;) {
        const int k = significant - 1 - e10;
        const Wide product = static_cast<Wide>(m) * power.significand(k);
        const int shift = -(e + power.exponent(k));  // from 16 to 97 for every double and count
        const Wide aligned = shift >= 64 ? product >> (shift - 64) : product << (64 - shift);
        whole = static_cast<std::uint64_t>(aligned >> 64);
        fraction = static_cast<std::uint64_t>(aligned);
        if (whole < upper) break;
        ++e10;
    }
    // Within 2^-9 of a half, as the fraction's first 64 bits tell it (they
    // move the bounds by 2^-64, far inside the margin).
    constexpr std::uint64_t kHalf = 1ull << 63, kMargin = 1ull << 55;
    if (fraction - (kHalf - kMargin) < 2 * kMargin) return exactlyRoundedWhole(magnitude, significant);
    if (fraction > kHalf) ++whole;
    if (whole >= upper) {  // 9.99..95 and up: the next decade's 1
        whole = kTenTo[significant - 1];
        ++e10;
    }
    return {whole, e10};
}

}  // namespace bm::digits
