// Filling the time-varying record from the DataSet: codes and their messages,
// ranges and counts, the simulation's point, fields read through markers.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "kernels/kernvar.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "timevarying/tests/var_test_model.h"
#include "timevarying/var_record.h"

namespace {

using bm::kernvarRecord;
using bm::testkit::ScriptedUserInterface;

TEST(VarRecord, SourceCodesFromTheExactTexts) {
    const std::pair<const char*, int> codes[] = {
        {"Point (instantaneous)", 1}, {"Point (continuous)", 2}, {"Point (initial)", 3},
        {"Point (with initial distribution)", 3}, {"Line (instantaneous)", 4}, {"Line (continuous)", 5},
        {"Line (initial)", 6}, {"Line (with initial distribution)", 6}};
    for (const auto& [text, code] : codes) {
        bm::DataSet d = var_test::model(text);
        kernvarRecord r{};
        ScriptedUserInterface ui;
        bm::copyToDLLStructure(d, r, false, 1, ui);
        EXPECT_EQ(r.contaminantSource, code) << text;
        EXPECT_TRUE(ui.messages.empty()) << text;
    }
}

TEST(VarRecord, DispersionCodesFromTheExactTexts) {
    const std::pair<const char*, int> codes[] = {{"Constant", 1}, {"Linear", 2}, {"Asymptotic", 3}, {"Exponential", 4}};
    for (const auto& [text, code] : codes) {
        bm::DataSet d = var_test::model("Point (instantaneous)", text);
        kernvarRecord r{};
        ScriptedUserInterface ui;
        bm::copyToDLLStructure(d, r, false, 1, ui);
        EXPECT_EQ(r.dispersionFunction, code) << text;
        EXPECT_TRUE(ui.messages.empty());
    }
}

TEST(VarRecord, AnUnknownSourceShowsItsMessageAndKeepsTheCode) {
    bm::DataSet d = var_test::model("point (instantaneous)");  // the case counts
    kernvarRecord r{};
    r.contaminantSource = 5;
    ScriptedUserInterface ui;
    bm::copyToDLLStructure(d, r, false, 1, ui);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, "Contaminant Source not identified, copyToDLLStructure ");
    EXPECT_EQ(r.contaminantSource, 5);
    EXPECT_EQ(r.dispersionFunction, 3);
}

TEST(VarRecord, AnyOtherDispersionTextShowsTheMessageAndKeepsTheEarlierCode) {
    bm::DataSet d = var_test::model("Point (continuous)", "Quadratic");
    kernvarRecord r{};
    r.dispersionFunction = 4;
    ScriptedUserInterface ui;
    bm::copyToDLLStructure(d, r, false, 1, ui);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, "Dispersion Coefficient not identified, copyToDLLStructure ");
    EXPECT_EQ(r.dispersionFunction, 4);
    EXPECT_EQ(r.contaminantSource, 2);
}

TEST(VarRecord, RangesAndCountsAreTheWholePartPlusOne) {
    bm::DataSet d = var_test::model();
    d.xRange = "0:10:4";      // 2.5 -> 2, plus 1
    d.yRange = "0:0.3:0.1";   // 3 in float arithmetic, plus 1
    d.timeRange = "0:100:1";  // 101
    kernvarRecord r{};
    ScriptedUserInterface ui;
    bm::copyToDLLStructure(d, r, false, 1, ui);
    EXPECT_EQ(r.xCount, 3);
    EXPECT_EQ(r.yCount, 4);
    EXPECT_EQ(r.timeCount, 101);
    EXPECT_EQ(r.xMinimum, 0.0f);  // a range starting at 0 keeps it
    EXPECT_EQ(r.xMaximum, 10.0f);
    EXPECT_EQ(r.xInterval, 4.0f);
    EXPECT_EQ(r.timeMinimum, 0.0f);
    EXPECT_EQ(d.numXTerms, 3);
    EXPECT_EQ(d.numYTerms, 4);
    EXPECT_EQ(d.numTTerms, 101);
    EXPECT_EQ(d.xConstant, 10.0);
    EXPECT_EQ(d.tConstant, 100.0);
}

TEST(VarRecord, ASinglePointAtZeroMovesOffTheOriginInXAndTimeOnly) {
    bm::DataSet d = var_test::model();
    d.xRange = "0:0:0";
    d.timeRange = "0";
    d.yRange = "0";
    kernvarRecord r{};
    ScriptedUserInterface ui;
    bm::copyToDLLStructure(d, r, false, 1, ui);
    EXPECT_EQ(r.xMinimum, 0.00001f);
    EXPECT_EQ(r.xCount, 1);
    EXPECT_EQ(r.timeMinimum, 0.00001f);
    EXPECT_EQ(r.timeCount, 1);
    EXPECT_EQ(r.yMinimum, 0.0f);
    EXPECT_EQ(r.yCount, 1);
    EXPECT_EQ(d.xConstant, static_cast<double>(0.00001f));
    EXPECT_EQ(d.tConstant, static_cast<double>(0.00001f));
    EXPECT_EQ(d.yConstant, 0.0);
}

