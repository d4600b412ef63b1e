#pragma once
// Number texts: the general conversion of a number to text, format patterns,
// the print forms, and the lenient and strict conversions of text to number.

#include <cstdint>
#include <string>
#include <string_view>

namespace bm {

// Trim blanks (and tabs) at both ends.
std::string trim(std::string_view text);
std::string trimLeft(std::string_view text);
std::string toUpper(std::string_view text);
std::string toLower(std::string_view text);
bool contains(std::string_view text, std::string_view part);

// General text: 15 significant digits (7 for a 32-bit float), trailing zeros
// dropped, "0.5" with its leading zero, "1E+15" past the plain range.
std::string generalText(double value);
std::string generalText(float value);

// A format pattern such as "#.####", "0.0####", "#.####e+###", "###,###" or
// "General Number" applied to a value.
std::string formatPattern(double value, std::string_view pattern);

// The number formatter of all results and reports: picks the pattern by the
// size of the value. A text that is not numeric comes back unchanged.
std::string formatNumber(std::string_view valueText);
std::string formatNumber(double value);
// As formatNumber, but a text holding "Monte" becomes "Monte Carlo".
std::string formatCell(std::string_view valueText);

// Lenient conversion: blanks, tabs and line feeds skipped anywhere, the longest
// numeric prefix, 0 when there is none; never an error (a prefix too large
// for a double gives an infinity, which the solvers' arithmetic reports).
double textValue(std::string_view text);

// Strict test: the whole trimmed text is a number (sign, digits, one point, exponent).
bool isNumeric(std::string_view text);
// Strict conversion of a numeric text; error 13 when it is not numeric, 6 when too large.
double numericValue(std::string_view text);

// The trimmed text behind the first separator; empty when there is none.
std::string textAfter(std::string_view line, std::string_view separator);

// The number inside a Monte Carlo cell text (between the first "|" and the first
// ":"); any text without a capital "M" comes back unchanged.
std::string valueOfCell(std::string_view text);

// Print forms.
// A blank in the sign's place and no leading zero below 1: " .5", "-.25", " 1E-20", " 5".
std::string signedText(double value);
std::string signedText(float value);
std::string signedText(long long value);
// A number as a print statement writes it: the signed text and one trailing blank (" 5 ").
std::string printForm(double value);
std::string printForm(long long value);
// The stream form: a blank in the sign's place, the general text with its leading
// zero, one trailing blank (" 0.5 ").
std::string streamText(double value);
std::string streamText(float value);

// The same forms written into `room` (kPrintFormRoom characters), for writers
// of many numbers: a view of the text there, with no string made.
inline constexpr int kPrintFormRoom = 48;
std::string_view signedTextIn(char* room, double value);
std::string_view streamTextIn(char* room, double value);
std::string_view streamTextIn(char* room, float value);

}  // namespace bm
