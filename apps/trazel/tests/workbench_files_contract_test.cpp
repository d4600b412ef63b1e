// The contract between the workbench and the plotting utility: the file that
// each model kind writes for the plot (after a regular run and after a Monte
// Carlo simulation) is read by the utility's reader, and every coordinate and
// value it reads back is the number the file holds for it (the result as the
// writer formats it). The models are the sample models and Monte Carlo models
// of every dimension; each is run as the workbench runs it.

#include <gtest/gtest.h>

#include <string>

#include "apps/trazel/plot_file.h"
#include "files/data_file.h"
#include "files/text_file.h"
#include "model/number_text.h"
#include "kernels/kernmc.h"
#include "montecarlo/monte_generate.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/monte_report.h"
#include "montecarlo/tests/monte_table_fixture.h"
#include "montecarlo/pass/calculation_pass.h"
#include "testing/points_file.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;
using testkit::TempDir;

// The number a result is written as.
double written(double value) { return textValue(formatNumber(value)); }
// The time-varying model writes its single-precision values through their general text.
double writtenSingle(float value) { return textValue(formatNumber(generalText(value))); }

struct ModelRun {
    DataSet data;
    trazel::PlotFile plot;
};

// Reads a model, runs it as Calculate! does, writes the kind's plot file and
// reads it back with the plotting utility's reader.
ModelRun runAndRead(const std::string& relativePath, const TempDir& dir) {
    ModelRun run;
    DataSet& d = run.data;
    readDataFile(d, (testkit::sourceDir() / relativePath).string());
    d.monteCarloModeOn = d.terms.ub() >= 1 && holdsMonteMarker(d.terms(1).concentration);
    ScriptedUserInterface ui;
    const KindCalculation* kind = kindCalculationOf(d);
    EXPECT_NE(kind, nullptr) << relativePath;
    if (!kind) return run;
    EXPECT_TRUE(!kind->validate || kind->validate(d, ui)) << relativePath << ": " << ui.lastText();
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished && !outcome.stopped) << relativePath << ": " << ui.lastText();
    const bool simulation = contains(d.calculationMode, "Monte Carlo");
    const std::string path = dir.file("brenmoor.plt");
    writeTextFile(path, simulation ? kind->simulationOutput(d) : kind->regularOutput(d));
    const trazel::ReadResult read = trazel::readPlotFile(path);
    EXPECT_TRUE(read.ok) << relativePath << ": " << read.error;
    run.plot = read.file;
    return run;
}

void expectAxis(const std::vector<double>& read, const List<double>& values, int count, const char* axis) {
    ASSERT_EQ(static_cast<int>(read.size()), count) << axis;
    for (int i = 1; i <= count; ++i) EXPECT_EQ(read[static_cast<std::size_t>(i - 1)], written(values(i))) << axis << i;
}

class WorkbenchFiles : public ::testing::Test {
protected:
    testkit::PointsFileScope points_;
    TempDir dir_;
};

TEST_F(WorkbenchFiles, OneDimensionalProfile) {
    const ModelRun r = runAndRead("data/sampldat/sample1.one", dir_);
    const DataSet& d = r.data;
    ASSERT_EQ(r.plot.kind, trazel::PlotKind::Profile);
    expectAxis(r.plot.grid.x, d.xValues, d.numXTerms, "x");
    expectAxis(r.plot.grid.t, d.tValues, d.numTTerms, "t");
    for (int t = 1; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x)
            EXPECT_EQ(r.plot.grid.at(x - 1, 0, 0, t - 1), written(d.result1D(x, t))) << x << "," << t;
}

TEST_F(WorkbenchFiles, TwoDimensionalPlane) {
    const ModelRun r = runAndRead("data/sampldat/sample1.two", dir_);
    const DataSet& d = r.data;
    ASSERT_EQ(r.plot.kind, trazel::PlotKind::Plane);
    expectAxis(r.plot.grid.x, d.xValues, d.numXTerms, "x");
    expectAxis(r.plot.grid.y, d.yValues, d.numYTerms, "y");
    expectAxis(r.plot.grid.t, d.tValues, d.numTTerms, "t");
    for (int t = 1; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x)
            for (int y = 1; y <= d.numYTerms; ++y)
                EXPECT_EQ(r.plot.grid.at(x - 1, y - 1, 0, t - 1), written(d.result2D(x, y, t))) << x << "," << y << "," << t;
}

TEST_F(WorkbenchFiles, ThreeDimensionalVolume) {
    const ModelRun r = runAndRead("data/sampldat/sample1.tri", dir_);
    const DataSet& d = r.data;
    ASSERT_EQ(r.plot.kind, trazel::PlotKind::Volume);
    expectAxis(r.plot.grid.x, d.xValues, d.numXTerms, "x");
    expectAxis(r.plot.grid.y, d.yValues, d.numYTerms, "y");
    expectAxis(r.plot.grid.z, d.zValues, d.numZTerms, "z");
    expectAxis(r.plot.grid.t, d.tValues, d.numTTerms, "t");
    for (int t = 1; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x)
            for (int y = 1; y <= d.numYTerms; ++y)
                for (int z = 1; z <= d.numZTerms; ++z)
                    EXPECT_EQ(r.plot.grid.at(x - 1, y - 1, z - 1, t - 1), written(d.result3D(x, y, z, t)));
}

