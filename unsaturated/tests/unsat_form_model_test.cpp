// unsatForm without its widgets: its rows, captions and units, the read-only
// superposition index of a decaying source, holdDataSet and setDisplay, the
// edit checks, every check before a run with its words and in its order, and
// the printed report.

#include <gtest/gtest.h>

#include "model/number_text.h"
#include "montecarlo/pass/kind_calculation.h"
#include "shell/screen/printed_lines.h"
#include "unsat_test_screen.h"
#include "unsaturated/form/unsat_report.h"
#include "unsaturated/unsat_radicand.h"

namespace bm {
namespace {

using testkit::unsatModel;
using Screen = testkit::UnsatScreen<>;

const char* const kProper = "\r\rPlease give a proper input value.";

using testkit::expectAccepted;
using testkit::expectRefused;

TEST(UnsatForm, RowsShowTheirFieldsUnderTheirCaptionsAndUnits) {
    Screen s(unsatModel());
    const struct {
        int row;
        const char* caption;
        const char* unit;
        const char* text;
    } rows[] = {
        {unsatrow::Percolation, " Steady-State Percolation Rate (Q)", "(m/day)", "0.001"},
        {unsatrow::Dispersion, " Dispersion Coefficient (Dv)", "(m\u00b2/day)", "0.01"},
        {unsatrow::HalfLife, " Contaminant Halflife", "(day)", "365"},
        {unsatrow::X, " Depth Range (z)", "(m)", "0:10:0.5:5"},
        {unsatrow::Time, " Time Range (t)", "(day)", "0:730:73:365"},
        {unsatrow::Superposition, " Superposition Index", "", "1"},
        {unsatrow::PointX, " Computation Depth z", "(m)", "5"},
        {unsatrow::PointT, " Computation Time t", "(day)", "365"},
        {unsatrow::BulkDensity, " Bulk Density of Unsaturated Zone", "(g/cm\u00b3)", "1.6"},
        {unsatrow::Distribution, " Contaminant Distribution Coefficient (Kd)", "(cm\u00b3/g)", "0.1"},
        {unsatrow::Porosity, " Aquifer Porosity (n)", "", "0.6"},
        {unsatrow::Saturation, " Saturation (Sw)", "", "0.35"},
        {unsatrow::SourceDecay, " Source Concentration Decay Rate", "(1/day)", "0.0005"},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(s.form.row(r.row).caption, r.caption) << r.row;
        EXPECT_EQ(s.form.row(r.row).unitCaption, r.unit) << r.row;
        EXPECT_EQ(s.form.row(r.row).text, r.text) << r.row;
        EXPECT_TRUE(s.form.row(r.row).inUse) << r.row;
    }
    EXPECT_FALSE(s.form.row(unsatrow::Chemicals).inUse);
    EXPECT_EQ(s.form.grid().name, "Input1TG");
    EXPECT_EQ(s.form.grid().timeHeading, "Time (day)");
    EXPECT_EQ(s.form.grid().concentrationHeading, "Contaminant Conc. at Inflow Boundary (mg/l)");
    EXPECT_THROW(s.form.row(15), RuntimeError);
}

TEST(UnsatForm, TheMonteCarloScreenFindsEveryVariantByItsRowCaption) {
    Screen s(unsatModel());
    const KindCalculation* kind = kindCalculationOf(s.data);
    ASSERT_NE(kind, nullptr);
    ASSERT_TRUE(kind->monteVariants);
    const auto variants = kind->monteVariants(s.data);
    ASSERT_EQ(variants.size(), 7u);
    for (const MonteVariant& v : variants) {
        bool found = false;
        for (const UnsatRow& r : s.form.rows()) found = found || trim(r.caption) == v.name;
        EXPECT_TRUE(found) << v.name;
    }
}

TEST(UnsatForm, TheWindowTitleNamesTheFile) {
    Screen s(unsatModel());
    EXPECT_EQ(s.form.windowTitle(), "Ground Water Model (Unsaturated)");
    s.data.currentFileName = "column.u1d";
    EXPECT_EQ(s.form.windowTitle(), "Ground Water Model (Unsaturated) -- FileName: column.u1d");
}

TEST(UnsatForm, AConstantInletShowsNoDecayRateAndTakesLaterTerms) {
    Screen s(unsatModel("Dirichlet"));
    EXPECT_FALSE(s.form.row(unsatrow::SourceDecay).inUse);
    EXPECT_FALSE(s.form.row(unsatrow::Superposition).readOnly);
    EXPECT_FALSE(s.form.rowLocked(unsatrow::Superposition));
    s.type(unsatrow::Superposition, "3");
    EXPECT_TRUE(s.form.rowLeft(unsatrow::Superposition));
    EXPECT_EQ(s.form.grid().cells.size(), 3u);
    EXPECT_EQ(s.form.grid().cells[0].time, "0");  // the earlier term kept
    EXPECT_EQ(s.form.grid().cells[2].time, "");
    // The decay rate is neither written back nor tested: an absurd one passes.
    s.data.sourceDecayRate = "kept";
    s.form.row(unsatrow::SourceDecay).text = "-5";
    s.form.grid().cells[1] = Term{"100", "0.5"};
    s.form.grid().cells[2] = Term{"200", "0"};
    expectAccepted(s);
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.sourceDecayRate, "kept");
    EXPECT_EQ(s.data.superpositionIndex, 3);
    EXPECT_EQ(s.data.terms(3).time, "200");
}

TEST(UnsatForm, TheSuperpositionIndexOfADecayingSourceIsReadOnly) {
    Screen s(unsatModel());
    EXPECT_TRUE(s.form.row(unsatrow::Superposition).readOnly);
    EXPECT_TRUE(s.form.rowLocked(unsatrow::Superposition));
    s.type(unsatrow::Superposition, "4");
    EXPECT_EQ(s.form.row(unsatrow::Superposition).text, "1");
    s.host.focus.clear();
    s.form.rowEntered(unsatrow::Superposition);
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Read Only");
    EXPECT_EQ(s.ui.messages[0].text, "Superposition Index values for Dirichlet/Exponential Condition\r\ris read only.");
    ASSERT_FALSE(s.host.focus.empty());
    EXPECT_TRUE(s.host.focus.back().next);  // the focus goes on as by a Tab
    EXPECT_FALSE(s.form.rowClicked(unsatrow::Superposition));
    EXPECT_EQ(s.ui.messages.size(), 2u);
}

TEST(UnsatForm, AMarkedRowIsReadOnlyByTheMonteCarloWords) {
    DataSet d = unsatModel();
    d.velocity = "Monte Carlo" + std::string(300, ' ') + "|0.001: 1";
    Screen s(std::move(d));
    EXPECT_TRUE(s.form.rowLocked(unsatrow::Percolation));
    EXPECT_EQ(s.form.monteCarloCaption, "Monte Carlo");
    EXPECT_FALSE(s.form.rowKeyPress(unsatrow::Percolation));
    EXPECT_EQ(s.ui.lastText(), "Monte Carlo selected values for  Steady-State Percolation Rate (Q) are read only.\r\r"
                               "To unselect a monte carlo option please use Generate from the Monte Carlo menu.");
    s.type(unsatrow::Percolation, "0.5");
    EXPECT_NE(s.form.row(unsatrow::Percolation).text, "0.5");
}

TEST(UnsatForm, HoldDataSetAndSetDisplayKeepEveryRow) {
    Screen s(unsatModel());
    s.type(unsatrow::Percolation, "0.002");
    s.type(unsatrow::HalfLife, "100");
    s.type(unsatrow::SourceDecay, "0.0001");
    s.form.gridEdited(0, 1, "2.5");
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.velocity, "0.002");
    EXPECT_EQ(s.data.halfLife, "100");
    EXPECT_EQ(s.data.sourceDecayRate, "0.0001");
    EXPECT_EQ(s.data.terms(1).concentration, "2.5");
    Screen again(s.data);
    for (int r = 0; r < unsatrow::Count; ++r) EXPECT_EQ(again.form.row(r).text, s.form.row(r).text) << r;
    EXPECT_EQ(again.form.grid().cells[0].concentration, "2.5");
}

