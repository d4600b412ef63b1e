#include "model/number_digits.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

namespace bm::digits {

namespace {

__extension__ using Wide = unsigned __int128;

// Takes the digits and exponent of to_chars' scientific form "d[.ddd]e±XX".
void takeScientific(const char* first, const char* last, Decimal& d) {
    d.count = 0;
    const char* p = first;
    for (; p < last && *p != 'e'; ++p)
        if (*p != '.') d.digit[d.count++] = *p;
    ++p;  // 'e'
    const bool negative = *p++ == '-';
    int e = 0;
    for (; p < last; ++p) e = e * 10 + (*p - '0');
    d.exponent = negative ? -e : e;
    while (d.count > 1 && d.digit[d.count - 1] == '0') --d.count;
}

// 10^k for |k| <= 350 as F * 2^B with a 64-bit F (top bit set), F within
// half a unit of its last place: 2^-64 relative. Built in __float128.
class PowersOfTen {
public:
    static constexpr int kMost = 350;
    PowersOfTen() {
        __float128 up = 1, down = 1;
        for (int k = 0; k <= kMost; ++k) {
            set(k, up);
            set(-k, down);
            up *= 10;
            down /= 10;
        }
    }
    std::uint64_t significand(int k) const { return significand_[kMost + k]; }
    int exponent(int k) const { return exponent_[kMost + k]; }


private:
    void set(int k, __float128 value) {
        std::uint64_t word[2];
        std::memcpy(word, &value, sizeof word);  // binary128: 112 fraction bits, then 15 exponent bits
        const int biased = static_cast<int>((word[1] >> 48) & 0x7fff);
        const Wide full =
            (static_cast<Wide>((word[1] & 0xffffffffffffull) | (1ull << 48)) << 64) | word[0];
        const Wide top = (full + (static_cast<Wide>(1) << 48)) >> 49;  // 64 bits, rounded
        const bool carried = (top >> 64) != 0;
        significand_[kMost + k] = carried ? (1ull << 63) : static_cast<std::uint64_t>(top);
        exponent_[kMost + k] = biased - 16383 - 112 + 49 + (carried ? 1 : 0);

    }
    std::uint64_t significand_[2 * kMost + 1];
    int exponent_[2 * kMost + 1];

};

const PowersOfTen& powersOfTen() {
    static const PowersOfTen powers;
    return powers;
}

constexpr std::uint64_t kWholePowers[] = {1ull,
                                          10ull,
                                          100ull,
                                          1000ull,
                                          10000ull,
                                          100000ull,
                                          1000000ull,
                                          10000000ull,
                                          100000000ull,
                                          1000000000ull,
                                          10000000000ull,
                                          100000000000ull,
                                          1000000000000ull,
                                          10000000000000ull,
                                          100000000000000ull,
                                          1000000000000000ull,
                                          10000000000000000ull,
                                          100000000000000000ull};

// The correctly rounded digits from to_chars (Ryu), ties to even.
void exactDigits(double magnitude, int significant, Decimal& d) {
    char buffer[48];
    const auto written =
        std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific, significant - 1);
    takeScientific(buffer, written.ptr, d);
}

// The eight decimal digits of v < 10^8 as text in one word, the first at
// the lowest byte: the word split into lanes of two fours, then of four
// pairs, then of eight digits, each by a multiplication and a shift.
std::uint64_t eightDigitsText(std::uint32_t v) {
    const std::uint64_t high = v / 10000, low = v % 10000;
    std::uint64_t x = high | (low << 32);
    std::uint64_t y = ((x * 10486) >> 20) & 0x0000007f0000007full;  // x / 100 in each 32-bit lane
    x = y | ((x - y * 100) << 16);
    y = ((x * 103) >> 10) & 0x000f000f000f000full;  // x / 10 in each 16-bit lane
    x = y | ((x - y * 10) << 8);
    return x | 0x3030303030303030ull;
}

// The last `count` (at most 16) decimal digits of n < 10^count, written to
// out (which holds 16), as whole words.
void writeDigits(std::uint64_t n, int count, char* out) {
    if (count <= 8) {
        const std::uint64_t word = eightDigitsText(static_cast<std::uint32_t>(n)) >> (8 * (8 - count));
        std::memcpy(out, &word, 8);
        return;
    }
    const std::uint64_t high = eightDigitsText(static_cast<std::uint32_t>(n / 100000000));
    const std::uint64_t low = eightDigitsText(static_cast<std::uint32_t>(n % 100000000));
    const int skip = 8 * (16 - count);  // bits of the leading zeros to drop
    const std::uint64_t first = skip == 0 ? high : (high >> skip) | (low << (64 - skip));
    const std::uint64_t second = skip == 0 ? low : low >> skip;
    std::memcpy(out, &first, 8);
    std::memcpy(out + 8, &second, 8);
}

// Exactly representable powers of ten for the fast reading of short decimals.
constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The value of eight decimal digits (known to be digits), in three
// multiplications of their bytes taken as one word (little-endian).
std::uint32_t eightDigits(const char* text) {
    std::uint64_t v = 0;
    std::memcpy(&v, text, 8);
    v = (v & 0x0f0f0f0f0f0f0f0full) * 2561 >> 8;
    v = (v & 0x00ff00ff00ff00ffull) * 6553601 >> 16;
    return static_cast<std::uint32_t>((v & 0x0000ffff0000ffffull) * 42949672960001ull >> 32);
}

}  // namespace

