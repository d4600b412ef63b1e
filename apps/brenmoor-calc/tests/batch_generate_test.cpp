// The batch calculator and Monte Carlo samples: --generate draws new samples
// from the file's variant table (with the simulation screen's checks),
// --seed makes the draw repeatable, and without --generate a file's stored
// samples are used as they are, so a saved simulation reruns bit for bit.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <sys/wait.h>

#include "files/data_file.h"
#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/tests/monte_table_fixture.h"
#include "testing/one_dim_test_model.h"
#include "testing/test_paths.h"
#include "timevarying/tests/var_test_model.h"

namespace bm {
namespace {

using testkit::readFileBytes;
using testkit::TempDir;

struct CalcRun {
    int status = -1;
    std::string err;
};

CalcRun calc(const std::string& arguments, const TempDir& dir) {
    const std::string errPath = dir.file("stderr.txt");
    const std::string command = std::string(BRENMOOR_CALC_PROGRAM) + " " + arguments + " >/dev/null 2>" + errPath;
    const int raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, readFileBytes(errPath)};
}

// A one-dimensional model whose velocity and inflow concentration vary: the
// variant table holds both rows with "Variants" selected, and no samples yet.
void writeModel(const std::string& path, const std::string& velocityMinimum = "0.2") {
    DataSet d = testkit::oneDimModel("Semi-Infinite", "Dirichlet");
    d.velocity = formFieldMarker("0.3", 1);
    d.terms(1).concentration = boundaryCellMarkerFor(d.modelType, "1", 2);
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    testkit::makeMonteTables(d, 7);
    d.InputTGData(1, 1) =
        testkit::variantRow("Ground Water Darcy Velocity (V)", "0.3", velocityMinimum, "0.4", "0.001", "50", "Uniform");
    d.InputTGData(2, 1) =
        testkit::variantRow("Contaminant Conc. at Inflow Boundary", "1", "0.5", "1.5", "0.04", "50", "Triangle");
    for (int r = 1; r <= 2; ++r) {
        d.ResultTGData(r, 1).variant = d.InputTGData(r, 1).variant;
        d.ResultTGData(r, 1).selection = "Variants";
    }
    copyMonteCarloStore(d, false);
    writeDataFile(d, path);
}

TEST(BatchGenerate, TheSameSeedTwiceGivesIdenticalFiles) {
    TempDir dir;
    const std::string model = dir.file("model.one");
    writeModel(model);
    const std::string a = dir.file("a.one"), b = dir.file("b.one"), c = dir.file("c.one");
    ASSERT_EQ(calc("--generate --seed 7 --save " + a + " " + model, dir).status, 0);
    ASSERT_EQ(calc("--generate --seed 7 --save " + b + " " + model, dir).status, 0);
    ASSERT_EQ(calc("--generate --seed 8 --save " + c + " " + model, dir).status, 0);
    const std::string first = readFileBytes(a);
    EXPECT_EQ(first, readFileBytes(b));
    EXPECT_NE(first, readFileBytes(c));

    // The samples were drawn, summarised and run: 50 iterations of each variant.
    DataSet saved;
    ASSERT_TRUE(readDataFile(saved, a));
    const MonteBlock& block = saved.monteStore(ModelKind::OneDimensional);
    EXPECT_EQ(block.monteIterations, 51);
    EXPECT_TRUE(block.ResultTGData(1, 1).inUse);
    EXPECT_EQ(saved.calculationMode, "Monte Carlo");
    ASSERT_EQ(saved.mcResult1D.ub(), 50);
    for (int i = 1; i <= 50; ++i) {
        const double v = block.MonteSamples(1, i, 1);
        EXPECT_GE(v, 0.2);
        EXPECT_LE(v, 0.4);
    }
    EXPECT_TRUE(holdsMonteMarker(saved.velocity));
}

TEST(BatchGenerate, AReopenedFileRerunsItsSimulationBitForBit) {
    TempDir dir;
    const std::string model = dir.file("model.one");
    writeModel(model);
    const std::string a = dir.file("a.one"), b = dir.file("b.one");
    ASSERT_EQ(calc("--generate --seed 3 --save " + a + " " + model, dir).status, 0);
    ASSERT_EQ(calc("--save " + b + " " + a, dir).status, 0);
    EXPECT_EQ(readFileBytes(a), readFileBytes(b));

    DataSet first, second;
    ASSERT_TRUE(readDataFile(first, a));
    ASSERT_TRUE(readDataFile(second, b));
    ASSERT_EQ(first.mcResult1D.ub(), 50);
    for (int i = 1; i <= 50; ++i) EXPECT_EQ(first.mcResult1D(i), second.mcResult1D(i)) << i;
}

TEST(BatchGenerate, WithoutGenerateTheStoredSamplesAreUsed) {
    TempDir dir;
    const std::string model = dir.file("model.one");
    writeModel(model);
    const std::string a = dir.file("a.one"), b = dir.file("b.one");
    ASSERT_EQ(calc("--generate --save " + a + " " + model, dir).status, 0);
    ASSERT_EQ(calc("--seed 99 --save " + b + " " + a, dir).status, 0);
    DataSet first, second;
    ASSERT_TRUE(readDataFile(first, a));
    ASSERT_TRUE(readDataFile(second, b));
    EXPECT_EQ(first.monteStore(ModelKind::OneDimensional).MonteSamples,
              second.monteStore(ModelKind::OneDimensional).MonteSamples);
}

TEST(BatchGenerate, TheScreensChecksRefuseABadTable) {
    TempDir dir;
    const std::string model = dir.file("model.one");
    writeModel(model, "0");
    const CalcRun run = calc("--generate --seed 7 --output " + dir.file("out.txt") + " " + model, dir);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err,
              "Improper Input Data: Zero input value.   The minimum value of Ground Water Darcy Velocity (V) has "
              "been given as zero.\n");
}

