#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "kernels/kernmc.h"
#include "model/number_text.h"
#include "files/print_output.h"
#include "montecarlo/monte_generate.h"
#include "montecarlo/tests/monte_table_fixture.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "shell/base/raised_error.h"

namespace {

using bm::DataSet;
using bm::GenerationOutcome;
using bm::testkit::ScriptedUserInterface;
using bm::testkit::variantRow;

const char* const kOverflowText =
    "The input data has resulted in an overflow during analytical computations. Please check the data and try again.";
const char* const kIllegalText =
    "The input data has resulted in an illegal function call during analytical computations. Possible reasons could "
    "be taking a square root or a lograthim of a negative number etc. Please check the data and try again.";

struct GenerateTest : ::testing::Test {
    DataSet data;
    ScriptedUserInterface ui;
    bm::MonteVariantList variants;
    void SetUp() override {
        bm::testkit::makeMonteTables(data, 4);
        bm::seedMonteCarlo(2024);
    }
    GenerationOutcome generate() { return bm::generateSimulation(data, variants, 1, ui); }
    void setTerms(const std::string& terms) {
        for (int r = 1; r <= 4; ++r)
            if (data.InputTGData(r, 1).inUse) data.InputTGData(r, 1).terms = terms;
    }
    std::vector<double> samplesOf(int row, int count) const {
        std::vector<double> v;
        for (int i = 1; i <= count; ++i) v.push_back(data.MonteSamples(row, i, 1));
        return v;
    }
};

std::string asStored(double value) { return bm::formatNumber(bm::generalText(static_cast<float>(value))); }

TEST_F(GenerateTest, TermsTenGiveElevenSamplesPerVariant) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "10", "Normal");
    data.InputTGData(2, 1) = variantRow("Aquifer Porosity (n)", "0.3", "0.2", "0.4", "0.001", "10", "Uniform");
    EXPECT_EQ(generate(), GenerationOutcome::Generated);
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(data.monteIterations, 11);
    EXPECT_EQ(data.MonteSamples.ub(0), 4);
    EXPECT_EQ(data.MonteSamples.ub(1), 11);
    EXPECT_EQ(data.MonteSamples.ub(2), 1);
    EXPECT_TRUE(data.monteFreshFlag);
    EXPECT_EQ(ui.busyCalls, (std::vector<bool>{true, false}));

    const double bounds[3][2] = {{0, 0}, {1, 3}, {0.2, 0.4}};
    for (int r = 1; r <= 2; ++r) {
        EXPECT_EQ(data.MonteSamples(r, 0, 1), 0.0) << "element 0 stays untouched";
        for (double x : samplesOf(r, 11)) {
            EXPECT_GE(x, static_cast<float>(bounds[r][0]));
            EXPECT_LE(x, static_cast<float>(bounds[r][1]));
            // Single-precision draws, kept as the data file's 15-digit form gives them back.
            EXPECT_EQ(bm::asStreamReal(static_cast<float>(x)), x) << "samples are floats as the file keeps them";
        }
        for (int i = 0; i <= 11; ++i) EXPECT_EQ(data.MonteSamples(r, i, 0), 0.0) << "other chemical column";
    }
    for (int i = 0; i <= 11; ++i) EXPECT_EQ(data.MonteSamples(3, i, 1), 0.0) << "row not in use";
    // distinct values: eleven real draws
    std::vector<double> s = samplesOf(1, 11);
    std::sort(s.begin(), s.end());
    EXPECT_EQ(std::unique(s.begin(), s.end()), s.end());
}

TEST_F(GenerateTest, TheSummaryIsStoredAsFormattedText) {
    data.InputTGData(1, 1) = variantRow("Contaminant Half-Life", "5", "2", "8", "1", "40", "Triangle");
    ASSERT_EQ(generate(), GenerationOutcome::Generated);
    std::vector<double> s = samplesOf(1, 41);
    std::sort(s.begin(), s.end());
    double sum = 0, logs = 0;
    for (double x : s) {
        sum += x;
        logs += std::log(x);
    }
    const double mean = sum / 41;
    double squares = 0;
    for (double x : s) squares += (x - mean) * (x - mean);

    const bm::MonteResultRow& r = data.ResultTGData(1, 1);
    EXPECT_TRUE(r.inUse);
    EXPECT_EQ(r.variant, "Contaminant Half-Life");
    EXPECT_EQ(r.selection, "Nothing");
    EXPECT_EQ(r.minimum, asStored(s.front()));
    EXPECT_EQ(r.maximum, asStored(s.back()));
    EXPECT_EQ(r.median, asStored(s[19]));  // element floor(41/2) = 20 of the ascending 1-based copy
    EXPECT_CLOSE(bm::textValue(r.arithmeticMean), mean, 0, 1e-4);
    EXPECT_CLOSE(bm::textValue(r.geometricMean), std::exp(logs / 41), 0, 1e-4);
    EXPECT_CLOSE(bm::textValue(r.standardDeviation), std::sqrt(squares / 40), 0, 1e-4);
}

