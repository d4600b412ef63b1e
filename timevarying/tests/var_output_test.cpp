// The time-varying output files against hand-written texts.

#include <gtest/gtest.h>

#include <string>

#include "testing/test_paths.h"
#include "timevarying/var_output.h"

namespace {

bm::DataSet pointResults() {
    bm::DataSet d;
    d.modelType = "Time Varying";
    d.aquiferType = "Linear";
    d.contaminantType = "Point (continuous)";
    d.lengthUnit = "&m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/L";
    d.xRange = "10:20:10";
    d.yRange = "-5:5:10";
    d.timeRange = "10:20:10";
    d.velocityX = "0.3";
    d.velocityY = "0.09";
    d.saturation = "0.01";
    d.retardation = "2";
    d.dispersionRatio = "0.2";
    d.bulkDensity = "5";
    d.sourceDecayRate = "0.001";
    d.distributionCoefficient = "20";
    d.sourceMagnitude = "1000";
    d.numXTerms = 2;
    d.numYTerms = 2;
    d.numTTerms = 2;
    d.varTValues.redim(2);
    d.varTValues(1) = 10;
    d.varTValues(2) = 20;
    d.resultVar.redim(8);
    const float values[] = {0.5f, 1.25f, 12.5f, 0.001234f, 250.0f, 3.75f, 0.0625f, 45.125f};
    for (int i = 1; i <= 8; ++i) d.resultVar(i) = values[i - 1];
    return d;
}

TEST(VarOutput, PointSourceFile) {
    const std::string expected =
        "Ground Water\r\n"
        "Model: Point Source\r\n"
        "Dispersion Coefficient: Linear\r\n"
        "Contaminant:Point (continuous)\r\n"
        "Length Units: m\r\n"
        "Time Units: day\r\n"
        "Concentration Units: mg/L\r\n"
        "Number of X Terms:  2 \r\n"
        "Number of Y Terms:  2 \r\n"
        "Number of Time Terms:  2 \r\n"
        "Retardation Coefficient: 2\r\n"
        "Steady-state velocity in X-direction: 0.3\r\n"
        "Steady-state velocity in Y-direction: 0.09\r\n"
        "First Order Decay Coefficient: 0.001\r\n"
        "Maximum Dispersivity: 5\r\n"
        "Molecular Diffusion: 0.01\r\n"
        "Magnitude of Source: 1000\r\n"
        "Mean Travel Time: 20\r\n"
        "Dispersion Ratio Coefficient: 0.2\r\n"
        "X Range: 10:20:10\r\n"
        "Y Range: -5:5:10\r\n"
        "Time Range: 10:20:10\r\n"
        "Data File Name: Input Data Not Saved\r\n"
        "Time:, 10\r\n"
        "0.5, 1.25\r\n"
        "12.5, 0.001234\r\n"
        "Time:, 20\r\n"
        "250, 3.75\r\n"
        "0.0625, 45.125\r\n";
    EXPECT_EQ(bm::timeVaryingOutputText(pointResults()), expected);
}

TEST(VarOutput, LineSourceFileHasOneRowOfXPerTime) {
    bm::DataSet d = pointResults();
    d.contaminantType = "Line (instantaneous)";
    d.currentFileName = " /data/plume.var ";
    d.yRange = "Not Used";
    d.numYTerms = 1;
    d.numXTerms = 4;
    d.varTValues.redim(2);
    d.varTValues(1) = 7.5f;
    d.varTValues(2) = 15;
    const std::string expected =
        "Ground Water\r\n"
        "Model: Line Source\r\n"
        "Dispersion Coefficient: Linear\r\n"
        "Contaminant:Line (instantaneous)\r\n"
        "Length Units: m\r\n"
        "Time Units: day\r\n"
        "Concentration Units: mg/L\r\n"
        "Number of X Terms:  4 \r\n"
        "Number of Time Terms:  2 \r\n"
        "Retardation Coefficient: 2\r\n"
        "Steady-state velocity in X-direction: 0.3\r\n"
        "First Order Decay Coefficient: 0.001\r\n"
        "Maximum Dispersivity: 5\r\n"
        "Molecular Diffusion: 0.01\r\n"
        "Magnitude of Source: 1000\r\n"
        "Mean Travel Time: 20\r\n"
        "Dispersion Ratio Coefficient: 0.2\r\n"
        "X Range: 10:20:10\r\n"
        "Time Range: 10:20:10\r\n"
        "Data File Name: /data/plume.var\r\n"
        "Time:, 7.5\r\n"
        "0.5, 1.25, 12.5, 0.001234\r\n"
        "Time:, 15\r\n"
        "250, 3.75, 0.0625, 45.125\r\n";
    EXPECT_EQ(bm::timeVaryingOutputText(d), expected);
}

TEST(VarOutput, AnUnknownSourceWritesNothing) {
    bm::DataSet d = pointResults();
    d.contaminantType = "Patch";
    EXPECT_EQ(bm::timeVaryingOutputText(d), "");
    bm::testkit::TempDir dir;
    EXPECT_FALSE(bm::writeTimeVaryingOutput(d, dir.file("brenmoor.plt")));
    EXPECT_FALSE(std::filesystem::exists(dir.file("brenmoor.plt")));
}

TEST(VarOutput, WriterReplacesTheFile) {
    bm::testkit::TempDir dir;
    const std::string path = dir.file("brenmoor.plt");
    bm::testkit::writeFileBytes(path, "old contents that are longer than nothing");
    ASSERT_TRUE(bm::writeTimeVaryingOutput(pointResults(), path));
    EXPECT_EQ(bm::testkit::readFileBytes(path), bm::timeVaryingOutputText(pointResults()));
}

TEST(VarOutput, MonteCarloFile) {
    bm::DataSet d = pointResults();
    d.porosity = "Monte Carlo" + std::string(500, ' ') + "|0.3: 1";
    d.retardation = "Monte Carlo" + std::string(500, ' ') + "|2.5: 2";
    d.mcResultVar.redim(3);
    d.mcResultVar(1) = 0.5f;
    d.mcResultVar(2) = 12.5f;
    d.mcResultVar(3) = 0.001234f;
    const std::string expected =
        "Monte Carlo\r\n"
        "Type: Concentrations\r\n"
        "Number of Terms: 3\r\n"
        "Dispersion Coefficient: Linear, Contaminant Source: Point (continuous)\r\n"
        "Time Varying Dispersion Coefficient\r\n"
        "Chemical Name: \r\n"
        "Magnitude of Source: 1000\r\n"
        "Retardation Coefficient: 2.5\r\n"
        "Steady state velocity in X direction: 0.3\r\n"
        "Steady state velocity in Y direction: 0.09\r\n"
        "First order decay coefficient: 0.001\r\n"
        "Maximum Dispersivity: 5\r\n"
        "Molecular Diffusion: 0.01\r\n"
        "Length Units: m\r\n"
        "Time Units: day\r\n"
        "Concentration Units: mg/L\r\n"
        "Data File Name: Input Data Not Saved\r\n"
        "\r\n"
        "0.5\r\n"
        "12.5\r\n"
        "0.001234\r\n";
    std::string file = "kept\r\n";
    bm::writeTimeVaryingMonteCarloOutput(d, file);
    EXPECT_EQ(file, "kept\r\n" + expected);
}

}  // namespace