TEST(BatchGenerate, ASeedMustBeAWholeNumber) {
    TempDir dir;
    EXPECT_EQ(calc("--seed x7 " + dir.file("none.one"), dir).status, 1);
    EXPECT_EQ(calc("--seed " + dir.file("none.one"), dir).status, 1);
}

// The time-varying model varies by its own rows: a varying x velocity.
TEST(BatchGenerate, TheTimeVaryingModelDrawsForItsOwnRows) {
    TempDir dir;
    DataSet d = var_test::model("Point (instantaneous)", "Asymptotic");
    d.yRange = "5:15:5";  // the screen's checks want y above zero
    d.mcAtY = "10";
    d.velocityX = formFieldMarker("0.3", 1);
    testkit::makeMonteTables(d, 11);
    d.InputTGData(1, 1) = testkit::variantRow("Steady-state Darcy Velocity in X-Direction (u)", "0.3", "0.25", "0.35",
                                              "0.0004", "20", "Uniform");
    d.ResultTGData(1, 1).variant = d.InputTGData(1, 1).variant;
    d.ResultTGData(1, 1).selection = "Variants";
    copyMonteCarloStore(d, false);
    const std::string model = dir.file("model.var"), saved = dir.file("saved.var");
    writeDataFile(d, model);
    ASSERT_EQ(calc("--generate --seed 5 --save " + saved + " " + model, dir).status, 0);
    DataSet back;
    ASSERT_TRUE(readDataFile(back, saved));
    EXPECT_EQ(back.calculationMode, "Monte Carlo");
    EXPECT_EQ(back.monteStore(ModelKind::TimeVarying).monteIterations, 21);
    EXPECT_EQ(back.mcResultVar.ub(), 20);
    EXPECT_TRUE(holdsMonteMarker(back.velocityX));
    for (int i = 1; i <= 20; ++i) {
        const double u = back.monteStore(ModelKind::TimeVarying).MonteSamples(1, i, 1);
        EXPECT_GE(u, 0.25);
        EXPECT_LE(u, 0.35);
    }
}

}  // namespace
}  // namespace bm
