// Line and field input, and the code page of the files.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>

#include "file_test_support.h"
#include "files/code_page.h"
#include "files/field_input.h"
#include "files/print_output.h"
#include "shell/base/runtime_error.h"

namespace bm {
namespace {



TEST(FieldInput, LinesEndAtCrLfOrALoneLineFeed) {
    FieldInput in("one\r\ntwo\nthree\rstill three\r\n\r\nlast");
    EXPECT_EQ(in.lineInput(), "one");
    EXPECT_EQ(in.lineInput(), "two");
    EXPECT_EQ(in.lineInput(), "three\rstill three");
    EXPECT_EQ(in.lineInput(), "");
    EXPECT_EQ(in.lineInput(), "last");
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ(raisedError([&] { in.lineInput(); }), 62);
}

TEST(FieldInput, NumbersEndAtBlankCommaOrLineEnd) {
    FieldInput in(" 0,  0.5 ,  0.25 \r\n 10,  .125 -.0625\r\n1E-20,2.5D+3\n");
    EXPECT_EQ(in.numberField(), 0.0);
    EXPECT_EQ(in.numberField(), 0.5);
    EXPECT_EQ(in.numberField(), 0.25);
    EXPECT_EQ(in.numberField(), 10.0);
    EXPECT_EQ(in.numberField(), 0.125);
    EXPECT_EQ(in.numberField(), -0.0625);
    EXPECT_EQ(in.numberField(), 1e-20);
    EXPECT_EQ(in.numberField(), 2500.0);
    EXPECT_TRUE(in.atEnd());
}

TEST(FieldInput, NumberBeforeTheEndMarkerLeavesTheMarkerForTheLine) {
    FieldInput in(" 0.2  0.3 [End Output Data]\r\n\r\n");
    EXPECT_EQ(in.numberField(), 0.2);
    EXPECT_EQ(in.numberField(), 0.3);
    EXPECT_EQ(in.lineInput(), "[End Output Data]");
    EXPECT_EQ(in.lineInput(), "");
    FieldInput glued(",  1,  2[End Output Data]\r\n");
    EXPECT_EQ(glued.textField(), "");
    EXPECT_EQ(glued.numberField(), 1.0);
    EXPECT_EQ(glued.numberField(), 2.0);
    EXPECT_EQ(glued.lineInput(), "[End Output Data]");
}

TEST(FieldInput, EmptyNumberIsZeroAndTextIsTypeMismatch) {
    FieldInput in("1,,3\r\nabc\r\n");
    EXPECT_EQ(in.numberField(), 1.0);
    EXPECT_EQ(in.numberField(), 0.0);
    EXPECT_EQ(in.numberField(), 3.0);
    EXPECT_EQ(raisedError([&] { in.numberField(); }), 13);
}

TEST(FieldInput, NumberTooLargeIsOverflow) {
    FieldInput in("1E999\r\n");
    EXPECT_EQ(raisedError([&] { in.numberField(); }), 6);
}

TEST(FieldInput, TheWritersTextsOfNonNumbersReadBack) {
    FieldInput in(" NaN  Infinity -Infinity \r\n");
    EXPECT_TRUE(std::isnan(in.numberField()));
    EXPECT_EQ(in.numberField(), HUGE_VAL);
    EXPECT_EQ(in.numberField(), -HUGE_VAL);
}

TEST(FieldInput, TextEndsAtCommaOrLineEnd) {
    FieldInput in("  Time , 5 \r\nZCoordinate ,  0 \r\nGround Water Darcy Velocity (V)\r\nVelocity, Darcy\r\n\r\n");
    EXPECT_EQ(in.textField(), "Time ");
    EXPECT_EQ(in.numberField(), 5.0);
    EXPECT_EQ(in.textField(), "ZCoordinate ");
    EXPECT_EQ(in.numberField(), 0.0);
    EXPECT_EQ(in.textField(), "Ground Water Darcy Velocity (V)");
    EXPECT_EQ(in.textField(), "Velocity");  // a comma splits the line
    EXPECT_EQ(in.textField(), "Darcy");
    EXPECT_EQ(in.textField(), "");  // an empty line is an empty text
    EXPECT_EQ(raisedError([&] { in.textField(); }), 62);
}

TEST(FieldInput, QuotedTextRunsToItsClosingQuote) {
    FieldInput in("\"a, b\" , next\r\n\"unclosed\r\nafter\r\n");
    EXPECT_EQ(in.textField(), "a, b");
    EXPECT_EQ(in.textField(), "next");
    EXPECT_EQ(in.textField(), "unclosed");
    EXPECT_EQ(in.lineInput(), "after");
}

TEST(FieldInput, PastTheEndIsError62ForEveryKindOfInput) {
    FieldInput in("");
    EXPECT_EQ(raisedError([&] { in.lineInput(); }), 62);
    EXPECT_EQ(raisedError([&] { in.textField(); }), 62);
    EXPECT_EQ(raisedError([&] { in.numberField(); }), 62);
}

TEST(FieldInput, RoomForValuesIsCheckedAgainstWhatIsLeft) {
    FieldInput in(" 1  2  3 ");  // 9 characters
    EXPECT_NO_THROW(in.requireRoomFor(3));
    EXPECT_EQ(raisedError([&] { in.requireRoomFor(1000); }), 62);
    EXPECT_NO_THROW(in.requireRoomFor(0));
    EXPECT_NO_THROW(in.requireRoomFor(-5));
}

TEST(NumberForms, AsTheFormatWritesThem) {
    EXPECT_EQ(plainInteger(3), "3");
    EXPECT_EQ(signedFieldInteger(101), " 101");
    EXPECT_EQ(signedFieldInteger(-2), "-2");
    EXPECT_EQ(signedFieldReal(0.5), " .5");
    EXPECT_EQ(signedFieldReal(-0.25), "-.25");
    EXPECT_EQ(signedFieldReal(1e-20), " 1E-20");
    EXPECT_EQ(signedFieldReal(10), " 10");
    EXPECT_EQ(streamReal(0.5), " 0.5 ");
    EXPECT_EQ(streamReal(-0.5), "-0.5 ");
    EXPECT_EQ(streamReal(0.1f), " 0.1 ");
    EXPECT_EQ(printFormInteger(3), " 3 ");
    EXPECT_EQ(printFormInteger(-1), "-1 ");
}

TEST(NumberForms, PrintedInPlaceAsTheFormatWritesThem) {
    PrintOutput out;
    out.printSignedReal(0.5);
    out.printSignedReal(-0.25, ", ");
    out.printStreamReal(0.5, "Time ,");
    out.printStreamReal(-0.5);
    out.printStreamReal(0.1f, ", ");
    out.printSignedReal(1e-20);
    EXPECT_EQ(out.text(), " .5, -.25Time , 0.5 -0.5 ,  0.1  1E-20");
    // A label longer than the room kept in front of the number.
    PrintOutput labelled;
    labelled.printStreamReal(0.5, "Concentration ,");
    EXPECT_EQ(labelled.text(), "Concentration , 0.5 ");  // the stream form " 0.5 ", as above
}

TEST(NumberForms, PrintedInPlaceTheSameAsTheirTexts) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> exponent(-30.0, 30.0);
    for (int i = 0; i < 20000; ++i) {
        const double v = (i % 2 ? -1 : 1) * std::pow(10.0, exponent(random));
        const auto f = static_cast<float>(v);
        PrintOutput out;
        out.printSignedReal(v, ", ");
        out.printStreamReal(v);
        out.printStreamReal(f, ", ");
        ASSERT_EQ(out.text(), ", " + signedFieldReal(v) + streamReal(v) + ", " + streamReal(f)) << v;
    }
}

TEST(NumberForms, AValueKeptAsItsStreamFormReadsBackTheSame) {
    // A float widened to double needs more than the 15 digits the stream form
    // writes: 0.1f is 0.100000001490116119384765625.
    const double widened = static_cast<double>(0.1f);
    EXPECT_EQ(asStreamReal(widened), 0.100000001490116);
    EXPECT_NE(asStreamReal(widened), widened);
    EXPECT_EQ(asStreamReal(asStreamReal(widened)), asStreamReal(widened));
    EXPECT_EQ(static_cast<float>(asStreamReal(widened)), 0.1f);
    EXPECT_EQ(asStreamReal(0.25), 0.25);
}

TEST(CodePage, EveryByteReadsAndWritesBack) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_EQ(utf8ToWindows1252(windows1252ToUtf8(all)), all);
}

