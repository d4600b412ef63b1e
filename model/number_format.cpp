#include "model/number_format.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "model/number_digits.h"

namespace bm {

namespace {

constexpr std::uint64_t tenTo(int n) {
    std::uint64_t p = 1;
    for (int i = 0; i < n; ++i) p *= 10;
    return p;
}

// Digits of the 15 kept: w is the value's 15 digits as a whole number, its
// first digit at 10^e, so the value is w 10^(e - 14).
constexpr int kDigits = 15;

char* nonFinite(char* out, double value) {
    const char* text = std::isnan(value) ? "NaN" : value < 0 ? "-Infinity" : "Infinity";
    const std::size_t n = std::strlen(text);
    std::memcpy(out, text, n);
    return out + n;
}

// A whole number below 100000 without leading zeros ("0" for zero).
char* writeSmallWhole(char* p, std::uint32_t n) {
    const int count = n < 10 ? 1 : n < 100 ? 2 : n < 1000 ? 3 : n < 10000 ? 4 : 5;
    digits::writeDigits(n, count, p);
    return p + count;
}

// `count` digits of n, written, with the trailing zeros dropped down to `kept`
// of them.
char* writeFraction(char* p, std::uint64_t n, int count, int kept) {
    if (n == 0) {
        std::memset(p, '0', static_cast<std::size_t>(kept));
        return p + kept;
    }
    digits::writeDigits(n, count, p);
    int length = count;
    while (n % 10 == 0) {
        n /= 10;
        --length;
    }
    return p + std::max(length, kept);
}

// A plain row "#.####", "0.0####" and the like of a value whose first digit
// is at 10^kExponent: the digits rounded half away from zero at 10^-kDecimals
// (only the first digit dropped decides, as the pattern rounds the 15 digits),
// at least one digit before the point, the point always, the fraction's
// trailing zeros dropped down to kRequired of them.
template <int kExponent, int kDecimals, int kRequired>
char* writeFixed(char* p, std::uint64_t w) {
    constexpr std::uint64_t dropped = tenTo(kDigits - 1 - kExponent - kDecimals);
    constexpr std::uint64_t scale = tenTo(kDecimals);
    const std::uint64_t r = (w + dropped / 2) / dropped;
    p = writeSmallWhole(p, static_cast<std::uint32_t>(r / scale));
    *p++ = '.';
    return writeFraction(p, r % scale, kDecimals, kRequired);
}

// "#.####e+###": five significant digits rounded half away from zero, the
// point always, 'e', the exponent's sign ('+' when not negative) and its
// digits without padding.
char* writeScientific(char* p, std::uint64_t w, int e) {
    constexpr std::uint64_t dropped = tenTo(kDigits - 5);
    std::uint64_t r = (w + dropped / 2) / dropped;
    if (r == 100000) {  // 9.99995 and up: 1. at the next power
        r = 10000;
        ++e;
    }
    *p++ = static_cast<char>('0' + r / 10000);
    *p++ = '.';
    p = writeFraction(p, r % 10000, 4, 0);
    *p++ = 'e';
    *p++ = e < 0 ? '-' : '+';
    const auto a = static_cast<std::uint32_t>(e < 0 ? -e : e);
    return writeSmallWhole(p, a);
}

// A whole number of the general text: the e + 1 digits of w in front of its zeros.
template <int kExponent>
char* writeWhole(char* p, std::uint64_t w) {
    constexpr int count = kExponent + 1;
    digits::writeDigits(w / tenTo(kDigits - count), count, p);
    return p + count;
}

template <int kExponent>
bool isWhole(std::uint64_t w) {
    return w % tenTo(kDigits - 1 - kExponent) == 0;
}

// The row a value takes by the decade of its first digit: whole numbers below
// 100000 plain, the decades from 0.001 to 10000 each in its fixed pattern,
// everything else (and whole numbers from 100000) scientific.
char* writeRow(char* p, std::uint64_t w, int e, bool negative) {
    if (w == 0) {
        *p++ = '0';
        return p;
    }
    if (negative) *p++ = '-';
    switch (e) {
    case 4: return isWhole<4>(w) ? writeWhole<4>(p, w) : writeScientific(p, w, e);
    case 3: return isWhole<3>(w) ? writeWhole<3>(p, w) : writeFixed<3, 3, 0>(p, w);
    case 2: return isWhole<2>(w) ? writeWhole<2>(p, w) : writeFixed<2, 3, 0>(p, w);
    case 1: return isWhole<1>(w) ? writeWhole<1>(p, w) : writeFixed<1, 4, 0>(p, w);
    case 0: return isWhole<0>(w) ? writeWhole<0>(p, w) : writeFixed<0, 4, 0>(p, w);
    case -1: return writeFixed<-1, 5, 0>(p, w);
    case -2: return writeFixed<-2, 5, 1>(p, w);
    case -3: return writeFixed<-3, 6, 2>(p, w);
    default: return writeScientific(p, w, e);
    }
}

// 15 digits from the largest double's (1.79769313486232E+308) up: their text
// reads back as an infinity, so the number keeps its general text.
bool beyondTheDoubles(const digits::RoundedWhole& r) {
    return r.exponent > 308 || (r.exponent == 308 && r.whole >= 179769313486232ull);
}

}  // namespace

char* writeNumber(char* out, double value) {
    if (!std::isfinite(value)) return nonFinite(out, value);
    const double magnitude = std::fabs(value);
    const digits::RoundedWhole r = digits::roundedWhole(magnitude, kDigits);
    if (beyondTheDoubles(r)) return out + digits::writeGeneral(out, digits::rounded(magnitude, kDigits), value < 0, kDigits);
    return writeRow(out, r.whole, r.exponent, value < 0);
}

char* writeNumber(char* out, float value) {
    // The 7 digits of the general text, read back as a double, are that
    // double's 15 digits with eight zeros after them.
    if (!std::isfinite(value)) return nonFinite(out, value);
    const digits::RoundedWhole r = digits::roundedWhole(std::fabs(static_cast<double>(value)), 7);
    return writeRow(out, r.whole * tenTo(kDigits - 7), r.exponent, value < 0);
}

}  // namespace bm
