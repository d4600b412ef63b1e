#include "model/number_digits.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "model/powers_of_ten.h"

namespace bm::digits {

namespace {

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

}  // namespace

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

RoundedWhole roundedWhole(double magnitude, int significant) {
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
        Decimal d;
        exactDigits(magnitude, significant, d);
        std::uint64_t exact = 0;
        for (int i = 0; i < d.count; ++i) exact = exact * 10 + static_cast<std::uint64_t>(d.digit[i] - '0');
        return {exact * kWholePowers[significant - d.count], d.exponent};
    }
    if (rest > half) ++whole;
    if (whole >= upper) {  // 9.99..95 and up: the next decade's 1
        whole = kWholePowers[significant - 1];
        ++e10;
    }
    return {whole, e10};
}

Decimal rounded(double magnitude, int significant) {
    Decimal d;
    const RoundedWhole r = roundedWhole(magnitude, significant);
    if (r.whole == 0) {
        d.digit[0] = '0';
        d.count = 1;
        return d;
    }
    writeDigits(r.whole, significant, d.digit);
    d.count = significant;
    d.exponent = r.exponent;
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

}  // namespace bm::digits