TEST_F(WorkbenchFiles, UnsaturatedProfile) {
    const ModelRun r = runAndRead("data/sampldat/sample1.u1d", dir_);
    const DataSet& d = r.data;
    ASSERT_EQ(r.plot.kind, trazel::PlotKind::Profile);
    expectAxis(r.plot.grid.x, d.xValues, d.numXTerms, "depth");
    expectAxis(r.plot.grid.t, d.tValues, d.numTTerms, "t");
    for (int t = 1; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x)
            EXPECT_EQ(r.plot.grid.at(x - 1, 0, 0, t - 1), written(d.resultUnsat(x, t))) << x << "," << t;
}

TEST_F(WorkbenchFiles, TimeVaryingGrid) {
    const ModelRun r = runAndRead("data/sampldat/sample1.var", dir_);
    const DataSet& d = r.data;
    EXPECT_TRUE(r.plot.timeVarying);
    const int nx = d.numXTerms, ny = d.numYTerms, nt = d.numTTerms;
    ASSERT_EQ(static_cast<int>(r.plot.grid.nx()), nx);
    ASSERT_EQ(static_cast<int>(r.plot.grid.ny()), ny);
    ASSERT_EQ(static_cast<int>(r.plot.grid.nt()), nt);
    for (int k = 1; k <= nt; ++k) {
        EXPECT_EQ(r.plot.grid.t[static_cast<std::size_t>(k - 1)], writtenSingle(d.varTValues(k)));
        for (int i = 1; i <= nx; ++i)
            for (int j = 1; j <= ny; ++j)
                EXPECT_EQ(r.plot.grid.at(i - 1, j - 1, 0, k - 1),
                          writtenSingle(d.resultVar((k - 1) * nx * ny + (i - 1) * ny + j)))
                    << i << "," << j << "," << k;
    }
}

// A simulation's file: one value per iteration, each the kind's result of that iteration.
void expectSimulation(const std::string& relativePath, const TempDir& dir) {
    const ModelRun r = runAndRead(relativePath, dir);
    ASSERT_EQ(r.plot.kind, trazel::PlotKind::Simulation) << relativePath;
    DataSet d = r.data;
    const std::optional<IterationResults> results = monteCarloResultsOf(d);
    ASSERT_TRUE(results.has_value());
    ASSERT_EQ(static_cast<int>(r.plot.samples.size()), results->upper()) << relativePath;
    ASSERT_GT(results->upper(), 0);
    for (int i = 1; i <= results->upper(); ++i) {
        const double expected = results->singlePrecision() ? writtenSingle(static_cast<float>((*results)(i)))
                                                           : written((*results)(i));
        EXPECT_EQ(r.plot.samples[static_cast<std::size_t>(i - 1)], expected) << relativePath << " iteration " << i;
    }
}

TEST_F(WorkbenchFiles, MonteCarloOfEveryKind) {
    for (const char* model : {"apps/brenmoor-calc/tests/goldens/inputs/montecarlo_one.one",
                              "apps/brenmoor-calc/tests/goldens/inputs/montecarlo_two.two",
                              "apps/brenmoor-calc/tests/goldens/inputs/montecarlo_three.tri",
                              "apps/brenmoor-calc/tests/goldens/inputs/montecarlo_unsat_decay.u1d",
                              "apps/brenmoor-calc/tests/goldens/inputs/montecarlo_var.var"})
        expectSimulation(model, dir_);
}

// The simulation screen's file of generated samples ("Type: Generated"): each
// variant in use with its name, distribution and every sample listed.
TEST_F(WorkbenchFiles, GeneratedSamplesOfTheSimulationScreen) {
    DataSet d;
    testkit::makeMonteTables(d, 3);
    d.InputTGData(1, 1) = testkit::variantRow("Ground Water Darcy Velocity (V)", "0.3", "0.2", "0.4", "0.001", "25", "Uniform");
    d.InputTGData(3, 1) = testkit::variantRow("Aquifer Porosity (n)", "0.3", "0.25", "0.35", "0.0004", "25", "Triangle");
    ScriptedUserInterface ui;
    seedMonteCarlo(12);
    ASSERT_EQ(generateSamples(d, 1, ui), GenerationOutcome::Generated);
    const std::string path = dir_.file("brenmoor.plt");
    ASSERT_TRUE(writeSimulationViewFile(d, 1, path, ui));
    const trazel::ReadResult read = trazel::readPlotFile(path);
    ASSERT_TRUE(read.ok) << read.error;
    ASSERT_EQ(read.file.variants.size(), 2u);
    const int rows[2] = {1, 3};
    for (std::size_t v = 0; v < 2; ++v) {
        const trazel::Variant& variant = read.file.variants[v];
        EXPECT_EQ(variant.name, d.InputTGData(rows[v], 1).variant);
        ASSERT_EQ(variant.samples.size(), 25u);
        for (int i = 1; i <= 25; ++i)
            EXPECT_EQ(variant.samples[static_cast<std::size_t>(i - 1)],
                      textValue(generalText(static_cast<float>(d.MonteSamples(rows[v], i, 1)))))
                << i;  // single-precision draws, written with a float's seven digits
    }
}

}  // namespace
}  // namespace bm
