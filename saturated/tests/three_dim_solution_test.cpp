// The three-dimensional record and driver: the quotients, the Monte Carlo
// fields, the fixed texts, the choice of the library function, the points file
// (patch only), the counts and the z plane, the loops (t, z, x, y), clamp,
// superposition, the point source at its own centre, Stop, the selected point
// and the mode text. Grid values are checked against the library functions
// called directly at the same points.

#include <gtest/gtest.h>

#include <cstring>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/ordered_batches.h"
#include "saturated/three_dim_parameters.h"
#include "saturated/three_dim_solution.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"
#include "three_dim_test_model.h"

namespace bm {
namespace {

using testkit::PointsFileScope;

using testkit::setTerms;
using testkit::TermValue;
using testkit::rule;
using testkit::ScriptedUserInterface;
using testkit::threeDimModel;
using testkit::threeDimRecord;

double solve(DataSet& d, ScriptedUserInterface& ui, bool monteCarlo = false, int iteration = 1) {
    ThreeDimParameters p;
    fillThreeDimParameters(d, p, monteCarlo, iteration);
    return solveThreeDimensional(d, p, monteCarlo, iteration, ui);
}

// All characters of a fixed text, blanks included.
template <std::size_t N>
std::string whole(const char (&field)[N]) {
    return std::string(field, N);
}

std::string padded(const std::string& text, std::size_t n) { return text + std::string(n - text.size(), ' '); }

// The library function of a code, called directly with the independently built rule.
double direct(std::int16_t code, const ThreeDimParameters& p, double t, double x, double y, double z) {
    double r = -1.0;
    switch (code) {
        case kFiniteAquiferSource3D: cnrml_3FL(p, t, x, y, z, r); break;
        case kContinuousPointSource3D: cnrml_3IC(p, t, x, y, z, r); break;
        case kPatchSource3D: cnrml_3IL(p, t, x, y, z, r, rule().nodes.data(), rule().weights.data()); break;
        default: ADD_FAILURE() << "no such code " << code;
    }
    return r;
}

// The superposition written out in the test: each term's ratio kept only
// inside 0..1 (no exception at the point source's centre), the steps of the
// later terms relative to the first, the shifted coordinates of the point
// source, and a negative sum thrown away.
double expectedAt(std::int16_t code, const ThreeDimParameters& p, const std::vector<TermValue>& terms, double x,
                  double y, double z, double t) {
    const bool point = code == kContinuousPointSource3D;
    const double px = point ? x - p.sourceXc : x;
    const double py = point ? y - p.sourceYc : y;
    const double pz = point ? z - p.sourceZc : z;
    auto one = [&](double time) {
        const double c = direct(code, p, time, px, py, pz);
        return c < 0.0 || c > 1.0 ? 0.0 : c;
    };
    double c = one(t);
    for (std::size_t k = 1; k < terms.size(); ++k) {
        const double tau = t - terms[k].time;
        if (tau >= 0.0)
            c += (terms[k].concentration - terms[k - 1].concentration) / terms[0].concentration * one(tau);
    }
    return c < 0.0 ? 0.0 : c;
}

void expectGrid(const DataSet& d, std::int16_t code, const ThreeDimParameters& p, const std::vector<TermValue>& terms,
                double rtol = 1e-13) {
    for (int j = 1; j <= d.numTTerms; ++j)
        for (int l = 1; l <= d.numZTerms; ++l)
            for (int i = 1; i <= d.numXTerms; ++i)
                for (int k = 1; k <= d.numYTerms; ++k) {
                    const double x = d.xValues(i), y = d.yValues(k), z = d.zValues(l), t = d.tValues(j);
                    EXPECT_CLOSE(d.result3D(i, k, l, j), expectedAt(code, p, terms, x, y, z, t), rtol, 1e-300)
                        << "x " << x << " y " << y << " z " << z << " t " << t;
                }
}

class ThreeDimSolution : public ::testing::Test {
protected:
    PointsFileScope points_;
};

// --- the record ---------------------------------------------------------------

TEST_F(ThreeDimSolution, RecordTakesTheQuotientsInTheirOrder) {
    DataSet d = threeDimModel("Infinite", "Finite");
    d.velocity = "1";
    d.porosity = "0.3";
    d.retardation = "7";
    d.dispersionX = "2";
    d.dispersionY = "0.7";
    d.dispersionZ = "0.35";
    d.halfLife = "10";
    ThreeDimParameters p;
    fillThreeDimParameters(d, p, false, 1);
    EXPECT_EQ(p.effectiveVelocity, 0.4761904761904762);  // (1 / 0.3) / 7
    EXPECT_NE(p.effectiveVelocity, 1.0 / (0.3 * 7.0));
    EXPECT_NE(p.effectiveVelocity, (1.0 / 7.0) / 0.3);
    EXPECT_EQ(p.effectiveDispersionX, 2.0 / 7.0);
    EXPECT_EQ(p.effectiveDispersionY, 0.7 / 7.0);
    EXPECT_EQ(p.effectiveDispersionZ, 0.35 / 7.0);
    EXPECT_EQ(p.effectiveHalfLife, 70.0);

    // A zero retardation: the third dispersion's 0 / 0 (overflow) comes
    // before the velocity's 1 / 0.
    d.retardation = "0";
    d.dispersionX = "0";
    d.dispersionY = "0";
    d.dispersionZ = "0";
    EXPECT_EQ(raisedError([&] { fillThreeDimParameters(d, p, false, 1); }), err::Overflow);
    d.dispersionX = "1";
    d.dispersionY = "1";
    EXPECT_EQ(raisedError([&] { fillThreeDimParameters(d, p, false, 1); }), err::DivisionByZero);
    d.porosity = "0";
    d.velocity = "0";
    EXPECT_EQ(raisedError([&] { fillThreeDimParameters(d, p, false, 1); }), err::Overflow);
}

TEST_F(ThreeDimSolution, RecordHoldsRangesSourceAndPaddedTexts) {
    DataSet d = threeDimModel("  Infinite", " Finite / Patch");
    d.xRange = "5:25:2";
    d.yRange = "-3:3:1";
    d.zRange = "8";  // a single number: the column from 0
    d.timeRange = "4:100:0:9";
    d.sourceXc = "1.5";
    d.sourceYc = "-2.5";
    d.sourceZc = "3.5";
    d.sourceWidth = "12";
    d.sourceHeight = "2.25";
    d.injectionRate = "0.125";
    d.netRecharge = "0.002";
    d.aquiferThickness = "25";
    ThreeDimParameters p;
    fillThreeDimParameters(d, p, false, 1);
    EXPECT_EQ(p.xMin, 5.0);
    EXPECT_EQ(p.xMax, 25.0);
    EXPECT_EQ(p.xInterval, 2.0);
    EXPECT_EQ(p.yMin, -3.0);
    EXPECT_EQ(p.yMax, 3.0);
    EXPECT_EQ(p.yInterval, 1.0);
    EXPECT_EQ(p.zMin, 0.0);
    EXPECT_EQ(p.zMax, 8.0);
    EXPECT_EQ(p.zInterval, 0.0);
    EXPECT_EQ(p.tMin, 4.0);
    EXPECT_EQ(p.tMax, 100.0);
    EXPECT_EQ(p.sourceXc, 1.5);
    EXPECT_EQ(p.sourceYc, -2.5);
    EXPECT_EQ(p.sourceZc, 3.5);
    EXPECT_EQ(p.sourceWidth, 12.0);
    EXPECT_EQ(p.sourceHeight, 2.25);
    EXPECT_EQ(p.injectionRate, 0.125);
    EXPECT_EQ(p.porosity, 0.3);
    EXPECT_EQ(p.netRecharge, 0.002);
    EXPECT_EQ(p.aquiferThickness, 25.0);
    EXPECT_EQ(whole(p.aquiferCode), padded("  Infinite", 20));
    EXPECT_EQ(whole(p.contaminantCode), padded(" Finite / Patch", 30));
    EXPECT_EQ(whole(p.reservedText301), std::string(480, ' '));
    EXPECT_EQ(whole(p.reservedText261), std::string(20, ' '));
    for (unsigned char b : p.reserved152) EXPECT_EQ(b, 0);
    EXPECT_EQ(p.padding811, 0);
    d.aquiferType = "An aquifer with a very long name";
    fillThreeDimParameters(d, p, false, 1);
    EXPECT_EQ(whole(p.aquiferCode), "An aquifer with a ve");
}

TEST_F(ThreeDimSolution, MonteCarloFieldsTakeTheSamplesOfTheirRows) {
    DataSet d = threeDimModel("Infinite", "Finite");
    std::vector<std::pair<std::string*, double>> fields = {
        {&d.sourceYc, 1.5},       {&d.sourceXc, -0.5},   {&d.sourceZc, 2.5},      {&d.sourceWidth, 8.0},
        {&d.sourceHeight, 3.0},   {&d.halfLife, 40.0},   {&d.velocity, 0.6},      {&d.injectionRate, 0.2},
        {&d.porosity, 0.25},      {&d.dispersionX, 3.0}, {&d.dispersionY, 0.4},   {&d.dispersionZ, 0.1},
        {&d.netRecharge, 0.01},   {&d.aquiferThickness, 20}, {&d.retardation, 2.0}};
    const int iterations = 4;
    d.MonteSamples.redim({static_cast<int>(fields.size()), iterations, 1});
    for (std::size_t r = 0; r < fields.size(); ++r) {
        const int row = static_cast<int>(r + 1);
        *fields[r].first = formFieldMarker("99", row);
        for (int i = 1; i <= iterations; ++i) d.MonteSamples(row, i, 1) = fields[r].second * i;
    }
    ThreeDimParameters p;
    fillThreeDimParameters(d, p, true, 2);
    EXPECT_DOUBLE_EQ(p.sourceYc, 3.0);
    EXPECT_DOUBLE_EQ(p.sourceXc, -1.0);
    EXPECT_DOUBLE_EQ(p.sourceZc, 5.0);
    EXPECT_DOUBLE_EQ(p.sourceWidth, 16.0);
    EXPECT_DOUBLE_EQ(p.sourceHeight, 6.0);
    EXPECT_DOUBLE_EQ(p.effectiveHalfLife, 80.0 * 4.0);
    EXPECT_DOUBLE_EQ(p.injectionRate, 0.4);
    EXPECT_DOUBLE_EQ(p.porosity, 0.5);
    EXPECT_DOUBLE_EQ(p.effectiveVelocity, 1.2 / 0.5 / 4.0);
    EXPECT_DOUBLE_EQ(p.effectiveDispersionX, 6.0 / 4.0);
    EXPECT_DOUBLE_EQ(p.effectiveDispersionY, 0.8 / 4.0);
    EXPECT_DOUBLE_EQ(p.effectiveDispersionZ, 0.2 / 4.0);
    EXPECT_DOUBLE_EQ(p.netRecharge, 0.02);
    EXPECT_DOUBLE_EQ(p.aquiferThickness, 40.0);
}

// --- the choice of the library function ------------------------------------

TEST_F(ThreeDimSolution, SourceCodesOfTheAquiferAndSourceTexts) {
    struct Case {
        const char* aquifer;
        const char* contaminant;
        std::int16_t code;
        const char* aquiferAfter;
        const char* contaminantAfter;
    };
    for (const Case& c : {Case{"Finite", "Continuous Point", 2200, "Finite", "Continuous Point"},
                          Case{"  FINITE", "  Point", 2200, "FINITE", "  Point"},  // the source text is left alone
                          Case{"Infinite", "Finite", 3200, "Infinite", "Finite"},
                          Case{"Infinite", "  finite / Patch", 3200, "Infinite", "finite / Patch"},
                          Case{"Infinite", "Finite Line", 3200, "Infinite", "Finite Line"},
                          Case{"Infinite", "Finit", 3100, "Infinite", "Finit"},
                          Case{" Infinite", "Continuous Point", 3100, "Infinite", "Continuous Point"},
                          Case{"Infinite", "", 3100, "Infinite", ""}}) {
        DataSet d = threeDimModel(c.aquifer, c.contaminant);
        ThreeDimParameters p;
        fillThreeDimParameters(d, p, false, 1);
        ThreeDimSourceTable table;
        chooseThreeDimSource(p, table);
        EXPECT_EQ(table.sourceCode, c.code) << c.aquifer << " / " << c.contaminant;
        EXPECT_EQ(whole(p.aquiferCode), padded(c.aquiferAfter, 20));
        EXPECT_EQ(whole(p.contaminantCode), padded(c.contaminantAfter, 30));
        // The points are read for the patch only.
        EXPECT_EQ(table.quadratureNodes.ub(), c.code == 3200 ? 256 : -1);
        EXPECT_EQ(table.quadratureWeights.ub(), c.code == 3200 ? 256 : -1);
    }
}

TEST_F(ThreeDimSolution, PointsFileIsReadOnlyForThePatch) {
    testkit::TempDir dir;
    PointsFileScope missing(dir.file("glq.pts"));
    ScriptedUserInterface ui;
    DataSet finite = threeDimModel("Finite", "Finite");
    finite.yRange = "0:20:5";
    finite.zRange = "0:10:5";
    parseCoordinates(finite);
    EXPECT_NO_THROW(solve(finite, ui));
    DataSet point = threeDimModel("Infinite", "Continuous Point");
    EXPECT_NO_THROW(solve(point, ui));
    DataSet patch = threeDimModel("Infinite", "Finite");
    EXPECT_EQ(raisedError([&] { solve(patch, ui); }), err::FileNotFound);
    testkit::writeFileBytes(dir.file("glq.pts"), "a\nb\nc\nd\ne\n0.5\n");
    EXPECT_EQ(raisedError([&] { solve(patch, ui); }), err::InputPastEndOfFile);
}

TEST_F(ThreeDimSolution, CaseAndPointsAreKeptAfterTheFirstIteration) {
    ScriptedUserInterface ui;
    DataSet d = threeDimModel("Infinite", "Finite");
    d.calculationMode = "Monte Carlo";
    d.mcAtX = "10";
    d.mcAtY = "2";
    d.mcAtZ = "1";
    d.mcAtT = "20";
    solve(d, ui, true, 1);
    const double first = d.currentConcentration;
    EXPECT_CLOSE(first, direct(kPatchSource3D, threeDimRecord(), 20, 10, 2, 1), 1e-13, 0);
    EXPECT_GT(first, 0.01);
    testkit::TempDir dir;
    PointsFileScope missing(dir.file("none.pts"));
    d.contaminantType = "Continuous Point";
    EXPECT_NO_THROW(solve(d, ui, true, 2));
    EXPECT_EQ(threeDimSourceTable().sourceCode, kPatchSource3D);
    EXPECT_EQ(d.currentConcentration, first);
    // The next run chooses anew: the point needs no points file.
    EXPECT_NO_THROW(solve(d, ui, true, 1));
    EXPECT_EQ(threeDimSourceTable().sourceCode, kContinuousPointSource3D);
}

// --- grids against the library ------------------------------------------------

TEST_F(ThreeDimSolution, FiniteAquiferIgnoresTheSourceText) {
    ThreeDimParameters p = threeDimRecord();
    p.yMin = 0, p.yMax = 20, p.yInterval = 5, p.sourceYc = 10;
    p.zMin = 0, p.zMax = 10, p.zInterval = 5, p.sourceZc = 5;
    Array<double, 4> reference;
    for (const char* source : {"Finite", "Continuous Point", "Gaussian"}) {
        DataSet d = threeDimModel("Finite", source);
        d.yRange = "0:20:5";
        d.zRange = "0:10:5";
        d.sourceYc = "10";
        d.sourceZc = "5";
        parseCoordinates(d);
        ScriptedUserInterface ui;
        solve(d, ui);
        EXPECT_EQ(threeDimSourceTable().sourceCode, kFiniteAquiferSource3D);
        expectGrid(d, kFiniteAquiferSource3D, p, {{0, 1}});
        if (reference.empty()) reference = d.result3D;
        EXPECT_EQ(d.result3D, reference) << source;
        EXPECT_GT(d.result3D(3, 3, 2, 4), 0.01);  // x 20, y 10, z 5, t 30
    }
}

TEST_F(ThreeDimSolution, SuperposedGridsMatchTheLibrary) {
    const std::vector<TermValue> terms = {{0, 2}, {10, 5}, {15, 1}, {25, 0.5}};
    {
        DataSet d = threeDimModel("Infinite", "Finite");
        d.timeRange = "0:40:5";
        setTerms(d, terms);
        parseCoordinates(d);
        ScriptedUserInterface ui;
        solve(d, ui);
        EXPECT_EQ(threeDimSourceTable().sourceCode, kPatchSource3D);
        expectGrid(d, kPatchSource3D, threeDimRecord(), terms);
    }
    {
        DataSet d = threeDimModel("Infinite", "Continuous Point");
        d.sourceXc = "2";
        d.sourceYc = "1.5";
        d.sourceZc = "-1";
        d.timeRange = "0:40:5";
        setTerms(d, terms);
        parseCoordinates(d);
        ScriptedUserInterface ui;
        solve(d, ui);
        EXPECT_EQ(threeDimSourceTable().sourceCode, kContinuousPointSource3D);
        ThreeDimParameters p = threeDimRecord();
        p.sourceXc = 2, p.sourceYc = 1.5, p.sourceZc = -1;
        expectGrid(d, kContinuousPointSource3D, p, terms);
        EXPECT_GT(d.result3D(2, 3, 2, 5), 1e-3);  // x 10, y 0, z -2, t 20
    }
    {
        DataSet d = threeDimModel("Finite", "Finite");
        d.yRange = "0:20:5";
        d.zRange = "0:10:2.5";
        d.sourceYc = "10";
        d.sourceZc = "5";
        d.timeRange = "0:40:10";
        setTerms(d, terms);
        parseCoordinates(d);
        ScriptedUserInterface ui;
        solve(d, ui);
        ThreeDimParameters p = threeDimRecord();
        p.yMin = 0, p.yMax = 20, p.yInterval = 5, p.sourceYc = 10;
        p.zMin = 0, p.zMax = 10, p.zInterval = 2.5, p.sourceZc = 5;
        expectGrid(d, kFiniteAquiferSource3D, p, terms);
    }
}

// A point source in the middle of its y and z ranges: the points of a time
// that mirror each other about the planes through the source are computed
// once; every value is still the library's own at its point, to the bit, on
// one thread and on several, with superposed terms too.
TEST_F(ThreeDimSolution, CentredPointSourceGridIsTheLibraryToTheBit) {
    for (const bool superposed : {false, true}) {
        const std::vector<TermValue> terms =
            superposed ? std::vector<TermValue>{{0, 2}, {10, 5}, {25, 0.5}} : std::vector<TermValue>{{0, 1}};
        for (const int threads : {1, 3}) {
            const ScopedCalculationThreads scope(threads);
            DataSet d = threeDimModel("Infinite", "Continuous Point");
            d.xRange = "-8:24:4";
            d.yRange = "-9:11:2";  // offsets -10 .. 10 from the source at y = 1
            d.zRange = "-4:4:1";   // and -4 .. 4 from z = 0
            d.timeRange = "0:40:8";
            setTerms(d, terms);
            parseCoordinates(d);
            ScriptedUserInterface ui;
            solve(d, ui);
            expectGrid(d, kContinuousPointSource3D, threeDimRecord(), terms, 0.0);
            EXPECT_GT(d.result3D(5, 4, 3, 4), 1e-4);  // x 8, y -3, z -2, t 24: a plume, not zeros
        }
    }
}

// A patch in an unbounded aquifer, centred in its y and z ranges (points
// mirrored about its centre are computed once) and off centre by an amount
// no grid step divides (the two ends' distances of a point and of its
// would-be image then differ in their last bits, and each is computed):
// every value is the library's own at its point on the program's rule, to
// the bit, on one thread and on several.
TEST_F(ThreeDimSolution, PatchGridMirroredAboutItsCentreIsTheLibraryToTheBit) {
    for (const char* centreY : {"5", "5.3"}) {
        for (const int threads : {1, 3}) {
            const ScopedCalculationThreads scope(threads);
            DataSet d = threeDimModel("Infinite", "Finite");
            d.xRange = "0:20:5";
            d.yRange = "-5:15:0.5";
            d.zRange = "0:10:1";
            d.sourceYc = centreY;
            d.sourceZc = "5";
            d.timeRange = "0:40:10";
            parseCoordinates(d);
            ScriptedUserInterface ui;
            solve(d, ui);
            const ThreeDimSourceTable& table = threeDimSourceTable();
            ASSERT_EQ(table.sourceCode, kPatchSource3D);
            ThreeDimParameters p = threeDimRecord();
            p.sourceYc = std::stod(centreY), p.sourceZc = 5;
            int differing = 0;
            for (int j = 1; j <= d.numTTerms; ++j)
                for (int l = 1; l <= d.numZTerms; ++l)
                    for (int i = 1; i <= d.numXTerms; ++i)
                        for (int k = 1; k <= d.numYTerms; ++k) {
                            double c = -1.0;
                            cnrml_3IL(p, d.tValues(j), d.xValues(i), d.yValues(k), d.zValues(l), c,
                                      table.quadratureNodes.data() + 1, table.quadratureWeights.data() + 1);
                            const double expected = c < 0.0 || c > 1.0 ? 0.0 : c;
                            differing += std::memcmp(&d.result3D(i, k, l, j), &expected, sizeof(double)) != 0;
                        }
            EXPECT_EQ(differing, 0) << centreY << " on " << threads << " threads";
            EXPECT_GT(d.result3D(3, 21, 6, 3), 1e-3) << centreY;  // x 10, y 5, z 5, t 20: a plume
        }
    }
}

TEST_F(ThreeDimSolution, PointSourceAtItsOwnCentreGoesThroughTheLibraryAndIsClamped) {
    DataSet d = threeDimModel("Infinite", "Continuous Point");
    d.sourceXc = "10";
    d.sourceYc = "5";
    d.sourceZc = "2";
    ScriptedUserInterface ui;
    EXPECT_NO_THROW(solve(d, ui));
    ThreeDimParameters p = threeDimRecord();
    p.sourceXc = 10, p.sourceYc = 5, p.sourceZc = 2;
    // The library at the centre: above 1 at every time, t = 0 included.
    for (double t : {0.0, 10.0, 30.0}) EXPECT_GT(direct(kContinuousPointSource3D, p, t, 0, 0, 0), 1.0) << t;
    // x 10 (i 2), y 5 (k 4), z 2 (l 4): 0 after the clamp, where two
    // dimensions would have given 1.
    for (int j = 1; j <= 4; ++j) EXPECT_EQ(d.result3D(2, 4, 4, j), 0.0) << j;
    expectGrid(d, kContinuousPointSource3D, p, {{0, 1}});
    // Next to it the plume is there and below 1.
    EXPECT_GT(d.result3D(3, 4, 4, 4), 1e-3);
    EXPECT_LT(d.result3D(3, 4, 4, 4), 1.0);
    // A term starting at the time computed adds nothing at the centre either.
    setTerms(d, {{0, 1}, {30, 4}});
    EXPECT_NO_THROW(solve(d, ui));
    EXPECT_EQ(d.result3D(2, 4, 4, 4), 0.0);
}

TEST_F(ThreeDimSolution, TermStartingAtTheTimeComputedCallsTheSolutionAtZero) {
    // On the inlet plane the patch holds C0 at every t >= 0, t = 0 too.
    DataSet d = threeDimModel("Infinite", "Finite");
    d.xRange = "0:10:10";
    d.yRange = "1:21:20";
    d.zRange = "0";
    d.timeRange = "6";
    parseCoordinates(d);
    setTerms(d, {{0, 1}, {6, 3}});
    ScriptedUserInterface ui;
    solve(d, ui);
    EXPECT_EQ(d.result3D(1, 1, 1, 1), 3.0);  // 1 + (3 - 1) * 1
    EXPECT_EQ(d.result3D(1, 2, 1, 1), 0.0);  // y 21: off the patch
    EXPECT_CLOSE(d.result3D(2, 1, 1, 1), direct(kPatchSource3D, threeDimRecord(), 6, 10, 1, 0), 1e-13, 0);
    d.terms(2).time = "6.001";
    solve(d, ui);
    EXPECT_EQ(d.result3D(1, 1, 1, 1), 1.0);
}

TEST_F(ThreeDimSolution, RatioAboveOneIsThrownAwayAndANegativeSumIsZero) {
    // A strong injection: near the well C/C0 computes above 1 and is stored as 0.
    DataSet d = threeDimModel("Infinite", "Continuous Point");
    d.injectionRate = "50";
    d.xRange = "0.5:2.5:1";
    d.yRange = "1";
    d.zRange = "0";
    d.timeRange = "20";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    ThreeDimParameters p = threeDimRecord();
    p.injectionRate = 50;
    EXPECT_GT(direct(kContinuousPointSource3D, p, 20, 0.5, 0, 0), 1.0);
    EXPECT_EQ(d.result3D(1, 1, 1, 1), 0.0);
    expectGrid(d, kContinuousPointSource3D, p, {{0, 1}});

    DataSet n = threeDimModel("Infinite", "Finite");
    n.xRange = "10";
    n.yRange = "1";
    n.zRange = "0";
    n.timeRange = "0:40:10";
    setTerms(n, {{0, 1}, {5, -9}});
    parseCoordinates(n);
    solve(n, ui);
    int negative = 0;
    for (int j = 1; j <= 5; ++j) {
        const double t = n.tValues(j);
        const double raw = direct(kPatchSource3D, threeDimRecord(), t, 10, 1, 0) -
                           10.0 * (t >= 5 ? direct(kPatchSource3D, threeDimRecord(), t - 5, 10, 1, 0) : 0.0);
        if (raw < 0) ++negative;
        EXPECT_CLOSE(n.result3D(1, 1, 1, j), raw < 0 ? 0.0 : raw, 1e-12, 1e-300) << t;
    }
    EXPECT_GE(negative, 2);
}

// --- counts, lists, loops -----------------------------------------------------

TEST_F(ThreeDimSolution, ZRangeOfOneNumberGivesOnePlaneAtItsConstant) {
    DataSet d = threeDimModel("Infinite", "Finite");
    d.zRange = "1.5";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    ASSERT_EQ(d.numZTerms, 1);
    ASSERT_EQ(d.zValues.ub(), 1);
    EXPECT_EQ(d.zValues(1), 1.5);
    EXPECT_EQ(d.zConstant, 1.5);
    EXPECT_EQ(d.result3D.ub(2), 1);
    expectGrid(d, kPatchSource3D, threeDimRecord(), {{0, 1}});
    EXPECT_EQ(ui.progress.back().total, 5.0 * 5 * 1 * 4);
    // A range with colons that counts one term: the plane at its Constant.
    d.zRange = "-4:4:0:2.5";
    parseCoordinates(d);
    solve(d, ui);
    ASSERT_EQ(d.numZTerms, 1);
    EXPECT_EQ(d.zValues(1), 2.5);
    EXPECT_CLOSE(d.result3D(3, 3, 1, 4), direct(kPatchSource3D, threeDimRecord(), 30, 20, 0, 2.5), 1e-13, 0);
}

TEST_F(ThreeDimSolution, CountsBelowOneBecomeOneEachOnItsOwn) {
    DataSet d = threeDimModel("Infinite", "Finite");
    d.zRange = "4:-4:2";      // -3 terms
    d.timeRange = "30:0:10";  // -2 terms beside good x, y
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    EXPECT_EQ(d.numXTerms, 5);
    EXPECT_EQ(d.numYTerms, 5);
    EXPECT_EQ(d.numZTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.zValues(1), -4.0);  // the Constant of "4:-4:2" is its maximum
    EXPECT_EQ(d.tValues(1), 0.0);
}

TEST_F(ThreeDimSolution, LoopsRunTimeThenZThenXThenYWithProgressPerPoint) {
    DataSet d = threeDimModel("Infinite", "Finite");
    d.xRange = "10:40:10";    // 4 values, all downstream of the inlet
    d.yRange = "-2:4:2";      // 4
    d.zRange = "-1:1:1";      // 3
    d.timeRange = "10:30:10"; // 3
    parseCoordinates(d);
    ScriptedUserInterface ui;
    // Stop after 22 points: t 10, z -1: all 16 (x, y); then z 0: x 10 (4
    // values of y) and two y values of x 20.
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 22) d.stopRequested = true;
    };
    EXPECT_EQ(solve(d, ui), 0.0);
    EXPECT_FALSE(d.stopRequested);
    ASSERT_EQ(ui.progress.size(), 22u);
    EXPECT_EQ(ui.progress.front().total, 4.0 * 4 * 3 * 3);
    EXPECT_EQ(ui.progress.front().owner, ProgressOwner::InputForm);
    int filled = 0;
    for (int j = 1; j <= 3; ++j)
        for (int l = 1; l <= 3; ++l)
            for (int i = 1; i <= 4; ++i)
                for (int k = 1; k <= 4; ++k) {
                    const bool done = j == 1 && (l == 1 || (l == 2 && (i == 1 || (i == 2 && k <= 2))));
                    const double expected = expectedAt(kPatchSource3D, threeDimRecord(), {{0, 1}}, d.xValues(i),
                                                       d.yValues(k), d.zValues(l), d.tValues(j));
                    if (done) {
                        ++filled;
                        EXPECT_CLOSE(d.result3D(i, k, l, j), expected, 1e-13, 1e-300);
                    } else {
                        EXPECT_EQ(d.result3D(i, k, l, j), 0.0);
                    }
                }
    EXPECT_EQ(filled, 22);
    // The first points left out would not be zero.
    EXPECT_GT(expectedAt(kPatchSource3D, threeDimRecord(), {{0, 1}}, 20, 2, 0, 10), 1e-6);
    EXPECT_GT(expectedAt(kPatchSource3D, threeDimRecord(), {{0, 1}}, 30, 0, 0, 10), 1e-9);

