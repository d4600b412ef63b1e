// brenmoor-calc --fit: a column fitted to observations made from the closed
// form at known inputs; the report, the saved model with the estimates in its
// rows and its results, and the refusals with their exit status.

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <sys/wait.h>

#include "apps/brenmoor-calc/batch_calculator.h"
#include "files/data_file.h"
#include "fitting/fit_plot_file.h"
#include "model/number_text.h"
#include "testing/is_close.h"
#include "testing/observed_column.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::TempDir;

struct FitRun {
    int status = -1;
    std::string out, err;
};

FitRun runFit(const std::string& arguments, const TempDir& dir) {
    const std::string outPath = dir.file("fit.stdout"), errPath = dir.file("fit.stderr");
    const std::string command = std::string(BRENMOOR_CALC_PROGRAM) + " " + arguments + " >" + outPath + " 2>" + errPath;
    const int raw = std::system(command.c_str());
    return FitRun{WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, testkit::readFileBytes(outPath), testkit::readFileBytes(errPath)};
}

// The column at start values away from the truth, and its observations.
std::string writeColumn(const TempDir& dir) {
    DataSet d = testkit::columnStartedAway();
    d.xRange = "0:10:5";
    d.timeRange = "0:30:10";
    const std::string path = dir.file("column.one");
    writeDataFile(d, path);
    return path;
}

std::string writeObservations(const TempDir& dir) {
    const std::string path = dir.file("observed.csv");
    testkit::writeFileBytes(path, testkit::columnObservationText());
    return path;
}

TEST(BatchFit, ReportsTheEstimatesAndSavesThemWithTheirResults) {
    TempDir dir;
    const std::string model = writeColumn(dir), observed = writeObservations(dir);
    const FitRun r = runFit("--fit " + observed + " --vary Velocity,Dispersion_X=0.1:5,HalfLife --log HalfLife --save " +
                                dir.file("fitted.one") + " " + model,
                            dir);
    ASSERT_EQ(r.status, 0) << r.err << r.out;
    EXPECT_EQ(r.err, "");
    EXPECT_NE(r.out.find("Converged after"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("Velocity"), std::string::npos);
    EXPECT_NE(r.out.find("0.1 to 5"), std::string::npos);
    EXPECT_NE(r.out.find("(log scale)"), std::string::npos);

    DataSet fitted;
    readDataFile(fitted, dir.file("fitted.one"));
    EXPECT_EQ(fitted.velocity, "0.5");
    EXPECT_EQ(fitted.dispersionX, "0.8");
    EXPECT_EQ(fitted.halfLife, "40");
    // The saved results are those of the estimates: x 5, t 10 from the closed form.
    ASSERT_GE(fitted.result1D.ub(0), 2);
    EXPECT_CLOSE(fitted.result1D(2, 2), testkit::trueColumnRatio(5, 10), 1e-6,
                 1e-9);
}

TEST(BatchFit, WritesThePlotFileOfTheFit) {
    TempDir dir;
    const std::string model = writeColumn(dir), observed = writeObservations(dir);
    const std::string plotPath = dir.file("fit.plt");
    const FitRun r =
        runFit("--fit " + observed + " --vary Velocity,Dispersion_X,HalfLife --plot " + plotPath + " " + model, dir);
    ASSERT_EQ(r.status, 0) << r.err << r.out;
    const FitPlotReading reading = parseFitPlot(testkit::readFileBytes(plotPath));
    ASSERT_TRUE(reading.plot) << reading.problem;
    const FitPlot& plot = *reading.plot;
    EXPECT_EQ(plot.model, "One Dimensional");
    EXPECT_EQ(plot.dataFile, model);
    EXPECT_EQ(plot.observationFile, observed);
    ASSERT_EQ(plot.estimates.size(), 3u);
    EXPECT_CLOSE(plot.estimates[0].value, 0.5, 1e-6, 0);
    EXPECT_CLOSE(plot.estimates[1].value, 0.8, 1e-6, 0);
    EXPECT_CLOSE(plot.estimates[2].value, 40, 1e-6, 0);
    ASSERT_EQ(plot.places.size(), 2u);
    EXPECT_EQ(plot.observationCount(), 24u);
    // Observations made from the closed form at the truth: on the curves, residuals near 0.
    for (const FitPlotPlace& place : plot.places) {
        for (std::size_t k = 0; k < place.times.size(); k += 10)
            EXPECT_CLOSE(place.values[k], testkit::trueColumnRatio(place.x, place.times[k]), 1e-5, 1e-9);
        for (const FitPlotObservation& o : place.observations) {
            EXPECT_NEAR(o.residual, 0, 1e-7);
            EXPECT_CLOSE(o.observed, testkit::trueColumnRatio(place.x, o.t), 1e-12, 1e-14);
        }
    }
    // --plot goes with --fit, to a file that is not another target.
    EXPECT_EQ(runFit("--plot " + plotPath + " " + model, dir).status, kExitUsage);
    EXPECT_EQ(runFit("--fit " + observed + " --vary Velocity --plot - " + model, dir).status, kExitUsage);
    const FitRun same = runFit("--fit " + observed + " --vary Velocity --plot " + model + " " + model, dir);
    EXPECT_EQ(same.status, kExitUsage);
    EXPECT_EQ(same.err, "brenmoor-calc: --plot names the data file itself\n");
    const FitRun folder = runFit("--fit " + observed + " --vary Velocity --plot " + dir.path().string() + " " + model, dir);
    EXPECT_EQ(folder.status, kExitUsage);
    EXPECT_EQ(folder.err, "brenmoor-calc: --plot " + dir.path().string() + ": this is a folder, not a file\n");
}

TEST(BatchFit, RefusalsAreMessagesWithTheirExitStatus) {
    TempDir dir;
    const std::string model = writeColumn(dir), observed = writeObservations(dir);
    const FitRun unknown = runFit("--fit " + observed + " --vary Speed " + model, dir);
    EXPECT_EQ(unknown.status, kExitInputRefused);
    EXPECT_EQ(unknown.err.rfind("Fit to Observations: The model has no input named \"Speed\"", 0), 0u) << unknown.err;
    EXPECT_EQ(unknown.out, "");

    testkit::writeFileBytes(dir.file("bad.csv"), "x,t,C/Co\n3,2,0.5\n3,x,0.4\n");
    const FitRun bad = runFit("--fit " + dir.file("bad.csv") + " --vary Velocity " + model, dir);
    EXPECT_EQ(bad.status, kExitInputRefused);
    EXPECT_EQ(bad.err, "Fit to Observations: Line 3 of " + dir.file("bad.csv") + ": \"x\" in column t is not a number.\n");

    EXPECT_EQ(runFit("--vary Velocity " + model, dir).status, kExitUsage);
    EXPECT_EQ(runFit("--fit " + observed + " " + model, dir).status, kExitUsage);
    EXPECT_EQ(runFit("--fit " + observed + " --vary Velocity=a:1 " + model, dir).status, kExitUsage);
    EXPECT_EQ(runFit("--fit " + observed + " --vary Velocity --log HalfLife " + model, dir).status, kExitUsage);
    // The model file is as it was.
    DataSet again;
    readDataFile(again, model);
    EXPECT_EQ(again.velocity, "0.7");
}

}  // namespace
}  // namespace bm