TEST(VarRecord, ALineSourceWithYNotUsedHasOneY) {
    bm::DataSet d = var_test::model("Line (continuous)");
    d.yRange = "Not Used";
    d.velocityY = "Not Used";
    kernvarRecord r{};
    r.velocityY = 7.0f;
    ScriptedUserInterface ui;
    bm::copyToDLLStructure(d, r, false, 1, ui);
    EXPECT_EQ(r.yCount, 1);
    EXPECT_EQ(d.numYTerms, 1);
    EXPECT_EQ(r.yMinimum, 0.0f);
    EXPECT_EQ(r.velocityY, 0.0f);
    EXPECT_TRUE(ui.messages.empty());
}

TEST(VarRecord, PhysicalFieldsAndSeepageVelocities) {
    bm::DataSet d = var_test::model();
    kernvarRecord r{};
    ScriptedUserInterface ui;
    bm::copyToDLLStructure(d, r, false, 1, ui);
    EXPECT_EQ(r.magnitude, 1000.0f);
    EXPECT_EQ(r.retardation, 2.0f);
    EXPECT_EQ(r.decay, 0.001f);
    EXPECT_EQ(r.dispersionRatio, 0.2f);
    EXPECT_EQ(r.maximumDispersivity, 5.0f);
    EXPECT_EQ(r.molecularDiffusion, 0.01f);
    EXPECT_EQ(r.meanTravelTime, 20.0f);
    EXPECT_CLOSE(r.velocityX, 1.0, 1e-7, 0.0);
    EXPECT_CLOSE(r.velocityY, 0.3, 1e-7, 0.0);
}

TEST(VarRecord, ZeroPorosityIsADivisionByZero) {
    bm::DataSet d = var_test::model();
    d.porosity = "0";
    kernvarRecord r{};
    ScriptedUserInterface ui;
    try {
        bm::copyToDLLStructure(d, r, false, 1, ui);
        FAIL() << "no error";
    } catch (const bm::RuntimeError& e) {
        EXPECT_EQ(e.number(), bm::err::DivisionByZero);
    }
}

// A simulation with porosity and magnitude varying: rows 1 and 2 of the samples.
bm::DataSet simulationModel() {
    bm::DataSet d = var_test::model();
    d.porosity = "Monte Carlo" + std::string(500, ' ') + "|0.3: 1";
    d.sourceMagnitude = "Monte Carlo" + std::string(500, ' ') + "|1000: 2";
    d.monteIterations = 4;
    d.MonteSamples.redim({2, 4, 1});
    const double porosities[] = {0, 0.25, 0.3, 0.4, 0.35};
    const double magnitudes[] = {0, 900, 1000, 1100, 1200};
    for (int i = 1; i <= 4; ++i) {
        d.MonteSamples(1, i, 1) = porosities[i];
        d.MonteSamples(2, i, 1) = magnitudes[i];
    }
    return d;
}

TEST(VarRecord, VaryingPorosityDividesTheVelocitiesByThatIterationsSample) {
    bm::DataSet d = simulationModel();
    const double porosities[] = {0, 0.25, 0.3, 0.4};
    for (int i = 1; i <= 3; ++i) {
        kernvarRecord r{};
        ScriptedUserInterface ui;
        bm::copyToDLLStructure(d, r, true, i, ui);
        EXPECT_CLOSE(r.velocityX, 0.3 / porosities[i], 1e-7, 0.0) << i;
        EXPECT_CLOSE(r.velocityY, 0.09 / porosities[i], 1e-7, 0.0) << i;
        EXPECT_EQ(r.magnitude, static_cast<float>(d.MonteSamples(2, i, 1))) << i;
    }
}

TEST(VarRecord, ASimulationRunsAtItsOnePoint) {
    bm::DataSet d = simulationModel();
    kernvarRecord r{};
    ScriptedUserInterface ui;
    bm::copyToDLLStructure(d, r, true, 2, ui);
    EXPECT_EQ(r.xCount, 1);
    EXPECT_EQ(r.yCount, 1);
    EXPECT_EQ(r.timeCount, 1);
    EXPECT_EQ(r.xMinimum, 20.0f);
    EXPECT_EQ(r.yMinimum, 3.0f);
    EXPECT_EQ(r.timeMinimum, 30.0f);
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.numYTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.xConstant, 20.0);
    EXPECT_EQ(d.yConstant, 3.0);
    EXPECT_EQ(d.tConstant, 30.0);
}

TEST(VarRecord, TheModeScanLooksForMonteInEveryRow) {
    bm::DataSet d = var_test::model();
    EXPECT_FALSE(bm::scanTimeVaryingMode(d));
    EXPECT_EQ(d.calculationMode, "Regular");
    d.distributionCoefficient = "Monte Carlo" + std::string(500, ' ') + "|20: 3";
    EXPECT_TRUE(bm::scanTimeVaryingMode(d));
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    d = var_test::model();
    d.monteCarloModeOn = true;
    EXPECT_TRUE(bm::scanTimeVaryingMode(d));
}

TEST(VarRecord, TermCountRule) {
    EXPECT_EQ(bm::varTermCount(0, 100, 0), 1);
    EXPECT_EQ(bm::varTermCount(5, 5, 1), 1);
    EXPECT_EQ(bm::varTermCount(0, 0.7f, 0.1f), 8);
    EXPECT_EQ(bm::varTermCount(0, 9.99f, 1), 10);
    try {
        bm::varTermCount(0, 40000, 1);
        FAIL() << "no overflow";
    } catch (const bm::RuntimeError& e) {
        EXPECT_EQ(e.number(), bm::err::Overflow);
    }
}

}  // namespace
