#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "montecarlo/monte_report.h"
#include "montecarlo/tests/monte_table_fixture.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

namespace bm {
void PrintTo(const ReportLine& line, std::ostream* os) { *os << '{' << line.field << " | " << line.value << '}'; }
}  // namespace bm

namespace {

using bm::DataSet;
using bm::ReportLine;
using bm::testkit::variantRow;

// A table as a generation leaves it, written out by hand: two variants, terms 3.
struct ReportTest : ::testing::Test {
    DataSet data;
    bm::testkit::ScriptedUserInterface ui;
    void SetUp() override {
        bm::testkit::makeMonteTables(data, 3);
        data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2.50", "1", "4", "0.25", "3", "Normal");
        data.InputTGData(3, 1) = variantRow("Contaminant Half-Life", "150000", "1000", "300000", "0.0004", "3",
                                            "Lognormal");
        auto& a = data.ResultTGData(1, 1);
        a = {"Ground Water Darcy Velocity (V)", "2.5", "1.25", "3.75", "2.5", "2.3", "1.0801", true, "Median"};
        auto& b = data.ResultTGData(3, 1);
        b = {"Contaminant Half-Life", "1.5e+5", "1.2e+5", "2.e+5", "1.55e+5", "1.5e+5", "3.e+4", true, "Nothing"};
        data.monteIterations = 4;
        data.MonteSamples.redim({3, 4, 1});
        const double first[] = {1.25, 2.5, 3.75, 1.5};
        const double third[] = {120000, 200000, 150000, 145000};
        for (int i = 1; i <= 4; ++i) {
            data.MonteSamples(1, i, 1) = first[i - 1];
            data.MonteSamples(3, i, 1) = third[i - 1];
        }
    }
};

TEST_F(ReportTest, PrintedReportLines) {
    const std::vector<ReportLine> expected = {
        {"Variant:", "Ground Water Darcy Velocity (V)"},
        {"Input Data:", ""},
        {"Mean:", "2.5"},
        {"Variance:", "0.25"},
        {"Minimum:", "1"},
        {"Maximum:", "4"},
        {"Distribution Type:", "Normal"},
        {"Number of Monte Carlo Iterations:", "3"},
        {"Output Data:", ""},
        {"Arithmetic Mean:", "2.5"},
        {"Geometric Mean:", "2.3"},
        {"Median:", "2.5"},
        {"Minimum:", "1.25"},
        {"Maximum:", "3.75"},
        {"Standard Deviation:", "1.0801"},
        {"", ""},
        {"Variant:", "Contaminant Half-Life"},
        {"Input Data:", ""},
        {"Mean:", "1.5e+5"},
        {"Variance:", "4.e-4"},
        {"Minimum:", "1000"},
        {"Maximum:", "3.e+5"},
        {"Distribution Type:", "Lognormal"},
        {"Number of Monte Carlo Iterations:", "3"},
        {"Output Data:", ""},
        {"Arithmetic Mean:", "1.55e+5"},
        {"Geometric Mean:", "1.5e+5"},
        {"Median:", "1.5e+5"},
        {"Minimum:", "1.2e+5"},
        {"Maximum:", "2.e+5"},
        {"Standard Deviation:", "30000"},  // the stored "3.e+4" read again by the number format
        {"", ""},
    };
    EXPECT_EQ(bm::simulationReportLines(data, 1), expected);
}

TEST(ReportLineText, FieldAtColumnTenValueAtColumnForty) {
    EXPECT_EQ(bm::reportLineText({"Mean:", "2.5"}), std::string(9, ' ') + "Mean:" + std::string(25, ' ') + "2.5");
    EXPECT_EQ(bm::reportLineText({"Input Data:", ""}), std::string(9, ' ') + "Input Data:");
    EXPECT_EQ(bm::reportLineText({"", ""}), "");
    const std::string longField(35, 'x');
    EXPECT_EQ(bm::reportLineText({longField, "1"}), std::string(9, ' ') + longField + " 1");
}

const char* const kViewFile =
    "Monte Carlo\r\n"
    "Type: Generated\r\n"
    "Total variants: 2\r\n"
    "Number of Monte Carlo Iterations: 3\r\n"
    "Variant: Ground Water Darcy Velocity (V)\r\n"
    "Input Data:\r\n"
    "Mean: 2.5\r\n"
    "Variance: 0.25\r\n"
    "Minimum: 1\r\n"
    "Maximum: 4\r\n"
    "Distribution Type: Normal\r\n"
    "Number of Monte Carlo Iterations: 3\r\n"
    "Output Data:\r\n"
    "Arithmetic Mean: 2.5\r\n"
    "Geometric Mean: 2.3\r\n"
    "Median: 2.5\r\n"
    "Minimum: 1.25\r\n"
    "Maximum: 3.75\r\n"
    "Standard Deviation: 1.0801\r\n"
    "Simulation Output:\r\n"
    "1.25\r\n"
    "2.5\r\n"
    "3.75\r\n"
    "Variant: Contaminant Half-Life\r\n"
    "Input Data:\r\n"
    "Mean: 1.5e+5\r\n"
    "Variance: 4.e-4\r\n"
    "Minimum: 1000\r\n"
    "Maximum: 3.e+5\r\n"
    "Distribution Type: Lognormal\r\n"
    "Number of Monte Carlo Iterations: 3\r\n"
    "Output Data:\r\n"
    "Arithmetic Mean: 1.55e+5\r\n"
    "Geometric Mean: 1.5e+5\r\n"
    "Median: 1.5e+5\r\n"
    "Minimum: 1.2e+5\r\n"
    "Maximum: 2.e+5\r\n"
    "Standard Deviation: 3.e+4\r\n"
    "Simulation Output:\r\n"
    "120000\r\n"
    "200000\r\n"
    "150000\r\n"
    "[End File]\r\n";

TEST_F(ReportTest, TheFileForViewingListsTermsSamplesNotTheExtraOne) {
    bm::testkit::TempDir dir;
    const std::string path = dir.file("brenmoor.plt");
    ASSERT_TRUE(bm::writeSimulationViewFile(data, 1, path, ui));
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(bm::testkit::readFileBytes(path), kViewFile);
}

TEST_F(ReportTest, AnEditedTermsCellNeverListsPastTheSamplesDrawn) {
    data.InputTGData(1, 1).terms = "50";
    const auto lines = bm::simulationViewLines(data, 1);
    // three samples of the first row: the array holds four and the last is never listed
    const auto start = std::find(lines.begin(), lines.end(), "Simulation Output:");
    ASSERT_NE(start, lines.end());
    EXPECT_EQ(*(start + 4), "Variant: Contaminant Half-Life");
}

TEST_F(ReportTest, NoGeneratedOutputWritesNothing) {
    data.ResultTGData(1, 1).inUse = false;
    data.ResultTGData(3, 1).inUse = false;
    bm::testkit::TempDir dir;
    const std::string path = dir.file("brenmoor.plt");
    EXPECT_FALSE(bm::writeSimulationViewFile(data, 1, path, ui));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.lastText(), "No output data to be viewed.");
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ReportTest, AMissingFolderGoesToTheErrorHandler) {
    bm::testkit::TempDir dir;
    const std::string path = dir.file("no such folder/brenmoor.plt");
    EXPECT_FALSE(bm::writeSimulationViewFile(data, 1, path, ui));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_NE(ui.lastText().find("76"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
