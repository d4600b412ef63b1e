// merlaform without its widgets: rows and captions by source, the "Not Used"
// rows of a line source, the compound units, holdDataSet and setDisplay, the
// read-only lock, and every check before a run with its words.

#include <gtest/gtest.h>

#include "merla_test_screen.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/kind_calculation.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::merlaModel;
using testkit::MerlaScreen;

const char* const kProper = "\rPlease give a proper input value.";

struct SourceWords {
    const char* source;
    const char* caption;
    const char* unit;
    bool line;
};

const SourceWords kSources[] = {
    {"Point (instantaneous)", " Mass Injected at x=0, y=0 and at time t=0 (M)", "mg/m", false},
    {"Point (continuous)", " Mass Injection Rate at x=0, y=0 (M)", "mg/m/day", false},
    {"Point (initial)", " Initial Mass at x=0, y=0 (M)", "mg/m", false},
    {"Point (with initial distribution)", " Initial Mass at x=0, y=0 (M)", "mg/m", false},
    {"Line (instantaneous)", " Mass Injected at x=0 and at time t=0 (M)", "mg/m", true},
    {"Line (continuous)", " Mass Injection Rate at x=0 (M)", "mg/m/day", true},
    {"Line (initial)", " Initial Mass at x=0 (M)", "mg/m", true},
    {"Line (with initial distribution)", " Initial Mass at x=0 (M)", "mg/m", true},
};

TEST(MerlaForm, TheMassRowAndTheYRowsFollowTheSource) {
    for (const SourceWords& w : kSources) {
        MerlaScreen s(merlaModel(w.source));
        EXPECT_EQ(s.form.row(varrow::Mass).caption, w.caption) << w.source;
        EXPECT_EQ(s.form.row(varrow::Mass).unitCaption, w.unit) << w.source;
        EXPECT_EQ(s.form.row(varrow::Mass).text, "1000");
        EXPECT_EQ(s.form.lineSource(), w.line);
        for (int y : {varrow::Y, varrow::PointY}) {
            EXPECT_EQ(s.form.row(y).text, w.line ? "Not Used" : (y == varrow::Y ? "1:5:2" : "3")) << w.source;
            EXPECT_EQ(s.form.row(y).enabled, !w.line) << w.source;
        }
        EXPECT_EQ(s.form.row(varrow::VelocityY).enabled, !w.line) << w.source;
        EXPECT_EQ(s.form.row(varrow::Concentration).unitCaption, w.line ? "mg/m\u00b2" : "mg/m\u00b3");
        EXPECT_EQ(s.form.contaminantCaption, std::string("Contaminant: ") + w.source);
    }
}

TEST(MerlaForm, RowsShowTheirFieldsUnderTheirCaptions) {
    MerlaScreen s(merlaModel());
    const struct {
        int row;
        const char* caption;
        const char* unit;
        const char* text;
    } rows[] = {
        {0, "X Coordinates (x)", "(m)", "10:30:10"},
        {1, "Time Range (t)", "(day)", "20:40:20"},
        {2, "Steady-state Darcy Velocity in X-Direction (u)", "(m/day)", "0.3"},
        {3, "Y Coordinates (y)", "(m)", "1:5:2"},
        {4, "Steady-state Darcy Velocity in Y-Direction (v)", "(m/day)", "0.09"},
        {5, "Molecular Diffusion (Dm)", "(m\u00b2/day)", "0.01"},
        {6, "Retardation Coefficient (R)", "", "2"},
        {7, "Dispersion Ratio Coefficient (a)", "", "0.2"},
        {8, "Maximum Diffusion Coefficient (Do)", "(m)", "5"},
        {9, "First-Order Decay Coefficient (mu)", "(1/day)", "0.001"},
        {10, "Mean Travel Time (k)", "(day)", "20"},
        {12, "X Coordinate", "(m)", "20"},
        {13, "Y Coordinate", "(m)", "3"},
        {14, "Time Value", "(day)", "30"},
        {16, "Aquifer Porosity (n)", "", "0.3"},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(s.form.row(r.row).caption, r.caption) << r.row;
        EXPECT_EQ(s.form.row(r.row).unitCaption, r.unit) << r.row;
        EXPECT_EQ(s.form.row(r.row).text, r.text) << r.row;
        EXPECT_TRUE(s.form.row(r.row).enabled) << r.row;
    }
    EXPECT_THROW(s.form.row(17), RuntimeError);
}