TEST(UnsatForm, ARangeOfTheWrongFormIsRefusedOnLeavingAndTheSelectedPointFollowsTheConstant) {
    Screen s(unsatModel());
    s.type(unsatrow::X, "0:10");
    EXPECT_FALSE(s.form.rowLeft(unsatrow::X));
    EXPECT_EQ(s.ui.messages.back().title, "Input Error");
    s.type(unsatrow::X, "0:20:1:7");
    EXPECT_TRUE(s.form.rowLeft(unsatrow::X));
    EXPECT_EQ(s.form.row(unsatrow::PointX).text, "7");
    s.type(unsatrow::Time, "0:100:10:30");
    EXPECT_TRUE(s.form.rowLeft(unsatrow::Time));
    EXPECT_EQ(s.form.row(unsatrow::PointT).text, "30");
}

TEST(UnsatForm, AWrongSuperpositionIndexIsRefusedOnLeaving) {
    Screen s(unsatModel("Dirichlet"));
    s.type(unsatrow::Superposition, "0");
    EXPECT_FALSE(s.form.rowLeft(unsatrow::Superposition));
    EXPECT_EQ(s.ui.lastText(), "'0' is not a valid input value.\r\rThe value of Superposition Index must be greater "
                               "than or equal to 1.");
}

TEST(UnsatForm, TheCompleteModelPasses) {
    Screen s(unsatModel());
    expectAccepted(s);
    Screen constant(unsatModel("Dirichlet"));
    expectAccepted(constant);
}

