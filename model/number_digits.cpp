#include "model/number_digits.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "model/rounded_whole.h"

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

RoundedWhole exactlyRoundedWhole(double magnitude, int significant) {
    Decimal d;
    exactDigits(magnitude, significant, d);
    std::uint64_t exact = 0;
    for (int i = 0; i < d.count; ++i) exact = exact * 10 + static_cast<std::uint64_t>(d.digit[i] - '0');
    return {exact * kTenTo[significant - d.count], d.exponent};
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
