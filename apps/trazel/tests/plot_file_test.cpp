#include "apps/trazel/plot_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>

#include "files/stopped_run_note.h"
#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

ReadResult readFixture(const std::string& name) {
    return readPlotFile(testkit::fixturePath("apps/trazel", name).string());
}

PlotFile good(const std::string& name) {
    ReadResult r = readFixture(name);
    EXPECT_TRUE(r.ok) << name << ": " << r.error;
    return r.file;
}

TEST(PlotFile, OneDimensionalResults) {
    const PlotFile f = good("profile_1d.plt");
    EXPECT_EQ(f.kind, PlotKind::Profile);
    EXPECT_FALSE(f.timeVarying);
    EXPECT_EQ(f.model, "One Dimensional");
    EXPECT_EQ(f.aquifer, "Semi-Infinite");
    EXPECT_EQ(f.contaminant, "Dirichlet");
    EXPECT_EQ(f.lengthUnit, "m");
    EXPECT_EQ(f.timeUnit, "day");
    EXPECT_EQ(f.concentrationUnit, "mg/L");
    EXPECT_EQ(f.value("Contaminant Halflife"), "1.e+5");
    EXPECT_EQ(f.value("Data File Name"), "/home/hydro/models/column test.one");
    EXPECT_EQ(f.grid.t, (std::vector<double>{10, 20, 40, 60}));
    EXPECT_EQ(f.grid.x, (std::vector<double>{0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100}));
    EXPECT_EQ(f.grid.at(0, 0, 0, 3), 1.0);
    EXPECT_EQ(f.grid.at(4, 0, 0, 0), 0.002204);    // "40, 0.002204, ..."
    EXPECT_EQ(f.grid.at(5, 0, 0, 0), 5.3402e-5);   // "50, 5.3402e-5, ..."
    EXPECT_EQ(f.grid.at(7, 0, 0, 1), 3.217e-4);
    EXPECT_EQ(f.grid.at(10, 0, 0, 3), 0.06698);    // the last row, with no line end
    EXPECT_TRUE(f.warnings.empty());
}

TEST(PlotFile, UnsaturatedResultsAreOneDimensional) {
    const PlotFile f = good("unsat_1d.plt");
    EXPECT_EQ(f.kind, PlotKind::Profile);
    EXPECT_EQ(f.model, "Unsaturated One Dimensional");
    EXPECT_EQ(f.contaminant, "Dirichlet/Exp. Decay");
    EXPECT_EQ(f.value("Dispersion Coefficient"), ".5");
    EXPECT_EQ(f.grid.x, (std::vector<double>{0, 0.5, 1, 1.5, 2, 2.5}));
    EXPECT_EQ(f.grid.t, (std::vector<double>{30, 90, 365}));
    EXPECT_EQ(f.grid.at(3, 0, 0, 1), 0.90212);  // "1.5, 0.62373, 0.90212, 0.99737"
}

TEST(PlotFile, TwoDimensionalResultsWithCarriageReturns) {
    const PlotFile f = good("plane_2d.plt");
    EXPECT_EQ(f.kind, PlotKind::Plane);
    EXPECT_EQ(f.model, "Two Dimensional - Chemical TCE");
    EXPECT_EQ(f.contaminant, "Finite / Line");
    EXPECT_EQ(f.value("Data File Name"), "C:\\MODELS\\PLUME.TWO");
    EXPECT_EQ(f.grid.x.size(), 11u);
    EXPECT_EQ(f.grid.y, (std::vector<double>{-30, -20, -10, 0, 10, 20, 30}));
    EXPECT_EQ(f.grid.t, (std::vector<double>{100, 200, 400}));
    EXPECT_EQ(f.grid.at(1, 2, 0, 1), 0.43088);   // "10, -10, 0.37266, 0.43088, 0.47439"
    EXPECT_EQ(f.grid.at(10, 6, 0, 2), 0.11137);  // "100, 30, 0.01336, 0.05591, 0.11137"
}