Decimal rounded(double magnitude, int significant) {
    Decimal d;
    if (magnitude == 0.0) {
        d.digit[0] = '0';
        d.count = 1;
        return d;
    }
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
    const std::uint64_t upper = kWholePowers[significant];
    std::uint64_t whole = 0;
    Wide rest = 0, half = 0;
    for (;;) {
        const int k = significant - 1 - e10;
        const Wide product = static_cast<Wide>(m) * power.significand(k);
        const int shift = -(e + power.exponent(k));  // from 16 to 97 for every double and count
        whole = static_cast<std::uint64_t>(product >> shift);
        rest = product & ((static_cast<Wide>(1) << shift) - 1);
        half = static_cast<Wide>(1) << (shift - 1);
        if (whole < upper) break;
        ++e10;
    }
    const Wide margin = half >> 8;
    if (rest + margin > half && rest < half + margin) {
        exactDigits(magnitude, significant, d);
        return d;
    }
    if (rest > half) ++whole;
    if (whole >= upper) {  // 9.99..95 and up: the next decade's 1
        whole = kWholePowers[significant - 1];
        ++e10;
    }
    writeDigits(whole, significant, d.digit);
    d.count = significant;
    d.exponent = e10;
    while (d.count > 1 && d.digit[d.count - 1] == '0') --d.count;
    return d;
}

int writeGeneral(char* out, const Decimal& d, bool negative, int significant) {
    char* p = out;
    if (d.isZero()) {
        *p++ = '0';
        return 1;
    }
    if (negative) *p++ = '-';
    const int k = d.count, e = d.exponent;
    auto copy = [&](int from, int count) {
        std::memcpy(p, d.digit + from, static_cast<std::size_t>(count));
        p += count;
    };
    auto zeros = [&](int count) {
        std::memset(p, '0', static_cast<std::size_t>(count));
        p += count;
    };
    const int integerDigits = e >= 0 ? e + 1 : 1;
    const int fractionDigits = e >= 0 ? std::max(0, k - (e + 1)) : (-e - 1) + k;
    if (integerDigits <= significant && fractionDigits <= significant) {
        if (e >= 0) {
            copy(0, std::min(k, e + 1));
            if (k < e + 1) zeros(e + 1 - k);
            if (k > e + 1) {
                *p++ = '.';
                copy(e + 1, k - (e + 1));
            }
        } else {
            *p++ = '0';
            *p++ = '.';
            zeros(-e - 1);
            copy(0, k);
        }
        return static_cast<int>(p - out);
    }
    *p++ = d.digit[0];
    if (k > 1) {
        *p++ = '.';
        copy(1, k - 1);
    }
    *p++ = 'E';
    *p++ = e < 0 ? '-' : '+';
    int a = e < 0 ? -e : e;  // at least two exponent digits
    if (a >= 100) {
        *p++ = static_cast<char>('0' + a / 100);
        a %= 100;
    }
    *p++ = static_cast<char>('0' + a / 10);
    *p++ = static_cast<char>('0' + a % 10);
    return static_cast<int>(p - out);
}

namespace {

// The text as from_chars reads it (no leading "+", "e" for a "D" exponent),
// then strtod's answer beyond the doubles (an infinity, 0 or a subnormal).
double readSlowly(std::string_view text) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    std::string copy(text);
    for (char& c : copy)
        if (c == 'd' || c == 'D') c = 'e';
    double value = 0.0;
    const auto result = std::from_chars(copy.data(), copy.data() + copy.size(), value);
    if (result.ec == std::errc()) return value;
    return std::strtod(copy.c_str(), nullptr);
}

