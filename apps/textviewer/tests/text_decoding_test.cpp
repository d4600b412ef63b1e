#include "apps/textviewer/text_decoding.h"

#include <gtest/gtest.h>

namespace bm::textviewer {
namespace {

TEST(TextDecoding, LineEndsBecomeLineFeeds) {
    EXPECT_EQ(decodeText("a\r\nb\rc\nd"), "a\nb\nc\nd");
    EXPECT_EQ(decodeText("\r\n\r\n"), "\n\n");
    EXPECT_EQ(decodeText(""), "");
}

TEST(TextDecoding, Utf8StaysAsItIs) {
    EXPECT_EQ(decodeText("[ Vv \xC2\xB2 ]"), "[ Vv \xC2\xB2 ]");
    EXPECT_EQ(decodeText("\xEF\xBB\xBFGround Water"), "Ground Water");  // the byte-order mark goes
    EXPECT_EQ(decodeText("\xE2\x82\xAC 5"), "\xE2\x82\xAC 5");
}

TEST(TextDecoding, OtherBytesAreWindows1252) {
    EXPECT_EQ(decodeText("[ Vv \xB2 ]"), "[ Vv \xC2\xB2 ]");          // superscript two
    EXPECT_EQ(decodeText("it\x92s"), "it\xE2\x80\x99s");             // right single quote
    EXPECT_EQ(decodeText("\x80"), "\xE2\x82\xAC");                   // euro sign
    EXPECT_EQ(decodeText("\x81"), "\xC2\x81");                       // unused place: kept as a control
    EXPECT_EQ(decodeText("\xC0\xAF"), "\xC3\x80\xC2\xAF");           // an overlong form is not UTF-8
    EXPECT_EQ(decodeText("ab\xE2\x82"), "ab\xC3\xA2\xE2\x80\x9A");  // a sequence cut off at the end
}

TEST(TextDecoding, NulBytesStayVisible) {
    EXPECT_EQ(decodeText(std::string_view("a\0b", 3)), "a\xEF\xBF\xBD" "b");
}

TEST(TextDecoding, Utf8Validity) {
    EXPECT_TRUE(isValidUtf8("plain"));
    EXPECT_TRUE(isValidUtf8("\xF0\x9F\x98\x80"));
    EXPECT_FALSE(isValidUtf8("\xED\xA0\x80"));      // a surrogate
    EXPECT_FALSE(isValidUtf8("\xF4\x90\x80\x80"));  // past U+10FFFF
    EXPECT_FALSE(isValidUtf8("\xE0\x80\x80"));      // overlong
    EXPECT_FALSE(isValidUtf8("\xC2"));
    EXPECT_FALSE(isValidUtf8("\xB2"));
}

}  // namespace
}  // namespace bm::textviewer
