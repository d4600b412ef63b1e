#include "model/number_pattern.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>

namespace bm::patterns {

namespace {

// Room on the stack for the usual short texts, on the heap past that.
class Scratch {
public:
    explicit Scratch(std::size_t size) {
        if (size > sizeof small_) {
            large_.resize(size);
            data_ = large_.data();
        }
    }
    char* data() { return data_; }

private:
    char small_[192];
    std::string large_;
    char* data_ = small_;
};

// The digits of d (first digit at 10^exponent) rounded half away from zero
// at the place 10^-decimals, laid out in `grid` from 10^max(exponent, 0)
// down to that place, with one more leading digit when the rounding carries
// out. Only the first digit dropped decides. `grid` holds max(exponent, 0) +
// decimals + 2 characters; returns the count written.
int roundedGrid(const digits::Decimal& d, int exponent, int decimals, char* grid) {
    const int top = std::max(exponent, 0);
    const int width = top + 1 + decimals;
    std::memset(grid, '0', static_cast<std::size_t>(width));
    bool up = false;
    if (!d.isZero()) {
        for (int i = 0; i < d.count; ++i) {
            const int pos = top - exponent + i;
            if (pos >= width) {
                up = pos == width && d.digit[i] >= '5';
                break;
            }
            grid[pos] = d.digit[i];
        }
    }
    if (!up) return width;
    int i = width - 1;
    while (i >= 0 && grid[i] == '9') grid[i--] = '0';
    if (i >= 0) {
        ++grid[i];
        return width;
    }
    std::memmove(grid + 1, grid, static_cast<std::size_t>(width));
    grid[0] = '1';
    return width + 1;
}

// Drops trailing zeros of a fraction down to the required count.
int keptFraction(const char* fraction, int length, int required) {
    while (length > required && fraction[length - 1] == '0') --length;
    return length;
}

std::string applyFixed(const digits::Decimal& d, bool negative, const Pattern& pat) {
    const int room = std::max(d.exponent, 0) + pat.fracMax + 2;
    Scratch gridRoom(static_cast<std::size_t>(room));
    char* grid = gridRoom.data();
    const int n = roundedGrid(d, d.exponent, pat.fracMax, grid);
    const int intLength = n - pat.fracMax;
    int first = 0;
    while (first < intLength && grid[first] == '0') ++first;
    const int intDigits = intLength - first;
    const int padding = std::max(0, pat.intRequired - intDigits);
    const int shown = intDigits + padding;
    const int fraction = keptFraction(grid + intLength, pat.fracMax, pat.fracRequired);

    Scratch textRoom(static_cast<std::size_t>(2 + shown + shown / 3 + 1 + fraction));
    char* const text = textRoom.data();
    char* p = text;
    if (negative) *p++ = '-';
    for (int i = 0; i < shown; ++i) {
        *p++ = i < padding ? '0' : grid[first + i - padding];
        const int left = shown - 1 - i;
        if (pat.thousands && left > 0 && left % 3 == 0) *p++ = ',';
    }
    if (pat.point) {
        *p++ = '.';
        std::memcpy(p, grid + intLength, static_cast<std::size_t>(fraction));
        p += fraction;
    }
    return std::string(text, p);
}

std::string applyScientific(const digits::Decimal& d, bool negative, const Pattern& pat) {
    // One digit before the point; the significant digits rounded to 1 + fracMax.
    int exponent = d.isZero() ? 0 : d.exponent;
    Scratch gridRoom(static_cast<std::size_t>(pat.fracMax + 2));
    char* grid = gridRoom.data();
    const int n = roundedGrid(d, 0, pat.fracMax, grid);
    if (n - pat.fracMax > 1) {  // 9.99995 rounded to 10.0000: 1.0000 and the next power
        ++exponent;
        std::memset(grid + 1, '0', static_cast<std::size_t>(pat.fracMax));
    }
    const int fraction = keptFraction(grid + 1, pat.fracMax, pat.fracRequired);

    Scratch textRoom(static_cast<std::size_t>(pat.fracMax + pat.expRequired + 12));
    char* const text = textRoom.data();
    char* p = text;
    if (negative) *p++ = '-';
    *p++ = grid[0];
    if (pat.point) {
        *p++ = '.';
        std::memcpy(p, grid + 1, static_cast<std::size_t>(fraction));
        p += fraction;
    }
    *p++ = pat.expCase;
    if (exponent < 0) *p++ = '-';
    else if (pat.expPlus) *p++ = '+';
    char exponentDigits[8];
    const auto written = std::to_chars(exponentDigits, exponentDigits + sizeof exponentDigits, std::abs(exponent));
    const int count = static_cast<int>(written.ptr - exponentDigits);
    for (int i = count; i < pat.expRequired; ++i) *p++ = '0';
    std::memcpy(p, exponentDigits, static_cast<std::size_t>(count));
    p += count;
    return std::string(text, p);
}

}  // namespace

std::string applyPattern(const digits::Decimal& d, bool negative, const Pattern& pat) {
    return pat.scientific ? applyScientific(d, negative, pat) : applyFixed(d, negative, pat);
}

}  // namespace bm::patterns
