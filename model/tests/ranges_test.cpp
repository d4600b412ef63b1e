#include <gtest/gtest.h>

#include "model/ranges.h"
#include "shell/base/runtime_error.h"
#include "testing/scripted_user_interface.h"
#include "shell/base/raised_error.h"

using namespace bm;

using bm::raisedError;

TEST(RangeSpec, ScalarGivesOneTerm) {
    const ParsedRange r = parseRange("5");
    EXPECT_EQ(r.terms, 1);
    EXPECT_EQ(r.constant, 5);
    EXPECT_EQ(r.interval, 0);
    EXPECT_EQ(r.minimum, 5);
    EXPECT_EQ(r.maximum, 5);
}

TEST(RangeSpec, ThreeFieldHoldsAtMaximum) {
    const ParsedRange r = parseRange("0:100:1");
    EXPECT_EQ(r.terms, 101);
    EXPECT_EQ(r.constant, 100);
}

TEST(RangeSpec, FourFieldConstant) {
    const ParsedRange r = parseRange("0:100:1:50");
    EXPECT_EQ(r.terms, 101);
    EXPECT_EQ(r.constant, 50);
}

TEST(RangeSpec, ZeroIntervalIsOneTerm) {
    EXPECT_EQ(parseRange("0:0:0").terms, 1);
    const ParsedRange r = parseRange("0:100:0:7");
    EXPECT_EQ(r.terms, 1);
    EXPECT_EQ(r.constant, 7);
}

TEST(RangeSpec, BlanksAroundTheWhole) {
    EXPECT_TRUE(rangeFormatIsValid(" 0:100:1 "));
    const ParsedRange r = parseRange(" 0:100:1 ");
    EXPECT_EQ(r.terms, 101);
    EXPECT_EQ(r.minimum, 0);
    EXPECT_EQ(r.maximum, 100);
    EXPECT_EQ(r.interval, 1);
}

TEST(RangeSpec, FiveFieldsPassFormatFailFormParseConstantTwo) {
    EXPECT_TRUE(rangeFormatIsValid("0:100:1:2:3"));
    EXPECT_FALSE(isRangeForm("0:100:1:2:3"));
    EXPECT_EQ(parseRange("0:100:1:2:3").constant, 2);
}

TEST(RangeSpec, MoreThan32767TermsOverflows) {
    EXPECT_EQ(raisedError([] { parseRange("0:40000:1"); }), 6);
    EXPECT_EQ(parseRange("0:32766:1").terms, 32767);
}

TEST(RangeSpec, EmptyCellIsAScalarOfZero) {
    EXPECT_TRUE(rangeFormatIsValid(""));
    EXPECT_TRUE(isScalarRange(""));
    const ParsedRange r = parseRange("");
    EXPECT_EQ(r.terms, 1);
    EXPECT_EQ(r.minimum, 0);
    EXPECT_EQ(r.constant, 0);
}

TEST(RangeSpec, RoundingHalfToEven) {
    EXPECT_EQ(parseRange("0:10:3").terms, 4);
    EXPECT_EQ(parseRange("0:10:4").terms, 4);  // 3.5 ties to 4
    EXPECT_EQ(parseRange("0:5:2").terms, 4);   // 3.5 ties to 4
    EXPECT_EQ(parseRange("0:3:2").terms, 2);   // 2.5 ties to 2
    EXPECT_EQ(parseRange("0:100:-1").terms, -99);
}

TEST(RangeSpec, FormatCheck) {
    EXPECT_TRUE(rangeFormatIsValid("a:b:c"));
    EXPECT_FALSE(rangeFormatIsValid("1:2"));
    EXPECT_FALSE(rangeFormatIsValid("1:2:"));
    EXPECT_FALSE(rangeFormatIsValid("1:"));
    EXPECT_FALSE(rangeFormatIsValid("1:2:3:"));
    EXPECT_TRUE(rangeFormatIsValid("1:2:3:4"));
    EXPECT_FALSE(isRangeForm("5"));
    EXPECT_FALSE(isRangeForm("1:2"));
    EXPECT_TRUE(isRangeForm("1:2:3"));
}

TEST(RangeSpec, CheckShowsInputErrorUntrimmed) {
    testkit::ScriptedUserInterface ui;
    EXPECT_FALSE(checkRangeFormat(" 1:2 ", "X", ui));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Input Error");
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(ui.messages[0].text,
              "The input data give for X =  1:2  is not in the proper format.\r\rPlease use the following two formats: "
              "\r    Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant.");
    EXPECT_TRUE(checkRangeFormat("0:1:1", "X", ui));
    EXPECT_EQ(ui.messages.size(), 1u);
}

TEST(RangeSpec, OneColonIsAnInvalidProcedureCall) {
    EXPECT_EQ(raisedError([] { rangeMaximum("1:2"); }), 5);
    EXPECT_EQ(raisedError([] { rangeConstant("1:2"); }), 5);
    EXPECT_EQ(rangeMinimum("1:2"), 1);
}

TEST(RangeSpec, IntervalFieldTakesTheRestLeniently) {
    EXPECT_EQ(rangeInterval("0:100:1:50"), 1);
}

TEST(RangeSpec, IntervalOfASingleNumberIsTheNumberItself) {
    // With no ":" to drop through, the whole text is converted.
    EXPECT_EQ(rangeInterval("7.5"), 7.5);
    EXPECT_EQ(rangeInterval(" 42 "), 42);
    EXPECT_EQ(rangeInterval(""), 0);
    // The parser keeps a scalar's interval at 0, which makes it one term.
    EXPECT_EQ(parseRange("7.5").interval, 0);
    EXPECT_EQ(parseRange("7.5").terms, 1);
}

TEST(RangeSpec, ListValuesByMultiplication) {
    const ParsedRange r = parseRange("0:10:4");
    EXPECT_EQ(rangeValue(4, r.minimum, r.interval), 12);
    // 0.1 added 100 times drifts; multiplication does not.
    EXPECT_EQ(rangeValue(101, 0.0, 0.1), 100 * 0.1);
}

TEST(RangeSpec, OldFormatSpacedRange) {
    EXPECT_EQ(rangeTextOfSpacedLine("X Range: 0 100 1"), "0:100:1");
    EXPECT_EQ(rangeTextOfSpacedLine("Time:  5 50   5  "), "5:50:5");
    EXPECT_EQ(raisedError([] { rangeTextOfSpacedLine("X: 0 100"); }), 5);
}

TEST(RangeSpec, RecordPartsOfASingleNumberStartAtZero) {
    double minimum = -1, maximum = -1, interval = -1;
    assignRange("50", minimum, maximum, interval);
    EXPECT_EQ(minimum, 0);
    EXPECT_EQ(maximum, 50);
    EXPECT_EQ(interval, 0);
    // a range with colons keeps its minimum, even when it counts one term
    assignRange("20:20:1", minimum, maximum, interval);
    EXPECT_EQ(minimum, 20);
    EXPECT_EQ(maximum, 20);
    EXPECT_EQ(interval, 1);
    assignRange("10:30:5:15", minimum, maximum, interval);
    EXPECT_EQ(minimum, 10);
    EXPECT_EQ(maximum, 30);
    EXPECT_EQ(interval, 5);
}
