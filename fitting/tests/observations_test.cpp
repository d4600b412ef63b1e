// Reading observation files, one fixture per case, and the fit's refusals of
// bad input: each a clear message, the model untouched.

#include <gtest/gtest.h>

#include "files/data_file.h"
#include "fit_test_support.h"
#include "montecarlo/monte_marker.h"
#include "testing/scripted_user_interface.h"

namespace bm {
namespace {

using namespace testkit;

std::string fixture(const std::string& name) { return fixturePath("fitting", name).string(); }

ObservationReading read(const std::string& name, int dimension = 1) { return readObservations(fixture(name), dimension); }

TEST(Observations, CommaSeparatedWithCommentsBlankLinesAndWeights) {
    const ObservationReading r = read("column.csv");
    ASSERT_TRUE(r.set) << r.problem.text;
    ASSERT_EQ(r.set->points.size(), 4u);
    EXPECT_TRUE(r.set->relative);
    EXPECT_TRUE(r.set->weighted);
    EXPECT_EQ(r.set->points[1].x, 3);
    EXPECT_EQ(r.set->points[1].t, 5);
    EXPECT_EQ(r.set->points[1].concentration, 0.82);
    EXPECT_EQ(r.set->points[1].weight, 2);
    EXPECT_EQ(r.set->points[1].line, 4);
    EXPECT_EQ(r.set->points[2].line, 6);  // after the blank line
}

TEST(Observations, BlankSeparatedWithTabsAndCarriageReturns) {
    const ObservationReading r = read("column.txt");
    ASSERT_TRUE(r.set) << r.problem.text;
    ASSERT_EQ(r.set->points.size(), 3u);
    EXPECT_FALSE(r.set->relative);
    EXPECT_FALSE(r.set->weighted);
    EXPECT_EQ(r.set->points[2].x, 8);
    EXPECT_EQ(r.set->points[2].t, 11);
    EXPECT_EQ(r.set->points[2].concentration, 0.55);
    EXPECT_EQ(r.set->points[2].weight, 1);
}

TEST(Observations, OtherColumnsAreIgnored) {
    const ObservationReading r = read("plane_with_names.csv", 2);
    ASSERT_TRUE(r.set) << r.problem.text;
    ASSERT_EQ(r.set->points.size(), 2u);
    EXPECT_EQ(r.set->points[1].y, 10);
}

TEST(Observations, EachBadFileHasItsMessage) {
    const std::string dir = fixture("");
    EXPECT_EQ(read("empty.csv").problem.text,
              "The observation file " + dir + "empty.csv is empty: its first line must name the columns x, t and C (or C/Co).");
    EXPECT_EQ(read("comment_only.csv").problem.text,
              "The observation file " + dir + "comment_only.csv is empty: its first line must name the columns x, t and C (or C/Co).");
    EXPECT_EQ(read("header_only.csv").problem.text,
              "The observation file " + dir + "header_only.csv holds no observations below its first line.");
    EXPECT_EQ(read("non_numeric.csv").problem.text, "Line 3 of " + dir + "non_numeric.csv: \"abc\" in column C/Co is not a number.");
    EXPECT_EQ(read("missing_column.csv").problem.text,
              "The observation file " + dir + "missing_column.csv has no column t: its first line must name the columns x, t "
              "and C (or C/Co), and may name a weight column w.");
    EXPECT_EQ(read("short_line.csv").problem.text, "Line 3 of " + dir + "short_line.csv: 2 cells, but the first line names 3 columns.");
    EXPECT_EQ(read("zero_weight.csv").problem.text, "Line 2 of " + dir + "zero_weight.csv: the weight must be above zero.");
    EXPECT_NE(read("column.csv", 2).problem.text.find("has no column y: its first line must name the columns x, y, t and C"),
              std::string::npos);
    EXPECT_EQ(read("no_such_file.csv").problem.text, "The observation file " + dir + "no_such_file.csv cannot be read.");
}

// The refusals of a fit, with the model's file text the same after each.
class FitRefusal : public ::testing::Test {
protected:
    std::string refusal(const std::string& file, const FitRequest& request) {
        const std::string before = composeDataFile(model);
        ScriptedUserInterface ui;
        const ObservationReading r = read(file);
        EXPECT_TRUE(r.set) << r.problem.text;
        const FitReport report = fitModel(model, *r.set, request, ui);
        EXPECT_EQ(report.ending, FitEnding::Refused);
        EXPECT_EQ(composeDataFile(model), before);
        EXPECT_TRUE(report.estimates.empty());
        return report.problem;
    }
    DataSet model = fitColumn();
};

TEST_F(FitRefusal, ObservationsOutsideTheColumn) {
    EXPECT_EQ(refusal("outside_domain.csv", vary({"Velocity"})),
              "Line 3 of " + fixture("") + "outside_domain.csv: x = -1 lies above the inlet of the column (x from 0).");
}

TEST_F(FitRefusal, FewerObservationsThanInputs) {
    EXPECT_EQ(refusal("two_observations.csv", vary({"Velocity", "Dispersion_X"})),
              "2 observations cannot determine 2 inputs: give at least 3 observations.");
}

TEST_F(FitRefusal, AnUnknownInput) {
    EXPECT_EQ(refusal("column.csv", vary({"Speed"})),
              "The model has no input named \"Speed\" that a fit can vary. It can vary: Velocity, Dispersion_X, HalfLife, "
              "Retardation Coefficient (R), Aquifer Porosity, Concentration.");
}

TEST_F(FitRefusal, ARowUnderMonteCarlo) {
    model.velocity = formFieldMarker("0.5", 1);
    EXPECT_EQ(refusal("column.csv", vary({"Velocity"})),
              "Velocity holds a Monte Carlo marker: a row under Monte Carlo cannot vary in a fit.");
}

TEST_F(FitRefusal, BoundsOutOfOrderOrAroundAnotherStart) {
    FitRequest request = vary({"Velocity"});
    request.inputs[0].lower = 2;
    request.inputs[0].upper = 1;
    EXPECT_EQ(refusal("column.csv", request), "The lower bound of Velocity (2) must lie below its upper bound (1).");
    request.inputs[0].lower = 1;
    request.inputs[0].upper = 2;
    EXPECT_EQ(refusal("column.csv", request), "The model's Velocity (0.5) lies outside the bounds given for it.");
    request.inputs[0] = VaryingInput{"Xc", {}, {}, true};
    EXPECT_NE(refusal("column.csv", request).find("no input named \"Xc\""), std::string::npos);
}

TEST_F(FitRefusal, NothingToVaryAndTheSameInputTwice) {
    EXPECT_EQ(refusal("column.csv", FitRequest{}), "Choose at least one input to vary.");
    EXPECT_EQ(refusal("column.csv", vary({"Retardation", "retardation coefficient (R)"})),
              "Retardation Coefficient (R) is named twice.");
}

TEST(FitParameters, EachKindOffersItsOwnInputs) {
    const auto names = [](const DataSet& d) {
        std::string all;
        for (const FitParameterInfo& p : fitParametersOf(d)) all += p.name + ";";
        return all;
    };
    EXPECT_EQ(names(sampleModel(".two")),
              "Velocity;Dispersion_X;Dispersion_y;HalfLife;Retardation Coefficient (R);Aquifer Porosity;Concentration;Xc;Yc;Width;");
    EXPECT_EQ(names(sampleModel(".tri")),
              "Velocity;Dispersion_X;Dispersion_y;Dispersion_z;HalfLife;Retardation Coefficient (R);Aquifer Porosity;"
              "Concentration;Yc;Zc;Width;Height;");
    DataSet gaussian = sampleModel(".two");
    gaussian.contaminantType = "Gaussian";
    EXPECT_NE(names(gaussian).find(";Standard Deviation;"), std::string::npos);
    EXPECT_TRUE(fitParametersOf(sampleModel(".mc1")).empty());
}

TEST(FitParameters, FittedValuesKeepSevenDigitsAndReadBack) {
    EXPECT_EQ(fittedValueText(0.123456789), "0.1234568");
    EXPECT_EQ(fittedValueText(3650.04999), "3650.05");
    EXPECT_EQ(textValue(fittedValueText(1.23456789e-7)), 1.234568e-7);
}

}  // namespace
}  // namespace bm

