#include "model/number_digits.h"

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cstdlib>
#include <string>
#include <system_error>

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

int countDigits(const char* first, const char* last) {
    int n = 0;
    for (const char* p = first; p < last && *p != 'e'; ++p) n += *p != '.';
    return n;
}

}  // namespace

Decimal rounded(double magnitude, int significant) {
    Decimal d;
    if (magnitude == 0.0) {
        d.digit[0] = '0';
        d.count = 1;
        return d;
    }
    char buffer[48];
    char* const end = buffer + sizeof buffer;
    // The shortest digits that read back as the same double are, when there
    // are at most 15 of them and the double is normal, its rounding to 15
    // digits as well: the 15-digit grid is more than 4.5 times as coarse as
    // the doubles, so they lie within a ninth of a grid step of the value and
    // no other grid point is as near. Most inputs (10, 0.25, 1E-05) end here.
    if (significant == 15 && magnitude >= DBL_MIN) {
        const auto shortest = std::to_chars(buffer, end, magnitude, std::chars_format::scientific);
        if (countDigits(buffer, shortest.ptr) <= 15) {
            takeScientific(buffer, shortest.ptr, d);
            return d;
        }
    }
    // Otherwise the correctly rounded digits, ties to even like printf.
    const auto fixed = std::to_chars(buffer, end, magnitude, std::chars_format::scientific, significant - 1);
    takeScientific(buffer, fixed.ptr, d);
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
    const int integerDigits = e >= 0 ? e + 1 : 1;
    const int fractionDigits = e >= 0 ? std::max(0, k - (e + 1)) : (-e - 1) + k;
    if (integerDigits <= significant && fractionDigits <= significant) {
        if (e >= 0) {
            for (int i = 0; i <= e; ++i) *p++ = i < k ? d.digit[i] : '0';
            if (k > e + 1) {
                *p++ = '.';
                for (int i = e + 1; i < k; ++i) *p++ = d.digit[i];
            }
        } else {
            *p++ = '0';
            *p++ = '.';
            for (int i = 0; i < -e - 1; ++i) *p++ = '0';
            for (int i = 0; i < k; ++i) *p++ = d.digit[i];
        }
        return static_cast<int>(p - out);
    }
    *p++ = d.digit[0];
    if (k > 1) {
        *p++ = '.';
        for (int i = 1; i < k; ++i) *p++ = d.digit[i];
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

double read(std::string_view text) {
    // from_chars takes neither a leading "+" nor a "D" exponent.
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    std::string copy;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == 'd' || text[i] == 'D') {
            copy.assign(text);
            copy[i] = 'e';
            text = copy;
            break;
        }
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc()) return value;
    // Beyond the doubles: strtod's infinity, or its 0 or subnormal.
    copy.assign(text);
    return std::strtod(copy.c_str(), nullptr);
}

}  // namespace bm::digits