TEST(UnsatForm, EveryRowInUseMustHaveAValue) {
    for (int r : {unsatrow::Percolation, unsatrow::Dispersion, unsatrow::HalfLife, unsatrow::X, unsatrow::Time,
                  unsatrow::PointX, unsatrow::PointT, unsatrow::BulkDensity, unsatrow::Distribution, unsatrow::Porosity,
                  unsatrow::Saturation, unsatrow::SourceDecay}) {
        Screen s(unsatModel());
        s.type(r, " ");
        expectRefused(s, "No input data", "No input value has been given for " + s.form.row(r).caption + "." + kProper);
        ASSERT_FALSE(s.host.focus.empty());
        EXPECT_EQ(s.host.focus.back().row, r);
    }
}

TEST(UnsatForm, RangesMustHaveTheirForm) {
    Screen s(unsatModel());
    s.type(unsatrow::Time, "0:730");
    expectRefused(s, "Invalid input format",
                  "The input data give for  Time Range (t) = 0:730 is not in the proper format.\r\rPlease use the two "
                  "format: \r     Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant (e.g. 0:100:1).");
    // A single number is the column from 0 to it.
    Screen single(unsatModel());
    single.type(unsatrow::X, "10");
    single.type(unsatrow::Time, "730");
    expectAccepted(single);
}

TEST(UnsatForm, TheTimeRangeStartsAtZeroAndRunsForward) {
    Screen s(unsatModel());
    s.type(unsatrow::Time, "1:730:73:365");
    expectRefused(s, "Invalid input format", "Time Range (t) should start zero.\r\rPlease set Tmin as zero!");
    s.type(unsatrow::Time, "0:730:73:365");
    s.type(unsatrow::X, "10:0:1:5");  // counts -9 depths
    expectRefused(s, "Invalid input format",
                  "The input data given for z coordinates are invalid.\r\rPlease check the input data.");
    s.type(unsatrow::X, "0:10:0.5:5");
    s.type(unsatrow::Time, "0:-10:1:0");
    expectRefused(s, "Improper input data", "Maximum time is less than minimum time value.\r\rPlease check the input data.");
    s.type(unsatrow::Time, "0:10:-1:0");
    expectRefused(s, "Improper input data", "Time interval is less than zero. Please check the input data.");
}

TEST(UnsatForm, TheTermsAreCheckedRowByRow) {
    Screen s(unsatModel("Dirichlet"));
    s.type(unsatrow::Superposition, "3");
    ASSERT_TRUE(s.form.rowLeft(unsatrow::Superposition));
    const std::string timeColumn = "Time (day)";
    const std::string concentrationColumn = "Contaminant Conc. at Inflow Boundary (mg/l)";
    auto& g = s.form.grid().cells;

    expectRefused(s, "No input data", "Not all values have been given for " + timeColumn +
                                          ".\r\rPlease give a proper value in row number 2.");
    EXPECT_TRUE(s.host.focus.back().grid);
    EXPECT_EQ(s.host.focus.back().gridRow, 1);
    g[1] = Term{"100", "0.5"};
    g[2] = Term{"-1", "0.5"};
    expectRefused(s, "Improper input data",
                  "All time values must be greater than 0, which is the  initial time value.\r\rPlease give a proper "
                  "value in row number 3.");
    g[2] = Term{"800", "0.5"};
    expectRefused(s, "Improper input data",
                  "Input value given for " + timeColumn + " must be between  0 and 730.\r\rPlease give a proper input "
                  "value in row number 3.");
    g[2] = Term{"200", ""};
    expectRefused(s, "No input data", "Not all values have been given for " + concentrationColumn +
                                          ".\r\rPlease give a proper value in row number 3.");
    g[2] = Term{"200", "abc"};
    expectRefused(s, "Improper input data",
                  concentrationColumn + " given is not a numeric value.\r\rPlease give a proper value in row number 3.");
    // A later concentration of zero (the source switched off) passes; the first must be above zero.
    g[2] = Term{"200", "0"};
    expectAccepted(s);
    g[0] = Term{"0", "0"};
    expectRefused(s, "Improper input data",
                  "The value of initial concentration must be greater than zero.\r\rPlease give a proper value in first row.");
    g[0] = Term{"0", "Monte Carlo" + std::string(300, ' ') + "|1: 1"};
    expectAccepted(s);
    s.type(unsatrow::Time, "0:730:73:365");
    g[0] = Term{"50", "1"};
    g[1] = Term{"100", "0.5"};
    expectRefused(s, "Improper input data",
                  "The first row indicates the initial conditions. The time choosen in there must be the same as first "
                  "element in the Time Range (0).\r\rPlease give a proper value.");
}

