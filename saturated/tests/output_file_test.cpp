#include <gtest/gtest.h>

#include "saturated/output_file.h"
#include "shell/base/runtime_error.h"
#include "testing/test_paths.h"

using namespace bm;
using bm::testkit::fixturePath;
using bm::testkit::readFileBytes;

namespace {

void setAxis(List<double>& list, std::int16_t& count, std::initializer_list<double> values) {
    count = static_cast<std::int16_t>(values.size());
    list.redim(count);
    int i = 1;
    for (double v : values) list(i++) = v;
}

DataSet oneDimensional() {
    DataSet d;
    d.modelType = "One Dimensional";
    d.aquiferType = "Semi-Infinite";
    d.contaminantType = "Dirichlet";
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    d.terms(1).concentration = "10";
    d.velocity = "0.1";
    d.porosity = "0.3";
    d.halfLife = "1e20";
    d.dispersionX = "0.5";
    d.retardation = "1";
    setAxis(d.xValues, d.numXTerms, {0, 50, 100});
    setAxis(d.tValues, d.numTTerms, {10, 100000});
    d.result1D.redim({3, 2});
    d.result1D(1, 1) = 1;
    d.result1D(1, 2) = 1;
    d.result1D(2, 1) = 0.5;
    d.result1D(2, 2) = 0.0246912;
    d.result1D(3, 1) = 0.0005;
    d.result1D(3, 2) = 0.123456;
    return d;
}

}  // namespace

TEST(OutputFile, OneDimensionalRegularLastRowHasNoLineEnd) {
    const std::string expected = readFileBytes(fixturePath("saturated", "output1d.txt"));
    EXPECT_EQ(regularOutputText(oneDimensional(), 1), expected);
    EXPECT_NE(expected.substr(expected.size() - 2), "\r\n");
}

TEST(OutputFile, HeaderIntegersCarryBlankOnBothSides) {
    const std::string text = regularOutputText(oneDimensional(), 1);
    EXPECT_NE(text.find("Number of X Terms:  3 \r\n"), std::string::npos);
    EXPECT_NE(text.find("Contaminant:Dirichlet\r\n"), std::string::npos);
    EXPECT_NE(text.find("Aquifer: Semi-Infinite\r\n"), std::string::npos);
}

TEST(OutputFile, TwoDimensionalRegularGaussianSourceLine) {
    DataSet d;
    d.modelType = "Two Dimensional";
    d.aquiferType = "Infinite";
    d.contaminantType = "Gaussian";
    d.lengthUnit = "ft";
    d.timeUnit = "yr";
    d.concentrationUnit = "ppm";
    d.sourceYc = "50";
    d.terms(1).concentration = "1";
    d.velocity = "1";
    d.halfLife = "10";
    d.dispersionX = "2";
    d.dispersionY = "0.2";
    d.sourceStdDev = "5";
    d.sourceWidth = "999";
    d.porosity = "0.25";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.retardation = "2";
    d.currentFileName = " /data/plume.two ";
    setAxis(d.xValues, d.numXTerms, {10, 20});
    setAxis(d.yValues, d.numYTerms, {-5, 5});
    setAxis(d.tValues, d.numTTerms, {5});
    d.result2D.redim({2, 2, 1});
    d.result2D(1, 1, 1) = 0.1;
    d.result2D(1, 2, 1) = 0.25;
    d.result2D(2, 1, 1) = 1234.5678;
    d.result2D(2, 2, 1) = 0;
    EXPECT_EQ(regularOutputText(d, 2), readFileBytes(fixturePath("saturated", "output2d.txt")));
}

