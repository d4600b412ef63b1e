#include <gtest/gtest.h>

#include <cmath>

#include "model/number_text.h"
#include "shell/base/runtime_error.h"

using namespace bm;

TEST(GeneralText, ExamplesOfTheConventions) {
    EXPECT_EQ(generalText(0.1), "0.1");
    EXPECT_EQ(generalText(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(generalText(1e15), "1E+15");
    EXPECT_EQ(generalText(5.6789e-11), "0.000000000056789");
    EXPECT_EQ(generalText(5.6789e-12), "5.6789E-12");
    EXPECT_EQ(generalText(1e-20), "1E-20");
    EXPECT_EQ(generalText(123456789012345680.0), "1.23456789012346E+17");
    EXPECT_EQ(generalText(0.5), "0.5");
    EXPECT_EQ(generalText(0.0), "0");
    EXPECT_EQ(generalText(-2.5), "-2.5");
    EXPECT_EQ(generalText(999999999999999.0), "999999999999999");
    EXPECT_EQ(generalText(0.1 + 0.2), "0.3");
}

TEST(GeneralText, SinglePrecisionKeepsSevenDigits) {
    EXPECT_EQ(generalText(0.1f), "0.1");
    EXPECT_EQ(generalText(1.0f / 3.0f), "0.3333333");
    EXPECT_EQ(generalText(1e7f), "1E+07");
    EXPECT_EQ(generalText(1234567.0f), "1234567");
    EXPECT_EQ(generalText(1.5e-7f), "1.5E-07");
}

TEST(FormatPattern, ExamplesOfTheConventions) {
    EXPECT_EQ(formatPattern(2.55, "#.#"), "2.6");
    EXPECT_EQ(formatPattern(0.5, "#.####"), ".5");
    EXPECT_EQ(formatPattern(-0.25, "#.####"), "-.25");
    EXPECT_EQ(formatPattern(1.00001, "#.####"), "1.");
    EXPECT_EQ(formatPattern(0.0, "#.#"), ".");
    EXPECT_EQ(formatPattern(123456, "#.####e+###"), "1.2346e+5");
    EXPECT_EQ(formatPattern(100000, "#.####e+###"), "1.e+5");
    EXPECT_EQ(formatPattern(99999.5, "#.####e+###"), "1.e+5");
    EXPECT_EQ(formatPattern(0.0005, "#.####e+###"), "5.e-4");
    EXPECT_EQ(formatPattern(1.5e-10, "#.####e+###"), "1.5e-10");
    EXPECT_EQ(formatPattern(5.5, "#.####e+###"), "5.5e+0");
    EXPECT_EQ(formatPattern(1234.5678, "####.###"), "1234.568");
    EXPECT_EQ(formatPattern(0.05, "0.0####"), "0.05");
    EXPECT_EQ(formatPattern(5.5, "0.00####"), "5.50");
}

TEST(FormatPattern, ThousandsGrouping) {
    EXPECT_EQ(formatPattern(1234567, "###,###"), "1,234,567");
    EXPECT_EQ(formatPattern(999, "###,###"), "999");
}

TEST(FormatNumber, PlainWholeNumbersUpTo99999) {
    EXPECT_EQ(formatNumber("5"), "5");
    EXPECT_EQ(formatNumber(5.0), "5");
    EXPECT_EQ(formatNumber("99999"), "99999");
    EXPECT_EQ(formatNumber("100000"), "1.e+5");
    EXPECT_EQ(formatNumber(0.0005), "5.e-4");
}

TEST(FormatNumber, NegativeTakesTheRowOfItsAbsoluteValue) {
    EXPECT_EQ(formatNumber(-0.25), "-0.25");
    EXPECT_EQ(formatNumber(-1234.5678), "-1234.568");
    EXPECT_EQ(formatNumber(-0.0005), "-5.e-4");
}

TEST(FormatNumber, RowsOfTheTable) {
    EXPECT_EQ(formatNumber(1234.5678), "1234.568");
    EXPECT_EQ(formatNumber(123.45678), "123.457");
    EXPECT_EQ(formatNumber(12.345678), "12.3457");
    EXPECT_EQ(formatNumber(1.2345678), "1.2346");
    EXPECT_EQ(formatNumber(0.12345678), "0.12346");
    EXPECT_EQ(formatNumber(0.012345678), "0.01235");
    EXPECT_EQ(formatNumber(0.0012345678), "0.001235");
    EXPECT_EQ(formatNumber(12345.678), "1.2346e+4");
    EXPECT_EQ(formatNumber(1e20), "1.e+20");
}

TEST(FormatNumber, NonNumericTextComesBackUnchanged) {
    EXPECT_EQ(formatNumber("abc"), "abc");
    EXPECT_EQ(formatNumber(" Regular "), " Regular ");
    EXPECT_EQ(formatNumber(""), "");
}

TEST(FormatCell, MonteTextPrintsMonteCarlo) {
    EXPECT_EQ(formatCell("Monte Carlo     |5:1"), "Monte Carlo");
    EXPECT_EQ(formatCell("0.5"), "0.5");
}

TEST(TextValue, LenientPrefix) {
    EXPECT_EQ(textValue("1:50"), 1.0);
    EXPECT_EQ(textValue("  12abc"), 12.0);
    EXPECT_EQ(textValue("1,000"), 1.0);
    EXPECT_EQ(textValue(" 2 45 7"), 2457.0);
    EXPECT_EQ(textValue(""), 0.0);
    EXPECT_EQ(textValue("abc"), 0.0);
    EXPECT_EQ(textValue("-.5"), -0.5);
    EXPECT_EQ(textValue("1e3"), 1000.0);
    EXPECT_EQ(textValue("1D3"), 1000.0);
    EXPECT_EQ(textValue("1e"), 1.0);
    EXPECT_EQ(textValue("&H1F"), 31.0);
    EXPECT_EQ(textValue("&O17"), 15.0);
    EXPECT_EQ(textValue("\t3\n4"), 34.0);
    EXPECT_TRUE(std::isinf(textValue("1e999")));
}

TEST(IsNumeric, Strict) {
    EXPECT_TRUE(isNumeric(" 12 "));
    EXPECT_TRUE(isNumeric("-1.5e-3"));
    EXPECT_TRUE(isNumeric(".5"));
    EXPECT_TRUE(isNumeric("1."));
    EXPECT_FALSE(isNumeric(""));
    EXPECT_FALSE(isNumeric(" "));
    EXPECT_FALSE(isNumeric("1,000"));
    EXPECT_FALSE(isNumeric("$5"));
    EXPECT_FALSE(isNumeric("1e"));
    EXPECT_FALSE(isNumeric("."));
    EXPECT_FALSE(isNumeric("0:100:1"));
    EXPECT_FALSE(isNumeric("1.2.3"));
}

TEST(NumericValue, ErrorsOfTheStrictConversion) {
    EXPECT_EQ(numericValue(" 2.5 "), 2.5);
    try {
        numericValue("abc");
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 13);
    }
    try {
        numericValue("1e999");
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 6);
    }
}