TEST(UnsatForm, TheSelectedPointLiesInTheRanges) {
    Screen s(unsatModel());
    s.type(unsatrow::PointX, "11");
    expectRefused(s, "Improper input data",
                  "Input value given for  Computation Depth z must be between  0 and 10." + std::string(kProper));
    s.type(unsatrow::PointX, "10");
    s.type(unsatrow::PointT, "-1");
    expectRefused(s, "Improper input data",
                  "Input value given for  Computation Time t must be between  0 and 730." + std::string(kProper));
}

TEST(UnsatForm, TheConstantsAreCheckedInTheirOrder) {
    const struct {
        int row;
        const char* text;
        std::string message;
    } cases[] = {
        {unsatrow::Percolation, "-0.001", "Less than zero input value has been given for  Steady-State Percolation Rate (Q)."},
        {unsatrow::Dispersion, "0", "Zero input value has been given for  Dispersion Coefficient (Dv)."},
        {unsatrow::HalfLife, "0", "Zero input value has been given for  Contaminant Halflife."},
        {unsatrow::Porosity, "0", "Zero input value has been given for  Aquifer Porosity (n)."},
        {unsatrow::Porosity, "1.01", "Larger than one input value has been given for  Aquifer Porosity (n)."},
        {unsatrow::Saturation, "0", "Zero or less than zero input value has been given for  Saturation (Sw)."},
        {unsatrow::Saturation, "-0.1", "Zero or less than zero input value has been given for  Saturation (Sw)."},
        {unsatrow::Saturation, "1.01", "Larger  than one input value has been given for  Saturation (Sw)."},
        {unsatrow::Saturation, "0.61", " Saturation (Sw) is larger than  Aquifer Porosity (n)."},
    };
    for (const auto& c : cases) {
        Screen s(unsatModel());
        s.type(c.row, c.text);
        expectRefused(s, "Improper input data", c.message + kProper);
        EXPECT_EQ(s.host.focus.back().row, c.row);
    }
    // The first failing row speaks: a zero dispersion before a zero porosity.
    Screen both(unsatModel());
    both.type(unsatrow::Porosity, "0");
    both.type(unsatrow::Dispersion, "0");
    expectRefused(both, "Improper input data",
                  "Zero input value has been given for  Dispersion Coefficient (Dv)." + std::string(kProper));
}

TEST(UnsatForm, PorosityAndSaturationOfOneAreAccepted) {
    Screen s(unsatModel());
    s.type(unsatrow::Porosity, "1");
    s.type(unsatrow::Saturation, "1");
    expectAccepted(s);
    s.type(unsatrow::Saturation, "0.6");
    s.type(unsatrow::Porosity, "0.6");
    expectAccepted(s);  // equal is not larger
    s.type(unsatrow::Percolation, "0");
    expectAccepted(s);  // no percolation: pure diffusion
}

TEST(UnsatForm, AMarkedValueSkipsItsOwnTests) {
    const std::string marker = "Monte Carlo" + std::string(300, ' ') + "|0: 1";
    for (int r : {unsatrow::Percolation, unsatrow::Dispersion, unsatrow::HalfLife, unsatrow::Porosity}) {
        DataSet d = unsatModel();
        Screen s(std::move(d));
        s.form.row(r).text = marker;  // as the Monte Carlo screen leaves it: a zero carried
        expectAccepted(s);
    }
    // A marked saturation is not compared with the porosity.
    Screen s(unsatModel());
    s.form.row(unsatrow::Saturation).text = "Monte Carlo" + std::string(300, ' ') + "|0.9: 1";
    expectAccepted(s);
}

