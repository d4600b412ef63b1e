#pragma once
// The number texts as they were first written, on printf and strtod, kept
// as the oracle that the faster conversions of model/number_text.h are
// compared with: the same bytes for every value, the same value for every text.

#include <string>
#include <string_view>

namespace bm::reference {

std::string trim(std::string_view text);
bool contains(std::string_view text, std::string_view part);

std::string generalText(double value);
std::string generalText(float value);
std::string formatPattern(double value, std::string_view pattern);
std::string formatNumber(std::string_view valueText);
std::string formatNumber(double value);
std::string formatCell(std::string_view valueText);

double textValue(std::string_view text);
bool isNumeric(std::string_view text);
double numericValue(std::string_view text);

std::string signedText(double value);
std::string signedText(float value);
std::string signedText(long long value);
std::string printForm(double value);
std::string printForm(long long value);
std::string streamText(double value);
std::string streamText(float value);

}  // namespace bm::reference
