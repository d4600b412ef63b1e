// MonteMarker texts and the reading of a field in one iteration.

#include <gtest/gtest.h>

#include <string>

#include "model/data_set.h"
#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "shell/base/runtime_error.h"

namespace bm {
namespace {

const std::string kWord = "Monte Carlo";

TEST(MonteMarker, FormFieldText) {
    EXPECT_EQ(formFieldMarker(" 2.5 ", 3), kWord + std::string(500, ' ') + "|2.5: 3");
    EXPECT_EQ(formFieldMarker("1E-05", 12), kWord + std::string(500, ' ') + "|1E-05: 12");
}

TEST(MonteMarker, BoundaryCellTextHasThePaddingOfTheModel) {
    const std::string wide = std::string(30, ' ') + kWord + std::string(30, ' ') + "|100: 1";
    const std::string narrow = std::string(20, ' ') + kWord + std::string(20, ' ') + "|100: 1";
    EXPECT_EQ(boundaryCellMarker("100", 1, 30), wide);
    EXPECT_EQ(boundaryCellMarkerFor("One Dimensional", "100", 1), wide);
    EXPECT_EQ(boundaryCellMarkerFor("Unsaturated One Dimensional", "100", 1), wide);
    EXPECT_EQ(boundaryCellMarkerFor("Two Dimensional", "100", 1), narrow);
    EXPECT_EQ(boundaryCellMarkerFor("Three Dimensional", "100", 1), narrow);
    EXPECT_EQ(boundaryMarkerPadding("Time Varying"), 30);
}

TEST(MonteMarker, ChemicalTableText) {
    EXPECT_EQ(chemicalCellMarker("0.01", 4), std::string(15, ' ') + kWord + std::string(50, ' ') + "|0.01: 4");
}

TEST(MonteMarker, RowAndConstantAreReadBack) {
    const std::string marker = formFieldMarker("2.5", 7);
    EXPECT_TRUE(holdsMonteMarker(marker));
    EXPECT_FALSE(holdsMonteMarker("2.5"));
    EXPECT_FALSE(holdsMonteMarker("monte"));  // the test is on the word as written
    EXPECT_EQ(markerRow(marker), 7);
    EXPECT_EQ(markerRow(boundaryCellMarker("3", 21, 20)), 21);
    EXPECT_EQ(markerConstant(marker), 2.5);
    EXPECT_EQ(valueOfCell(marker), "2.5");
    EXPECT_EQ(formatCell(marker), "Monte Carlo");
    EXPECT_EQ(markerConstant("4.25"), 4.25);
}

DataSet withSamples() {
    DataSet d;
    d.MonteSamples.redim({3, 5, 1});
    for (int row = 1; row <= 3; ++row)
        for (int i = 1; i <= 5; ++i) d.MonteSamples(row, i, 1) = row * 100.0 + i;
    return d;
}

TEST(MonteMarker, FieldValueTakesTheSampleOfTheIterationInASimulation) {
    const DataSet d = withSamples();
    const std::string marker = formFieldMarker("9", 2);
    EXPECT_EQ(fieldValue(d, marker, true, 4), 204.0);
    EXPECT_EQ(fieldValue(d, boundaryCellMarker("9", 3, 30), true, 1), 301.0);
    // a plain number in a simulation, and any text outside one, is read as a number
    EXPECT_EQ(fieldValue(d, "1.5", true, 4), 1.5);
    EXPECT_EQ(fieldValue(d, marker, false, 4), 0.0);
    EXPECT_EQ(fieldValue(d, " 12 ", false, 0), 12.0);
}

TEST(MonteMarker, ChemicalIndexSelectsTheThirdSubscript) {
    DataSet d;
    d.MonteSamples.redim({2, 3, 2});
    d.MonteSamples(1, 2, 1) = 5;
    d.MonteSamples(1, 2, 2) = 7;
    const std::string marker = chemicalCellMarker("6", 1);
    EXPECT_EQ(fieldValue(d, marker, true, 2, 1), 5.0);
    EXPECT_EQ(fieldValue(d, marker, true, 2, 2), 7.0);
}

TEST(MonteMarker, RowOutsideTheSamplesIsABoundsError) {
    const DataSet d = withSamples();
    try {
        fieldValue(d, formFieldMarker("1", 9), true, 1);
        ADD_FAILURE();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::SubscriptOutOfRange);
    }
}

}  // namespace
}  // namespace bm