TEST(MerlaForm, TheConstantFunctionLeavesTheTravelTimeUnused) {
    MerlaScreen s(merlaModel("Point (continuous)", "Constant"));
    EXPECT_FALSE(s.form.row(varrow::MeanTravelTime).enabled);
    EXPECT_EQ(s.form.aquiferCaption, "Dispersion Coefficient: Constant");
    for (const char* f : {"Linear", "Asymptotic", "Exponential"}) {
        MerlaScreen t(merlaModel("Point (continuous)", f));
        EXPECT_TRUE(t.form.row(varrow::MeanTravelTime).enabled) << f;
    }
}

TEST(MerlaForm, APointSourceDoesNotShowTheWordsOfALine) {
    DataSet d = merlaModel("Point (continuous)");
    d.yRange = "Not Used";
    d.mcAtY = "Not Used";
    MerlaScreen s(d);
    EXPECT_EQ(s.form.row(varrow::Y).text, "");
    EXPECT_EQ(s.form.row(varrow::PointY).text, "");
    EXPECT_FALSE(s.form.validate());
    EXPECT_EQ(s.ui.lastTitle(), "No input data");
    EXPECT_EQ(s.ui.lastText(), std::string("No input value has been given for Y Coordinates (y).") + kProper);
}

TEST(MerlaForm, WindowTitleNamesTheFileWhenThereIsOne) {
    MerlaScreen s(merlaModel());
    EXPECT_EQ(s.form.windowTitle(), "Ground Water Model with Time Dependent Dispersion Coefficients");
    s.data.currentFileName = "/data/plume.var";
    EXPECT_EQ(s.form.windowTitle(), "Ground Water Model  -- FileName: /data/plume.var");
}

TEST(MerlaForm, HoldDataSetWritesTheRowsToTheirFields) {
    MerlaScreen s(merlaModel("Line (continuous)"));
    s.type(varrow::X, "5:50:5");
    s.type(varrow::MolecularDiffusion, "0.02");
    s.type(varrow::MaximumDiffusion, "7");
    s.type(varrow::MeanTravelTime, "12");
    s.type(varrow::Porosity, "0.25");
    s.type(varrow::Mass, "40");
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.xRange, "5:50:5");
    EXPECT_EQ(s.data.yRange, "Not Used");  // a line source keeps no y
    EXPECT_EQ(s.data.mcAtY, "Not Used");
    EXPECT_EQ(s.data.saturation, "0.02");
    EXPECT_EQ(s.data.bulkDensity, "7");
    EXPECT_EQ(s.data.distributionCoefficient, "12");
    EXPECT_EQ(s.data.porosity, "0.25");
    EXPECT_EQ(s.data.sourceMagnitude, "40");
    EXPECT_EQ(s.data.contaminantType, "Line (continuous)");
    EXPECT_EQ(s.data.aquiferType, "Asymptotic");  // back from "Dispersion Coefficient: Asymptotic"
    EXPECT_EQ(s.data.dataState, kParametersChanged);
    EXPECT_TRUE(s.form.saveEnabled);
}

TEST(MerlaForm, ALineModelSavedAndReadBackShowsTheSameRows) {
    testkit::TempDir dir;
    MerlaScreen s(merlaModel("Line (continuous)", "Exponential"));
    s.type(varrow::Decay, "0.003");
    const std::string path = dir.file("line.var");
    s.ui.fileAnswers.push_back(path);
    s.form.menuFileClick(fileItem::SaveAs);
    for (const auto& m : s.ui.messages) ADD_FAILURE() << m.title << ": " << m.text;
    EXPECT_EQ(s.form.windowTitle(), "Ground Water Model  -- FileName: " + path);

    MerlaScreen other(merlaModel());
    other.data.dataState = kDataUnchanged;
    other.ui.fileAnswers.push_back(path);
    other.form.menuFileClick(fileItem::Open);
    for (const auto& m : other.ui.messages) ADD_FAILURE() << m.title << ": " << m.text;
    for (int i = 0; i < varrow::Count; ++i) {
        EXPECT_EQ(other.form.row(i).text, s.form.row(i).text) << i;
        EXPECT_EQ(other.form.row(i).caption, s.form.row(i).caption) << i;
        EXPECT_EQ(other.form.row(i).enabled, s.form.row(i).enabled) << i;
    }
    EXPECT_EQ(other.form.row(varrow::Y).text, "Not Used");
    EXPECT_EQ(other.form.row(varrow::Decay).text, "0.003");
    EXPECT_EQ(other.form.aquiferCaption, "Dispersion Coefficient: Exponential");
    EXPECT_TRUE(other.form.validate()) << other.ui.lastText();
}

