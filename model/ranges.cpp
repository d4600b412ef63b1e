#include "model/ranges.h"

#include <algorithm>

#include "model/number_text.h"
#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"
#include "shell/base/user_interface.h"

namespace bm {

namespace {

// Everything after the first ':'; the whole text when there is none.
std::string afterColon(std::string_view s) {
    const auto p = s.find(':');
    return std::string(p == std::string_view::npos ? s : s.substr(p + 1));
}

// The text in front of the first ':'; error 5 when there is none.
std::string beforeColon(std::string_view s) {
    const auto p = s.find(':');
    if (p == std::string_view::npos) raiseError(err::InvalidProcedureCall);
    return std::string(s.substr(0, p));
}

}  // namespace

bool isScalarRange(std::string_view rangeText) { return rangeText.find(':') == std::string_view::npos; }

bool isRangeForm(std::string_view rangeText) {
    const auto n = std::count(rangeText.begin(), rangeText.end(), ':');
    return n == 2 || n == 3;
}

bool rangeFormatIsValid(std::string_view rangeText) {
    const std::string t = trim(rangeText);
    auto p1 = t.find(':');
    if (p1 == std::string::npos) return true;
    const std::string rest1 = t.substr(p1 + 1);
    if (rest1.empty()) return false;
    auto p2 = rest1.find(':');
    if (p2 == std::string::npos) return false;
    const std::string rest2 = rest1.substr(p2 + 1);
    if (rest2.empty()) return false;
    auto p3 = rest2.find(':');
    if (p3 == std::string::npos) return true;
    return !rest2.substr(p3 + 1).empty();
}

std::string rangeFormatMessage(std::string_view rangeText, std::string_view fieldName) {
    return "The input data give for " + std::string(fieldName) + " = " + std::string(rangeText) +
           " is not in the proper format.\r\rPlease use the following two formats: \r"
           "    Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant.";
}

bool checkRangeFormat(std::string_view rangeText, std::string_view fieldName, UserInterface& ui) {
    if (rangeFormatIsValid(rangeText)) return true;
    ui.message(MessageIcon::Exclamation, MessageButtons::Ok, "Input Error", rangeFormatMessage(rangeText, fieldName));
    return false;
}

double rangeMinimum(std::string_view rangeText) {
    const std::string t = trim(rangeText);
    const auto p = t.find(':');
    return textValue(p == std::string::npos ? t : t.substr(0, p));
}

// A scalar has no fields: its one value serves as minimum, maximum and constant.
double rangeMaximum(std::string_view rangeText) {
    if (isScalarRange(rangeText)) return textValue(rangeText);
    const std::string rest = afterColon(trim(rangeText));
    return textValue(beforeColon(rest));
}

// Drops through two ":" that a scalar does not have, so it converts the whole
// text: a single number is its own interval (parseRange still gives it 0).
double rangeInterval(std::string_view rangeText) {
    const std::string rest = afterColon(afterColon(trim(rangeText)));
    return textValue(rest);
}

double rangeConstant(std::string_view rangeText) {
    if (isScalarRange(rangeText)) return textValue(rangeText);
    const std::string rest = afterColon(trim(rangeText));
    const double maximum = textValue(beforeColon(rest));
    const std::string rest2 = afterColon(rest);
    const auto p = rest2.find(':');
    if (p != std::string::npos) return textValue(rest2.substr(p + 1));
    return maximum;
}

std::int16_t rangeTermCount(double minimum, double maximum, double interval) {
    if (interval == 0.0) return 1;
    return toInt16(fp::add(fp::div(fp::sub(maximum, minimum), interval), 1.0));
}

std::int16_t parseRange(std::string_view rangeText, double& minimum, double& maximum, double& interval, double& constant) {
    if (rangeText.find(':') != std::string_view::npos) {
        minimum = rangeMinimum(rangeText);
        maximum = rangeMaximum(rangeText);
        interval = rangeInterval(rangeText);
        constant = rangeConstant(rangeText);
        return rangeTermCount(minimum, maximum, interval);
    }
    minimum = maximum = constant = textValue(rangeText);
    interval = 0;
    return 1;
}

ParsedRange parseRange(std::string_view rangeText) {
    ParsedRange r;
    r.terms = parseRange(rangeText, r.minimum, r.maximum, r.interval, r.constant);
    return r;
}

void assignRange(std::string_view rangeText, double& minimum, double& maximum, double& interval) {
    const ParsedRange parsed = parseRange(rangeText);
    minimum = isScalarRange(rangeText) && parsed.terms == 1 ? 0.0 : parsed.minimum;
    maximum = parsed.maximum;
    interval = parsed.interval;
}

std::string rangeTextOfSpacedLine(std::string_view line) {
    const std::string body = textAfter(line, ":");
    const auto b1 = body.find(' ');
    if (b1 == std::string::npos) raiseError(err::InvalidProcedureCall);
    const std::string first = body.substr(0, b1);
    const std::string rest = body.substr(b1 + 1);
    const auto b2 = rest.find(' ');
    if (b2 == std::string::npos) raiseError(err::InvalidProcedureCall);
    const std::string second = rest.substr(0, b2);
    const std::string third = trim(rest.substr(b2 + 1));
    return first + ":" + second + ":" + third;
}

}  // namespace bm