    DataSet m = threeDimModel("Infinite", "Continuous Point");
    m.multiChemical = true;
    ScriptedUserInterface multi;
    solve(m, multi);
    ASSERT_EQ(multi.progress.size(), 500u);
    EXPECT_EQ(multi.progress.front().owner, ProgressOwner::MultiChemicalForm);
    EXPECT_EQ(multi.progress.back().done, 500.0);
}

// --- Stop, the selected point, the mode text -------------------------------

TEST_F(ThreeDimSolution, StoppedRunLeavesTheModeTextAndClearsTheFlag) {
    DataSet d = threeDimModel("Infinite", "Finite");
    d.calculationMode = "Regular";
    d.currentConcentration = 0.125;
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 60) d.stopRequested = true;
    };
    EXPECT_EQ(solve(d, ui), 0.0);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(d.calculationMode, "Regular");
    EXPECT_EQ(d.currentConcentration, 0.125);
    EXPECT_EQ(ui.progress.size(), 60u);

    DataSet z = threeDimModel("Infinite", "Continuous Point");
    z.stopRequested = true;
    z.calculationMode = "0.5";
    ScriptedUserInterface quiet;
    EXPECT_EQ(solve(z, quiet), 0.0);
    EXPECT_FALSE(z.stopRequested);
    EXPECT_EQ(z.calculationMode, "0.5");
    EXPECT_TRUE(quiet.progress.empty());
}

