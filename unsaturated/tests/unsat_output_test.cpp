// The two writers of the unsaturated model against golden files written by hand.

#include <gtest/gtest.h>

#include "montecarlo/monte_marker.h"
#include "shell/base/runtime_error.h"
#include "testing/test_paths.h"
#include "unsaturated/unsat_output.h"

namespace bm {
namespace {

using testkit::fixturePath;
using testkit::readFileBytes;
using testkit::TempDir;

void setAxis(List<double>& list, std::int16_t& count, std::initializer_list<double> values) {
    count = static_cast<std::int16_t>(values.size());
    list.redim(count);
    int i = 1;
    for (double v : values) list(i++) = v;
}

DataSet decayingSourceModel() {
    DataSet d;
    d.modelType = "Unsaturated One Dimensional";
    d.aquiferType = "Semi-Infinite";
    d.contaminantType = "Dirichlet/Exp. Decay";
    d.lengthUnit = "&m";  // a unit word's ampersand is dropped
    d.timeUnit = "day";
    d.concentrationUnit = "mg/L";
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1).time = "0";
    d.terms(1).concentration = "1";
    d.velocity = "0.01";
    d.dispersionX = ".5";
    d.halfLife = "365";
    d.bulkDensity = "1.6";
    d.distributionCoefficient = "0.1";
    d.porosity = "0.35";
    d.saturation = "0.5";
    d.sourceDecayRate = "5.e-4";
    setAxis(d.xValues, d.numXTerms, {0, 0.5, 1.5});
    setAxis(d.tValues, d.numTTerms, {10, 365});
    d.resultUnsat.redim({3, 2});
    d.resultUnsat(1, 1) = 1;
    d.resultUnsat(1, 2) = 1;
    d.resultUnsat(2, 1) = 0.89826;
    d.resultUnsat(2, 2) = 0.99939;
    d.resultUnsat(3, 1) = 0.0005;
    d.resultUnsat(3, 2) = 0.123456;
    return d;
}

// Two chemicals, the second selected; its grid copied into resultUnsat for display.
DataSet chemicalModel() {
    DataSet d;
    d.modelType = "Unsaturated One Dimensional";
    d.aquiferType = "Semi-Infinite";
    d.contaminantType = "Dirichlet";
    d.multiChemical = true;
    d.lengthUnit = "ft";
    d.timeUnit = "yr";
    d.concentrationUnit = "ppm";
    d.currentFileName = "  /home/u/column.mcu  ";
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1).time = "0";
    d.terms(1).concentration = "0.25";
    d.velocity = "0.2";
    d.dispersionX = "0.05";
    d.halfLife = "13.86";
    d.bulkDensity = "1.7";
    d.distributionCoefficient = "0";
    d.porosity = "0.3";
    d.saturation = "0.3";
    d.sourceDecayRate = "0.9";  // not shown for a constant inlet
    d.numChemicals = 2;
    d.chemicalName.redim(2);
    d.decayRate.redim(2);
    d.yieldFactor.redim(2);
    d.suppositionConcentration.redim(2);
    d.chemicalName(1) = "TCE";
    d.chemicalName(2) = "DCE";
    d.decayRate(1) = "0.1";
    d.decayRate(2) = "0.05";
    d.yieldFactor(1) = "1";
    d.yieldFactor(2) = "0.8";
    d.suppositionConcentration(1) = "100";
    d.suppositionConcentration(2) = "40";
    d.selectedChemical = 2;
    setAxis(d.xValues, d.numXTerms, {2.5});
    setAxis(d.tValues, d.numTTerms, {12});
    d.resultUnsat.redim({1, 1});
    d.resultUnsat(1, 1) = 0.0246912;
    return d;
}

TEST(UnsatOutput, PlotFileOfADecayingSource) {
    const std::string expected = readFileBytes(fixturePath("unsaturated", "unsat_plot.txt"));
    EXPECT_EQ(unsatPlotText(decayingSourceModel()), expected);
    EXPECT_NE(expected.substr(expected.size() - 2), "\r\n");  // the last row has no line end
}