TEST(MerlaForm, AReadSimulationShowsItsResultsOnlyWhenTheyAreComplete) {
    DataSet d = merlaModel();
    d.calculationMode = "Monte Carlo";
    d.monteStore(ModelKind::TimeVarying).monteIterations = 4;
    d.mcResultVar.redim(3);
    MerlaScreen complete(d);
    EXPECT_EQ(complete.form.resultLabel, "Monte Carlo");
    EXPECT_EQ(complete.form.resultCaption, "Monte Carlo Computed at");
    d.mcResultVar.redim(2);
    MerlaScreen partial(d);
    EXPECT_EQ(partial.form.resultLabel, "");
    d.calculationMode = "Regular";
    MerlaScreen regular(d);
    EXPECT_EQ(regular.form.resultLabel, "Regular");
    EXPECT_EQ(regular.form.resultCaption, "Computed at");
}

TEST(MerlaForm, HoldDataSetRefusesASourceOutsideTheEight) {
    MerlaScreen s(merlaModel("Point (pulsed)"));
    EXPECT_FALSE(s.form.holdDataSet());
    EXPECT_EQ(s.ui.lastText(), "There is an error due to Time Varying Model.(Inside holdDataSet)");
}

TEST(MerlaForm, OnlyLengthAndTimeUnitsAreOffered) {
    MerlaScreen s(merlaModel());
    EXPECT_TRUE(s.form.offersUnitMenu(UnitMenu::Length));
    EXPECT_TRUE(s.form.offersUnitMenu(UnitMenu::Time));
    EXPECT_FALSE(s.form.offersUnitMenu(UnitMenu::Concentration));
}

TEST(MerlaForm, AUnitChangeRelabelsTheCompoundUnitsBehindTheirMass) {
    MerlaScreen s(merlaModel("Point (continuous)"));
    s.form.menuUnitsClick(UnitMenu::Length, 10);  // feet
    EXPECT_EQ(s.form.row(varrow::Mass).unitCaption, "mg/ft/day");
    EXPECT_EQ(s.form.row(varrow::Concentration).unitCaption, "mg/ft\u00b3");
    EXPECT_EQ(s.form.row(varrow::X).unitCaption, "(ft)");
    EXPECT_EQ(s.form.row(varrow::VelocityX).unitCaption, "(ft/day)");
    EXPECT_EQ(s.form.row(varrow::MolecularDiffusion).unitCaption, "(ft\u00b2/day)");
    s.form.menuUnitsClick(UnitMenu::Time, 10);  // years
    EXPECT_EQ(s.form.row(varrow::Mass).unitCaption, "mg/ft/yr");
    EXPECT_EQ(s.form.row(varrow::Decay).unitCaption, "(1/yr)");
    EXPECT_EQ(s.form.row(varrow::VelocityX).unitCaption, "(ft/yr)");
    s.form.menuUnitsClick(UnitMenu::Length, 40);  // centimetres
    EXPECT_EQ(s.form.row(varrow::Mass).unitCaption, "mg/cm/yr");
    s.form.menuUnitsClick(UnitMenu::Length, 30);  // back to metres: the "m" of "mg" stays
    EXPECT_EQ(s.form.row(varrow::Mass).unitCaption, "mg/m/yr");
    EXPECT_EQ(s.form.row(varrow::Concentration).unitCaption, "mg/m\u00b3");
    // no value changes with a unit
    EXPECT_EQ(s.form.row(varrow::Mass).text, "1000");
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.lengthUnit, "m");
    EXPECT_EQ(s.data.timeUnit, "yr");
}

TEST(MerlaForm, CompoundRelabellingLeavesTheMassWordAlone) {
    EXPECT_EQ(relabelCompoundUnit("m", "ft", "mg/m/day"), "mg/ft/day");
    EXPECT_EQ(relabelCompoundUnit("day", "sec", "mg/m/day"), "mg/m/sec");
    EXPECT_EQ(relabelCompoundUnit("m", "inch", "mg/m"), "mg/inch");
    EXPECT_EQ(relabelCompoundUnit("yr", "day", "mg/m"), "mg/m");  // a word it does not hold
}