TEST_F(ThreeDimSolution, SelectedPointIsComputedAndTheListsRestored) {
    DataSet d = threeDimModel("Infinite", "Finite");
    d.xRange = "0:40:10:15";
    d.yRange = "-10:10:5:2.5";
    d.zRange = "-4:4:2:0.5";
    d.timeRange = "0:30:10:25";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    const double last = solve(d, ui);
    EXPECT_EQ(last, d.result3D(5, 5, 5, 4));
    EXPECT_CLOSE(d.currentConcentration, direct(kPatchSource3D, threeDimRecord(), 25, 15, 2.5, 0.5), 1e-13, 0);
    EXPECT_EQ(d.calculationMode, formatNumber(d.currentConcentration));
    EXPECT_EQ(d.xValues(1), 0.0);
    EXPECT_EQ(d.yValues(1), -10.0);
    EXPECT_EQ(d.zValues(1), -4.0);
    EXPECT_EQ(d.tValues(1), 0.0);

    // Only z has more than one value: the point is still computed on its own.
    DataSet one = threeDimModel("Infinite", "Finite");
    one.xRange = "12";
    one.yRange = "0.5";
    one.zRange = "-4:4:2:1";
    one.timeRange = "17";
    parseCoordinates(one);
    solve(one, ui);
    EXPECT_CLOSE(one.currentConcentration, direct(kPatchSource3D, threeDimRecord(), 17, 12, 0.5, 1), 1e-13, 0);
    EXPECT_EQ(one.zValues(1), -4.0);

    // All counts 1: the grid's only value; "Monte Carlo" is never overwritten.
    DataSet single = threeDimModel("Infinite", "Finite");
    single.xRange = "12";
    single.yRange = "0.5";
    single.zRange = "1";
    single.timeRange = "17";
    single.calculationMode = "Monte Carlo";
    parseCoordinates(single);
    solve(single, ui);
    EXPECT_EQ(single.currentConcentration, single.result3D(1, 1, 1, 1));
    EXPECT_EQ(single.currentConcentration, one.currentConcentration);
    EXPECT_EQ(single.calculationMode, "Monte Carlo");
}