// Source decay gamma = 0.002 per day against lambda = ln 2 / 365 = 0.0018990 per
// day; R = 1 + 1.6 * 0.1 / (0.6 * 0.35) = 1.76190, V = 0.001 / 0.21 = 0.0047619:
// (0.0018990 - 1.76190 * 0.002) * 4 * 0.01 + 0.0047619^2 = -4.23e-5 < 0.
TEST(UnsatForm, ADecayingSourceWhoseSquareRootTurnsNegativeIsRefused) {
    Screen s(unsatModel());
    s.type(unsatrow::SourceDecay, "0.002");
    s.ui.messages.clear();
    EXPECT_FALSE(s.form.validate());
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(s.ui.messages[0].title, "Improper input data");
    EXPECT_EQ(s.ui.messages[0].text,
              "During computation of analytical solution the value of expression: \r\r[ Vv \u00b2 + 4 * Dv * ( First "
              "Order Degration Rate - Source Decay Rate * R ) ]   is less than zero.\r\r The input values must be "
              "modified in order to compute the solution.");
    // gamma = 0.0015: (0.0018990 - 0.0026429) * 0.04 + 2.2676e-5 = -7.0e-6 < 0, still refused;
    // gamma = 0.0013: (0.0018990 - 0.0022905) * 0.04 + 2.2676e-5 = +7.0e-6 > 0, accepted.
    s.type(unsatrow::SourceDecay, "0.0015");
    EXPECT_FALSE(s.form.validate());
    s.type(unsatrow::SourceDecay, "0.0013");
    expectAccepted(s);
}

TEST(UnsatForm, TheSquareRootTestIsLeftToTheSimulationWhenARowIsMarked) {
    for (int r : {unsatrow::Percolation, unsatrow::Dispersion, unsatrow::HalfLife, unsatrow::BulkDensity,
                  unsatrow::Distribution, unsatrow::Porosity, unsatrow::Saturation}) {
        Screen s(unsatModel());
        s.type(unsatrow::SourceDecay, "0.002");
        s.form.row(r).text = "Monte Carlo" + std::string(300, ' ') + "|" + s.form.row(r).text + ": 1";
        expectAccepted(s);
    }
    // A constant inlet has no such test: the decay rate is not read.
    Screen constant(unsatModel("Dirichlet"));
    constant.data.sourceDecayRate = "0.002";
    expectAccepted(constant);
}

TEST(UnsatForm, TheBatchCalculatorRunsTheSameChecksOnTheDataSet) {
    DataSet d = unsatModel();
    d.saturation = "0.7";
    testkit::ScriptedUserInterface ui;
    const KindCalculation* kind = kindCalculationOf(d);
    ASSERT_NE(kind, nullptr);
    EXPECT_FALSE(kind->validate(d, ui));
    EXPECT_EQ(ui.lastText(), " Saturation (Sw) is larger than  Aquifer Porosity (n)." + std::string(kProper));
    d = unsatModel();
    d.terms(1) = Term{"0", "0"};
    EXPECT_FALSE(kind->validate(d, ui));
    EXPECT_EQ(ui.lastText(),
              "The value of initial concentration must be greater than zero.\r\rPlease give a proper value in first row.");
    d = unsatModel();
    d.sourceDecayRate = "0.002";
    EXPECT_FALSE(kind->validate(d, ui));
    EXPECT_EQ(ui.messages.back().title, "Improper input data");
    d = unsatModel();
    EXPECT_TRUE(kind->validate(d, ui));
}

TEST(UnsatForm, TheReportListsTheConstantsAndTheDecayRateOfADecayingSource) {
    Screen s(unsatModel());
    ASSERT_TRUE(s.form.holdDataSet());
    const std::string text = printedReportText(unsatReportLines(s.data, s.form.rows()));
    EXPECT_NE(text.find("Unsaturated Ground Water Model\n"), std::string::npos);
    for (const char* line : {"  Ground Water Steady-State Percolation Rate: ", "  Dispersion Coefficient(Dv): ",
                             "  Bulk Density: ", "  Contaminant Distribution Coefficient(Kdv): ", "  Aquifer Porosity: ",
                             "  Saturation(Sw): ", "  Source Concentration Decay Rate: "})
        EXPECT_NE(text.find(std::string("\n") + line), std::string::npos) << line;
    // Values stand at column 50 with the row's unit.
    EXPECT_NE(text.find("\n  Saturation(Sw): " + std::string(49 - 18, ' ') + "0.35 \n"), std::string::npos) << text;
    EXPECT_NE(text.find("  Bulk Density: " + std::string(49 - 16, ' ') + "1.6 (g/cm\u00b3)\n"), std::string::npos);
    EXPECT_NE(text.find("Boundary Conditions:\n  Superposition Index: 1\n"), std::string::npos);

    Screen constant(unsatModel("Dirichlet"));
    ASSERT_TRUE(constant.form.holdDataSet());
    const std::string plain = printedReportText(unsatReportLines(constant.data, constant.form.rows()));
    EXPECT_EQ(plain.find("Source Concentration Decay Rate"), std::string::npos);
}

}  // namespace
}  // namespace bm