// m * 10^scale correctly rounded, m < 2^64, or false. Clinger's fast path
// where both factors are exact doubles (one rounding). Otherwise m, its top
// bit moved to bit 63, times the 64-bit F of 10^scale = F 2^B: a 128-bit
// product within 2^-64 of the exact one relative, so its top 53 bits
// rounded are the double unless the bits below lie within twice that error
// of a halfway point (false then, as outside the normal doubles).
bool readQuickly(std::uint64_t m, int scale, double& value) {
    if (m <= (1ull << 53) && scale >= -22 && scale <= 22) {
        value = scale >= 0 ? static_cast<double>(m) * kExactPowers[scale] : static_cast<double>(m) / kExactPowers[-scale];
        return true;
    }
    const PowersOfTen& power = powersOfTen();
    if (scale < -PowersOfTen::kMost || scale > PowersOfTen::kMost) return false;
    const int shift = std::countl_zero(m);
    const Wide product = static_cast<Wide>(m << shift) * power.significand(scale);
    const int top = (product >> 127) != 0 ? 127 : 126;  // the leading bit
    const int dropped = top - 52;
    const Wide one = 1;
    const Wide rest = product & ((one << dropped) - 1), half = one << (dropped - 1), margin = one << (top - 62);
    if (rest + margin > half && rest < half + margin) return false;
    std::uint64_t mantissa = static_cast<std::uint64_t>(product >> dropped) + (rest > half ? 1 : 0);
    int exponent = power.exponent(scale) - shift + dropped + 52;  // of the leading bit
    if (mantissa == (1ull << 53)) {
        mantissa >>= 1;
        ++exponent;
    }
    if (exponent < -1022 || exponent > 1023) return false;
    value = std::bit_cast<double>((static_cast<std::uint64_t>(exponent + 1023) << 52) | (mantissa & ((1ull << 52) - 1)));
    return true;
}

}  // namespace

bool isStrict(std::string_view t) {
    std::size_t i = 0;
    const std::size_t n = t.size();
    if (i < n && (t[i] == '+' || t[i] == '-')) ++i;
    int mantissaDigits = 0;
    for (; i < n && isDigit(t[i]); ++i) ++mantissaDigits;
    if (i < n && t[i] == '.')
        for (++i; i < n && isDigit(t[i]); ++i) ++mantissaDigits;
    if (mantissaDigits == 0) return false;
    if (i < n && (t[i] == 'e' || t[i] == 'E' || t[i] == 'd' || t[i] == 'D')) {
        ++i;
        if (i < n && (t[i] == '+' || t[i] == '-')) ++i;
        int expDigits = 0;
        for (; i < n && isDigit(t[i]); ++i) ++expDigits;
        if (expDigits == 0) return false;
    }
    return i == n;
}

bool readStrict(std::string_view t, double& value) {
    // The grammar first: where the integer digits, the fraction's digits and
    // the exponent lie.
    const char* p = t.data();
    const char* const end = p + t.size();
    bool negative = false;
    if (p < end && (*p == '+' || *p == '-')) negative = *p++ == '-';
    const char* const integer = p;
    while (p < end && isDigit(*p)) ++p;
    const char* const integerEnd = p;
    const char* fraction = p;
    const char* fractionEnd = p;
    if (p < end && *p == '.') {
        fraction = ++p;
        while (p < end && isDigit(*p)) ++p;
        fractionEnd = p;
    }
    if (integerEnd == integer && fractionEnd == fraction) return false;
    int exponent = 0;
    bool inexact = false;
    if (p < end && (*p == 'e' || *p == 'E' || *p == 'd' || *p == 'D')) {
        ++p;
        bool negativeExponent = false;
        if (p < end && (*p == '+' || *p == '-')) negativeExponent = *p++ == '-';
        const char* const digits = p;
        for (; p < end && isDigit(*p); ++p) {
            if (exponent < 100000) exponent = exponent * 10 + (*p - '0');
            else inexact = true;
        }
        if (p == digits) return false;
        if (negativeExponent) exponent = -exponent;
    }
    if (p != end) return false;

    // value = m * 10^scale with the first 19 significant digits in m.
    const char* q = integer;
    while (q < integerEnd && *q == '0') ++q;
    const char* f = fraction;
    if (q == integerEnd)
        while (f < fractionEnd && *f == '0') ++f;
    int scale = exponent - static_cast<int>(f - fraction);
    std::uint64_t m = 0;
    int significant = 0;
    // Eight digits at a time while they last and m has room for them.
    while (integerEnd - q >= 8 && significant <= 11) {
        m = m * 100000000 + eightDigits(q);
        q += 8;
        significant += 8;
    }
    for (; q < integerEnd; ++q, ++significant) {
        if (significant == 19) {
            inexact = true;
            break;
        }
        m = m * 10 + static_cast<unsigned>(*q - '0');
    }
    while (q == integerEnd && fractionEnd - f >= 8 && significant <= 11) {
        m = m * 100000000 + eightDigits(f);
        f += 8;
        significant += 8;
        scale -= 8;
    }
    for (; f < fractionEnd; ++f, ++significant, --scale) {
        if (significant == 19) {
            inexact = true;
            break;
        }
        m = m * 10 + static_cast<unsigned>(*f - '0');
    }
    double magnitude = 0.0;
    if (m != 0 && (inexact || !readQuickly(m, scale, magnitude))) {
        value = readSlowly(t);
        return true;
    }
    value = negative ? -magnitude : magnitude;
    return true;
}

}  // namespace bm::digits