TEST_F(GenerateTest, TheSameSeedGivesTheSameSamples) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "10", "Gumbel");
    bm::seedMonteCarlo(42);
    ASSERT_EQ(generate(), GenerationOutcome::Generated);
    const auto first = samplesOf(1, 11);
    bm::seedMonteCarlo(42);
    ASSERT_EQ(generate(), GenerationOutcome::Generated);
    EXPECT_EQ(samplesOf(1, 11), first);
    ASSERT_EQ(generate(), GenerationOutcome::Generated);  // a second F7 without a seed draws anew
    EXPECT_NE(samplesOf(1, 11), first);
}

TEST(SampleCount, TermsPlusOne) {
    EXPECT_EQ(bm::sampleCount("10"), 11);
    EXPECT_EQ(bm::sampleCount(" 100 "), 101);
    EXPECT_EQ(bm::sampleCount("32767"), 32768);
    EXPECT_EQ(bm::sampleCount("1e3"), 1001);
    auto errorOf = [](const std::string& text) { return bm::raisedError([&] { bm::sampleCount(text); }); };
    EXPECT_EQ(errorOf(""), bm::err::TypeMismatch);
    EXPECT_EQ(errorOf("ten"), bm::err::TypeMismatch);
    EXPECT_EQ(errorOf("2147483647"), bm::err::Overflow);
    EXPECT_EQ(errorOf("1e12"), bm::err::Overflow);
}

TEST_F(GenerateTest, TheFirstNonEmptyTermsCellSetsTheCount) {
    data.InputTGData(1, 1).terms = "  ";
    data.InputTGData(2, 1).terms = " 25 ";
    data.InputTGData(3, 1).terms = "7";
    EXPECT_EQ(bm::firstTermsText(data, 1), "25");
    data.InputTGData(2, 1).terms = "";
    data.InputTGData(3, 1).terms = "";
    EXPECT_EQ(bm::firstTermsText(data, 1), "");
}

TEST_F(GenerateTest, GrowingByOneKeepsEarlierSamplesAnyOtherChangeClearsThem) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "100", "Normal");
    data.InputTGData(2, 1) = variantRow("Aquifer Porosity (n)", "0.3", "0.2", "0.4", "0.001", "100", "Uniform");
    ASSERT_EQ(generate(), GenerationOutcome::Generated);
    const auto kept = samplesOf(2, 101);
    // The porosity row leaves the simulation; its samples stay in the array.
    data.InputTGData(2, 1) = variantRow("", "", "", "", "", "", "");

    setTerms("101");
    ASSERT_EQ(generate(), GenerationOutcome::Generated);
    EXPECT_EQ(data.MonteSamples.ub(1), 102);
    EXPECT_EQ(samplesOf(2, 101), kept);
    EXPECT_EQ(data.MonteSamples(2, 102, 1), 0.0);

    setTerms("50");
    ASSERT_EQ(generate(), GenerationOutcome::Generated);
    EXPECT_EQ(data.MonteSamples.ub(1), 51);
    for (double x : samplesOf(2, 51)) EXPECT_EQ(x, 0.0);
}

TEST_F(GenerateTest, TheSameCountAgainAlsoClears) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "100", "Normal");
    data.InputTGData(2, 1) = variantRow("Aquifer Porosity (n)", "0.3", "0.2", "0.4", "0.001", "100", "Uniform");
    ASSERT_EQ(generate(), GenerationOutcome::Generated);
    data.InputTGData(2, 1) = variantRow("", "", "", "", "", "", "");
    ASSERT_EQ(generate(), GenerationOutcome::Generated);
    for (double x : samplesOf(2, 101)) EXPECT_EQ(x, 0.0);
}

