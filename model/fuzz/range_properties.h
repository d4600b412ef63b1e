#pragma once
// What every text must give the range readers, whatever it holds: a value or
// one of their two run-time errors (6, the count's overflow; 5, a missing
// second colon), never another exception, and readers that agree with each
// other. Shared by the fuzzer and by the test that replays its corpus.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

#include "model/number_text.h"
#include "model/ranges.h"
#include "shell/base/runtime_error.h"
#include "shell/base/user_interface.h"
#include "shell/base/raised_error.h"

namespace bm::rangecheck {

// Counts the message boxes; answers none.
class CountingInterface : public StreamUserInterface {
public:
    CountingInterface() : StreamUserInterface(nullptr) {}
    MessageAnswer showMessage(const MessageRequest& request) override {
        ++shown;
        return defaultAnswer(request);
    }
    int shown = 0;
};

using bm::raisedError;

inline bool same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

// Calls fail(what) for every property the text breaks.
template <class Fail>
void checkRangeReaders(const std::string& text, Fail fail) {
    auto require = [&](bool condition, const char* what) {
        if (!condition) fail(what);
    };
    const bool scalar = isScalarRange(text);
    const bool form = isRangeForm(text);
    const bool valid = rangeFormatIsValid(text);
    CountingInterface ui;
    require(checkRangeFormat(text, "X", ui) == valid, "checkRangeFormat and rangeFormatIsValid");
    require(ui.shown == (valid ? 0 : 1), "one message for an invalid text");
    require(rangeFormatMessage(text, "X").find(text) != std::string::npos, "the message quotes the text");
    require(!scalar || valid, "a text without a colon is valid");
    require(!(scalar && form), "scalar and range form at once");

    double minimum = 0, maximum = 0, interval = 0, constant = 0;
    std::int16_t terms = 0;
    const int parseError = raisedError([&] { terms = parseRange(text, minimum, maximum, interval, constant); });
    require(parseError == 0 || parseError == 6 || parseError == 5, "parseRange error number");
    require(!(valid && parseError == 5), "valid text without its second colon");
    if (scalar) {
        require(parseError == 0 && terms == 1 && interval == 0, "scalar parse");
        require(same(minimum, textValue(text)) && same(maximum, minimum) && same(constant, minimum), "scalar values");
    }
    if (parseError == 0) {
        require(same(minimum, rangeMinimum(text)), "minimum");
        require(same(maximum, rangeMaximum(text)), "maximum");
        require(same(scalar ? textValue(text) : interval, rangeInterval(text)), "interval");
        require(same(constant, rangeConstant(text)), "constant");
        require(terms == rangeTermCount(minimum, maximum, interval), "count");
        require(interval != 0 || terms == 1, "zero interval is one term");
    }
    require(raisedError([&] { rangeMinimum(text); }) == 0, "minimum never fails");
    require(raisedError([&] { rangeInterval(text); }) == 0, "interval never fails");
    for (int e : {raisedError([&] { rangeMaximum(text); }), raisedError([&] { rangeConstant(text); })})
        require(e == 0 || e == 5, "maximum and constant fail only as error 5");

    std::string rangeText;
    const int spacedError = raisedError([&] { rangeText = rangeTextOfSpacedLine(text); });
    require(spacedError == 0 || spacedError == 5, "rangeTextOfSpacedLine error number");
    if (spacedError == 0) require(std::count(rangeText.begin(), rangeText.end(), ':') >= 2, "spaced range joined by colons");
}

}  // namespace bm::rangecheck