// The values the compiler reads from the same texts, as literals.
TEST(NumericValue, EdgeTextsOfTheStrictConversion) {
    EXPECT_EQ(numericValue(" \t1.5E-05\t "), 1.5E-05);
    EXPECT_EQ(numericValue("+2.5"), 2.5);
    EXPECT_EQ(numericValue("\t-2.5d3"), -2500.0);
    EXPECT_EQ(numericValue("1D-2  "), 0.01);
    EXPECT_EQ(numericValue("1.23456789012346E-05"), 1.23456789012346E-05);
    EXPECT_EQ(numericValue("1.2345678901234E-05"), 1.2345678901234E-05);
    EXPECT_EQ(numericValue("0.123456789012346"), 0.123456789012346);
    EXPECT_EQ(numericValue("0.00123456789012346"), 0.00123456789012346);
    EXPECT_EQ(numericValue("   0.00123456789012346  "), 0.00123456789012346);
    EXPECT_EQ(numericValue("1234567890123456.7890123"), 1234567890123456.7890123);
    EXPECT_EQ(numericValue("0.12345678901234567890123456789"), 0.12345678901234567890123456789);
    EXPECT_EQ(numericValue("9.87654321098765E-300"), 9.87654321098765E-300);
    EXPECT_EQ(numericValue("123456789012345."), 123456789012345.0);
    EXPECT_EQ(numericValue("-.000000000000000000025"), -.000000000000000000025);
    EXPECT_EQ(numericValue("1.7976931348623157e308"), 1.7976931348623157e308);
    const auto errorOf = [](const char* text) {
        try {
            numericValue(text);
        } catch (const RuntimeError& e) {
            return e.number();
        }
        return 0;
    };
    EXPECT_EQ(errorOf("1.7976931348623159e308"), 6);
    EXPECT_EQ(errorOf(" -1D400 "), 6);
    EXPECT_EQ(errorOf("1.5E-05x"), 13);
    EXPECT_EQ(errorOf("0.12345678901234567 8"), 13);
    EXPECT_EQ(errorOf("+"), 13);
    EXPECT_EQ(errorOf(" \t "), 13);
    EXPECT_EQ(errorOf("1.5\n"), 13);
    EXPECT_EQ(errorOf("1.234567890123456E"), 13);
}

TEST(TextAfter, TrimmedRestBehindFirstSeparator) {
    EXPECT_EQ(textAfter("X: 0:100:1", ":"), "0:100:1");
    EXPECT_EQ(textAfter("Author:   Smith  ", ":"), "Smith");
    EXPECT_EQ(textAfter("no separator", ":"), "");
    EXPECT_EQ(textAfter("Graph=/x/y", "="), "/x/y");
}

TEST(ValueOfCell, NumberInsideMarker) {
    const std::string marker = std::string(30, ' ') + "Monte Carlo" + std::string(30, ' ') + "|12.5: 3";
    EXPECT_EQ(valueOfCell(marker), "12.5");
    EXPECT_EQ(valueOfCell("12.5"), "12.5");
    EXPECT_EQ(valueOfCell("monte|1:2"), "monte|1:2");  // no capital M
}

TEST(PrintForms, SignedStreamAndPrint) {
    EXPECT_EQ(signedText(0.5), " .5");
    EXPECT_EQ(signedText(-0.25), "-.25");
    EXPECT_EQ(signedText(1e-20), " 1E-20");
    EXPECT_EQ(signedText(5.0), " 5");
    EXPECT_EQ(signedText(0.0), " 0");
    EXPECT_EQ(signedText(101LL), " 101");
    EXPECT_EQ(signedText(-3LL), "-3");
    EXPECT_EQ(printForm(5LL), " 5 ");
    EXPECT_EQ(printForm(-1LL), "-1 ");
    EXPECT_EQ(streamText(0.5), " 0.5 ");
    EXPECT_EQ(streamText(-0.5), "-0.5 ");
    EXPECT_EQ(streamText(0.1f), " 0.1 ");
}