TEST_F(ThreeDimSolution, MonteCarloIterationIsOnePointAtTheSimulationPoint) {
    DataSet d = threeDimModel("Infinite", "Continuous Point");
    d.calculationMode = "Monte Carlo";
    d.mcAtX = "8";
    d.mcAtY = "1.5";
    d.mcAtZ = "-0.5";
    d.mcAtT = "22";
    d.dispersionZ = formFieldMarker("0.05", 1);
    setTerms(d, {{0, 1}, {5, 2}});
    d.terms(1).concentration = boundaryCellMarker("1", 2, 20);
    d.MonteSamples.redim({2, 3, 1});
    d.MonteSamples(1, 1, 1) = 0.05;
    d.MonteSamples(2, 1, 1) = 1.0;
    d.MonteSamples(1, 2, 1) = 0.2;  // Dz 0.2
    d.MonteSamples(2, 2, 1) = 4.0;  // first term 4: the step to 2 is -2/4
    ScriptedUserInterface ui;
    solve(d, ui, true, 1);
    const double value = solve(d, ui, true, 2);
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.numYTerms, 1);
    EXPECT_EQ(d.numZTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.zValues(1), -0.5);
    ThreeDimParameters p = threeDimRecord();
    p.effectiveDispersionZ = 0.2;
    const double expected = expectedAt(kContinuousPointSource3D, p, {{0, 4}, {5, 2}}, 8, 1.5, -0.5, 22);
    EXPECT_CLOSE(value, expected, 1e-13, 0);
    EXPECT_GT(value, 1e-3);
    EXPECT_EQ(d.currentConcentration, value);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    EXPECT_TRUE(ui.progress.empty());
}

}  // namespace
}  // namespace bm