TEST(MerlaForm, AValueUnderMonteCarloControlIsReadOnly) {
    DataSet d = merlaModel();
    d.retardation = formFieldMarker("2", 1);
    MerlaScreen s(d);
    EXPECT_EQ(s.form.monteCarloCaption, "Monte Carlo");
    EXPECT_TRUE(s.form.rowLocked(varrow::Retardation));
    EXPECT_FALSE(s.form.rowLocked(varrow::Porosity));
    EXPECT_FALSE(s.form.rowClicked(varrow::Retardation));
    EXPECT_EQ(s.ui.lastTitle(), "Read Only");
    EXPECT_EQ(s.ui.lastText(),
              "Monte Carlo selected values for Retardation Coefficient (R) are read only.\r\rTo unselect a monte carlo "
              "option please use Generate from the Monte Carlo menu.");
    EXPECT_EQ(s.ui.messages.back().icon, MessageIcon::Exclamation);
    s.host.focus.clear();
    EXPECT_FALSE(s.form.rowKeyPress(varrow::Retardation));
    ASSERT_EQ(s.host.focus.size(), 1u);
    EXPECT_TRUE(s.host.focus[0].next);  // typing sends a Tab
    EXPECT_TRUE(s.form.rowClicked(varrow::Porosity));
    EXPECT_TRUE(s.form.rowKeyPress(varrow::Porosity));
    EXPECT_EQ(s.ui.messages.size(), 2u);
    s.type(varrow::Retardation, "3");  // an edit does not overwrite the marker
    EXPECT_TRUE(holdsMonteMarker(s.form.row(varrow::Retardation).text));
}

TEST(MerlaForm, GenerateOpensTheMonteCarloScreenFromNumbers) {
    DataSet d = merlaModel();
    d.retardation = formFieldMarker("2.5", 1);
    MerlaScreen s(d);
    s.host.monteCarloAvailable = true;
    s.form.menuMonteCarloClick(monteCarloItem::Generate);
    EXPECT_EQ(s.host.monteCarloScreens, 1);
    EXPECT_EQ(s.data.retardation, "2.5");  // the set-up starts from the number the marker stood for
    EXPECT_EQ(s.form.row(varrow::Retardation).text, "2.5");
    EXPECT_FALSE(s.ui.busy);

    MerlaScreen without(merlaModel());  // no Monte Carlo screen in this build
    without.form.menuMonteCarloClick(monteCarloItem::Generate);
    EXPECT_EQ(without.ui.lastTitle(), "Monte Carlo");
}

TEST(MerlaForm, LeavingATypedRangeChecksItAndMovesThePointRows) {
    MerlaScreen s(merlaModel());
    s.type(varrow::X, "10:100:10:40");
    EXPECT_TRUE(s.form.rowLeft(varrow::X));
    EXPECT_EQ(s.form.row(varrow::PointX).text, "40");
    s.type(varrow::Time, "1:2:");
    EXPECT_FALSE(s.form.rowLeft(varrow::Time));
    EXPECT_EQ(s.ui.lastTitle(), "Input Error");
    EXPECT_EQ(s.host.focus.back().row, varrow::Time);
}

// ---------------------------------------------------------------- the checks before a run

struct Check {
    MerlaScreen s;
    explicit Check(DataSet d = merlaModel()) : s(std::move(d)) {}
    bool run() { return s.form.validate(); }
    void expect(const std::string& title, const std::string& text, int row) {
        EXPECT_FALSE(run());
        ASSERT_FALSE(s.ui.messages.empty());
        EXPECT_EQ(s.ui.messages.back().icon, MessageIcon::Exclamation);
        EXPECT_EQ(s.ui.lastTitle(), title);
        EXPECT_EQ(s.ui.lastText(), text);
        ASSERT_FALSE(s.host.focus.empty());
        EXPECT_EQ(s.host.focus.back().row, row);
    }
};

TEST(MerlaValidation, ACompleteModelPasses) {
    for (const SourceWords& w : kSources) {
        Check c(merlaModel(w.source));
        EXPECT_TRUE(c.run()) << w.source << ": " << c.s.ui.lastText();
        EXPECT_TRUE(c.s.ui.messages.empty());
    }
}

TEST(MerlaValidation, EveryRowInUseNeedsAValue) {
    for (int row : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 16}) {
        Check c;
        c.s.type(row, "  ");
        c.expect("No input data",
                 "No input value has been given for " + c.s.form.row(row).caption + "." + kProper, row);
    }
    // the first empty row is named
    Check c;
    c.s.type(9, "");
    c.s.type(4, "");
    c.expect("No input data",
             std::string("No input value has been given for Steady-state Darcy Velocity in Y-Direction (v).") + kProper,
             4);
}

