#include "model/tests/number_text_reference.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "shell/base/runtime_error.h"

namespace bm::reference {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

// The significant digits of |value| (at most `significant`, trailing zeros
// dropped) and the power of ten of the first one.
struct Decimal {
    std::string digits;  // "0" for zero
    int exponent = 0;    // place of the first digit
};

Decimal decimalOf(double value, int significant) {
    Decimal d;
    value = std::fabs(value);
    if (value == 0.0) {
        d.digits = "0";
        return d;
    }
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*e", significant - 1, value);
    // buf: "d.ddddde+XX"
    std::string s(buf);
    const auto ePos = s.find('e');
    d.exponent = std::atoi(s.c_str() + ePos + 1);
    for (std::size_t i = 0; i < ePos; ++i)
        if (std::isdigit(static_cast<unsigned char>(s[i]))) d.digits += s[i];
    while (d.digits.size() > 1 && d.digits.back() == '0') d.digits.pop_back();
    return d;
}

std::string generalFromDecimal(const Decimal& d, bool negative, int significant) {
    if (d.digits == "0") return "0";
    const int k = static_cast<int>(d.digits.size());
    const int e = d.exponent;
    const int integerDigits = e >= 0 ? e + 1 : 1;
    const int fractionDigits = e >= 0 ? std::max(0, k - (e + 1)) : (-e - 1) + k;
    std::string out = negative ? "-" : "";
    if (integerDigits <= significant && fractionDigits <= significant) {
        if (e >= 0) {
            std::string intPart = d.digits.substr(0, static_cast<std::size_t>(std::min(k, e + 1)));
            while (static_cast<int>(intPart.size()) < e + 1) intPart += '0';
            out += intPart;
            if (k > e + 1) out += "." + d.digits.substr(static_cast<std::size_t>(e + 1));
        } else {
            out += "0." + std::string(static_cast<std::size_t>(-e - 1), '0') + d.digits;
        }
        return out;
    }
    out += d.digits.substr(0, 1);
    if (k > 1) out += "." + d.digits.substr(1);
    char ebuf[16];
    std::snprintf(ebuf, sizeof ebuf, "E%c%02d", e < 0 ? '-' : '+', std::abs(e));
    return out + ebuf;
}

// Rounds a digit string (value = 0.d1d2... with the first digit at 10^exponent)
// half away from zero so that no digit below 10^-decimals remains. Returns the
// digits of the integer and fractional parts, fraction padded to `decimals`.
void roundFixed(const Decimal& d, int decimals, std::string& intPart, std::string& fracPart) {
    // Lay the digits out on a fixed grid from 10^max(exponent,0) down to 10^-decimals.
    const int top = std::max(d.exponent, 0);
    const int width = top + 1 + decimals;  // places from 10^top to 10^-decimals
    std::string grid(static_cast<std::size_t>(width), '0');
    bool roundUp = false;
    if (d.digits != "0") {
        for (std::size_t i = 0; i < d.digits.size(); ++i) {
            const int place = d.exponent - static_cast<int>(i);
            const int pos = top - place;
            if (pos < width) {
                grid[static_cast<std::size_t>(pos)] = d.digits[i];
            } else if (pos == width) {
                roundUp = d.digits[i] >= '5';
                break;
            }
        }
    }
    if (roundUp) {
        int i = width - 1;
        while (i >= 0 && grid[static_cast<std::size_t>(i)] == '9') grid[static_cast<std::size_t>(i--)] = '0';
        if (i >= 0) ++grid[static_cast<std::size_t>(i)];
        else grid.insert(grid.begin(), '1');
    }
    const int intLen = static_cast<int>(grid.size()) - decimals;
    intPart = grid.substr(0, static_cast<std::size_t>(intLen));
    fracPart = grid.substr(static_cast<std::size_t>(intLen));
    const auto nz = intPart.find_first_not_of('0');
    intPart = nz == std::string::npos ? "" : intPart.substr(nz);
}

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

Pattern parsePattern(std::string_view p) {
    Pattern pat;
    std::size_t i = 0;
    for (; i < p.size() && p[i] != '.' && p[i] != 'e' && p[i] != 'E'; ++i) {
        if (p[i] == '0') ++pat.intRequired;
        else if (p[i] == ',') pat.thousands = true;
    }
    if (i < p.size() && p[i] == '.') {
        pat.point = true;
        for (++i; i < p.size() && p[i] != 'e' && p[i] != 'E'; ++i) {
            if (p[i] == '0') { ++pat.fracRequired; ++pat.fracMax; }
            else if (p[i] == '#') ++pat.fracMax;
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

std::string groupThousands(const std::string& digits) {
    std::string out;
    const int n = static_cast<int>(digits.size());
    for (int i = 0; i < n; ++i) {
        out += digits[static_cast<std::size_t>(i)];
        const int left = n - 1 - i;
        if (left > 0 && left % 3 == 0) out += ',';
    }
    return out;
}

std::string applyFixed(const Decimal& d, const Pattern& pat) {
    std::string intPart, fracPart;
    roundFixed(d, pat.fracMax, intPart, fracPart);
    while (static_cast<int>(fracPart.size()) > pat.fracRequired && fracPart.back() == '0') fracPart.pop_back();
    while (static_cast<int>(intPart.size()) < pat.intRequired) intPart.insert(intPart.begin(), '0');
    if (pat.thousands) intPart = groupThousands(intPart);
    std::string out = intPart;
    if (pat.point) out += "." + fracPart;
    return out;
}

std::string applyScientific(const Decimal& d, const Pattern& pat) {
    // One digit before the point; round the significant digits to 1 + fracMax.
    Decimal m = d;
    int exponent = d.exponent;
    if (m.digits == "0") exponent = 0;
    m.exponent = 0;  // mantissa d.ddd
    std::string intPart, fracPart;
    roundFixed(m, pat.fracMax, intPart, fracPart);
    if (intPart.size() > 1) {  // 9.99995 rounded to 10.0000: renormalise
        ++exponent;
        fracPart = intPart.substr(1) + fracPart;
        fracPart.resize(static_cast<std::size_t>(pat.fracMax));
        intPart = intPart.substr(0, 1);
    }
    if (intPart.empty()) intPart = "0";
    while (static_cast<int>(fracPart.size()) > pat.fracRequired && fracPart.back() == '0') fracPart.pop_back();
    std::string out = intPart;
    if (pat.point) out += "." + fracPart;
    out += pat.expCase;
    if (exponent < 0) out += '-';
    else if (pat.expPlus) out += '+';
    std::string expDigits = std::to_string(std::abs(exponent));
    while (static_cast<int>(expDigits.size()) < std::max(1, pat.expRequired)) expDigits.insert(expDigits.begin(), '0');
    return out + expDigits;
}

// Strict grammar: [sign] digits [. digits] [exp [sign] digits], at least one mantissa digit.
bool strictNumber(std::string_view t) {
    std::size_t i = 0, n = t.size();
    if (i < n && (t[i] == '+' || t[i] == '-')) ++i;
    int mantissaDigits = 0;
    while (i < n && std::isdigit(static_cast<unsigned char>(t[i]))) { ++i; ++mantissaDigits; }
    if (i < n && t[i] == '.') {
        ++i;
        while (i < n && std::isdigit(static_cast<unsigned char>(t[i]))) { ++i; ++mantissaDigits; }
    }
    if (mantissaDigits == 0) return false;
    if (i < n && (t[i] == 'e' || t[i] == 'E' || t[i] == 'd' || t[i] == 'D')) {
        ++i;
        if (i < n && (t[i] == '+' || t[i] == '-')) ++i;
        int expDigits = 0;
        while (i < n && std::isdigit(static_cast<unsigned char>(t[i]))) { ++i; ++expDigits; }
        if (expDigits == 0) return false;
    }
    return i == n;
}

double parseDecimal(const std::string& text) {
    std::string s = text;
    for (char& c : s)
        if (c == 'd' || c == 'D') c = 'e';
    return std::strtod(s.c_str(), nullptr);
}

}  // namespace

std::string trim(std::string_view text) {
    std::size_t b = 0, e = text.size();
    while (b < e && isBlank(text[b])) ++b;
    while (e > b && isBlank(text[e - 1])) --e;
    return std::string(text.substr(b, e - b));
}



bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

std::string generalText(double value) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";
    return generalFromDecimal(decimalOf(value, 15), value < 0 && value != 0.0, 15);
}

std::string generalText(float value) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";
    return generalFromDecimal(decimalOf(static_cast<double>(value), 7), value < 0 && value != 0.0f, 7);
}

std::string formatPattern(double value, std::string_view pattern) {
    if (pattern == "General Number") return generalText(value);
    if (!std::isfinite(value)) return generalText(value);
    const Pattern pat = parsePattern(pattern);
    const Decimal d = decimalOf(value, 15);
    const std::string body = pat.scientific ? applyScientific(d, pat) : applyFixed(d, pat);
    return (value < 0 ? "-" : "") + body;
}

std::string formatNumber(std::string_view valueText) {
    const std::string t = trim(valueText);
    if (!isNumeric(t)) return std::string(valueText);
    const double value = parseDecimal(t);
    if (!std::isfinite(value)) return std::string(valueText);
    const double sign = value < 0 ? -1.0 : 1.0;
    const double v = std::fabs(value);
    const std::string plain = generalText(v);
    const bool fractional = plain.find_first_of("Ee.") != std::string::npos;
    const char* format;
    if (fractional) {
        if (v >= 1000 && v < 10000) format = "####.###";
        else if (v >= 100 && v < 1000) format = "###.###";
        else if (v >= 10 && v < 100) format = "##.####";
        else if (v >= 1 && v < 10) format = "#.####";
        else if (v >= 0.1 && v < 1) format = "0.#####";
        else if (v >= 0.01 && v < 0.1) format = "0.0####";
        else if (v >= 0.001 && v < 0.01) format = "0.00####";
        else format = "#.####e+###";
    } else {
        format = v >= 100000 ? "#.####e+###" : "General Number";
    }
    return formatPattern(v * sign, format);
}

std::string formatNumber(double value) { return formatNumber(generalText(value)); }

std::string formatCell(std::string_view valueText) {
    if (contains(valueText, "Monte")) return "Monte Carlo";
    return formatNumber(valueText);
}

double textValue(std::string_view text) {
    std::string s;
    s.reserve(text.size());
    for (char c : text)
        if (c != ' ' && c != '\t' && c != '\n') s += c;
    std::size_t i = 0;
    const std::size_t n = s.size();
    if (n >= 2 && s[0] == '&' && (s[1] == 'H' || s[1] == 'h' || s[1] == 'O' || s[1] == 'o')) {
        const bool hex = s[1] == 'H' || s[1] == 'h';
        unsigned long long v = 0;
        bool any = false;
        for (i = 2; i < n; ++i) {
            const char c = s[i];
            int digit;
            if (c >= '0' && c <= '9') digit = c - '0';
            else if (hex && c >= 'a' && c <= 'f') digit = c - 'a' + 10;
            else if (hex && c >= 'A' && c <= 'F') digit = c - 'A' + 10;
            else break;
            if (!hex && digit > 7) break;
            v = v * (hex ? 16 : 8) + static_cast<unsigned>(digit);
            any = true;
            if (v > 0xFFFFFFFFull) break;
        }
        if (!any) return 0.0;
        // Hexadecimal and octal constants are 16-bit or 32-bit integers, negative past the sign bit.
        if (v <= 0xFFFF) return v > 0x7FFF ? static_cast<double>(v) - 65536.0 : static_cast<double>(v);
        if (v <= 0xFFFFFFFFull) return v > 0x7FFFFFFF ? static_cast<double>(v) - 4294967296.0 : static_cast<double>(v);
        return static_cast<double>(v);
    }
    std::string num;
    if (i < n && (s[i] == '+' || s[i] == '-')) num += s[i++];
    int mantissaDigits = 0;
    while (i < n && std::isdigit(static_cast<unsigned char>(s[i]))) { num += s[i++]; ++mantissaDigits; }
    if (i < n && s[i] == '.') {
        num += s[i++];
        while (i < n && std::isdigit(static_cast<unsigned char>(s[i]))) { num += s[i++]; ++mantissaDigits; }
    }
    if (mantissaDigits == 0) return 0.0;
    if (i < n && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
        std::string exp = "e";
        std::size_t j = i + 1;
        if (j < n && (s[j] == '+' || s[j] == '-')) exp += s[j++];
        int expDigits = 0;
        while (j < n && std::isdigit(static_cast<unsigned char>(s[j]))) { exp += s[j++]; ++expDigits; }
        if (expDigits > 0) num += exp;
    }
    return std::strtod(num.c_str(), nullptr);
}

bool isNumeric(std::string_view text) {
    const std::string t = trim(text);
    return !t.empty() && strictNumber(t);
}

double numericValue(std::string_view text) {
    const std::string t = trim(text);
    if (t.empty() || !strictNumber(t)) raiseError(err::TypeMismatch);
    const double v = parseDecimal(t);
    if (std::isinf(v)) raiseError(err::Overflow);
    return v;
}


namespace {
std::string dropLeadingZero(std::string g) {
    if (g.rfind("0.", 0) == 0) return g.substr(1);
    if (g.rfind("-0.", 0) == 0) return "-" + g.substr(2);
    return g;
}
}  // namespace

std::string signedText(double value) {
    std::string g = dropLeadingZero(generalText(value));
    return g[0] == '-' ? g : " " + g;
}

std::string signedText(float value) {
    std::string g = dropLeadingZero(generalText(value));
    return g[0] == '-' ? g : " " + g;
}

std::string signedText(long long value) { return (value < 0 ? "" : " ") + std::to_string(value); }

std::string printForm(double value) { return signedText(value) + " "; }
std::string printForm(long long value) { return signedText(value) + " "; }

std::string streamText(double value) {
    const std::string g = generalText(value);
    return (g[0] == '-' ? g : " " + g) + " ";
}

std::string streamText(float value) {
    const std::string g = generalText(value);
    return (g[0] == '-' ? g : " " + g) + " ";
}

}  // namespace bm::reference
