#pragma once
// Format patterns ("#.####", "0.0####", "#.####e+###", "###,###") taken apart
// and applied to the 15 digits of a number: rounded half away from zero to
// the places the pattern allows, "0" a required digit, "#" an optional one
// (never a blank), the point kept with no digits after it.

#include <string>
#include <string_view>

#include "model/number_digits.h"

namespace bm::patterns {

// A format pattern taken apart: "0"s required, "#"s optional, "," groups
// thousands, "e+"/"e-" (or "E") makes it scientific.
struct Pattern {
    int intRequired = 0;      // '0' placeholders before the point
    bool thousands = false;   // ',' among them
    bool point = false;
    int fracRequired = 0;     // '0's after the point
    int fracMax = 0;          // all placeholders after the point
    bool scientific = false;
    char expCase = 'e';
    bool expPlus = false;     // "e+" shows '+', "e-" only '-'
    int expRequired = 0;
};

constexpr Pattern parsePattern(std::string_view p) {
    Pattern pat;
    std::size_t i = 0;
    for (; i < p.size() && p[i] != '.' && p[i] != 'e' && p[i] != 'E'; ++i) {
        if (p[i] == '0') ++pat.intRequired;
        else if (p[i] == ',') pat.thousands = true;
    }
    if (i < p.size() && p[i] == '.') {
        pat.point = true;
        for (++i; i < p.size() && p[i] != 'e' && p[i] != 'E'; ++i) {
            if (p[i] == '0') {
                ++pat.fracRequired;
                ++pat.fracMax;
            } else if (p[i] == '#') {
                ++pat.fracMax;
            }
        }
    }
    if (i + 1 < p.size() && (p[i] == 'e' || p[i] == 'E') && (p[i + 1] == '+' || p[i + 1] == '-')) {
        pat.scientific = true;
        pat.expCase = p[i];
        pat.expPlus = p[i + 1] == '+';
        for (i += 2; i < p.size(); ++i)
            if (p[i] == '0') ++pat.expRequired;
    }
    return pat;
}

// The digits d (with the sign when negative) in the pattern.
std::string applyPattern(const digits::Decimal& d, bool negative, const Pattern& pat);

}  // namespace bm::patterns