TEST(MerlaValidation, RowsOutOfUseNeedNoValue) {
    DataSet d = merlaModel("Line (instantaneous)", "Constant");
    d.velocityY = "";
    d.distributionCoefficient = "";
    Check c(d);
    EXPECT_TRUE(c.run()) << c.s.ui.lastText();
}

TEST(MerlaValidation, ALineSourcesVelocityInYIsNotLookedAt) {
    DataSet d = merlaModel("Line (continuous)");
    d.velocityY = "-1";  // left from a point source; the row is disabled
    Check c(d);
    EXPECT_TRUE(c.run()) << c.s.ui.lastText();
    Check point(merlaModel("Point (continuous)"));
    point.s.type(varrow::VelocityY, "-1");
    point.expect("Improper input data", "Steady-state Darcy Velocity in Y-Direction (v) must be greater than or equal to 0.",
                 4);
}

TEST(MerlaValidation, XAndTimeMustBeRanges) {
    const std::string tail =
        " is not in the proper format.\rPlease use the two format: \r     Minimum:Maximum:Interval, "
        "Minimum:Maximum:Interval:Constant (e.g. 0:100:1).";
    for (const char* bad : {"10", "10:30", "1:2:3:4:5"}) {
        Check c;
        c.s.type(varrow::X, bad);
        c.expect("Invalid input format", std::string("The input data give for X Coordinates (x) = ") + bad + tail, 0);
    }
    Check t;
    t.s.type(varrow::Time, "20");
    t.expect("Invalid input format", "The input data give for Time Range (t) = 20" + tail, 1);
    Check both;  // x is named before y
    both.s.type(varrow::X, "5");
    both.s.type(varrow::Y, "5");
    both.expect("Invalid input format", "The input data give for X Coordinates (x) = 5" + tail, 0);
}

TEST(MerlaValidation, YMustBeARangeOrNotUsed) {
    Check c;
    c.s.type(varrow::Y, "0");
    c.expect("Invalid input format",
             "The input data give for Y Coordinates (y) = 0 is not in the proper format.\rPlease use the two format: "
             "\r     Minimum:Maximum:Interval, Minimum:Maximum:Interval (e.g. 0:100:1).",
             3);
    // "Not Used" passes the form, the minimum and the maximum tests
    Check line(merlaModel("Line (continuous)"));
    EXPECT_TRUE(line.run()) << line.s.ui.lastText();
}

TEST(MerlaValidation, CoordinatesStartBeyondTheSource) {
    for (const char* bad : {"0:30:10", "-10:30:10", "-Inf:30:10"}) {
        Check c;
        c.s.type(varrow::X, bad);
        c.expect("Improper input data",
                 std::string("The minimum value of X Coordinates (x) must be greater than zero.") + kProper, 0);
    }
    Check y;
    y.s.type(varrow::Y, "-5:5:5");
    y.expect("Improper input data",
             std::string("The minimum value of Y Coordinates (y) must be greater than zero.") + kProper, 3);
    Check tiny;
    tiny.s.type(varrow::X, "0.001:1:0.1");
    EXPECT_TRUE(tiny.run()) << tiny.s.ui.lastText();
    Check time;  // the time range may start at 0
    time.s.type(varrow::Time, "0:40:20");
    EXPECT_TRUE(time.run()) << time.s.ui.lastText();
}

TEST(MerlaValidation, RangesMustNotRunBackwards) {
    Check c;
    c.s.type(varrow::X, "30:10:10");
    c.expect("Improper input data",
             std::string("The maximum value of X Coordinates (x) must be greater than its minimum value.") + kProper, 0);
    Check y;
    y.s.type(varrow::Y, "5:1:2");
    y.expect("Improper input data",
             std::string("The maximum value of Y Coordinates (y) must be greater than its minimum value.") + kProper, 3);
    // both minima are tested before either maximum
    Check order;
    order.s.type(varrow::X, "30:10:10");
    order.s.type(varrow::Y, "0:5:1");
    order.expect("Improper input data",
                 std::string("The minimum value of Y Coordinates (y) must be greater than zero.") + kProper, 3);
    Check equal;
    equal.s.type(varrow::X, "10:10:1");
    EXPECT_TRUE(equal.run()) << equal.s.ui.lastText();
    Check unbounded;  // an unbounded maximum is never below its minimum
    unbounded.s.type(varrow::X, "10:Inf:10");
    unbounded.s.type(varrow::Y, "1:+inf:1");
    EXPECT_TRUE(unbounded.run()) << unbounded.s.ui.lastText();
    Check below;
    below.s.type(varrow::X, "10:-Inf:10");
    below.expect("Improper input data",
                 std::string("The maximum value of X Coordinates (x) must be greater than its minimum value.") + kProper,
                 0);
}

