#pragma once
// Range texts: "5", "0:100:1" and "0:100:1:50".

#include <cstdint>
#include <string>
#include <string_view>

namespace bm {

class UserInterface;

struct ParsedRange {
    double minimum = 0;
    double maximum = 0;
    double interval = 0;
    double constant = 0;
    std::int16_t terms = 1;
};

bool isScalarRange(std::string_view rangeText);
bool isRangeForm(std::string_view rangeText);
// Shows the "Input Error" message through the user interface when false.
bool checkRangeFormat(std::string_view rangeText, std::string_view fieldName, UserInterface& ui);
// The syntax test alone, without a message.
bool rangeFormatIsValid(std::string_view rangeText);
// The message checkRangeFormat shows.
std::string rangeFormatMessage(std::string_view rangeText, std::string_view fieldName);

double rangeMinimum(std::string_view rangeText);
double rangeMaximum(std::string_view rangeText);   // error 5 on a text with one ":"
double rangeInterval(std::string_view rangeText);
double rangeConstant(std::string_view rangeText);  // error 5 on a text with one ":"

// Returns the count of terms; error 6 when it does not fit 16 bits.
std::int16_t parseRange(std::string_view rangeText, double& minimum, double& maximum, double& interval, double& constant);
ParsedRange parseRange(std::string_view rangeText);
// The parts of a coordinate range that the solvers' records hold: a single
// number (no ":") means the column from 0 to that number, so its minimum is 0;
// a range with colons keeps its minimum even when it counts one term.
void assignRange(std::string_view rangeText, double& minimum, double& maximum, double& interval);

// Count of a list: (max - min) / interval + 1 rounded half to even, or 1 for an
// interval of exactly 0; error 6 when it does not fit 16 bits.
std::int16_t rangeTermCount(double minimum, double maximum, double interval);
// Value i (from 1) of the list: by multiplication, never accumulated addition.
inline double rangeValue(int i, double minimum, double interval) { return (i - 1) * interval + minimum; }

// Old-format "label: 0 100 1" to "0:100:1"; error 5 when a blank is missing.
std::string rangeTextOfSpacedLine(std::string_view line);

// The help line shown on entering a coordinate cell.
inline constexpr const char* kRangePrompt =
    " You can input data by 2 formats: Minimum:Maximum:Interval:Constant, Minimum:Maximum:Interval.";

}  // namespace bm
