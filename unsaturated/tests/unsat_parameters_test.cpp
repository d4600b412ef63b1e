// Filling the unsaturated record from the DataSet's texts.

#include <gtest/gtest.h>

#include "montecarlo/monte_marker.h"
#include "unsat_reference.h"
#include "unsaturated/unsat_parameters.h"

namespace bm {
namespace {

using testkit::UnsatInputs;
using testkit::unsatModel;

DataSet typed() {
    DataSet d = unsatModel(UnsatInputs{}, "2:10:0.5", "0:50:5");
    d.velocity = "0.05";
    d.dispersionX = "0.4 m2/d";  // lenient: the number in front
    d.halfLife = "20";
    d.bulkDensity = "1.6";
    d.distributionCoefficient = "0.2";
    d.porosity = "0.4";
    d.saturation = "0.6";
    d.sourceDecayRate = "0.03";
    d.terms(1).concentration = "12.5";
    return d;
}

TEST(UnsatParameters, TextsAreReadLenientlyAndRangesSplit) {
    DataSet d = typed();
    d.contaminantType = "Dirichlet/Exp. Decay";
    UnsatParameters p;
    fillUnsatParameters(d, p, false, 0);
    EXPECT_EQ(p.xMin, 2);
    EXPECT_EQ(p.xMax, 10);
    EXPECT_EQ(p.xInterval, 0.5);
    EXPECT_EQ(p.tMin, 0);
    EXPECT_EQ(p.tMax, 50);
    EXPECT_EQ(p.tInterval, 5);
    EXPECT_EQ(p.percolationRate, 0.05);
    EXPECT_EQ(p.dispersion, 0.4);
    EXPECT_EQ(p.halfLife, 20);
    EXPECT_EQ(p.bulkDensity, 1.6);
    EXPECT_EQ(p.distributionCoefficient, 0.2);
    EXPECT_EQ(p.porosity, 0.4);
    EXPECT_EQ(p.saturation, 0.6);
    EXPECT_EQ(p.sourceDecayRate, 0.03);
    EXPECT_EQ(p.sourceConcentration, 12.5);
    EXPECT_EQ(p.iteration, 0);
}

TEST(UnsatParameters, SourceDecayRateIsLeftZeroForAConstantInlet) {
    DataSet d = typed();
    d.contaminantType = "Dirichlet";
    UnsatParameters p;
    fillUnsatParameters(d, p, false, 0);
    EXPECT_EQ(p.sourceDecayRate, 0.0);
    // Any other word reads it, the old misspelt one too.
    d.contaminantType = "Dirichilet";
    fillUnsatParameters(d, p, false, 0);
    EXPECT_EQ(p.sourceDecayRate, 0.03);
}

TEST(UnsatParameters, ASingleNumberStartsAtZeroButAOneTermRangeKeepsItsMinimum) {
    DataSet d = typed();
    d.xRange = "7";
    d.timeRange = "4:4:0";
    UnsatParameters p;
    fillUnsatParameters(d, p, false, 0);
    EXPECT_EQ(p.xMin, 0);
    EXPECT_EQ(p.xMax, 7);
    EXPECT_EQ(p.tMin, 4);
}

TEST(UnsatParameters, MarkersTakeTheSampleOfTheirRowInASimulation) {
    DataSet d = typed();
    d.contaminantType = "Dirichlet/Exp. Decay";
    d.MonteSamples.redim({7, 3, 1});
    for (int row = 1; row <= 7; ++row)
        for (int i = 1; i <= 3; ++i) d.MonteSamples(row, i, 1) = 100.0 * row + i;
    d.velocity = formFieldMarker("0.05", 1);
    d.dispersionX = formFieldMarker("0.4", 2);
    d.halfLife = formFieldMarker("20", 3);
    d.bulkDensity = formFieldMarker("1.6", 4);
    d.distributionCoefficient = formFieldMarker("0.2", 5);
    d.porosity = formFieldMarker("0.4", 6);
    d.saturation = formFieldMarker("0.6", 7);
    d.sourceDecayRate = formFieldMarker("0.03", 1);  // never sampled
    d.terms(1).concentration = boundaryCellMarker("12.5", 2, kWideCellMarkerPadding);
    for (bool chemical : {false, true}) {
        UnsatParameters p;
        if (chemical) fillUnsatChemicalParameters(d, p, true, 2);
        else fillUnsatParameters(d, p, true, 2);
        EXPECT_EQ(p.percolationRate, 102);
        EXPECT_EQ(p.dispersion, 202);
        EXPECT_EQ(p.halfLife, 302);
        EXPECT_EQ(p.bulkDensity, 402);
        EXPECT_EQ(p.distributionCoefficient, 502);
        EXPECT_EQ(p.porosity, 602);
        EXPECT_EQ(p.saturation, 702);
        EXPECT_EQ(p.sourceDecayRate, 0.0);       // a marker read as a number
        EXPECT_EQ(p.sourceConcentration, 12.5);  // the number the marker carries
        EXPECT_EQ(p.iteration, 2);
    }
}

TEST(UnsatParameters, OutsideASimulationMarkersAreReadAsNumbers) {
    DataSet d = typed();
    d.velocity = formFieldMarker("0.05", 1);
    d.terms(1).concentration = boundaryCellMarker("12.5", 2, kWideCellMarkerPadding);
    UnsatParameters p;
    fillUnsatParameters(d, p, false, 5);
    EXPECT_EQ(p.percolationRate, 0.0);
    EXPECT_EQ(p.sourceConcentration, 0.0);
    EXPECT_EQ(p.iteration, 0);
}

}  // namespace
}  // namespace bm