TEST(MerlaValidation, ConstantsMayNotBeNegative) {
    for (int row : {2, 4, 5, 7, 8, 9}) {
        Check c;
        c.s.type(row, "-0.001");
        c.expect("Improper input data", c.s.form.row(row).caption + " must be greater than or equal to 0.", row);
        Check zero;
        zero.s.type(row, "0");
        EXPECT_TRUE(zero.run()) << row << ": " << zero.s.ui.lastText();
        DataSet d = merlaModel();
        Check marker;
        marker.s.type(row, "");
        marker.s.form.rows()[static_cast<std::size_t>(row)].text = formFieldMarker("-1", 1);
        EXPECT_TRUE(marker.run()) << row << ": " << marker.s.ui.lastText();
    }
    // in their order: u before Dm
    Check c;
    c.s.type(5, "-1");
    c.s.type(2, "-1");
    c.expect("Improper input data", "Steady-state Darcy Velocity in X-Direction (u) must be greater than or equal to 0.",
             2);
}

TEST(MerlaValidation, RetardationIsAtLeastOne) {
    Check c;
    c.s.type(varrow::Retardation, "0.5");
    c.expect("Improper input data", "Retardation Coefficient (R) must be greater than or equal to 1.", 6);
    Check one;
    one.s.type(varrow::Retardation, "1");
    EXPECT_TRUE(one.run());
    Check marker;
    marker.s.form.rows()[varrow::Retardation].text = formFieldMarker("0.5", 2);
    EXPECT_TRUE(marker.run()) << marker.s.ui.lastText();
    // the constants' rule comes first
    Check order;
    order.s.type(varrow::Retardation, "0.5");
    order.s.type(varrow::Decay, "-1");
    order.expect("Improper input data", "First-Order Decay Coefficient (mu) must be greater than or equal to 0.", 9);
}

TEST(MerlaValidation, TravelTimeIsCheckedOnlyWhereUsed) {
    Check c;
    c.s.type(varrow::MeanTravelTime, "-2");
    c.expect("Improper input data", "Mean Travel Time (k) must be greater than or equal to 0.", 10);
    DataSet d = merlaModel("Point (instantaneous)", "Constant");
    d.distributionCoefficient = "-2";
    Check constant(d);
    EXPECT_TRUE(constant.run()) << constant.s.ui.lastText();
}

TEST(MerlaValidation, PorosityLiesInZeroToOne) {
    for (const char* bad : {"0", "-0.1", "1.0001"}) {
        Check c;
        c.s.type(varrow::Porosity, bad);
        c.expect("Improper input data", "Aquifer Porosity (n) must be greater than 0 and less than or equal to 1.", 16);
    }
    for (const char* good : {"1", "0.0001"}) {
        Check c;
        c.s.type(varrow::Porosity, good);
        EXPECT_TRUE(c.run()) << good;
    }
    Check marker;
    marker.s.form.rows()[varrow::Porosity].text = formFieldMarker("0", 3);
    EXPECT_TRUE(marker.run());
}

TEST(MerlaValidation, TheBatchCalculatorChecksTheDataSetAlike) {
    const KindCalculation* kind = kindCalculationFor(ModelKind::TimeVarying);
    ASSERT_NE(kind, nullptr);
    ASSERT_TRUE(kind->validate);
    testkit::ScriptedUserInterface ui;
    DataSet good = merlaModel("Line (initial)");
    EXPECT_TRUE(kind->validate(good, ui));
    EXPECT_TRUE(ui.messages.empty());
    DataSet bad = merlaModel();
    bad.yRange = "0";
    EXPECT_FALSE(kind->validate(bad, ui));
    EXPECT_EQ(ui.lastTitle(), "Invalid input format");
    DataSet porous = merlaModel();
    porous.porosity = "0";
    EXPECT_FALSE(kind->validate(porous, ui));
    EXPECT_EQ(ui.lastText(), "Aquifer Porosity (n) must be greater than 0 and less than or equal to 1.");
}

}  // namespace
}  // namespace bm
