// inputForm_validate: each rule of each dimension, in its order, with its
// title, its text, the tab brought forward and the place of the focus.

#include <gtest/gtest.h>

#include "input_form_test_models.h"
#include "montecarlo/monte_marker.h"
#include "saturated/input_validation.h"

namespace bm {
namespace {

using testkit::Screen;

struct Expected {
    std::string title;
    std::string text;
    int tab = -1;
    int row = -1;          // a row of the list, or
    int gridRow = -1;      // a cell of the grid (from 0)
    int gridColumn = 0;
};

void expectFailure(Screen& s, const Expected& e) {
    s.ui.messages.clear();
    s.host.focus.clear();
    EXPECT_FALSE(inputForm_validate(s.form));
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, e.title);
    EXPECT_EQ(s.ui.messages[0].text, e.text);
    EXPECT_EQ(s.ui.messages[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(s.ui.messages[0].buttons, MessageButtons::Ok);
    ASSERT_EQ(s.host.focus.size(), 1u);
    const FocusRequest& f = s.host.focus[0];
    EXPECT_EQ(f.tab, e.tab);
    EXPECT_EQ(s.form.currentTab[static_cast<std::size_t>(s.form.dimension())], e.tab);
    if (e.gridRow >= 0) {
        EXPECT_TRUE(f.grid);
        EXPECT_EQ(f.gridRow, e.gridRow);
        EXPECT_EQ(f.gridColumn, e.gridColumn);
        EXPECT_TRUE(f.editMode);
        EXPECT_EQ(s.form.grid().currentRow, e.gridRow);
        EXPECT_TRUE(s.form.grid().editMode);
    } else {
        EXPECT_FALSE(f.grid);
        EXPECT_EQ(f.row, e.row);
    }
}

void expectPasses(Screen& s) {
    s.ui.messages.clear();
    EXPECT_TRUE(inputForm_validate(s.form));
    EXPECT_TRUE(s.ui.messages.empty()) << (s.ui.messages.empty() ? "" : s.ui.messages[0].text);
}

const std::string kGive = "\r\rPlease give a proper input value.";
const std::string kF1 = "    Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant  (e.g. 0:100:1:50).";
const std::string kF23 = "     Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant (e.g. 0:100:1).";
const std::string kG13 = "    Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant.";
const std::string kG2 = "  Minimum:Maximum:Interval:Constant, Minimum:Maximum:Interval.";

void setGrid(Screen& s, std::vector<Term> terms) {
    s.form.grid().cells = terms;
    s.form.row(dimensionRows(s.form.dimension()).superposition).text = std::to_string(terms.size());
}

// ================================================================ one dimension

struct OneDim : ::testing::Test {
    Screen s{testkit::oneDimScreenModel()};
};

TEST_F(OneDim, ValidModelPasses) { expectPasses(s); }

TEST_F(OneDim, Step1EmptyRowGivesM1InRowOrder) {
    s.form.row(4).text = "  ";
    s.form.row(0).text = "";
    expectFailure(s, {"No input data",
                      "No input value has been given for  Ground Water Darcy Velocity (V)." + kGive, kFieldTab, 0});
    s.form.row(0).text = "0.3";
    expectFailure(s, {"No input data", "No input value has been given for  Time Range (t)." + kGive, kCoordinatesTab, 4});
}

TEST_F(OneDim, Step1SuperpositionRowEmpty) {
    s.form.row(5).text = "";
    expectFailure(s, {"No input data", "No input value has been given for  Superposition Index." + kGive, kBoundaryTab, 5});
}

TEST_F(OneDim, Step2RetardationEmpty) {
    s.form.row(10).text = " ";
    expectFailure(s, {"No input data", "No input value has been given for  Retardation Coefficient (R)." + kGive,
                      kFieldTab, 10});
}

TEST_F(OneDim, Step3RetardationBelowOne) {
    s.form.row(10).text = "0.99";
    expectFailure(s, {"Improper input data",
                      "Retardation Coefficient (R) must be larger than or equal to one." + kGive, kFieldTab, 10});
    s.form.row(10).text = "1";
    expectPasses(s);
}

TEST_F(OneDim, Step4RetardationNotNumeric) {
    s.form.row(10).text = "1.5x";
    expectFailure(s, {"Improper input data",
                      "The input data give for  Retardation Coefficient (R) = 1.5x is not correct." + kGive, kFieldTab,
                      10});
}

TEST_F(OneDim, Step5RangeFormat) {
    s.form.row(3).text = "0:10";
    const std::string one = "The input data give for  X Coordinate Range (x) = 0:10 is not in the proper format.\r\r"
                            "Please use the two format: \r" + kF1;
    expectFailure(s, {"Invalid input format", one, kCoordinatesTab, 3});
    s.form.row(3).text = "0:10:1:5:6";  // four colons
    expectFailure(s, {"Invalid input format",
                      "The input data give for  X Coordinate Range (x) = 0:10:1:5:6 is not in the proper format.\r\r"
                      "Please use the two format: \r" + kF1,
                      kCoordinatesTab, 3});
    s.form.row(3).text = "10";  // a scalar is no range here
    expectFailure(s, {"Invalid input format",
                      "The input data give for  X Coordinate Range (x) = 10 is not in the proper format.\r\r"
                      "Please use the two format: \r" + kF1,
                      kCoordinatesTab, 3});
    s.form.row(3).text = "0:10:1";
    s.form.row(4).text = "0:5";
    expectFailure(s, {"Invalid input format",
                      "The input data give for  Time Range (t) = 0:5 is not in the proper format.\r\r"
                      "Please use the two format: \r" + kF1,
                      kCoordinatesTab, 4});
}

TEST_F(OneDim, Step6CountsNameTheXRow) {
    s.form.row(3).text = "10:0:1";
    const std::string m6 = "The input data give for  X Coordinate Range (x) = 10:0:1 is not in the proper format.\r\r"
                           "Please use the following two formats: \r" + kG13;
    expectFailure(s, {"Invalid input format", m6, kCoordinatesTab, 3});
    EXPECT_EQ(s.data.numXTerms, -9);  // the count is set while it is checked
    s.form.row(3).text = "0:10:1";
    s.form.row(4).text = "5:0:1";
    expectFailure(s, {"Invalid input format",
                      "The input data give for  X Coordinate Range (x) = 0:10:1 is not in the proper format.\r\r"
                      "Please use the following two formats: \r" + kG13,
                      kCoordinatesTab, 3});
}

TEST_F(OneDim, LettersBetweenColonsPassTheFormatTest) {
    // "a:b:c" has the form of a range; its fields read as 0: one term at 0
    s.form.row(3).text = "a:b:c";
    expectPasses(s);
    EXPECT_EQ(s.data.numXTerms, 1);
    // "5:b:1" passes the format test too and fails at the count
    s.form.row(3).text = "5:b:1";
    expectFailure(s, {"Invalid input format",
                      "The input data give for  X Coordinate Range (x) = 5:b:1 is not in the proper format.\r\r"
                      "Please use the following two formats: \r" + kG13,
                      kCoordinatesTab, 3});
}

TEST_F(OneDim, Step7TimeMustStartAtZero) {
    s.form.row(4).text = "1:5:1";
    expectFailure(s, {"Invalid input format", "Time Range (t) should start zero.\r\rPlease set Tmin as zero!",
                      kCoordinatesTab, 4});
}

TEST_F(OneDim, Step8PointRowsTakeTheConstants) {
    s.form.row(3).text = "0:10:1:4";
    s.form.row(4).text = "0:5:0.5";
    s.form.row(6).text = "999";
    s.form.row(7).text = "abc";
    expectPasses(s);
    EXPECT_EQ(s.form.row(6).text, "4");
    EXPECT_EQ(s.form.row(7).text, "5");
    EXPECT_EQ(s.data.numXTerms, 11);
    EXPECT_EQ(s.data.numTTerms, 11);
}

TEST_F(OneDim, TermRule1TimeEmpty) {
    setGrid(s, {{"", "1"}});
    expectFailure(s, {"No input data",
                      "Not all values have been given for Time (day).\r\rPlease give a proper value in row number 1.",
                      kBoundaryTab, -1, 0, 0});
}

TEST_F(OneDim, TermRule2EarlierThanTheFirstIsRefusedEqualPasses) {
    setGrid(s, {{"0", "1"}, {"0", "2"}, {"3", "1"}});
    expectPasses(s);
    setGrid(s, {{"0", "1"}, {"2", "2"}, {"-1", "1"}});
    expectFailure(s, {"Improper input data",
                      "All time values must be greater than 0, which is the  initial time value.\r\rPlease give a "
                      "proper value in row number 3.",
                      kBoundaryTab, -1, 2, 0});
}

TEST_F(OneDim, TermRule3TimeOutsideTheRange) {
    setGrid(s, {{"0", "1"}, {"6", "2"}});
    expectFailure(s, {"Improper input data",
                      "Input value given for Time (day) must be between  0 and 5.\r\rPlease give a proper input value "
                      "in row number 2.",
                      kBoundaryTab, -1, 1, 0});
}

TEST_F(OneDim, TermRule4ConcentrationNotPositiveInAnyRow) {
    setGrid(s, {{"0", "0"}});
    const std::string m11 =
        "The value of initial concentration must be greater than zero.\r\rPlease give a proper value in first row.";
    expectFailure(s, {"Improper input data", m11, kBoundaryTab, -1, 0, 1});
    setGrid(s, {{"0", "1"}, {"2", "-1"}});
    expectFailure(s, {"Improper input data", m11, kBoundaryTab, -1, 1, 1});
    // an empty concentration meets this rule before the empty test
    setGrid(s, {{"0", "1"}, {"2", ""}});
    expectFailure(s, {"Improper input data", m11, kBoundaryTab, -1, 1, 1});
}

TEST_F(OneDim, TermRule6ConcentrationNotNumericRestoresThePointer) {
    setGrid(s, {{"0", "2x"}});
    s.ui.busyCalls.clear();
    expectFailure(s, {"Improper input data",
                      "Contaminant Conc. at Inflow Boundary (mg/l) given is not a numeric value.\r\rPlease give a "
                      "proper value in row number 1.",
                      kBoundaryTab, -1, 0, 1});
    ASSERT_FALSE(s.ui.busyCalls.empty());
    EXPECT_FALSE(s.ui.busyCalls.front());
}

TEST_F(OneDim, TermRule7FirstTimeIsTheStartOfTheRange) {
    setGrid(s, {{"0.5", "1"}});
    expectFailure(s, {"Improper input data",
                      "The first row indicates the initial conditions. The time choosen in there must be the same as "
                      "first element in the Time Range (0).\r\rPlease give a proper value.",
                      kBoundaryTab, -1, 0, 0});
}

TEST_F(OneDim, FirstConcentrationHoldingAMarkerPasses) {
    setGrid(s, {{"0", boundaryCellMarker("2.5", 3, kWideCellMarkerPadding)}});
    expectPasses(s);
}

TEST_F(OneDim, TermsAreCountedByTheSuperpositionRow) {
    // the grid has a bad second row, but the row says one term
    s.form.grid().cells = {{"0", "1"}, {"", ""}};
    s.form.row(5).text = "1";
    expectPasses(s);
    s.form.row(5).text = "2";
    expectFailure(s, {"No input data",
                      "Not all values have been given for Time (day).\r\rPlease give a proper value in row number 2.",
                      kBoundaryTab, -1, 1, 0});
}

TEST_F(OneDim, Step10ConstantOfXOutsideItsRange) {
    s.form.row(3).text = "0:10:1:11";
    expectFailure(s, {"Improper input data",
                      "Input constant value given for  X Coordinate Range (x) must be between  0 and 10." + kGive,
                      kCoordinatesTab, 3});
    // the Constant was written over the point row before the test
    EXPECT_EQ(s.form.row(6).text, "11");
}

TEST_F(OneDim, Step11ConstantOfTimeOutsideItsRange) {
    s.form.row(4).text = "0:5:1:-1";
    expectFailure(s, {"Improper input data",
                      "Input constant value given for  Time Range (t) must be between  0 and 5." + kGive,
                      kCoordinatesTab, 4});
}

TEST_F(OneDim, Steps12To14ZeroValues) {
    s.form.row(1).text = "0";
    expectFailure(s, {"Improper input data",
                      "Zero input value has been given for  Longitudinal Dispersion Coefficient (D)." + kGive,
                      kFieldTab, 1});
    s.form.row(1).text = "0.5";
    s.form.row(2).text = "0.0";
    expectFailure(s, {"Improper input data", "Zero input value has been given for  Contaminant Half-Life." + kGive,
                      kFieldTab, 2});
    s.form.row(2).text = "10";
    s.form.row(8).text = "0";
    expectFailure(s, {"Improper input data", "Zero input value has been given for  Aquifer Porosity (n)." + kGive,
                      kFieldTab, 8});
}

TEST_F(OneDim, ZeroTestsSkipMarkersAndVelocityHasNone) {
    s.form.row(1).text = formFieldMarker("0.5", 2);
    s.form.row(0).text = "0";
    expectPasses(s);
}

// Retardation cannot be drawn by a simulation: a marker in its row is not
// numeric, and the numeric test has no exception for markers.
const std::string kRetardationMarker = "Monte Carlo" + std::string(500, ' ') + "|1.2: 1";

TEST_F(OneDim, RetardationMarkerFailsTheNumericTest) {
    s.form.row(10).text = formFieldMarker("1.2", 1);
    ASSERT_EQ(s.form.row(10).text, kRetardationMarker);
    expectFailure(s, {"Improper input data",
                      "The input data give for  Retardation Coefficient (R) = " + kRetardationMarker +
                          " is not correct." + kGive,
                      kFieldTab, 10});
}

TEST_F(OneDim, SuperpositionCountTooLargeIsAnOverflow) {
    s.form.row(5).text = "40000";
    s.ui.messages.clear();
    EXPECT_FALSE(inputForm_validate(s.form));
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Overflow");
}

TEST_F(OneDim, RangeOfTooManyPointsIsAnOverflow) {
    s.form.row(3).text = "0:100000:1";
    s.ui.messages.clear();
    EXPECT_FALSE(inputForm_validate(s.form));
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Overflow");
    EXPECT_EQ(s.ui.messages[0].text,
              "The input data has resulted in an overflow during analytical computations. Please check the data and "
              "try again.");
}

TEST_F(OneDim, ValidationChangesNothingButPointRowsAndCounts) {
    s.form.row(3).text = "0:10:2:6";
    const DataSet before = s.data;
    expectPasses(s);
    DataSet after = s.data;
    EXPECT_EQ(after.numXTerms, 6);
    after.numXTerms = before.numXTerms;
    after.numTTerms = before.numTTerms;
    EXPECT_TRUE(after.velocity == before.velocity && after.xRange == before.xRange && after.terms == before.terms &&
                after.mcAtX == before.mcAtX && after.dataState == before.dataState);
}

// ================================================================ two dimensions

struct TwoDim : ::testing::Test {
    Screen s{testkit::twoDimScreenModel()};
};

TEST_F(TwoDim, ValidModelPasses) { expectPasses(s); }

TEST_F(TwoDim, Step1EmptyRowsZeroToFourteen) {
    s.form.row(11).text = "";
    expectFailure(s, {"No input data",
                      "No input value has been given for  Center of Contaminant Source in Y Direction (Yc)." + kGive,
                      kBoundaryTab, 11});
}

TEST_F(TwoDim, Step1DisabledRowIsSkipped) {
    // a line source has no x centre: its row is disabled and not tested
    ASSERT_FALSE(s.form.row(10).enabled);
    s.form.row(10).text = "";
    expectPasses(s);
}

TEST_F(TwoDim, Step1PointRowsCountOnlyWhenEnabled) {
    s.form.row(13).text = "";
    ASSERT_FALSE(s.form.row(13).enabled);
    expectPasses(s);  // disabled: skipped, then overwritten with the Constant
    EXPECT_EQ(s.form.row(13).text, "100");
}

TEST_F(TwoDim, Step2RechargeAndThicknessEmpty) {
    s.form.row(16).text = "";
    expectFailure(s, {"No input data", "No input value has been given for  Effective Aquifer Thickness (B)." + kGive,
                      kFieldTab, 16});
    s.form.row(16).text = "10";
    s.form.row(15).text = "";
    expectFailure(s, {"No input data", "No input value has been given for  Net Recharge (q)." + kGive, kFieldTab, 15});
}

TEST_F(TwoDim, Step3And4Retardation) {
    s.form.row(18).text = "";
    expectFailure(s, {"No input data", "No input value has been given for  Retardation Coefficient (R)." + kGive,
                      kFieldTab, 18});
    s.form.row(18).text = "0.99";
    expectFailure(s, {"Improper input data",
                      "Retardation Coefficient (R) must be larger than or equal to one." + kGive, kFieldTab, 18});
}

TEST_F(TwoDim, Step5NotNumericRetardationRaisesTheErrorOfTheMissingRow) {
    // A Monte Carlo marker is no number either.
    for (const std::string& text : {std::string("2q"), kRetardationMarker}) {
        s.form.row(18).text = text;
        s.ui.messages.clear();
        s.host.focus.clear();
        EXPECT_FALSE(inputForm_validate(s.form));
        ASSERT_EQ(s.ui.messages.size(), 1u);
        EXPECT_EQ(s.ui.messages[0].title, "Error");
        EXPECT_EQ(s.ui.messages[0].text,
                  "Error # 340 was generated by brenmoor with the following description: Control array element '18' "
                  "doesn't exist.");
        EXPECT_TRUE(s.host.focus.empty());
    }
}

TEST_F(TwoDim, Step6XAndYFormat) {
    s.form.row(1).text = "-50:50";
    expectFailure(s, {"Invalid input format",
                      "The input data give for  Y Coordinate Range (y) = -50:50 is not in the proper format.\r\r"
                      "Please use the two format: \r" + kF23,
                      kCoordinatesTab, 1});
}

TEST_F(TwoDim, Step7TimeFormatHasItsOwnText) {
    s.form.row(3).text = "0:10";
    expectFailure(s, {"Invalid input format",
                      "The input data give for  Time Range (t) = 0:10 is not in the proper format.\r\r"
                      "Please use the format: \r     Minimum:Maximum:Interval (e.g. 0:100:1).",
                      kCoordinatesTab, 3});
}

TEST_F(TwoDim, Step8CountsNameRowZero) {
    s.form.row(1).text = "50:-50:10";
    expectFailure(s, {"Invalid input format",
                      "The input data give for  X Coordinate Range (x) = 0:100:10 is not in the proper format.\r\r"
                      "Please use the following two formats: \r" + kG2,
                      kCoordinatesTab, 0});
}

TEST_F(TwoDim, Step9TimeStartsAtZero) {
    s.form.row(3).text = "2:10:1";
    expectFailure(s, {"Invalid input format", "Time Range (t) should start zero.\r\rPlease set Tmin as zero!",
                      kCoordinatesTab, 3});
}

TEST_F(TwoDim, Steps10To13PointRowsOverwrittenThenBounded) {
    s.form.row(0).text = "0:100:10:120";
    expectFailure(s, {"Improper input data", "Input value given for  Computation Point x must be between  0 and 100." + kGive,
                      kCoordinatesTab, 13});
    EXPECT_EQ(s.form.row(13).text, "120");
    s.form.row(0).text = "0:100:10:40";
    s.form.row(1).text = "-50:50:10:-60";
    expectFailure(s, {"Improper input data", "Input value given for  Computation Point y must be between  -50 and 50." + kGive,
                      kCoordinatesTab, 12});
    s.form.row(1).text = "-50:50:10:0";
    s.form.row(3).text = "0:10:1:11";
    expectFailure(s, {"Improper input data", "Input value given for  Computation Time t must be between  0 and 10." + kGive,
                      kCoordinatesTab, 14});
    s.form.row(3).text = "0:10:1:2.5";
    expectPasses(s);
    EXPECT_EQ(s.form.row(13).text, "40");
    EXPECT_EQ(s.form.row(12).text, "0");
    EXPECT_EQ(s.form.row(14).text, "2.5");
}

TEST_F(TwoDim, Step14TermsUseTheirOwnGrid) {
    setGrid(s, {{"0", "1"}, {"11", "1"}});
    expectFailure(s, {"Improper input data",
                      "Input value given for Time (day) must be between  0 and 10.\r\rPlease give a proper input value "
                      "in row number 2.",
                      kBoundaryTab, -1, 1, 0});
    EXPECT_EQ(s.form.grid().name, "Input2TG");
}

TEST_F(TwoDim, Step15RechargeNotNegative) {
    s.form.row(15).text = "-0.1";
    expectFailure(s, {"Improper input data",
                      "Input value given for  Net Recharge (q) must be equal to or greater than zero. & Chr(13) & "
                      "Chr(13)Please give a proper input value.",
                      kFieldTab, 15});
    s.form.row(15).text = "0";
    expectPasses(s);
}

TEST_F(TwoDim, Step16ThicknessPositive) {
    s.form.row(16).text = "0";
    expectFailure(s, {"Improper input data",
                      "Input value given for  Effective Aquifer Thickness (B) must be greater than zero. & Chr(13) & "
                      "Chr(13)Please give a proper input value.",
                      kFieldTab, 16});
}

TEST_F(TwoDim, NoZeroTestsOfConstants) {
    s.form.row(5).text = "0";
    s.form.row(6).text = "0";
    s.form.row(9).text = "0";
    expectPasses(s);
}

TEST(TwoDimContinuousPoint, XCentreIsTestedWhenEnabled) {
    Screen s{testkit::twoDimScreenModel("Infinite", "Continuous / Point")};
    ASSERT_TRUE(s.form.row(10).enabled);
    s.form.row(10).text = "";
    expectFailure(s, {"No input data",
                      "No input value has been given for  Center of Contaminant Source in X Direction (Xc)." + kGive,
                      kBoundaryTab, 10});
}

// ================================================================ three dimensions

struct ThreeDim : ::testing::Test {
    Screen s{testkit::threeDimScreenModel()};
};

TEST_F(ThreeDim, ValidModelPasses) { expectPasses(s); }

TEST_F(ThreeDim, Step1EmptyRowsZeroToEighteen) {
    s.form.row(7).text = "";
    expectFailure(s, {"No input data", "No input value has been given for  Height of Contaminant Source (Hs)." + kGive,
                      kBoundaryTab, 7});
}

TEST_F(ThreeDim, Step2RechargeAndThickness) {
    s.form.row(20).text = "";
    expectFailure(s, {"No input data", "No input value has been given for  Effective Aquifer Thickness (B)." + kGive,
                      kFieldTab, 20});
}

TEST_F(ThreeDim, Steps3To5Retardation) {
    s.form.row(22).text = "";
    expectFailure(s, {"No input data", "No input value has been given for  Retardation Coefficient (R)." + kGive,
                      kFieldTab, 22});
    s.form.row(22).text = "0.5";
    expectFailure(s, {"Improper input data",
                      "Retardation Coefficient (R) must be larger than or equal to one." + kGive, kFieldTab, 22});
    s.form.row(22).text = "3 1";
    expectFailure(s, {"Improper input data",
                      "The input data give for  Retardation Coefficient (R) = 3 1 is not correct." + kGive, kFieldTab, 22});
}

TEST_F(ThreeDim, RetardationMarkerFailsTheNumericTest) {
    s.form.row(22).text = kRetardationMarker;
    expectFailure(s, {"Improper input data",
                      "The input data give for  Retardation Coefficient (R) = " + kRetardationMarker +
                          " is not correct." + kGive,
                      kFieldTab, 22});
}

TEST_F(ThreeDim, Step6FormatOfEachRange) {
    s.form.row(2).text = "0:10:5:1:2";
    expectFailure(s, {"Invalid input format",
                      "The input data give for  Z Coordinate Range (z) = 0:10:5:1:2 is not in the proper format.\r\r"
                      "Please use the two format: \r" + kF23,
                      kCoordinatesTab, 2});
    s.form.row(2).text = "0:10:5";
    s.form.row(3).text = "0";
    expectFailure(s, {"Invalid input format",
                      "The input data give for  Time Range (t) = 0 is not in the proper format.\r\r"
                      "Please use the two format: \r" + kF23,
                      kCoordinatesTab, 3});
}

TEST_F(ThreeDim, Step7CountsNameRowZero) {
    s.form.row(2).text = "10:0:5";
    expectFailure(s, {"Invalid input format",
                      "The input data give for  X Coordinate Range (x) = 0:100:10 is not in the proper format.\r\r"
                      "Please use the following two formats: \r" + kG13,
                      kCoordinatesTab, 0});
}

TEST_F(ThreeDim, Step8TimeStartsAtZero) {
    s.form.row(3).text = "1:10:1";
    expectFailure(s, {"Invalid input format", "Time Range (t) should start zero.\r\rPlease set Tmin as zero!",
                      kCoordinatesTab, 3});
}

TEST_F(ThreeDim, Steps9And10PointRows) {
    s.form.row(2).text = "0:10:5:12";
    expectFailure(s, {"Improper input data", "Input value given for  Computation Point z must be between  0 and 10." + kGive,
                      kCoordinatesTab, 18});
    s.form.row(2).text = "0:10:5:5";
    s.form.row(3).text = "0:10:1:10.5";
    expectFailure(s, {"Improper input data", "Input value given for  Computation Time t must be between  0 and 10." + kGive,
                      kCoordinatesTab, 15});
    s.form.row(3).text = "0:10:1";
    expectPasses(s);
    EXPECT_EQ(s.form.row(16).text, "100");
    EXPECT_EQ(s.form.row(17).text, "20");
    EXPECT_EQ(s.form.row(18).text, "5");
    EXPECT_EQ(s.form.row(15).text, "10");
}

TEST_F(ThreeDim, Step11TermsInTheirGrid) {
    setGrid(s, {{"0", "1"}, {"", "1"}});
    expectFailure(s, {"No input data",
                      "Not all values have been given for Time (day).\r\rPlease give a proper value in row number 2.",
                      kBoundaryTab, -1, 1, 0});
    EXPECT_EQ(s.form.grid().name, "Input3TG");
}

TEST_F(ThreeDim, Steps12And13) {
    s.form.row(19).text = "-1";
    expectFailure(s, {"Improper input data",
                      "Input value given for  Net Recharge (q) must be equal to or greater than zero. & Chr(13) & "
                      "Chr(13)Please give a proper input value.",
                      kFieldTab, 19});
    s.form.row(19).text = "0";
    s.form.row(20).text = "-2";
    expectFailure(s, {"Improper input data",
                      "Input value given for  Effective Aquifer Thickness (B) must be greater than zero. & Chr(13) & "
                      "Chr(13)Please give a proper input value.",
                      kFieldTab, 20});
}

// ================================================================ the batch calculator's entry

TEST(ValidateDataSet, ValidFileMayBeCalculatedAndKeepsThePointRows) {
    DataSet d = testkit::oneDimScreenModel();
    d.xRange = "0:10:1:3";
    d.mcAtX = "7";
    testkit::ScriptedUserInterface ui;
    EXPECT_TRUE(validateSaturatedInputs(d, ui));
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(d.mcAtX, "3");
    EXPECT_EQ(d.numXTerms, 11);
}

TEST(ValidateDataSet, FailureIsReportedAndRefused) {
    DataSet d = testkit::twoDimScreenModel();
    d.timeRange = "1:10:1";
    testkit::ScriptedUserInterface ui;
    EXPECT_FALSE(validateSaturatedInputs(d, ui));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, "Time Range (t) should start zero.\r\rPlease set Tmin as zero!");
}

TEST(ValidateDataSet, UnknownModelIsRefused) {
    DataSet d = testkit::twoDimScreenModel("Infinite", "Something Else");
    testkit::ScriptedUserInterface ui;
    EXPECT_FALSE(validateSaturatedInputs(d, ui));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, "Error in setDisplay()");
}

}  // namespace
}  // namespace bm