TEST(CodePage, WesternCharactersMapBothWays) {
    EXPECT_EQ(windows1252ToUtf8("caf\xE9 \x80 \x93x\x94 \xB5g/L \xB0" "C"),
              "caf\xC3\xA9 \xE2\x82\xAC \xE2\x80\x9Cx\xE2\x80\x9D \xC2\xB5g/L \xC2\xB0" "C");
    EXPECT_EQ(utf8ToWindows1252("\xC5\x93\xC5\xB8"), "\x9C\x9F");  // oe, Y diaeresis
}

TEST(CodePage, UnrepresentableCharactersBecomeQuestionMarks) {
    EXPECT_EQ(utf8ToWindows1252("\xCE\xA9"), "?");                  // Greek Omega
    EXPECT_EQ(utf8ToWindows1252("\xE6\xB0\xB4 \xF0\x9F\x98\x80"), "? ?");  // a CJK character, an emoji
    EXPECT_EQ(utf8ToWindows1252("\xC2\x80"), "?");                  // U+0080 has no byte: 0x80 is the euro
    EXPECT_EQ(utf8ToWindows1252("a\xFF" "b\xC3"), "a?b?");          // not UTF-8 at all
    EXPECT_EQ(utf8ToWindows1252("\xED\xA0\x80"), "???");            // a surrogate
    EXPECT_EQ(utf8ToWindows1252("\xC0\xAF"), "??");                 // an overlong form
}

TEST(CodePage, AsciiIsFoundAtEveryPlaceOfAWord) {
    const std::string plain(37, 'a');
    EXPECT_TRUE(isAscii(plain));
    EXPECT_TRUE(isAscii(""));
    for (std::size_t at = 0; at < plain.size(); ++at) {
        std::string text = plain;
        text[at] = '\x80';
        EXPECT_FALSE(isAscii(text)) << "a high byte at " << at;
        text[at] = '\x7F';
        EXPECT_TRUE(isAscii(text)) << "DEL at " << at;
    }
}

TEST(CodePage, AGivenUpTextOfAsciiComesBackUncopied) {
    std::string table;
    for (int i = 0; i < 1000; ++i) table += "12.5, 0.001235, 1.e-5\r\n";
    const std::string expected = table;
    const char* buffer = table.data();
    const std::string bytes = utf8ToWindows1252(std::move(table));
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(bytes.data(), buffer);
    // A text with another character is converted as ever.
    std::string named = expected + "caf\xC3\xA9";
    EXPECT_EQ(utf8ToWindows1252(std::move(named)), expected + "caf\xE9");
}

}  // namespace
}  // namespace bm