TEST(PlotFile, ThreeDimensionalBlocks) {
    const PlotFile f = good("volume_3d.plt");
    EXPECT_EQ(f.kind, PlotKind::Volume);
    EXPECT_EQ(f.grid.x, (std::vector<double>{0, 10, 20, 30, 40, 50}));
    EXPECT_EQ(f.grid.y, (std::vector<double>{-20, -10, 0, 10, 20}));
    EXPECT_EQ(f.grid.z, (std::vector<double>{0, 2.5, 5}));
    EXPECT_EQ(f.grid.t, (std::vector<double>{50, 100}));
    EXPECT_EQ(f.grid.at(1, 2, 1, 0), 0.21456);   // time 50: "10, 0, 0.37649, 0.21456, 0.03671"
    EXPECT_EQ(f.grid.at(5, 4, 2, 0), 0.001536);
    EXPECT_EQ(f.grid.at(1, 2, 0, 1), 0.451);     // time 100: "10, 0, 0.451, 0.25703, 0.04398"
    EXPECT_EQ(f.grid.at(5, 4, 2, 1), 0.00583);
}

TEST(PlotFile, TimeVaryingLineSourceTakesXFromItsRange) {
    const PlotFile f = good("time_varying_line.plt");
    EXPECT_EQ(f.kind, PlotKind::Profile);
    EXPECT_TRUE(f.timeVarying);
    EXPECT_EQ(f.model, "Line Source");
    EXPECT_EQ(f.aquifer, "Linear");  // the dispersion function
    EXPECT_EQ(f.contaminant, "Line (continuous)");
    EXPECT_EQ(f.grid.x, (std::vector<double>{10, 20, 30, 40, 50, 60, 70, 80}));
    EXPECT_EQ(f.grid.t, (std::vector<double>{20, 40, 60}));
    EXPECT_EQ(f.grid.at(7, 0, 0, 0), 4.6154e-4);
    EXPECT_EQ(f.grid.at(2, 0, 0, 1), 8.0822);
}

TEST(PlotFile, TimeVaryingPointSourceRunsOverXThenY) {
    const PlotFile f = good("time_varying_point.plt");
    EXPECT_EQ(f.kind, PlotKind::Plane);
    EXPECT_TRUE(f.timeVarying);
    EXPECT_EQ(f.grid.x, (std::vector<double>{5, 10, 15, 20}));
    EXPECT_EQ(f.grid.y, (std::vector<double>{-5, 0, 5}));
    EXPECT_EQ(f.grid.at(1, 1, 0, 0), 4.4);  // second x row of time 10: "2.1, 4.4, 2.1"
    EXPECT_EQ(f.grid.at(3, 0, 0, 1), 1.0);
    EXPECT_EQ(f.grid.at(2, 1, 0, 1), 2.6);
}

TEST(PlotFile, MonteCarloConcentrations) {
    const PlotFile f = good("monte_carlo_1d.plt");
    EXPECT_EQ(f.kind, PlotKind::Simulation);
    EXPECT_EQ(f.model, "One Dimensional Model");
    EXPECT_EQ(f.aquifer, "Semi-Infinite");
    EXPECT_EQ(f.contaminant, "Dirichlet");
    EXPECT_EQ(f.value("Initial Concentration (Co)"), "100 mg/L");
    ASSERT_EQ(f.samples.size(), 40u);
    double smallest = 1, largest = 0;
    int written = 0;  // ".55" and "6.e-1" are among them
    for (double v : f.samples) {
        smallest = std::min(smallest, v);
        largest = std::max(largest, v);
        written += (v == 0.55) + (v == 0.6);
    }
    EXPECT_EQ(smallest, 0.1);
    EXPECT_EQ(largest, 0.6);
    EXPECT_EQ(written, 2);
    EXPECT_TRUE(f.warnings.empty());
}

