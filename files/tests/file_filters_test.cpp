// The filter lists, filter indexes, default extensions and patterns of the dialogs.

#include <gtest/gtest.h>

#include "files/file_filters.h"

namespace bm {
namespace {

const std::string kSingleInAll =
    "One Dim (*.one)|*.one|Two Dim (*.two)|*.two|Three Dim (*.tri)|*.tri|Single Chemical (*.one;*.two;*.tri)|"
    "*.one;*.two;*.tri|";
const std::string kMultiInAll =
    "Multi-Checmical 1-Dim (*.mc1)|*.mc1|Multi-Checmical 2-Dim  (*.mc2)|*.mc2|Multi-Checmical 3-Dim  (*.mc3)|*.mc3|"
    "Multi-Chemical (*.mc1;*.mc2;*.mc3)|*.mc1;*.mc2;*.mc3|Ground Water (*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3)|"
    "*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3|All Files (*.*)|*.*";

TEST(FileFilters, TimeVaryingHasOneListForEveryRoutine) {
    for (int purpose : {0, 1, 2, 7})
        EXPECT_EQ(dataFileFilter(purpose, "Time Varying"), "Time Varying (*.var)|*.var|All Files (*.*)|*.*");
}

TEST(FileFilters, UnsaturatedLists) {
    EXPECT_EQ(dataFileFilter(0, "Unsaturated One Dimensional"),
              "Unsaturated One Dim (*.u1d)|*.u1d|Unsatured Multi-Chemical 1-Dim (*.mcu)|*.mcu|Unsatured Ground Water "
              "(*.u1d;*.mcu)|*.u1d;*.mcu|All Files (*.*)|*.*");
    EXPECT_EQ(dataFileFilter(1, "Unsaturated"),
              "Unsaturated One Dim (*.u1d)|*.u1d|Unsatured Ground Water (*.u1d)|*.u1d|All Files (*.*)|*.*");
    EXPECT_EQ(dataFileFilter(2, "Unsaturated One Dimensional"),
              "Unsaturated Multi-Chemical 1-Dim (*.mcu)|*.mcu|All Files (*.*)|*.*");
}

TEST(FileFilters, SaturatedLists) {
    for (const char* model : {"One Dimensional", "Two Dimensional", "Three Dimensional", ""})
        EXPECT_EQ(dataFileFilter(0, model), kSingleInAll + kMultiInAll);
    EXPECT_EQ(dataFileFilter(1, "One Dimensional"),
              "One Dim (*.one)|*.one|Two Dim (*.two)|*.two|Three Dim (*.tri)|*.tri|Ground Water (*.one;*.two;*.tri)|"
              "*.one;*.two;*.tri|All Files (*.*)|*.*");
    EXPECT_EQ(dataFileFilter(2, ""),
              "Multi-Checmical 1-Dim (*.mc1)|*.mc1|Multi-Checmical 2-Dim  (*.mc2)|*.mc2|Multi-Checmical 3-Dim  "
              "(*.mc3)|*.mc3|Multi-Chemical (*.mc1;*.mc2;*.mc3)|*.mc1;*.mc2;*.mc3|All Files (*.*)|*.*");
    EXPECT_EQ(dataFileFilter(-1, ""), dataFileFilter(2, ""));  // any other purpose is the multi-chemical routine
}

TEST(FileFilters, IndexPointsAtTheModelsEntry) {
    EXPECT_EQ(dataFileFilterIndex(0, "One Dimensional", false), 1);
    EXPECT_EQ(dataFileFilterIndex(0, "Two Dimensional", false), 2);
    EXPECT_EQ(dataFileFilterIndex(0, "Three Dimensional", false), 3);
    EXPECT_EQ(dataFileFilterIndex(0, "One Dimensional", true), 5);
    EXPECT_EQ(dataFileFilterIndex(0, "Two Dimensional", true), 6);
    EXPECT_EQ(dataFileFilterIndex(0, "Three Dimensional", true), 7);
    EXPECT_EQ(dataFileFilterIndex(0, "", false), 9);
    EXPECT_EQ(dataFileFilterIndex(1, "Three Dimensional", false), 3);
    EXPECT_EQ(dataFileFilterIndex(1, "", false), 4);
    EXPECT_EQ(dataFileFilterIndex(2, "Two Dimensional", true), 2);
    EXPECT_EQ(dataFileFilterIndex(2, "Two Dimensional", false), 4);
    EXPECT_EQ(dataFileFilterIndex(0, "Time Varying", true), 1);
    EXPECT_EQ(dataFileFilterIndex(0, "Unsaturated One Dimensional", true), 2);
    EXPECT_EQ(dataFileFilterIndex(0, "Unsaturated One Dimensional", false), 1);
    EXPECT_EQ(dataFileFilterIndex(2, "Unsaturated One Dimensional", true), 1);
}

TEST(FileFilters, DefaultExtensionsAndPatterns) {
    EXPECT_EQ(defaultDataExtension("One Dimensional", false), ".one");
    EXPECT_EQ(defaultDataExtension("One Dimensional", true), ".mc1");
    EXPECT_EQ(defaultDataExtension("Two Dimensional", false), ".two");
    EXPECT_EQ(defaultDataExtension("Two Dimensional", true), ".mc2");
    EXPECT_EQ(defaultDataExtension("Three Dimensional", false), ".tri");
    EXPECT_EQ(defaultDataExtension("Three Dimensional", true), ".mc3");
    EXPECT_EQ(defaultDataExtension("Time Varying", true), ".var");
    EXPECT_EQ(defaultDataExtension("Unsaturated One Dimensional", false), ".U1D");
    EXPECT_EQ(defaultDataExtension("Unsaturated One Dimensional", true), ".MCU");
    EXPECT_EQ(defaultDataExtension("", false), "");
    EXPECT_EQ(defaultDataPattern(0, "Unsaturated One Dimensional", true), "*.MCU");
    EXPECT_EQ(defaultDataPattern(1, "Two Dimensional", false), "*.two");
    EXPECT_EQ(defaultDataPattern(0, "", false), "*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3");
    EXPECT_EQ(defaultDataPattern(1, "", false), "*.one;*.two;*.tri");
    EXPECT_EQ(defaultDataPattern(2, "", true), "*.mc1;*.mc2;*.mc3");
}

}  // namespace
}  // namespace bm
