// The printed report of the saturated screen: its lines in order, the tab
// columns, the source lines of each model and the print command.

#include <gtest/gtest.h>

#include "input_form_test_models.h"
#include "montecarlo/monte_marker.h"
#include "saturated/form/report_printed.h"

namespace bm {
namespace {

using testkit::Screen;

// The text of a line printed with Tab(column): blanks up to the column.
std::string at(const std::string& before, int column) {
    std::string s = before;
    s.resize(static_cast<std::size_t>(column - 1), ' ');
    return s;
}

std::vector<std::string> reportLines(InputFormModel& form) {
    EXPECT_TRUE(form.holdDataSet());
    std::vector<std::string> out;
    for (const PrintedLine& l : printedReportLines(form)) out.push_back(printedLineText(l));
    return out;
}

TEST(PrintedReport, OneDimensionalReportLineByLine) {
    DataSet d = testkit::oneDimScreenModel();
    d.title = "Plume";
    d.comments = "C1";
    d.currentFileName = "/tmp/a.one";
    Screen s(d);
    const std::vector<std::string> expected = {
        "",
        "",
        "Saturated Ground Water Model",
        "",
        "",
        " Title: ",
        "   Plume",
        " Author: ",
        " Comments: ",
        "   C1",
        "",
        "Input Data file name: /tmp/a.one",
        "",
        at("Model: ", 20) + "One Dimensional",
        at("Aquifer: ", 20) + "Semi-Infinite",
        at("Contaminant: ", 20) + "Dirichlet",
        "",
        "Units:",
        at("  Length:  ", 20) + "Meters",
        at("  Time:  ", 20) + "Days",
        at("  Concentration: ", 20) + "mg/l",
        "",
        "Coordinate and Time Data",
        at(at(at("", 13) + "Minimum", 30) + "Maximum", 45) + "Length of Interval",
        at(at(at(" X Axis", 14) + "0", 32) + "10", 50) + "1",
        at(at(at(" Time Range", 14) + "0", 32) + "5", 50) + "1",
        "",
        " Monte Carlo simulation at x: 10",
        " Monte Carlo simulation at t: 5",
        "",
        "Boundary Conditions:",
        "  Superposition Index: 1",
        "",
        at(at("", 9) + "Time (Days)", 29) + "Concentration(mg/l)",
        at(at("", 10) + "0", 33) + "1",
        "",
        "",
        "Field and Chemical Properties:",
        at("  Ground Water Darcy Velocity: ", 50) + "0.3 (m/day)",
        at("  Aquifer Porosity: ", 50) + "0.3 ",
        at("  Contaminant HalfLife: ", 50) + "10 (day)",
        at("  Longitudinal Dispersion Coefficient: ", 50) + "0.5 (m\u00b2/day)",
        at("  Retardation Coefficient : ", 50) + "1",
    };
    EXPECT_EQ(reportLines(s.form), expected);
}

TEST(PrintedReport, TwoDimensionalGaussianSourceAndProperties) {
    Screen s(testkit::twoDimScreenModel("Infinite", "Gaussian"));
    s.form.menuUnitsClick(UnitMenu::Length, 10);  // feet
    const std::vector<std::string> lines = reportLines(s.form);
    const auto has = [&](const std::string& line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    };
    EXPECT_TRUE(has(at(at(at(" Y Axis", 14) + "-50", 32) + "50", 50) + "10"));
    EXPECT_TRUE(has(" Monte Carlo simulation at y: 50"));
    EXPECT_TRUE(has("Center of Contaminant Source in Y direction, Yc: 0 (ft)"));
    EXPECT_TRUE(has("Standard Deviation of Gaussian Distribution:     5 (ft)"));
    EXPECT_TRUE(has(at("  Lateral Dispersion Coefficient: ", 50) + "0.1 (ft\u00b2/day)"));
    EXPECT_TRUE(has(at("  Net Recharge: ", 50) + "0 (ft/day)"));
    EXPECT_TRUE(has(at("  Effective Aquifer Thickness: ", 50) + "10 (ft)"));
    EXPECT_TRUE(has(at("  Length:  ", 20) + "Feet"));
    // porosity stands after the dispersions in two dimensions
    const auto pos = [&](const std::string& l) { return std::find(lines.begin(), lines.end(), l) - lines.begin(); };
    EXPECT_LT(pos(at("  Lateral Dispersion Coefficient: ", 50) + "0.1 (ft\u00b2/day)"),
              pos(at("  Aquifer Porosity: ", 50) + "0.3 "));
}

TEST(PrintedReport, SourceLinesOfEachModel) {
    struct Case {
        DataSet model;
        std::vector<std::string> lines;
    };
    const std::vector<Case> cases = {
        {testkit::twoDimScreenModel("Finite", "Continuous / Point"),
         {"Center of Contaminant Source in Y direction, Yc: 0 (m)",
          "Width of Contaminant Source:                     20 (m)"}},
        {testkit::twoDimScreenModel("Infinite", "Continuous / Point"),
         {"Center of Contaminant Source in X direction, Xc :0 (m)",
          "Center of Contaminant Source in Y direction, Yc :0 (m)",
          "Fluid Injection Rate per Unit Aquifer Thickness :2 (m\u00b2/day)"}},
        {testkit::threeDimScreenModel("Infinite", "Finite / Patch"),
         {"Width of Contaminant Source          :10 (m)", "Height of the Contaminant Source     :4 (m)"}},
        {testkit::threeDimScreenModel("Infinite", "Continuous / Point"),
         {"Center of Contaminant Source in X direction, Xc :0 (m)",
          "Fluid Injection Rate per Unit Aquifer Thickness :3 (m\u00b3/day)"}},
    };
    for (const Case& c : cases) {
        Screen s(c.model);
        const std::vector<std::string> lines = reportLines(s.form);
        // the source lines follow the blank after the inflow terms
        const auto first = std::find(lines.begin(), lines.end(), c.lines[0]);
        ASSERT_NE(first, lines.end()) << c.lines[0];
        for (std::size_t i = 0; i < c.lines.size(); ++i) EXPECT_EQ(*(first + static_cast<long>(i)), c.lines[i]);
        EXPECT_EQ(*(first - 1), "");
        EXPECT_EQ(*(first + static_cast<long>(c.lines.size())), "");
    }
}

TEST(PrintedReport, MarkersPrintAsMonteCarlo) {
    DataSet d = testkit::oneDimScreenModel();
    d.velocity = formFieldMarker("0.3", 1);
    d.terms(1).concentration = boundaryCellMarker("1", 2, kWideCellMarkerPadding);
    Screen s(d);
    const std::vector<std::string> lines = reportLines(s.form);
    EXPECT_NE(std::find(lines.begin(), lines.end(), at("  Ground Water Darcy Velocity: ", 50) + "Monte Carlo (m/day)"),
              lines.end());
    EXPECT_NE(std::find(lines.begin(), lines.end(), at(at("", 10) + "0", 33) + "Monte Carlo"), lines.end());
}

TEST(PrintedReport, TabBeyondTheColumnGoesToTheNextLine) {
    const PrintedLine line = {{0, "A label that is longer than twenty"}, {20, "value"}};
    EXPECT_EQ(printedLineText(line), "A label that is longer than twenty\n" + at("", 20) + "value");
}

TEST(PrintedReport, TabbedLinesOneCellPerColumnStop) {
    const std::vector<PrintedLine> lines = {{{0, "Model: "}, {20, "One"}}, {{13, "Min"}, {30, "Max"}}, {{0, "plain"}}};
    const std::vector<int> columns = printedTabColumns(lines);
    EXPECT_EQ(columns, (std::vector<int>{13, 20, 30}));
    const std::vector<std::string> tabbed = tabbedReportLines(lines, columns);
    EXPECT_EQ(tabbed, (std::vector<std::string>{"Model: \t\tOne", "\tMin\t\tMax", "plain"}));
}

TEST(PrintedReport, PrintCommandHandsTheLinesToThePrinter) {
    Screen s(testkit::oneDimScreenModel());
    s.form.menuFileClick(fileItem::Print);
    EXPECT_TRUE(s.ui.messages.empty());
    ASSERT_FALSE(s.host.printedLines.empty());
    EXPECT_EQ(s.host.printedLines[2], "Saturated Ground Water Model");
    EXPECT_EQ(s.host.printedColumns, (std::vector<int>{9, 10, 13, 14, 20, 29, 30, 32, 33, 45, 50}));
    EXPECT_FALSE(s.ui.busy);
}

TEST(PrintedReport, RangeWithOneColonIsAnIllegalFunctionCall) {
    Screen s(testkit::oneDimScreenModel());
    s.form.row(3).text = "0:10";
    s.form.menuFileClick(fileItem::Print);
    // The range parser of holdDataSet fails before anything is printed.
    ASSERT_EQ(s.ui.messages.size(), 2u);
    EXPECT_EQ(s.ui.messages[0].title, "Illegal Function Call");
    EXPECT_EQ(s.ui.messages[1].text, "Error in holddataset()");
    EXPECT_TRUE(s.host.printedLines.empty());
}

}  // namespace
}  // namespace bm