namespace bm {
namespace {

ObservationSet at(double x, double y, double t) {
    ObservationSet set;
    set.fileName = "wells.csv";
    set.points.push_back(Observation{x, y, 0, t, 0.1, 1, 2});
    return set;
}

TEST(ObservationDomain, TimesFromZeroAColumnWithinItsLengthAStripWithinItsWalls) {
    DataSet column = testkit::fitColumn();
    EXPECT_EQ(observationsOutsideDomain(at(3, 0, 5), column), "");
    EXPECT_EQ(observationsOutsideDomain(at(3, 0, -1), column), "Line 2 of wells.csv: the time -1 lies before the start of the model (0).");
    EXPECT_EQ(observationsOutsideDomain(at(50, 0, 5), column), "");  // a semi-infinite column goes on
    column.aquiferType = "Finite";
    EXPECT_EQ(observationsOutsideDomain(at(50, 0, 5), column),
              "Line 2 of wells.csv: x = 50 lies outside the finite column (0 to 20).");
    DataSet strip = testkit::sampleModel(".two");
    EXPECT_EQ(observationsOutsideDomain(at(100, 150, 5), strip), "");  // an infinite aquifer has no walls
    strip.aquiferType = "Finite";
    EXPECT_EQ(observationsOutsideDomain(at(100, 150, 5), strip),
              "Line 2 of wells.csv: y = 150 lies outside the aquifer's width (-100 to 100).");
}

}  // namespace
}  // namespace bm
