#include <gtest/gtest.h>

#include "shell/base/common_services.h"
#include "testing/test_paths.h"

using namespace bm;

TEST(KeyFilter, WithoutShiftLettersRefusedButE) {
    shiftHeld = false;
    EXPECT_EQ(filterNumericKey('a'), 0);
    EXPECT_EQ(filterNumericKey('e'), 'e');
    EXPECT_EQ(filterNumericKey('E'), 'E');
    for (char c : std::string("+-.0123456789:")) EXPECT_EQ(filterNumericKey(c), c) << c;
    EXPECT_EQ(filterNumericKey(8), 8);     // backspace
    EXPECT_EQ(filterNumericKey(13), 13);   // return
    EXPECT_EQ(filterNumericKey(','), 0);
    EXPECT_EQ(filterNumericKey('/'), 0);
    EXPECT_EQ(filterNumericKey('D'), 0);
    EXPECT_EQ(filterNumericKey(' '), 32);  // below 33: a control key passes
}

TEST(KeyFilter, WithShiftNothingRefused) {
    shiftHeld = true;
    EXPECT_EQ(filterNumericKey('a'), 'a');
    shiftHeld = false;
}

TEST(ReplaceFirst, OnlyTheFirstOccurrence) {
    EXPECT_EQ(replaceFirst("m", "ft", "Velocity (m/day) in m"), "Velocity (ft/day) in m");
    EXPECT_EQ(replaceFirst("x", "y", "abc"), "abc");
    EXPECT_EQ(replaceFirst("&", "", "&Feet"), "Feet");
}

TEST(SplitPath, AtTheLastSeparator) {
    std::string dir, name;
    splitPath("  /home/u/data/a.one ", dir, name);
    EXPECT_EQ(dir, "/home/u/data");
    EXPECT_EQ(name, "a.one");
    splitPath("C:\\data\\b.two", dir, name);
    EXPECT_EQ(dir, "C:\\data");
    EXPECT_EQ(name, "b.two");
    splitPath("c.tri", dir, name);
    EXPECT_EQ(dir, "");
    EXPECT_EQ(name, "c.tri");
}

TEST(FileTests, FilesAndDirectories) {
    bm::testkit::TempDir dir;
    const std::string f = dir.file(".hidden");
    bm::testkit::writeFileBytes(f, "x");
    EXPECT_TRUE(fileExists(f));
    EXPECT_TRUE(fileExists("  " + f + " "));
    EXPECT_FALSE(fileExists(dir.path().string()));
    EXPECT_TRUE(directoryExists(dir.path().string()));
    EXPECT_FALSE(directoryExists(f));
    EXPECT_FALSE(fileExists(""));
    EXPECT_FALSE(fileExists(dir.file("missing")));
    EXPECT_GT(freeDiskSpace(dir.path().string()), 0.0);
}
