// Units are words: the menu words, the labels built from them, the first-
// occurrence relabelling and the dataState rule of a unit change.

#include <gtest/gtest.h>

#include "model/data_set.h"
#include "model/units.h"

namespace bm {
namespace {

TEST(Units, MenuIndicesStepByTenInTableOrder) {
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Length, 10), "ft");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Length, 20), "inch");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Length, 30), "m");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Length, 40), "cm");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Time, 10), "yr");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Time, 20), "day");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Time, 30), "hr");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Time, 40), "sec");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Concentration, 10), "mg/l");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Concentration, 20), "ug/l");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Concentration, 30), "ppm");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Concentration, 40), "ppb");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Length, 0), "");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Length, 50), "");
    EXPECT_EQ(unitWordOfIndex(UnitMenu::Length, 15), "");
    EXPECT_EQ(unitIndexOfWord(UnitMenu::Time, "hr"), 30);
    EXPECT_EQ(unitIndexOfWord(UnitMenu::Time, "week"), 0);
}

TEST(Units, MenuCaptions) {
    const auto& length = unitMenuCaptions(UnitMenu::Length);
    EXPECT_STREQ(length[0], "&Feet");
    EXPECT_STREQ(length[1], "&Inches");
    EXPECT_STREQ(length[2], "&Meters");
    EXPECT_STREQ(length[3], "&Centimeters");
    const auto& time = unitMenuCaptions(UnitMenu::Time);
    EXPECT_STREQ(time[0], "&Years");
    EXPECT_STREQ(time[3], "&Seconds");
}

TEST(Units, LabelsAndHeadings) {
    EXPECT_EQ(unitLabel(UnitKind::Velocity, "m", "day"), "(m/day)");
    EXPECT_EQ(unitLabel(UnitKind::Length, "ft", "yr"), "(ft)");
    EXPECT_EQ(unitLabel(UnitKind::Time, "ft", "yr"), "(yr)");
    EXPECT_EQ(unitLabel(UnitKind::Diffusivity, "cm", "sec"), "(cm\u00b2/sec)");
    EXPECT_EQ(unitLabel(UnitKind::VolumeRate, "m", "hr"), "(m\u00b3/hr)");
    EXPECT_EQ(unitLabel(UnitKind::None, "m", "day"), "");
    EXPECT_EQ(timeColumnHeading("day"), "Time (day)");
    EXPECT_EQ(concentrationColumnHeading("One Dimensional", "Finite", "Dirichlet", "mg/l"),
              "Contaminant Conc. at Inflow Boundary (mg/l)");
    EXPECT_EQ(concentrationColumnHeading("Two Dimensional", "Infinite", "Continuous / Point", "ppm"),
              "Contaminant Conc. in the Injection Field (ppm)");
    EXPECT_EQ(concentrationColumnHeading("Two Dimensional", "Infinite", "Continuous Point", "ppm"),
              "Contaminant Conc. in the Injection Field (ppm)");
    EXPECT_EQ(concentrationColumnHeading("Three Dimensional", "Infinite", "Continuous / Point", "ppb"),
              "Contaminant Conc. in the Injection Field (ppb)");
    // a finite aquifer keeps the inflow wording, as does a line source
    EXPECT_EQ(concentrationColumnHeading("Two Dimensional", "Finite", "Continuous / Point", "ppm"),
              "Contaminant Conc. at Inflow Boundary (ppm)");
    EXPECT_EQ(concentrationColumnHeading("Two Dimensional", "Infinite", "Finite / Line", "ppm"),
              "Contaminant Conc. at Inflow Boundary (ppm)");
}

TEST(Units, RelabellingReplacesTheFirstOccurrenceOnly) {
    std::string velocity = "(m/day)";
    std::string twice = "(m/m)";
    std::string none = "(day)";
    relabelUnits("m", "ft", {&velocity, &twice, &none});
    EXPECT_EQ(velocity, "(ft/day)");
    EXPECT_EQ(twice, "(ft/m)");  // the second metre stays
    EXPECT_EQ(none, "(day)");
    // the old word inside an earlier word is what is replaced
    std::string label = "Time of flow (m)";
    relabelUnits("m", "ft", {&label});
    EXPECT_EQ(label, "Tifte of flow (m)");
}

TEST(Units, ChangeSetsDataStateTwoOnlyFromZero) {
    DataSet d;
    d.dataState = kDataUnchanged;
    UnitChoice c = chooseUnit(UnitMenu::Length, 10, "m", d);
    EXPECT_TRUE(c.changed);
    EXPECT_EQ(c.oldWord, "m");
    EXPECT_EQ(c.newWord, "ft");
    EXPECT_EQ(d.dataState, kNeedsSaving);

    d.dataState = kParametersChanged;  // a 1 is never lowered to 2
    chooseUnit(UnitMenu::Time, 10, "day", d);
    EXPECT_EQ(d.dataState, kParametersChanged);

    d.dataState = kDataUnchanged;  // the same unit again changes nothing
    c = chooseUnit(UnitMenu::Length, 30, "m", d);
    EXPECT_FALSE(c.changed);
    EXPECT_EQ(d.dataState, kDataUnchanged);

    d.needsDisplayRefresh = true;  // a file being displayed is not marked changed
    c = chooseUnit(UnitMenu::Length, 40, "m", d);
    EXPECT_TRUE(c.changed);
    EXPECT_EQ(d.dataState, kDataUnchanged);
}

}  // namespace
}  // namespace bm