TEST(UnsatOutput, PlotFileOfASelectedChemicalWithAConstantInlet) {
    const std::string expected = readFileBytes(fixturePath("unsaturated", "unsat_plot_chemical.txt"));
    EXPECT_EQ(unsatPlotText(chemicalModel()), expected);
}

TEST(UnsatOutput, PlotFileIsWrittenToItsPathAndReplacesIt) {
    TempDir dir;
    const std::string path = dir.file("brenmoor.plt");
    testkit::writeFileBytes(path, "old content that is longer than nothing at all");
    writeUnsatPlotFile(decayingSourceModel(), path);
    EXPECT_EQ(readFileBytes(path), readFileBytes(fixturePath("unsaturated", "unsat_plot.txt")));
}

TEST(UnsatOutput, PlotFileInAMissingFolderIsARunTimeError) {
    TempDir dir;
    EXPECT_THROW(writeUnsatPlotFile(decayingSourceModel(), dir.file("no/such/folder/brenmoor.plt")), RuntimeError);
}

TEST(UnsatOutput, MonteCarloFileShowsMarkedValuesAsTheirNumbers) {
    DataSet d = decayingSourceModel();
    d.velocity = formFieldMarker("0.01", 1);
    d.saturation = formFieldMarker("0.5", 2);
    d.mcResultUnsat.redim(3);
    d.mcResultUnsat(1) = 0.5;
    d.mcResultUnsat(2) = 0.25;
    d.mcResultUnsat(3) = 0.0001;
    std::string file = "already there\r\n";
    writeUnsatMonteCarloFile(d, file);
    EXPECT_EQ(file, "already there\r\n" + readFileBytes(fixturePath("unsaturated", "unsat_montecarlo.txt")));
}

TEST(UnsatOutput, MonteCarloFileOfAChemical) {
    DataSet d = chemicalModel();
    d.decayRate(2) = chemicalCellMarker("0.05", 3);
    d.suppositionConcentration(2) = chemicalCellMarker("40", 4);
    d.mcResultUnsat.redim(2);
    d.mcResultUnsat(1) = 0.0246912;
    d.mcResultUnsat(2) = 12.5;
    EXPECT_EQ(unsatMonteCarloText(d), readFileBytes(fixturePath("unsaturated", "unsat_montecarlo_chemical.txt")));
}

TEST(UnsatOutput, MonteCarloFileOfAVaryingInflowConcentration) {
    DataSet d = decayingSourceModel();
    d.monteCarloModeOn = true;
    d.terms(1).concentration = boundaryCellMarker("12.5", 3, kWideCellMarkerPadding);
    d.mcResultUnsat.redim(1);
    d.mcResultUnsat(1) = 3;
    const std::string text = unsatMonteCarloText(d);
    EXPECT_NE(text.find("\r\nContaminant Conc. at Inflow Boundary: 12.5 mg/L\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("Initial Concentration"), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 5), "\r\n3\r\n");
}

TEST(UnsatOutput, ConstantInletWritesNoSourceDecayRate) {
    DataSet d = decayingSourceModel();
    d.contaminantType = "Dirichlet";
    EXPECT_EQ(unsatPlotText(d).find("Source Concentration Decay Rate"), std::string::npos);
    EXPECT_EQ(unsatMonteCarloText(d).find("Source Concentration Decay Rate"), std::string::npos);
    // Any other word shows it, the old misspelt one included.
    d.contaminantType = "Dirichilet";
    EXPECT_NE(unsatPlotText(d).find("Source Concentration Decay Rate: 5.e-4\r\n"), std::string::npos);
}

TEST(UnsatOutput, MonteCarloFileBeforeAnyRunHasNoValues) {
    const std::string text = unsatMonteCarloText(decayingSourceModel());
    EXPECT_NE(text.find("Number of Terms: 0\r\n"), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 4), "\r\n\r\n");
}

}  // namespace
}  // namespace bm
