#include "model/number_text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "model/number_digits.h"
#include "model/number_format.h"
#include "model/number_pattern.h"
#include "model/number_reading.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

using patterns::applyPattern;
using patterns::parsePattern;
using patterns::Pattern;

bool isBlank(char c) { return c == ' ' || c == '\t'; }

inline std::string_view trimmedView(std::string_view text) {
    std::size_t b = 0, e = text.size();
    while (b < e && isBlank(text[b])) ++b;
    while (e > b && isBlank(text[e - 1])) --e;
    return text.substr(b, e - b);
}

// The general text of any double (or float, with `significant` 7) into `out`,
// kGeneralTextRoom long at least; returns the length.
int writeGeneralText(char* out, double value, int significant) {
    if (std::isnan(value)) return static_cast<int>(std::strlen(std::strcpy(out, "NaN")));
    if (std::isinf(value)) return static_cast<int>(std::strlen(std::strcpy(out, value < 0 ? "-Infinity" : "Infinity")));
    return digits::writeGeneral(out, digits::rounded(std::fabs(value), significant), value < 0, significant);
}

std::string generalOf(double value, int significant) {
    char text[digits::kGeneralTextRoom];
    return std::string(text, static_cast<std::size_t>(writeGeneralText(text, value, significant)));
}

// The rows of the results' number format.
constexpr Pattern kFourDigitRow = parsePattern("####.###");
constexpr Pattern kThreeDigitRow = parsePattern("###.###");
constexpr Pattern kTwoDigitRow = parsePattern("##.####");
constexpr Pattern kOneDigitRow = parsePattern("#.####");
constexpr Pattern kTenthsRow = parsePattern("0.#####");
constexpr Pattern kHundredthsRow = parsePattern("0.0####");
constexpr Pattern kThousandthsRow = parsePattern("0.00####");
constexpr Pattern kScientificRow = parsePattern("#.####e+###");

// The general text of a number with these digits is a plain whole number.
bool wholeInGeneralText(const digits::Decimal& d) {
    return d.isZero() || (d.exponent >= 0 && d.exponent < 15 && d.count <= d.exponent + 1);
}

// The row of a magnitude v whose 15 digits are d; nullptr: the general text.
const Pattern* rowOf(double v, const digits::Decimal& d) {
    if (wholeInGeneralText(d)) return v >= 100000 ? &kScientificRow : nullptr;
    if (v >= 1000 && v < 10000) return &kFourDigitRow;
    if (v >= 100 && v < 1000) return &kThreeDigitRow;
    if (v >= 10 && v < 100) return &kTwoDigitRow;
    if (v >= 1 && v < 10) return &kOneDigitRow;
    if (v >= 0.1 && v < 1) return &kTenthsRow;
    if (v >= 0.01 && v < 0.1) return &kHundredthsRow;
    if (v >= 0.001 && v < 0.01) return &kThousandthsRow;
    return &kScientificRow;
}

std::string formatRow(const digits::Decimal& d, bool negative, const Pattern* row) {
    if (row != nullptr) return applyPattern(d, negative, *row);
    char text[digits::kGeneralTextRoom];
    return std::string(text, static_cast<std::size_t>(digits::writeGeneral(text, d, negative, 15)));
}

}  // namespace

std::string trim(std::string_view text) { return std::string(trimmedView(text)); }

std::string trimLeft(std::string_view text) {
    std::size_t b = 0;
    while (b < text.size() && isBlank(text[b])) ++b;
    return std::string(text.substr(b));
}