TEST(PlotFile, GeneratedSamplesPerVariant) {
    const PlotFile f = good("generated.plt");
    EXPECT_EQ(f.kind, PlotKind::Generated);
    ASSERT_EQ(f.variants.size(), 2u);
    const Variant& v = f.variants[0];
    EXPECT_EQ(v.name, "Ground Water Darcy Velocity");
    ASSERT_EQ(v.samples.size(), 12u);
    EXPECT_EQ(v.samples.front(), 0.28);
    EXPECT_EQ(v.samples.back(), 0.23);
    ASSERT_EQ(v.inputs.size(), 6u);
    EXPECT_EQ(v.inputs[4].label, "Distribution Type");
    EXPECT_EQ(v.inputs[4].value, "Normal");
    ASSERT_EQ(v.outputs.size(), 6u);
    EXPECT_EQ(v.outputs[0].label, "Arithmetic Mean");
    EXPECT_EQ(v.outputs[0].value, "0.3025");
    EXPECT_EQ(f.variants[1].name, "Longitudinal Dispersion Coefficient");
    EXPECT_EQ(f.variants[1].samples.size(), 12u);
    EXPECT_EQ(f.variants[1].samples[10], 11.0);
    EXPECT_TRUE(f.warnings.empty());
}

// --- malformed and missing files ----------------------------------------------

void expectRefused(const std::string& name, const std::string& words) {
    const ReadResult r = readFixture(name);
    EXPECT_FALSE(r.ok) << name;
    EXPECT_NE(r.error.find(words), std::string::npos) << name << ": " << r.error;
}

TEST(PlotFile, RefusesMalformedFiles) {
    expectRefused("empty.plt", "The file is empty.");
    expectRefused("not_a_plot.txt", "\"Ground Water\" or \"Monte Carlo\"");
    expectRefused("header_only.plt", "no table of results");
    expectRefused("bad_number_1d.plt", "Line 24: \"40, abc, 0.11158, 0.59441, 0.8593\" is not a row of numbers.");
    expectRefused("ragged_row_1d.plt", "Line 27: a row holds x and one concentration per time, that is 5 values, but this one holds 3.");
    expectRefused("bad_value_mc.plt", "Line 33: \"zero point four\" is not a number");
    expectRefused("generated_no_samples.plt", "No variant of the file lists any samples.");
    expectRefused("bad_block_3d.plt", "lacks its line \"Z Coordinate =>\"");
    expectRefused("no_such_file.plt", "cannot be opened");
}

TEST(PlotFile, ATableShorterThanItsHeaderIsPlottedAsIncomplete) {
    // Whole rows of x missing: the grid is complete but smaller than announced.
    std::string text = testkit::readFileBytes(testkit::fixturePath("apps/trazel", "profile_1d.plt"));
    text = text.substr(0, text.find("\n90, "));
    const ReadResult r = parsePlotText(text);
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(r.file.incomplete, "the file ends early");
    EXPECT_EQ(r.file.grid.x.size(), 9u);
    ASSERT_FALSE(r.file.warnings.empty());
    EXPECT_NE(r.file.warnings[0].find("announces 11 x values (\"Number of X Terms: \") but the table holds 9"), std::string::npos)
        << r.file.warnings[0];
}

TEST(PlotFile, ATableLongerThanItsHeaderIsRefused) {
    std::string text = testkit::readFileBytes(testkit::fixturePath("apps/trazel", "profile_1d.plt"));
    text.replace(text.find("Number of X Terms:  11"), 22, "Number of X Terms:  10");
    const ReadResult r = parsePlotText(text);
    EXPECT_FALSE(r.ok);
    EXPECT_NE(r.error.find("announces 10 x values"), std::string::npos) << r.error;
}

TEST(PlotFile, ATableThatStopsInsideAnXIsPlottedWithTheRestMissing) {
    // truncated_2d.plt: x = 40 has four of its seven y values, and x = 50 to 100 are absent.
    const PlotFile f = good("truncated_2d.plt");
    EXPECT_EQ(f.incomplete, "the file ends early");
    EXPECT_EQ(f.grid.x, (std::vector<double>{0, 10, 20, 30, 40}));
    EXPECT_EQ(f.grid.at(4, 3, 0, 2), 0.47373);  // "40, 0, 0.26025, 0.38332, 0.47373"
    EXPECT_TRUE(std::isnan(f.grid.at(4, 4, 0, 0)));
    bool said = false;
    for (const std::string& w : f.warnings) said = said || w.find("ends inside the y values of x = 40") != std::string::npos;
    EXPECT_TRUE(said);
}