TEST(ShapeMonteSamples, KeepsOnlyWhenTheCountGrewByOneInTheSameShape) {
    DataSet data;
    auto filled = [&](int capacity, int count, int chemicals) {
        data.MonteSamples.redim({capacity, count, chemicals});
        data.MonteSamples(1, 1, 0) = 7.5;
    };
    filled(3, 10, 1);
    bm::shapeMonteSamples(data, 3, 11);
    EXPECT_EQ(data.MonteSamples(1, 1, 0), 7.5);
    EXPECT_EQ(data.MonteSamples.bounds(), (bm::Array<double, 3>::Bounds{3, 11, 1}));
    filled(3, 10, 1);
    bm::shapeMonteSamples(data, 4, 11);  // another capacity
    EXPECT_EQ(data.MonteSamples(1, 1, 0), 0.0);
    filled(3, 10, 0);
    bm::shapeMonteSamples(data, 3, 11);  // another chemical bound
    EXPECT_EQ(data.MonteSamples(1, 1, 0), 0.0);
    filled(3, 10, 1);
    bm::shapeMonteSamples(data, 3, 12);  // grew by two
    EXPECT_EQ(data.MonteSamples(1, 1, 0), 0.0);
    EXPECT_EQ(data.MonteSamples.bounds(), (bm::Array<double, 3>::Bounds{3, 12, 1}));
}

TEST_F(GenerateTest, Terms32767OverflowsInTheStatistics) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "32767", "Normal");
    EXPECT_EQ(generate(), GenerationOutcome::Failed);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.lastTitle(), "Overflow");
    EXPECT_EQ(ui.lastText(), kOverflowText);
    EXPECT_EQ(data.monteIterations, 32768);  // counted and shaped before the statistics
    EXPECT_FALSE(data.ResultTGData(1, 1).inUse);
    EXPECT_FALSE(ui.busy);
}

TEST_F(GenerateTest, Terms32766OverflowsTheLoopCounterAnd32765IsTheLimit) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "32766", "Normal");
    EXPECT_EQ(generate(), GenerationOutcome::Failed);
    EXPECT_EQ(ui.lastTitle(), "Overflow");
    ui.messages.clear();
    setTerms("32765");
    EXPECT_EQ(generate(), GenerationOutcome::Generated);
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(data.monteIterations, 32766);
    EXPECT_TRUE(data.ResultTGData(1, 1).inUse);
}

TEST_F(GenerateTest, AHugeCountIsRefusedAsOutOfMemoryBeforeAllocating) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "900000000", "Normal");
    const DataSet before = data;
    EXPECT_EQ(generate(), GenerationOutcome::Failed);
    EXPECT_EQ(ui.lastTitle(), "Out Of Memory");
    EXPECT_TRUE(data.MonteSamples == before.MonteSamples);
    EXPECT_EQ(data.monteIterations, before.monteIterations);
}

TEST_F(GenerateTest, NoRowInUseLeavesTheTablesAsTheyWere) {
    data.MonteSamples.redim({4, 11, 1});
    data.MonteSamples(2, 3, 1) = 4.25;
    data.monteIterations = 11;
    data.ResultTGData(2, 1).median = "4.25";
    data.InputTGData(3, 1).terms = "20";  // a stale terms cell changes nothing either
    const DataSet before = data;
    EXPECT_EQ(generate(), GenerationOutcome::NothingInUse);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.lastText(), "No variable selected for Monte Carlo Analysis!");
    EXPECT_TRUE(data.MonteSamples == before.MonteSamples);
    EXPECT_TRUE(data.InputTGData == before.InputTGData);
    EXPECT_TRUE(data.ResultTGData == before.ResultTGData);
    EXPECT_EQ(data.monteIterations, 11);
    EXPECT_FALSE(data.monteFreshFlag);
    EXPECT_TRUE(ui.busyCalls.empty());
}

TEST_F(GenerateTest, AFailedCheckGeneratesNothing) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "9", "1", "3", "0.25", "10", "Normal");
    const DataSet before = data;
    EXPECT_EQ(generate(), GenerationOutcome::Refused);
    EXPECT_EQ(ui.lastTitle(), "Improper Input Data");
    EXPECT_TRUE(data.MonteSamples == before.MonteSamples);
    EXPECT_TRUE(data.ResultTGData == before.ResultTGData);
    EXPECT_EQ(data.monteIterations, before.monteIterations);
    EXPECT_TRUE(ui.busyCalls.empty());
}