std::string toUpper(std::string_view text) {
    std::string s(text);
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

std::string toLower(std::string_view text) {
    std::string s(text);
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

std::string generalText(double value) { return generalOf(value, 15); }

std::string generalText(float value) { return generalOf(static_cast<double>(value), 7); }

std::string formatPattern(double value, std::string_view pattern) {
    if (pattern == "General Number" || !std::isfinite(value)) return generalText(value);
    return applyPattern(digits::rounded(std::fabs(value), 15), value < 0, parsePattern(pattern));
}

std::string formatNumber(std::string_view valueText) {
    const std::string_view t = trimmedView(valueText);
    double value = 0.0;
    if (!digits::readStrict(t, value)) return std::string(valueText);
    if (!std::isfinite(value)) return std::string(valueText);
    const double v = std::fabs(value);
    const digits::Decimal d = digits::rounded(v, 15);
    return formatRow(d, value < 0, rowOf(v, d));
}

std::string formatNumber(double value) {
    char text[kNumberTextRoom];
    return std::string(text, writeNumber(text, value));
}

std::string formatCell(std::string_view valueText) {
    if (contains(valueText, "Monte")) return "Monte Carlo";
    return formatNumber(valueText);
}

double textValue(std::string_view text) { return digits::readLenient(text); }

bool isNumeric(std::string_view text) {
    const std::string_view t = trimmedView(text);
    return digits::isStrict(t);
}

double numericValue(std::string_view text) { return digits::readBetweenBlanks(text); }

std::string textAfter(std::string_view line, std::string_view separator) {
    const auto p = line.find(separator);
    if (p == std::string_view::npos) return {};
    return trim(line.substr(p + separator.size()));
}

std::string valueOfCell(std::string_view text) {
    if (!contains(text, "M")) return std::string(text);
    const auto bar = text.find('|');
    const auto colon = text.find(':');
    if (bar == std::string_view::npos || colon == std::string_view::npos || colon < bar) return std::string(text);
    return std::string(text.substr(bar + 1, colon - bar - 1));
}

namespace {

// The print form of a general text written at text + 1 (n characters): a
// blank in the sign's place, no zero before the point.
std::string_view signedFrom(char* text, int n) {
    char* g = text + 1;
    if (n >= 2 && g[0] == '0' && g[1] == '.') {
        g[0] = ' ';
        return std::string_view(g, static_cast<std::size_t>(n));
    }
    if (n >= 3 && g[0] == '-' && g[1] == '0' && g[2] == '.') {
        g[1] = '-';
        return std::string_view(g + 1, static_cast<std::size_t>(n - 1));
    }
    if (g[0] == '-') return std::string_view(g, static_cast<std::size_t>(n));
    text[0] = ' ';
    return std::string_view(text, static_cast<std::size_t>(n + 1));
}

// The stream form of a general text written at text + 1: the leading zero kept.
std::string_view streamFrom(char* text, int n) {
    char* g = text + 1;
    g[n] = ' ';
    if (g[0] == '-') return std::string_view(g, static_cast<std::size_t>(n + 1));
    text[0] = ' ';
    return std::string_view(text, static_cast<std::size_t>(n + 2));
}

std::string signedInteger(long long value, bool trailingBlank) {
    char text[24];
    char* p = text;
    if (value >= 0) *p++ = ' ';
    p = std::to_chars(p, text + sizeof text - 1, value).ptr;
    if (trailingBlank) *p++ = ' ';
    return std::string(text, p);
}

}  // namespace

static_assert(kPrintFormRoom >= digits::kGeneralTextRoom + 3, "a blank before the general text and one after");

std::string_view signedTextIn(char* room, double value) { return signedFrom(room, writeGeneralText(room + 1, value, 15)); }

std::string_view streamTextIn(char* room, double value) { return streamFrom(room, writeGeneralText(room + 1, value, 15)); }

std::string_view streamTextIn(char* room, float value) {
    return streamFrom(room, writeGeneralText(room + 1, static_cast<double>(value), 7));
}

std::string signedText(double value) {
    char room[kPrintFormRoom];
    return std::string(signedTextIn(room, value));
}

std::string signedText(float value) {
    char text[kPrintFormRoom];
    return std::string(signedFrom(text, writeGeneralText(text + 1, static_cast<double>(value), 7)));
}

std::string signedText(long long value) { return signedInteger(value, false); }

std::string printForm(double value) {
    char room[kPrintFormRoom];
    std::string form(signedTextIn(room, value));
    form += ' ';
    return form;
}

std::string printForm(long long value) { return signedInteger(value, true); }

std::string streamText(double value) {
    char room[kPrintFormRoom];
    return std::string(streamTextIn(room, value));
}

std::string streamText(float value) {
    char room[kPrintFormRoom];
    return std::string(streamTextIn(room, value));
}

}  // namespace bm