TEST(PlotFile, ALastLineCutInTheMiddleOfANumber) {
    std::string text = testkit::readFileBytes(testkit::fixturePath("apps/trazel", "volume_3d.plt"));
    text = text.substr(0, text.rfind("0.009039")) + "0.00";  // "50, 20, 0.01046, 0.00": a row of four values
    const ReadResult r = parsePlotText(text);
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(r.file.incomplete, "the file ends early");
    EXPECT_EQ(r.file.grid.at(1, 2, 0, 1), 0.451);
    EXPECT_TRUE(std::isnan(r.file.grid.at(5, 4, 2, 1)));
}

TEST(PlotFile, AFileWithTheNoteOfAStoppedRunSaysSo) {
    testkit::TempDir dir;
    const std::string path = dir.file("brenmoor.plt");
    std::filesystem::copy_file(testkit::fixturePath("apps/trazel", "plane_2d.plt"), path);
    EXPECT_EQ(readPlotFile(path).file.incomplete, "");
    markStoppedRun(path, true);
    const ReadResult r = readPlotFile(path);
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(r.file.incomplete, "the run was stopped");
    markStoppedRun(path, false);
    EXPECT_FALSE(std::filesystem::exists(path + kStoppedRunNoteSuffix));
    EXPECT_EQ(readPlotFile(path).file.incomplete, "");
}

TEST(PlotFile, ANoteOlderThanTheFileBelongsToAnEarlierRun) {
    testkit::TempDir dir;
    const std::string path = dir.file("brenmoor.plt");
    std::filesystem::copy_file(testkit::fixturePath("apps/trazel", "plane_2d.plt"), path);
    markStoppedRun(path, true);
    std::filesystem::last_write_time(path + kStoppedRunNoteSuffix,
                                     std::filesystem::last_write_time(path) - std::chrono::seconds(5));
    EXPECT_EQ(readPlotFile(path).file.incomplete, "");
}

TEST(PlotFile, RefusesAnUnknownMonteCarloType) {
    const ReadResult r = parsePlotText("Monte Carlo\nType: Something\n0.5\n");
    EXPECT_FALSE(r.ok);
    EXPECT_NE(r.error.find("not one Trazel knows"), std::string::npos) << r.error;
}

TEST(PlotFile, RefusesAThreeDimensionalBlockOfAnotherGrid) {
    std::string text = testkit::readFileBytes(testkit::fixturePath("apps/trazel", "volume_3d.plt"));
    const auto second = text.find("Time is 100 day");
    const auto row = text.find("\n40, 10,", second);
    text.replace(row, 8, "\n45, 10,");
    const ReadResult r = parsePlotText(text);
    EXPECT_FALSE(r.ok);
    EXPECT_NE(r.error.find("complete x-y grid"), std::string::npos) << r.error;
}

TEST(PlotFile, NotesCountsThatDisagreeButStillPlots) {
    const ReadResult r = parsePlotText(
        "Monte Carlo\nType: Concentrations\nNumber of Terms: 10\nChemical Name: One Dimensional Model\n\n0.5\n0.25\n.75\n");
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(r.file.samples, (std::vector<double>{0.5, 0.25, 0.75}));
    ASSERT_EQ(r.file.warnings.size(), 1u);
    EXPECT_EQ(r.file.warnings[0], "The header announces 10 terms but the file lists 3 results.");
}

TEST(PlotFile, TimeVaryingMonteCarloNamesItsSource) {
    const ReadResult r = parsePlotText(
        "Monte Carlo\nType: Concentrations\nNumber of Terms: 2\n"
        "Dispersion Coefficient: Linear, Contaminant Source: Point (continuous)\n"
        "Time Varying Dispersion Coefficient\nChemical Name: \nMagnitude of Source: 100\n"
        "Length Units: m\nTime Units: day\nConcentration Units: mg/L\nData File Name: Input Data Not Saved\n\n3.5\n4.25\n");
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_TRUE(r.file.timeVarying);
    EXPECT_EQ(r.file.aquifer, "Linear");
    EXPECT_EQ(r.file.contaminant, "Point (continuous)");
    EXPECT_EQ(r.file.samples, (std::vector<double>{3.5, 4.25}));
}

}  // namespace
}  // namespace bm::trazel