TEST(OutputFile, ThreeDimensionalRegularBlocksPerTime) {
    DataSet d;
    d.modelType = "Three Dimensional";
    d.aquiferType = "Infinite";
    d.contaminantType = "Continuous / Point";
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "ug/l";
    d.sourceYc = "0";
    d.sourceZc = "1";
    d.sourceXc = "2";
    d.injectionRate = "3";
    d.terms(1).concentration = "100";
    d.velocity = "0.5";
    d.halfLife = "365";
    d.dispersionX = "1";
    d.dispersionY = "0.1";
    d.dispersionZ = "0.01";
    d.porosity = "0.3";
    d.netRecharge = "0";
    d.aquiferThickness = "20";
    d.retardation = "1";
    setAxis(d.xValues, d.numXTerms, {5});
    setAxis(d.yValues, d.numYTerms, {0, 1});
    setAxis(d.zValues, d.numZTerms, {0, 1});
    setAxis(d.tValues, d.numTTerms, {1, 2});
    d.result3D.redim({1, 2, 2, 2});
    double v = 0.1;
    for (int t = 1; t <= 2; ++t)
        for (int y = 1; y <= 2; ++y)
            for (int z = 1; z <= 2; ++z, v += 0.1) d.result3D(1, y, z, t) = v;
    EXPECT_EQ(regularOutputText(d, 3), readFileBytes(fixturePath("saturated", "output3d.txt")));
}

TEST(OutputFile, MonteCarloOneDimensionalShowsMarkerValues) {
    DataSet d = oneDimensional();
    d.aquiferType = "Semi-Infinite";
    d.contaminantType = "Cauchy";
    d.monteCarloModeOn = true;
    d.terms(1).concentration = std::string(30, ' ') + "Monte Carlo" + std::string(30, ' ') + "|12.5: 4";
    d.porosity = "Monte Carlo" + std::string(500, ' ') + "|0.35: 2";
    d.halfLife = "100";
    d.retardation = "1.5";
    d.currentFileName = "/home/u/run.one";
    d.mcResult1D.redim(3);
    d.mcResult1D(0) = 99;  // slot 0 is never written
    d.mcResult1D(1) = 0.5;
    d.mcResult1D(2) = 0.25;
    d.mcResult1D(3) = 0.0001;
    std::string file;
    writeMonteCarloOutput1D(d, file);
    EXPECT_EQ(file, readFileBytes(fixturePath("saturated", "montecarlo1d.txt")));
}

TEST(OutputFile, MonteCarloTwoAndThreeDimensional) {
    DataSet d;
    d.aquiferType = "Finite";
    d.contaminantType = "Finite / Line";
    d.terms(1).concentration = "1";
    d.concentrationUnit = "mg/l";
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.velocity = "0.2";
    d.halfLife = "50";
    d.dispersionX = "1";
    d.dispersionY = "0.1";
    d.dispersionZ = "0.01";
    d.sourceWidth = "7.5";
    d.porosity = "0.3";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.retardation = "1";
    d.mcResult2D.redim(2);
    d.mcResult2D(1) = 0.123456;
    d.mcResult2D(2) = 0.5;
    EXPECT_EQ(monteCarloOutputText(d, 2), readFileBytes(fixturePath("saturated", "montecarlo2d.txt")));

    d.aquiferType = "Infinite";
    d.contaminantType = "Finite / Patch";
    d.concentrationUnit = "ppb";
    d.lengthUnit = "ft";
    d.timeUnit = "yr";
    d.sourceWidth = "4";
    d.sourceHeight = "2";
    d.netRecharge = "0.001";
    d.mcResult3D.redim(1);
    d.mcResult3D(1) = 0.00123;
    EXPECT_EQ(monteCarloOutputText(d, 3), readFileBytes(fixturePath("saturated", "montecarlo3d.txt")));
}

TEST(OutputFile, NeverCalculatedModelWritesHeaderAndEmptyTable) {
    DataSet d = oneDimensional();
    d.numXTerms = d.numTTerms = 0;
    const std::string text = regularOutputText(d, 1);
    EXPECT_NE(text.find("Number of X Terms:  0 \r\n"), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 9), "\r\n\r\nTime:");
}

TEST(OutputFile, WriterReplacesFileAndReportsMissingFolder) {
    bm::testkit::TempDir dir;
    const std::string path = dir.file("brenmoor.plt");
    bm::testkit::writeFileBytes(path, "old contents that are longer than nothing");
    writeOutput1D(oneDimensional(), path);
    EXPECT_EQ(readFileBytes(path), readFileBytes(fixturePath("saturated", "output1d.txt")));
    try {
        writeOutput1D(oneDimensional(), dir.file("missing/brenmoor.plt"));
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::PathNotFound);
    }
}
