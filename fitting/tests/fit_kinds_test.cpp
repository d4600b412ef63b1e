// Fitting every single-chemical kind: observations made by a regular
// Calculate! run over the model's grid at known inputs; noise-free data give
// those inputs back, noisy data give intervals that cover them.

#include <gtest/gtest.h>

#include <optional>

#include "fit_test_support.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"

namespace bm {
namespace {

using namespace testkit;

// A strip between walls 100 m either side of a 20 m source.
DataSet strip() {
    DataSet d = sampleModel(".two");
    d.aquiferType = "Finite";
    d.timeRange = "182.5:1825:182.5";
    return d;
}

struct Case {
    DataSet truth;
    std::vector<GridPoint> places;
    FitRequest request;
    std::vector<double> trueValues;
    double sigma = 0;
    bool relative = true;
};

// Moves every varying input by a factor from the truth.
DataSet startedAway(const Case& c) {
    DataSet model = c.truth;
    const auto known = fitParametersOf(model);
    double factor = 1.25;
    for (const VaryingInput& input : c.request.inputs) {
        std::string& text = fitParameterText(model, *findFitParameter(known, input.name));
        text = generalText(textValue(text) * factor);
        factor = factor > 1 ? 0.8 : 1.25;
    }
    return model;
}

void expectRecovery(const Case& c, double tolerance) {
    ScriptedUserInterface ui;
    const FitReport report = fitModel(startedAway(c), gridObservations(c.truth, c.places, 0.0, 1, c.relative), c.request, ui);
    ASSERT_EQ(report.ending, FitEnding::Converged) << report.problem << report.stopReason;
    for (std::size_t k = 0; k < c.trueValues.size(); ++k)
        EXPECT_CLOSE(report.estimates[k].value, c.trueValues[k], tolerance, 0) << report.estimates[k].name;
    EXPECT_TRUE(ui.messages.empty());
}

// The count of seeds whose interval covers each input (the fits start at the
// truth: where they start from is the recovery tests' matter).
std::vector<int> coverage(const Case& c, int seeds) {
    ScriptedUserInterface ui;
    const DataSet start = c.truth;
    const ObservationSet exact = gridObservations(c.truth, c.places, 0.0, 1, c.relative);
    std::vector<int> covered(c.trueValues.size(), 0);
    for (int seed = 1; seed <= seeds; ++seed) {
        ObservationSet noisy = exact;
        std::mt19937_64 generator(static_cast<unsigned>(seed));
        std::normal_distribution<double> noise(0.0, c.sigma);
        for (Observation& o : noisy.points) o.concentration += noise(generator);
        const FitReport report = fitModel(start, noisy, c.request, ui);
        EXPECT_EQ(report.ending, FitEnding::Converged) << "seed " << seed << ": " << report.stopReason;
        for (std::size_t k = 0; k < c.trueValues.size() && k < report.estimates.size(); ++k)
            if (report.estimates[k].lower95 <= c.trueValues[k] && c.trueValues[k] <= report.estimates[k].upper95)
                ++covered[k];
    }
    return covered;
}

// Fewer seeds where a fit costs more: the count of covering seeds stays
// within what 95 % coverage allows (binomial, about 3 standard deviations).
// Intervals too wide would cover in every seed; with enough seeds (0.95^100
// is about 0.006) `atMost` catches that; with 20 (0.95^20 is 0.36) nothing can.
void expectCoverage(const Case& c, int seeds, int atLeast, std::optional<int> atMost = std::nullopt) {
    for (const int n : coverage(c, seeds)) {
        EXPECT_GE(n, atLeast) << c.truth.modelType;
        if (atMost) {
            EXPECT_LE(n, *atMost) << c.truth.modelType;
        }
    }
}

Case stripCase() {
    return Case{strip(), {{5, 11}, {13, 12}}, vary({"Velocity", "Dispersion_X", "Dispersion_y"}), {0.1, 3.3, 0.33},
                0.003};
}

TEST(FitKinds, TwoDimensionalStripGivesItsInputsBack) {
    PointsFileScope points;
    expectRecovery(stripCase(), 1e-6);
}

TEST(FitKinds, TwoDimensionalStripIntervalsCoverTheTruthInNinetyFivePercentOfSeeds) {
    PointsFileScope points;
    expectCoverage(stripCase(), 200, 180, 199);
}

Case patchCase() {
    DataSet truth = sampleModel(".tri");
    truth.timeRange = "365:1825:365";
    return Case{truth, {{5, 6, 3}, {9, 7, 4}}, vary({"Velocity", "Dispersion_z"}), {0.1, 0.033}, 0.002};
}

Case unsaturatedCase() {
    DataSet truth = sampleModel(".u1d");
    truth.timeRange = "73:730:73";
    truth.terms(1).concentration = "2.5";
    Case c{truth, {{5}, {9}}, vary({"Velocity", "Dispersion_X", "Concentration"}), {0.001, 0.01, 2.5}, 0.02};
    c.relative = false;
    return c;
}

Case timeVaryingCase() {
    DataSet truth = sampleModel(".var");
    truth.timeRange = "365:1825:365";
    Case c{truth, {{8, 1}, {10, 2}}, vary({"Velocity_X", "Magnitude"}), {0.33, 100}, 1e-4};
    c.relative = false;
    return c;
}

TEST(FitKinds, ThreeDimensionalPatchIntervalsCoverTheTruth) {
    PointsFileScope points;
    expectCoverage(patchCase(), 20, 17);
}

TEST(FitKinds, UnsaturatedIntervalsCoverTheTruth) { expectCoverage(unsaturatedCase(), 100, 88, 99); }

TEST(FitKinds, TimeVaryingIntervalsCoverTheTruth) { expectCoverage(timeVaryingCase(), 20, 17); }

TEST(FitKinds, TwoDimensionalLineSourceGivesItsInputsBack) {
    PointsFileScope points;
    DataSet truth = sampleModel(".two");
    truth.timeRange = "365:1825:365";
    expectRecovery(Case{truth, {{9, 11}, {13, 12}}, vary({"Velocity", "Dispersion_y", "Width"}), {0.1, 0.33, 20}}, 1e-6);
}

TEST(FitKinds, ThreeDimensionalPatchGivesItsInputsBack) {
    PointsFileScope points;
    expectRecovery(patchCase(), 1e-6);
}

TEST(FitKinds, UnsaturatedColumnGivesItsInputsBackInItsConcentrationUnit) { expectRecovery(unsaturatedCase(), 1e-6); }

TEST(FitKinds, TimeVaryingPointSourceGivesItsInputsBackToItsSinglePrecision) {
    // Its results are single-precision numbers.
    expectRecovery(timeVaryingCase(), 1e-4);
}

}  // namespace
}  // namespace bm

namespace bm {
namespace {

TEST(FitKindsMessages, AMessageOfTheCalculationIsShownOnceForTheWholeFit) {
    // The time-varying record keeps its source when the text is not recognised, and says so at every run.
    const Case c = timeVaryingCase();
    const ObservationSet observations = testkit::gridObservations(c.truth, c.places, 0.0, 1, false);
    DataSet model = c.truth;
    model.contaminantType = "Point (somewhere)";
    testkit::ScriptedUserInterface ui;
    const FitReport report = fitModel(model, observations, c.request, ui);
    EXPECT_TRUE(report.fitted()) << report.problem;
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, "Contaminant Source not identified, copyToDLLStructure ");
}

}  // namespace
}  // namespace bm
