#include "model/number_format.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "model/number_digits.h"
#include "model/rounded_whole.h"

namespace bm {

namespace {

// Digits of the 15 kept: w is the value's 15 digits as a whole number, its
// first digit at 10^e, so the value is w 10^(e - 14).
constexpr int kDigits = 15;

char* nonFinite(char* out, double value) {
    const char* text = std::isnan(value) ? "NaN" : value < 0 ? "-Infinity" : "Infinity";
    const std::size_t n = std::strlen(text);
    std::memcpy(out, text, n);
    return out + n;
}

// "00" to "99".
struct DigitPairs {
    char text[200];
    constexpr DigitPairs() : text() {
        for (int i = 0; i < 100; ++i) {
            text[2 * i] = static_cast<char>('0' + i / 10);
            text[2 * i + 1] = static_cast<char>('0' + i % 10);
        }
    }
};
constexpr DigitPairs kPairs;

void writePair(char* p, std::uint32_t n) { std::memcpy(p, kPairs.text + 2 * n, 2); }

// A whole number below 100000 without leading zeros ("0" for zero).
char* writeSmallWhole(char* p, std::uint32_t n) {
    if (n < 10) {
        *p = static_cast<char>('0' + n);
        return p + 1;
    }
    if (n < 100) {
        writePair(p, n);
        return p + 2;
    }
    if (n < 1000) {
        *p = static_cast<char>('0' + n / 100);
        writePair(p + 1, n % 100);
        return p + 3;
    }
    if (n < 10000) {
        writePair(p, n / 100);
        writePair(p + 2, n % 100);
        return p + 4;
    }
    *p = static_cast<char>('0' + n / 10000);
    writePair(p + 1, n / 100 % 100);
    writePair(p + 3, n % 100);
    return p + 5;
}

// The kCount digits (an even number) of n, written, with the trailing zeros
// dropped down to `kept` of them.
template <int kCount>
char* writeFraction(char* p, std::uint32_t n, int kept) {
    static_assert(kCount % 2 == 0);
    if (n == 0) {
        std::memset(p, '0', static_cast<std::size_t>(kept));
        return p + kept;
    }
    int length = kCount;
    for (int place = kCount - 2; place >= 0; place -= 2) {
        const std::uint32_t pair = n % 100;
        n /= 100;
        writePair(p + place, pair);
        if (length == place + 2 && pair == 0) length = place;  // still in the trailing zeros
    }
    if (p[length - 1] == '0') --length;
    return p + std::max(length, kept);
}

// A plain row "#.####", "0.0####" and the like of a value whose first digit
// is at 10^kExponent: the digits rounded half away from zero at 10^-kDecimals
// (only the first digit dropped decides, as the pattern rounds the 15 digits),
// at least one digit before the point, the point always, the fraction's
// trailing zeros dropped down to kRequired of them.
template <int kExponent, int kDecimals, int kRequired>
char* writeFixed(char* p, std::uint64_t w) {
    constexpr std::uint64_t dropped = digits::kTenTo[kDigits - 1 - kExponent - kDecimals];
    constexpr std::uint64_t scale = digits::kTenTo[kDecimals];
    const std::uint64_t r = (w + dropped / 2) / dropped;
    p = writeSmallWhole(p, static_cast<std::uint32_t>(r / scale));
    *p++ = '.';
    // An odd count of places is written as one more, a zero, which is dropped.
    constexpr int odd = kDecimals % 2;
    const auto fraction = static_cast<std::uint32_t>(r % scale) * (odd ? 10u : 1u);
    return writeFraction<kDecimals + odd>(p, fraction, kRequired);
}

// "#.####e+###": five significant digits rounded half away from zero, the
// point always, 'e', the exponent's sign ('+' when not negative) and its
// digits without padding.
char* writeScientific(char* p, std::uint64_t w, int e) {
    constexpr std::uint64_t dropped = digits::kTenTo[kDigits - 5];
    std::uint64_t r = (w + dropped / 2) / dropped;
    if (r == 100000) {  // 9.99995 and up: 1. at the next power
        r = 10000;
        ++e;
    }
    *p++ = static_cast<char>('0' + r / 10000);
    *p++ = '.';
    p = writeFraction<4>(p, static_cast<std::uint32_t>(r % 10000), 0);
    *p++ = 'e';
    *p++ = e < 0 ? '-' : '+';
    const auto a = static_cast<std::uint32_t>(e < 0 ? -e : e);
    return writeSmallWhole(p, a);
}

// A whole number of the general text: the e + 1 digits of w in front of its zeros.
template <int kExponent>
char* writeWhole(char* p, std::uint64_t w) {
    constexpr int count = kExponent + 1;
    digits::writeDigits(w / digits::kTenTo[kDigits - count], count, p);
    return p + count;
}

template <int kExponent>
bool isWhole(std::uint64_t w) {
    return w % digits::kTenTo[kDigits - 1 - kExponent] == 0;
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
    return writeRow(out, r.whole * digits::kTenTo[kDigits - 7], r.exponent, value < 0);
}

}  // namespace bm