TEST_F(GenerateTest, NegativeSamplesFailInTheStatisticsAndEarlierRowsStayDone) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "10", "Normal");
    data.InputTGData(2, 1) = variantRow("Center of Contaminant Source in Y Direction (Yc)", "-5", "-10", "-1", "1",
                                        "10", "Normal");
    EXPECT_EQ(generate(), GenerationOutcome::Failed);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.lastTitle(), "Illegal Function Call");
    EXPECT_EQ(ui.lastText(), kIllegalText);
    EXPECT_TRUE(data.ResultTGData(1, 1).inUse);
    EXPECT_NE(data.MonteSamples(1, 1, 1), 0.0);
    EXPECT_FALSE(data.ResultTGData(2, 1).inUse);
    EXPECT_FALSE(ui.busy);
}

TEST_F(GenerateTest, ALognormalOfNegativeMeanIsAnIllegalFunctionCall) {
    data.InputTGData(1, 1) = variantRow("Center of Contaminant Source in Y Direction (Yc)", "-5", "-10", "-1", "1",
                                        "10", "Lognormal");
    EXPECT_EQ(generate(), GenerationOutcome::Failed);
    EXPECT_EQ(ui.lastTitle(), "Illegal Function Call");
    EXPECT_FALSE(data.ResultTGData(1, 1).inUse);
}

TEST_F(GenerateTest, BoundsHoldingAlmostNothingEndTheRunWithAClearMessage) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "10", "Normal");
    data.InputTGData(2, 1) = variantRow("Contaminant Half-Life", "5", "4.99999", "5.00001", "1000000", "10", "Normal");
    EXPECT_EQ(generate(), GenerationOutcome::Failed);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.lastTitle(), "Improper Input Data");
    EXPECT_EQ(ui.messages[0].icon, bm::MessageIcon::Critical);
    EXPECT_EQ(ui.lastText(),
              "Contaminant Half-Life: the interval from the minimum to the maximum holds almost none of the Normal "
              "distribution of this mean and variance, so no samples can be drawn inside it.\r\rPlease widen the "
              "bounds or reduce the variance of the variant.");
    EXPECT_TRUE(data.ResultTGData(1, 1).inUse);
    EXPECT_FALSE(data.ResultTGData(2, 1).inUse);
    EXPECT_FALSE(ui.busy);
}

TEST_F(GenerateTest, AnUnknownNameKeepsTheCodeOfTheRowBefore) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "10", "Uniform");
    data.InputTGData(2, 1) = variantRow("Contaminant Half-Life", "15", "10", "20", "1", "10", "Weibull");
    EXPECT_EQ(bm::generateSamples(data, 1, ui), GenerationOutcome::Generated);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].icon, bm::MessageIcon::None);
    EXPECT_EQ(ui.messages[0].text, "Error in generate Simulation");
    // drawn as the uniform of the row before, on its own bounds
    ASSERT_TRUE(data.ResultTGData(2, 1).inUse);
    for (double x : samplesOf(2, 11)) {
        EXPECT_GE(x, 10.0);
        EXPECT_LE(x, 20.0);
    }
}

TEST_F(GenerateTest, AnUnknownNameInTheFirstRowIsSkipped) {
    data.InputTGData(1, 1) = variantRow("Contaminant Half-Life", "15", "10", "20", "1", "10", "Weibull");
    data.InputTGData(2, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "10", "Normal");
    EXPECT_EQ(bm::generateSamples(data, 1, ui), GenerationOutcome::Generated);
    EXPECT_EQ(ui.lastText(), "Error in generate Simulation");
    EXPECT_FALSE(data.ResultTGData(1, 1).inUse);
    EXPECT_TRUE(data.ResultTGData(2, 1).inUse);
}

TEST_F(GenerateTest, ATermsTextThatIsNoNumberIsATypeMismatch) {
    data.InputTGData(1, 1) = variantRow("Ground Water Darcy Velocity (V)", "2", "1", "3", "0.25", "ten", "Normal");
    EXPECT_EQ(bm::generateSamples(data, 1, ui), GenerationOutcome::Failed);
    EXPECT_EQ(ui.lastTitle(), "Type Mismatch Error");
}

TEST(MarkGenerated, OnlyAMonteCarloPanelMarksTheDataChanged) {
    DataSet data;
    bm::markGenerated(data, "");
    EXPECT_EQ(data.dataState, bm::kDataUnchanged);
    bm::markGenerated(data, "  Monte Carlo ");
    EXPECT_EQ(data.dataState, bm::kParametersChanged);
}

}  // namespace
