// Fitting the semi-infinite column: noise-free recovery, the coverage of the
// 95 % intervals over many seeds, and the covariance against a Jacobian of
// the closed form taken by finite differences here.

#include <gtest/gtest.h>

#include <Eigen/Dense>

#include "fit_test_support.h"
#include "model/number_text.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"

namespace bm {
namespace {

using namespace testkit;

constexpr double kV = kColumnVelocity, kD = kColumnDispersion, kHalfLife = kColumnHalfLife;

ObservationSet columnObservations(double sigma, unsigned seed, int count = 12) {
    return observationsOf({3.0, 8.0}, 2.0, 3.0, count,
                          [](double x, double t) { return columnRatio(kV, kD, kHalfLife, x, t); }, sigma, seed);
}

DataSet startedAway() { return columnStartedAway(); }

TEST(FitColumn, NoiseFreeObservationsGiveTheTrueInputs) {
    ScriptedUserInterface ui;
    const DataSet model = startedAway();
    const FitReport report = fitModel(model, columnObservations(0.0, 1), vary({"Velocity", "Dispersion_X", "HalfLife"}), ui);
    ASSERT_EQ(report.ending, FitEnding::Converged) << report.problem << report.stopReason;
    ASSERT_EQ(report.estimates.size(), 3u);
    EXPECT_CLOSE(report.estimates[0].value, kV, 1e-6, 0);
    EXPECT_CLOSE(report.estimates[1].value, kD, 1e-6, 0);
    EXPECT_CLOSE(report.estimates[2].value, kHalfLife, 1e-6, 0);
    EXPECT_LT(report.rmse, 1e-8);
    EXPECT_GT(report.rSquared, 1 - 1e-12);
    EXPECT_GT(report.iterations, 0);
    EXPECT_TRUE(ui.messages.empty());
    // The model given is not touched.
    EXPECT_EQ(model.velocity, "0.7");
}

TEST(FitColumn, LogScaleAndBoundsReachTheSameInputs) {
    ScriptedUserInterface ui;
    FitRequest request = vary({"velocity", "dispersion x", "halflife"});
    request.inputs[0].logScale = true;
    request.inputs[1].lower = 0.1;
    request.inputs[1].upper = 5;
    request.inputs[2].logScale = true;
    const FitReport report = fitModel(startedAway(), columnObservations(0.0, 1), request, ui);
    ASSERT_EQ(report.ending, FitEnding::Converged) << report.problem;
    EXPECT_CLOSE(report.estimates[0].value, kV, 1e-6, 0);
    EXPECT_CLOSE(report.estimates[1].value, kD, 1e-6, 0);
    EXPECT_CLOSE(report.estimates[2].value, kHalfLife, 1e-6, 0);
    EXPECT_TRUE(report.warnings.empty());
}

TEST(FitColumn, NinetyFivePercentIntervalsCoverTheTruthInNinetyFivePercentOfSeeds) {
    ScriptedUserInterface ui;
    const DataSet model = startedAway();
    const FitRequest request = vary({"Velocity", "Dispersion_X", "HalfLife"});
    constexpr int kSeeds = 200;
    const double truth[3] = {kV, kD, kHalfLife};
    int covered[3] = {0, 0, 0};
    for (int seed = 1; seed <= kSeeds; ++seed) {
        const FitReport report = fitModel(model, columnObservations(0.01, static_cast<unsigned>(seed), 8), request, ui);
        ASSERT_EQ(report.ending, FitEnding::Converged) << "seed " << seed << ": " << report.stopReason;
        for (int k = 0; k < 3; ++k)
            if (report.estimates[k].lower95 <= truth[k] && truth[k] <= report.estimates[k].upper95) ++covered[k];
    }
    // Intervals too wide would cover in every seed: at a true 95 % that has
    // a chance of 0.95^200, about 4e-5.
    for (int k = 0; k < 3; ++k) {
        EXPECT_GE(covered[k], 180) << "input " << k;
        EXPECT_LE(covered[k], kSeeds - 1) << "input " << k;
    }
}

// The covariance s^2 (J^T J)^-1 with J of the closed form by central differences.
TEST(FitColumn, CovarianceIsThatOfTheClosedFormsJacobian) {
    ScriptedUserInterface ui;
    const ObservationSet observations = columnObservations(0.01, 7);
    const FitReport report = fitModel(startedAway(), observations, vary({"Velocity", "Dispersion_X", "HalfLife"}), ui);
    ASSERT_EQ(report.ending, FitEnding::Converged);
    const double p[3] = {report.estimates[0].value, report.estimates[1].value, report.estimates[2].value};
    const auto model = [&](const double q[3], const Observation& o) { return columnRatio(q[0], q[1], q[2], o.x, o.t); };
    const int n = static_cast<int>(observations.points.size());
    Eigen::MatrixXd J(n, 3);
    double ss = 0;
    for (int i = 0; i < n; ++i) {
        const Observation& o = observations.points[static_cast<std::size_t>(i)];
        const double r = o.concentration - model(p, o);
        ss += r * r;
        for (int k = 0; k < 3; ++k) {
            double up[3] = {p[0], p[1], p[2]}, down[3] = {p[0], p[1], p[2]};
            const double h = 1e-5 * p[k];
            up[k] += h;
            down[k] -= h;
            J(i, k) = (model(up, o) - model(down, o)) / (2 * h);
        }
    }
    const Eigen::MatrixXd covariance = (J.transpose() * J).inverse() * (ss / (n - 3));
    for (int a = 0; a < 3; ++a)
        for (int b = 0; b < 3; ++b)
            EXPECT_CLOSE(report.covariance[a][b], covariance(a, b), 1e-4, 1e-6 * std::sqrt(covariance(a, a) * covariance(b, b)))
                << a << "," << b;
    EXPECT_CLOSE(report.weightedSumOfSquares, ss, 1e-6, 0);
    EXPECT_CLOSE(report.estimates[0].standardError, std::sqrt(covariance(0, 0)), 1e-4, 0);
    // 95 % interval: t with n - 3 degrees of freedom times the standard error.
    EXPECT_CLOSE(report.estimates[1].upper95 - report.estimates[1].value, studentT95(n - 3) * std::sqrt(covariance(1, 1)), 1e-4, 0);
}

TEST(FitColumn, WeightsScaleTheirResiduals) {
    // Doubling every weight changes nothing but the weighted sum of squares.
    ScriptedUserInterface ui;
    ObservationSet observations = columnObservations(0.01, 3);
    const FitReport plain = fitModel(startedAway(), observations, vary({"Velocity", "Dispersion_X"}), ui);
    for (Observation& o : observations.points) o.weight = 2;
    observations.weighted = true;
    const FitReport weighted = fitModel(startedAway(), observations, vary({"Velocity", "Dispersion_X"}), ui);
    EXPECT_CLOSE(weighted.estimates[0].value, plain.estimates[0].value, 1e-7, 0);
    EXPECT_CLOSE(weighted.weightedSumOfSquares, 2 * plain.weightedSumOfSquares, 1e-6, 0);
    EXPECT_CLOSE(weighted.estimates[0].standardError, plain.estimates[0].standardError, 1e-5, 0);
}

TEST(FitColumn, ObservedConcentrationsScaleWithTheSourceAndCanFitIt) {
    // C in mg/l from a source of 4 mg/l: C/Co times the source concentration.
    ScriptedUserInterface ui;
    ObservationSet observations = observationsOf(
        {3.0, 8.0}, 2.0, 3.0, 12, [](double x, double t) { return 4.0 * columnRatio(kV, kD, kHalfLife, x, t); }, 0.0, 1,
        false);
    DataSet model = startedAway();
    model.terms(1).concentration = "3";
    const FitReport report = fitModel(model, observations, vary({"Velocity", "Dispersion_X", "HalfLife", "Concentration"}), ui);
    ASSERT_EQ(report.ending, FitEnding::Converged) << report.problem;
    EXPECT_CLOSE(report.estimates[3].value, 4.0, 1e-6, 0);
    EXPECT_CLOSE(report.estimates[0].value, kV, 1e-6, 0);
}

TEST(FitColumn, VelocityWithRetardationIsIllPosedAndSaysSo) {
    // Only velocity / retardation reaches the column: their correlation is 1.
    ScriptedUserInterface ui;
    const FitReport report =
        fitModel(startedAway(), columnObservations(0.01, 5), vary({"Velocity", "Dispersion_X", "Retardation"}), ui);
    ASSERT_TRUE(report.fitted()) << report.problem;
    bool warned = false;
    for (const std::string& w : report.warnings)
        if (w.find("singular") != std::string::npos || w.find("correlated") != std::string::npos) warned = true;
    EXPECT_TRUE(warned) << fitReportText(report, startedAway());
}

TEST(FitColumn, AnEstimateOnItsBoundIsWarned) {
    ScriptedUserInterface ui;
    FitRequest request = vary({"Velocity", "Dispersion_X"});
    request.inputs[0].lower = 0.3;
    request.inputs[0].upper = 0.45;  // the true 0.5 lies above
    DataSet model = fitColumn();
    model.velocity = "0.4";
    const FitReport bounded = fitModel(model, columnObservations(0.0, 1), request, ui);
    ASSERT_TRUE(bounded.fitted()) << bounded.problem;
    EXPECT_TRUE(bounded.estimates[0].onBound);
    EXPECT_FALSE(bounded.estimates[1].onBound);
    EXPECT_CLOSE(bounded.estimates[0].value, 0.45, 1e-6, 0);
    ASSERT_FALSE(bounded.warnings.empty());
    EXPECT_NE(bounded.warnings[0].find("Velocity ended on its bound (0.45)"), std::string::npos) << bounded.warnings[0];
}

TEST(FitColumn, StopEndsTheFitWithTheEstimatesReached) {
    ScriptedUserInterface ui;
    FitControl control;
    int iterations = 0;
    control.iterationDone = [&](int, double) { return ++iterations < 2; };
    const FitReport report =
        fitModel(startedAway(), columnObservations(0.01, 2), vary({"Velocity", "Dispersion_X", "HalfLife"}), ui, control);
    EXPECT_EQ(report.ending, FitEnding::Stopped);
    EXPECT_EQ(iterations, 2);
    EXPECT_NE(report.stopReason.find("Stopped by the user"), std::string::npos);

    int runs = 0;
    control.iterationDone = {};
    control.keepGoing = [&] { return ++runs < 5; };
    const FitReport inside =
        fitModel(startedAway(), columnObservations(0.01, 2), vary({"Velocity", "Dispersion_X", "HalfLife"}), ui, control);
    EXPECT_EQ(inside.ending, FitEnding::Stopped);
}

TEST(FitColumn, ApplyWritesSevenDigitsIntoTheRows) {
    ScriptedUserInterface ui;
    DataSet model = startedAway();
    const FitReport report = fitModel(model, columnObservations(0.01, 4), vary({"Velocity", "HalfLife"}), ui);
    ASSERT_TRUE(report.fitted());
    applyEstimates(model, report);
    EXPECT_CLOSE(textValue(model.velocity), report.estimates[0].value, 1e-6, 0);
    EXPECT_CLOSE(textValue(model.halfLife), report.estimates[1].value, 1e-6, 0);
    EXPECT_EQ(model.dispersionX, "0.5");
    EXPECT_LE(model.velocity.size(), 9u);
}

}  // namespace
}  // namespace bm
