// The two-dimensional record and driver: the quotients, the Monte Carlo fields,
// the fixed texts, the choice of the library function, the points file, the
// counts and lists, the loops, clamp, shortcut and superposition, Stop, the
// selected point and the mode text. Grid values are checked against the
// library functions called directly at the same points.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/ordered_batches.h"
#include "saturated/two_dim_parameters.h"
#include "saturated/two_dim_solution.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"
#include "two_dim_test_model.h"

namespace bm {
namespace {

using testkit::PointsFileScope;

using testkit::setTerms;
using testkit::TermValue;
using testkit::rule;
using testkit::ScriptedUserInterface;
using testkit::twoDimModel;
using testkit::twoDimRecord;

double solve(DataSet& d, ScriptedUserInterface& ui, bool monteCarlo = false, int iteration = 1) {
    TwoDimParameters p;
    fillTwoDimParameters(d, p, monteCarlo, iteration);
    return solveTwoDimensional(d, p, monteCarlo, iteration, ui);
}

// The library function of a code, called directly with the independently built rule.
double direct(std::int16_t code, const TwoDimParameters& p, double t, double x, double y) {
    double r = -1.0;
    const double* nodes = rule().nodes.data();
    const double* weights = rule().weights.data();
    switch (code) {
        case kFiniteAquiferSource2D: cnrml_FL(p, t, x, y, r); break;
        case kContinuousPointSource2D: cnrml_IC(p, t, x, y, r, nodes, weights); break;
        case kFiniteLineSource2D: cnrml_IL(p, t, x, y, r, nodes, weights); break;
        case kGaussianSource2D: cnrml_IG(p, t, x, y, r, nodes, weights); break;
        default: ADD_FAILURE() << "no such code " << code;
    }
    return r;
}

// The superposition written out in the test: each term's ratio kept only
// inside 0..1 (the point source's own centre is 1), the steps of the later
// terms relative to the first, the shifted coordinates of the point source,
// and a negative sum thrown away.
double expectedAt(std::int16_t code, const TwoDimParameters& p, const std::vector<TermValue>& terms, double x,
                  double y, double t) {
    const bool point = code == kContinuousPointSource2D;
    const double px = point ? x - p.sourceXc : x;
    const double py = point ? y - p.sourceYc : y;
    auto one = [&](double time) {
        if (point && px == 0.0 && py == 0.0) return 1.0;
        const double c = direct(code, p, time, px, py);
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

// Every grid value against the direct evaluation.
void expectGrid(const DataSet& d, std::int16_t code, const TwoDimParameters& p, const std::vector<TermValue>& terms,
                double rtol = 1e-13) {
    for (int j = 1; j <= d.numTTerms; ++j)
        for (int i = 1; i <= d.numXTerms; ++i)
            for (int k = 1; k <= d.numYTerms; ++k) {
                const double x = d.xValues(i), y = d.yValues(k), t = d.tValues(j);
                EXPECT_CLOSE(d.result2D(i, k, j), expectedAt(code, p, terms, x, y, t), rtol, 1e-300)
                    << "x " << x << " y " << y << " t " << t;
            }
}

class TwoDimSolution : public ::testing::Test {
protected:
    PointsFileScope points_;
};

// --- the record ---------------------------------------------------------------

TEST_F(TwoDimSolution, RecordTakesTheQuotientsInTheirOrder) {
    DataSet d = twoDimModel("Infinite", "Finite Line");
    d.velocity = "1";
    d.porosity = "0.3";
    d.retardation = "7";
    d.dispersionX = "2";
    d.dispersionY = "0.7";
    d.halfLife = "10";
    TwoDimParameters p;
    fillTwoDimParameters(d, p, false, 1);
    // velocity / porosity, then / retardation: the other orders round differently.
    EXPECT_EQ(p.effectiveVelocity, 0.4761904761904762);
    EXPECT_NE(p.effectiveVelocity, 1.0 / (0.3 * 7.0));
    EXPECT_NE(p.effectiveVelocity, (1.0 / 7.0) / 0.3);
    EXPECT_EQ(p.effectiveDispersionX, 2.0 / 7.0);
    EXPECT_EQ(p.effectiveDispersionY, 0.7 / 7.0);
    EXPECT_EQ(p.effectiveHalfLife, 70.0);
    EXPECT_EQ(p.porosity, 0.3);

    // A zero retardation: the dispersions are divided before the velocity, so
    // 0 / 0 of a zero dispersion (overflow) comes before 1 / 0 of the velocity.
    d.retardation = "0";
    d.dispersionX = "0";
    EXPECT_EQ(raisedError([&] { fillTwoDimParameters(d, p, false, 1); }), err::Overflow);
    d.dispersionX = "2";
    d.dispersionY = "0";
    EXPECT_EQ(raisedError([&] { fillTwoDimParameters(d, p, false, 1); }), err::DivisionByZero);
    // The velocity over a zero porosity comes first of all.
    d.porosity = "0";
    d.dispersionY = "0";
    EXPECT_EQ(raisedError([&] { fillTwoDimParameters(d, p, false, 1); }), err::DivisionByZero);
    d.porosity = "0";
    d.velocity = "0";
    EXPECT_EQ(raisedError([&] { fillTwoDimParameters(d, p, false, 1); }), err::Overflow);
    // The half-life times the retardation may overflow.
    d = twoDimModel("Infinite", "Finite Line");
    d.halfLife = "1e300";
    d.retardation = "1e10";
    EXPECT_EQ(raisedError([&] { fillTwoDimParameters(d, p, false, 1); }), err::Overflow);
}

TEST_F(TwoDimSolution, RecordHoldsRangesSourceAndPaddedTexts) {
    DataSet d = twoDimModel(" Infinite", "Finite / Line");
    d.xRange = "5:25:2";
    d.yRange = "7";  // a single number: the column from 0
    d.timeRange = "4:100:0:9";  // colons and one term: keeps its minimum
    d.sourceXc = "1.5";
    d.sourceYc = "-2.5";
    d.sourceWidth = "12";
    d.sourceStdDev = "3.25";
    d.injectionRate = "0.125";
    d.netRecharge = "0.002";
    d.aquiferThickness = "25";
    TwoDimParameters p;
    fillTwoDimParameters(d, p, false, 1);
    EXPECT_EQ(p.xMin, 5.0);
    EXPECT_EQ(p.xMax, 25.0);
    EXPECT_EQ(p.xInterval, 2.0);
    EXPECT_EQ(p.yMin, 0.0);
    EXPECT_EQ(p.yMax, 7.0);
    EXPECT_EQ(p.yInterval, 0.0);
    EXPECT_EQ(p.tMin, 4.0);
    EXPECT_EQ(p.tMax, 100.0);
    EXPECT_EQ(p.tInterval, 0.0);
    EXPECT_EQ(p.sourceXc, 1.5);
    EXPECT_EQ(p.sourceYc, -2.5);
    EXPECT_EQ(p.sourceWidth, 12.0);
    EXPECT_EQ(p.sourceStdDev, 3.25);
    EXPECT_EQ(p.injectionRate, 0.125);
    EXPECT_EQ(p.netRecharge, 0.002);
    EXPECT_EQ(p.aquiferThickness, 25.0);
    // The texts as typed, blank-padded to their fixed lengths.
    EXPECT_EQ(fixedText(p.aquiferCode), " Infinite" + std::string(11, ' '));
    EXPECT_EQ(fixedText(p.contaminantCode), "Finite / Line" + std::string(17, ' '));
    for (const char* reserved : {p.reservedText184, p.reservedText199, p.reservedText214})
        EXPECT_EQ(std::string(reserved, 15), std::string(15, ' '));
    EXPECT_EQ(std::string(p.reservedText229, 20), std::string(20, ' '));
    const auto* bytes = reinterpret_cast<const unsigned char*>(&p);
    for (int i = 72; i < 80; ++i) EXPECT_EQ(bytes[i], 0) << i;
    for (int i = 128; i < 136; ++i) EXPECT_EQ(bytes[i], 0) << i;
    EXPECT_EQ(p.reserved272, 0);
    // A text longer than its field is cut.
    d.contaminantType = "A source text that runs on well past thirty characters";
    fillTwoDimParameters(d, p, false, 1);
    EXPECT_EQ(fixedText(p.contaminantCode), "A source text that runs on wel");
}

TEST_F(TwoDimSolution, RecordIsRebuiltFromScratch) {
    DataSet d = twoDimModel("Infinite", "Gaussian");
    TwoDimParameters p;
    p.reserved272 = 77;
    setFixedText(p.aquiferCode, "something left over that is long");
    p.reserved72[3] = 9;
    fillTwoDimParameters(d, p, false, 1);
    EXPECT_EQ(p.reserved272, 0);
    EXPECT_EQ(p.reserved72[3], 0);
    EXPECT_EQ(fixedText(p.aquiferCode), "Infinite" + std::string(12, ' '));
}

TEST_F(TwoDimSolution, MonteCarloFieldsTakeTheSamplesOfTheirRows) {
    DataSet d = twoDimModel("Infinite", "Finite Line");
    // Thirteen fields, each a marker of its own row.
    std::vector<std::pair<std::string*, double>> fields = {
        {&d.sourceYc, 1.5},      {&d.sourceXc, -0.5},     {&d.sourceWidth, 8.0},     {&d.halfLife, 40.0},
        {&d.velocity, 0.6},      {&d.injectionRate, 0.2}, {&d.porosity, 0.25},       {&d.dispersionX, 3.0},
        {&d.dispersionY, 0.4},   {&d.netRecharge, 0.01},  {&d.aquiferThickness, 20}, {&d.sourceStdDev, 1.75},
        {&d.retardation, 2.0}};
    const int iterations = 4;
    d.MonteSamples.redim({static_cast<int>(fields.size()), iterations, 1});
    for (std::size_t r = 0; r < fields.size(); ++r) {
        const int row = static_cast<int>(r + 1);
        *fields[r].first = formFieldMarker("99", row);
        for (int i = 1; i <= iterations; ++i) d.MonteSamples(row, i, 1) = fields[r].second * i;
    }
    TwoDimParameters p;
    fillTwoDimParameters(d, p, true, 3);
    EXPECT_DOUBLE_EQ(p.sourceYc, 4.5);
    EXPECT_DOUBLE_EQ(p.sourceXc, -1.5);
    EXPECT_DOUBLE_EQ(p.sourceWidth, 24.0);
    EXPECT_DOUBLE_EQ(p.effectiveHalfLife, 120.0 * 6.0);
    EXPECT_DOUBLE_EQ(p.injectionRate, 0.6);
    EXPECT_DOUBLE_EQ(p.porosity, 0.75);
    EXPECT_DOUBLE_EQ(p.effectiveVelocity, 1.8 / 0.75 / 6.0);
    EXPECT_DOUBLE_EQ(p.effectiveDispersionX, 9.0 / 6.0);
    EXPECT_DOUBLE_EQ(p.effectiveDispersionY, 1.2 / 6.0);
    EXPECT_DOUBLE_EQ(p.netRecharge, 0.03);
    EXPECT_DOUBLE_EQ(p.aquiferThickness, 60.0);
    EXPECT_DOUBLE_EQ(p.sourceStdDev, 5.25);

    // Outside a simulation the same texts are read as numbers: "Monte Carlo..." is 0.
    d.porosity = "0.3";
    d.retardation = "1";
    fillTwoDimParameters(d, p, false, 3);
    EXPECT_EQ(p.sourceYc, 0.0);
    EXPECT_EQ(p.effectiveVelocity, 0.0);
}

// --- the choice of the library function ------------------------------------

TEST_F(TwoDimSolution, SourceCodesOfTheAquiferAndSourceTexts) {
    struct Case {
        const char* aquifer;
        const char* contaminant;
        std::int16_t code;
        const char* contaminantAfter;
    };
    for (const Case& c : {Case{"Finite", "Gaussian", 1020, "Gaussian"},
                          Case{"  finite width", "Continuous Point", 1020, "Continuous Point"},
                          Case{"Infinite", "Finite / Line", 2020, "Finite Line"},
                          Case{"Infinite", "Finite Line", 2020, "Finite Line"},
                          Case{"Infinite", "   FINITE LINE", 2020, "FINITE LINE"},
                          Case{"Infinite", "  Gaussian", 2030, "Gaussian"},
                          Case{"Semi-Infinite", "gaussian/ x", 2030, "gaussianx"},
                          Case{"Infinite", "Continuous Point", 2010, "Continuous Point"},
                          Case{"Infinite", "Finite", 2010, "Finite"},
                          Case{"Infinite", "", 2010, ""}}) {
        DataSet d = twoDimModel(c.aquifer, c.contaminant);
        TwoDimParameters p;
        fillTwoDimParameters(d, p, false, 1);
        TwoDimSourceTable table;
        chooseTwoDimSource(p, table);
        EXPECT_EQ(table.sourceCode, c.code) << c.aquifer << " / " << c.contaminant;
        EXPECT_EQ(trim(fixedText(p.contaminantCode)), c.contaminantAfter);
        EXPECT_EQ(fixedText(p.contaminantCode).size(), 30u);
        EXPECT_EQ(fixedText(p.aquiferCode), std::string(trimLeft(c.aquifer)).append(20 - trimLeft(c.aquifer).size(), ' '));
        // The points are read for every code but the finite aquifer's.
        EXPECT_EQ(table.quadratureNodes.ub(), c.code == 1020 ? -1 : 256);
        EXPECT_EQ(table.quadratureWeights.ub(), c.code == 1020 ? -1 : 256);
    }
}

TEST_F(TwoDimSolution, FiniteAquiferIgnoresTheSourceText) {
    std::vector<double> reference;
    for (const char* source : {"Finite / Line", "Gaussian", "Continuous Point"}) {
        DataSet d = twoDimModel("Finite", source);
        d.yRange = "0:20:5";
        d.sourceYc = "10";
        parseCoordinates(d);
        ScriptedUserInterface ui;
        solve(d, ui);
        EXPECT_EQ(twoDimSourceTable().sourceCode, kFiniteAquiferSource2D);
        TwoDimParameters p = twoDimRecord();
        p.yMin = 0, p.yMax = 20, p.sourceYc = 10;
        expectGrid(d, kFiniteAquiferSource2D, p, {{0, 1}});
        std::vector<double> grid;
        for (int j = 1; j <= 4; ++j)
            for (int i = 1; i <= 5; ++i)
                for (int k = 1; k <= 5; ++k) grid.push_back(d.result2D(i, k, j));
        if (reference.empty()) reference = grid;
        EXPECT_EQ(grid, reference) << source;
    }
    EXPECT_GT(reference[5 * 5 * 2 + 5 * 2 + 2], 0.01);  // t 20, x 20, y 10: the plume is there
}

TEST_F(TwoDimSolution, FiniteSlashLineAndFiniteLinePickTheSameFunction) {
    DataSet a = twoDimModel("Infinite", "Finite / Line");
    DataSet b = twoDimModel("Infinite", "Finite Line");
    ScriptedUserInterface ui;
    solve(a, ui);
    EXPECT_EQ(twoDimSourceTable().sourceCode, kFiniteLineSource2D);
    solve(b, ui);
    EXPECT_EQ(twoDimSourceTable().sourceCode, kFiniteLineSource2D);
    expectGrid(a, kFiniteLineSource2D, twoDimRecord(), {{0, 1}});
    expectGrid(b, kFiniteLineSource2D, twoDimRecord(), {{0, 1}});
    EXPECT_EQ(a.result2D, b.result2D);
    EXPECT_GT(a.result2D(3, 3, 4), 0.1);
}

TEST_F(TwoDimSolution, GaussianGridMatchesTheLibrary) {
    DataSet d = twoDimModel("Infinite", "Gaussian");
    ScriptedUserInterface ui;
    solve(d, ui);
    EXPECT_EQ(twoDimSourceTable().sourceCode, kGaussianSource2D);
    expectGrid(d, kGaussianSource2D, twoDimRecord(), {{0, 1}});
    EXPECT_GT(d.result2D(2, 3, 2), 0.1);
}

// --- the points file ----------------------------------------------------------

TEST_F(TwoDimSolution, PointsFileIsReadOnlyForTheCodesThatNeedIt) {
    testkit::TempDir dir;
    PointsFileScope missing(dir.file("glq.pts"));
    ScriptedUserInterface ui;
    DataSet finite = twoDimModel("Finite", "Finite Line");
    finite.yRange = "0:20:5";
    parseCoordinates(finite);
    EXPECT_NO_THROW(solve(finite, ui));
    for (const char* source : {"Finite Line", "Gaussian", "Continuous Point"}) {
        DataSet d = twoDimModel("Infinite", source);
        EXPECT_EQ(raisedError([&] { solve(d, ui); }), err::FileNotFound) << source;
    }
    // A short file ends early.
    testkit::writeFileBytes(dir.file("glq.pts"), "1\r\n2\r\n3\r\n4\r\n5\r\n0.5\r\n0.25\r\n");
    DataSet d = twoDimModel("Infinite", "Gaussian");
    EXPECT_EQ(raisedError([&] { solve(d, ui); }), err::InputPastEndOfFile);
}

TEST_F(TwoDimSolution, CaseAndPointsAreKeptAfterTheFirstIteration) {
    ScriptedUserInterface ui;
    DataSet d = twoDimModel("Infinite", "Finite Line");
    d.calculationMode = "Monte Carlo";
    d.mcAtX = "10";
    d.mcAtY = "2";
    d.mcAtT = "20";
    solve(d, ui, true, 1);
    const double first = d.currentConcentration;
    // Later iterations neither read the file again nor look at the texts.
    testkit::TempDir dir;
    PointsFileScope missing(dir.file("none.pts"));
    d.contaminantType = "Gaussian";
    EXPECT_NO_THROW(solve(d, ui, true, 2));
    EXPECT_EQ(twoDimSourceTable().sourceCode, kFiniteLineSource2D);
    EXPECT_EQ(d.currentConcentration, first);
    EXPECT_CLOSE(first, direct(kFiniteLineSource2D, twoDimRecord(), 20, 10, 2), 1e-13, 0);
    // The next run chooses anew, and reads the points again.
    EXPECT_EQ(raisedError([&] { solve(d, ui, true, 1); }), err::FileNotFound);
    EXPECT_EQ(twoDimSourceTable().sourceCode, kGaussianSource2D);
}

// --- counts, lists and loops --------------------------------------------------

TEST_F(TwoDimSolution, CountsBelowOneBecomeOneEachOnItsOwn) {
    DataSet d = twoDimModel("Infinite", "Finite Line");
    d.xRange = "0:40:10";
    d.yRange = "10:-10:5";   // -3 terms
    d.timeRange = "30:0:10";  // -2 terms, beside good x
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    EXPECT_EQ(d.numXTerms, 5);
    EXPECT_EQ(d.numYTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.yValues(1), d.yConstant);
    EXPECT_EQ(d.tValues(1), d.tConstant);
    EXPECT_EQ(d.yValues(1), -10.0);
    EXPECT_EQ(d.tValues(1), 0.0);
    EXPECT_EQ(gridCount(0, 10, 3), 4);
    EXPECT_EQ(gridCount(0, 10, 4), 4);  // 3.5 rounds to even
    EXPECT_EQ(gridCount(0, 9, 2), 6);   // 5.5 rounds to even
    EXPECT_EQ(gridCount(5, 5, 0), 1);
    EXPECT_EQ(gridCount(10, 0, 1), 1);
    EXPECT_EQ(raisedError([] { gridCount(0, 1e6, 1); }), err::Overflow);
}

TEST_F(TwoDimSolution, ListsAreMadeByMultiplication) {
    DataSet d = twoDimModel("Infinite", "Finite Line");
    d.xRange = "0.1:1:0.1";
    d.yRange = "3";
    d.timeRange = "0:10:4";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    ASSERT_EQ(d.numXTerms, 10);
    for (int i = 1; i <= 10; ++i) EXPECT_EQ(d.xValues(i), (i - 1) * 0.1 + 0.1);
    ASSERT_EQ(d.numYTerms, 1);
    EXPECT_EQ(d.yValues(1), 3.0);
    ASSERT_EQ(d.numTTerms, 4);
    EXPECT_EQ(d.tValues(4), 12.0);
}

TEST_F(TwoDimSolution, LoopsRunTimeThenXThenYWithProgressPerPoint) {
    DataSet d = twoDimModel("Infinite", "Finite Line");
    ScriptedUserInterface ui;
    solve(d, ui);
    ASSERT_EQ(ui.progress.size(), 100u);
    for (const auto& p : ui.progress) {
        EXPECT_EQ(p.total, 100.0);
        EXPECT_EQ(p.owner, ProgressOwner::InputForm);
    }
    EXPECT_EQ(ui.progress.front().done, 1.0);
    EXPECT_EQ(ui.progress.back().done, 100.0);

    // Stop after 13 points: t = 0 (25 points) is not done, and within it x = 0
    // (5 y values), x = 10 (5), and three y values of x = 20.
    DataSet s = twoDimModel("Infinite", "Finite Line");
    s.xRange = "10:50:10";  // x > 0, so every point of t > 0 is nonzero
    s.timeRange = "10:40:10";
    parseCoordinates(s);
    ScriptedUserInterface stopper;
    stopper.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 13) s.stopRequested = true;
    };
    EXPECT_EQ(solve(s, stopper), 0.0);
    EXPECT_FALSE(s.stopRequested);
    EXPECT_EQ(stopper.progress.size(), 13u);
    int filled = 0;
    for (int j = 1; j <= 4; ++j)
        for (int i = 1; i <= 5; ++i)
            for (int k = 1; k <= 5; ++k) {
                const bool done = j == 1 && (i < 3 || (i == 3 && k <= 3));
                if (done) {
                    ++filled;
                    EXPECT_CLOSE(s.result2D(i, k, j), expectedAt(kFiniteLineSource2D, twoDimRecord(), {{0, 1}},
                                                                 s.xValues(i), s.yValues(k), s.tValues(j)),
                                 1e-13, 1e-300);
                } else {
                    EXPECT_EQ(s.result2D(i, k, j), 0.0) << i << k << j;
                }
            }
    EXPECT_EQ(filled, 13);
    EXPECT_GT(s.result2D(3, 3, 1), 0.0);
    // The first points left out would not be zero.
    EXPECT_GT(expectedAt(kFiniteLineSource2D, twoDimRecord(), {{0, 1}}, 30, 5, 10), 0.0);
    EXPECT_GT(expectedAt(kFiniteLineSource2D, twoDimRecord(), {{0, 1}}, 40, 1, 10), 0.0);
}

TEST_F(TwoDimSolution, MultiChemicalModelReportsToItsOwnScreen) {
    DataSet d = twoDimModel("Infinite", "Gaussian");
    d.multiChemical = true;
    ScriptedUserInterface ui;
    solve(d, ui);
    ASSERT_FALSE(ui.progress.empty());
    EXPECT_EQ(ui.progress.front().owner, ProgressOwner::MultiChemicalForm);
}

// --- clamp, shortcut, superposition ------------------------------------------

TEST_F(TwoDimSolution, PointSourceIsShiftedAndItsCentreIsOneWithoutTheLibrary) {
    DataSet d = twoDimModel("Infinite", "Continuous Point");
    d.sourceXc = "10";
    d.sourceYc = "5";
    d.injectionRate = "0.05";
    ScriptedUserInterface ui;
    solve(d, ui);
    EXPECT_EQ(twoDimSourceTable().sourceCode, kContinuousPointSource2D);
    TwoDimParameters p = twoDimRecord();
    p.sourceXc = 10, p.sourceYc = 5, p.injectionRate = 0.05;
    expectGrid(d, kContinuousPointSource2D, p, {{0, 1}});
    // x 10 (i 2), y 5 (k 4): the centre is 1 at every time, t = 0 included,
    // where the library itself gives 0.
    for (int j = 1; j <= 4; ++j) EXPECT_EQ(d.result2D(2, 4, j), 1.0) << j;
    EXPECT_EQ(direct(kContinuousPointSource2D, p, 0.0, 0.0, 0.0), 0.0);
    // Away from the centre at t = 0 nothing has arrived.
    EXPECT_EQ(d.result2D(3, 4, 1), 0.0);
    // Downstream the plume is there and below 1.
    EXPECT_GT(d.result2D(3, 4, 4), 1e-3);
    EXPECT_LT(d.result2D(3, 4, 4), 1.0);
}

TEST_F(TwoDimSolution, ShortcutHoldsAtTauZeroToo) {
    // A later term starting at the time computed, at the source centre: the
    // solution at t = 0 is 1 there, so its whole step adds on.
    DataSet d = twoDimModel("Infinite", "Continuous Point");
    d.xRange = "0";
    d.yRange = "1";  // the centre: sourceXc 0, sourceYc 1
    d.timeRange = "8";
    parseCoordinates(d);
    setTerms(d, {{0, 2}, {8, 5}});
    ScriptedUserInterface ui;
    solve(d, ui);
    EXPECT_EQ(d.result2D(1, 1, 1), 1.0 + (5.0 - 2.0) / 2.0);
    EXPECT_EQ(d.currentConcentration, 2.5);
    EXPECT_EQ(d.calculationMode, "2.5");
}

TEST_F(TwoDimSolution, TermStartingAtTheTimeComputedCallsTheSolutionAtZero) {
    // On the source plane x = 0 the strip holds C0 at every t >= 0, t = 0 too:
    // a term whose time equals t adds its whole step there.
    DataSet d = twoDimModel("Infinite", "Finite Line");
    d.xRange = "0:10:10";
    d.yRange = "1:21:20";
    d.timeRange = "6";
    parseCoordinates(d);
    setTerms(d, {{0, 1}, {6, 3}});
    ScriptedUserInterface ui;
    solve(d, ui);
    EXPECT_EQ(d.result2D(1, 1, 1), 3.0);  // 1 + (3 - 1) * 1, passing 1 after the sum
    EXPECT_EQ(d.result2D(1, 2, 1), 0.0);  // y 21: off the strip
    EXPECT_CLOSE(d.result2D(2, 1, 1), direct(kFiniteLineSource2D, twoDimRecord(), 6, 10, 1), 1e-13, 0);
    // A term starting after t adds nothing, on the plane either.
    d.terms(2).time = "6.001";
    solve(d, ui);
    EXPECT_EQ(d.result2D(1, 1, 1), 1.0);
}

TEST_F(TwoDimSolution, SuperposedGridMatchesTheLibrary) {
    const std::vector<TermValue> terms = {{0, 2}, {10, 5}, {15, 1}, {25, 0.5}};
    for (const char* source : {"Finite Line", "Gaussian", "Continuous Point"}) {
        DataSet d = twoDimModel("Infinite", source);
        d.xRange = "0:40:5";
        d.yRange = "-8:8:4";
        d.timeRange = "0:40:5";
        setTerms(d, terms);
        parseCoordinates(d);
        ScriptedUserInterface ui;
        solve(d, ui);
        expectGrid(d, twoDimSourceTable().sourceCode, twoDimRecord(), terms);
    }
    DataSet d = twoDimModel("Finite", "Finite Line");
    d.xRange = "0:40:5";
    d.yRange = "0:30:5";
    d.sourceYc = "12";
    d.timeRange = "0:40:5";
    setTerms(d, terms);
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    TwoDimParameters p = twoDimRecord();
    p.yMin = 0, p.yMax = 30, p.yInterval = 5, p.sourceYc = 12;
    expectGrid(d, kFiniteAquiferSource2D, p, terms);
}

// Sources in the middle of their y range: a line's points pair up about the
// source's axis and each pair is computed once; every value is still the
// library's own at its point, to the bit, on one thread and on several, with
// superposed terms too.
TEST_F(TwoDimSolution, CentredSourceGridsAreTheLibraryToTheBit) {
    for (const char* source : {"Continuous Point", "Gaussian", "Finite Line"}) {
        for (const bool superposed : {false, true}) {
            const std::vector<TermValue> terms =
                superposed ? std::vector<TermValue>{{0, 2}, {10, 5}, {25, 0.5}} : std::vector<TermValue>{{0, 1}};
            for (const int threads : {1, 3}) {
                const ScopedCalculationThreads scope(threads);
                DataSet d = twoDimModel("Infinite", source);
                d.xRange = "-20:60:4";
                d.yRange = "-29:31:2";  // offsets -30 .. 30 from the source at y = 1, and 0 itself
                d.timeRange = "0:40:8";
                d.injectionRate = "0.02";
                setTerms(d, terms);
                parseCoordinates(d);
                ScriptedUserInterface ui;
                solve(d, ui);
                const std::int16_t code = twoDimSourceTable().sourceCode;
                TwoDimParameters p = twoDimRecord();
                p.injectionRate = 0.02;
                // The library on the rule the run read (the test's own rule differs in last bits).
                const TwoDimSourceTable& table = twoDimSourceTable();
                const double* nodes = table.quadratureNodes.data() + 1;
                const double* weights = table.quadratureWeights.data() + 1;
                const bool point = code == kContinuousPointSource2D;
                auto library = [&](double t, double px, double py) {
                    if (point && px == 0.0 && py == 0.0) return 1.0;
                    double c = -1.0;
                    if (point) cnrml_IC(p, t, px, py, c, nodes, weights);
                    else if (code == kGaussianSource2D) cnrml_IG(p, t, px, py, c, nodes, weights);
                    else cnrml_IL(p, t, px, py, c, nodes, weights);
                    return c < 0.0 || c > 1.0 ? 0.0 : c;
                };
                int plume = 0;
                for (int j = 1; j <= d.numTTerms; ++j)
                    for (int i = 1; i <= d.numXTerms; ++i)
                        for (int k = 1; k <= d.numYTerms; ++k) {
                            const double t = d.tValues(j);
                            const double px = point ? d.xValues(i) - p.sourceXc : d.xValues(i);
                            const double py = point ? d.yValues(k) - p.sourceYc : d.yValues(k);
                            double c = library(t, px, py);
                            for (std::size_t n = 1; n < terms.size(); ++n)
                                if (t - terms[n].time >= 0.0)
                                    c += (terms[n].concentration - terms[n - 1].concentration) /
                                         terms[0].concentration * library(t - terms[n].time, px, py);
                            if (c < 0.0) c = 0.0;
                            EXPECT_EQ(d.result2D(i, k, j), c)
                                << source << " x " << d.xValues(i) << " y " << d.yValues(k) << " t " << t;
                            if (c > 1e-4) ++plume;
                        }
                EXPECT_GT(plume, 100) << source;  // a plume, not zeros
            }
        }
    }
}

TEST_F(TwoDimSolution, RatioAboveOneIsThrownAwayAndANegativeSumIsZero) {
    // A strong injection: near the well C/C0 computes above 1 and is stored as 0.
    DataSet d = twoDimModel("Infinite", "Continuous Point");
    d.injectionRate = "50";
    d.xRange = "0.5:2.5:1";
    d.yRange = "0";
    d.timeRange = "20";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    TwoDimParameters p = twoDimRecord();
    p.injectionRate = 50;
    EXPECT_GT(direct(kContinuousPointSource2D, p, 20, 0.5, -1), 1.0);
    EXPECT_EQ(d.result2D(1, 1, 1), 0.0);
    expectGrid(d, kContinuousPointSource2D, p, {{0, 1}});

    // A later term far below the first makes the sum negative: 0.
    DataSet n = twoDimModel("Infinite", "Finite Line");
    n.xRange = "10";
    n.yRange = "1";
    n.timeRange = "0:40:10";
    setTerms(n, {{0, 1}, {5, -9}});
    parseCoordinates(n);
    solve(n, ui);
    int negative = 0;
    for (int j = 1; j <= 5; ++j) {
        const double t = n.tValues(j);
        const double raw = direct(kFiniteLineSource2D, twoDimRecord(), t, 10, 1) -
                           10.0 * (t >= 5 ? direct(kFiniteLineSource2D, twoDimRecord(), t - 5, 10, 1) : 0.0);
        if (raw < 0) ++negative;
        EXPECT_CLOSE(n.result2D(1, 1, j), raw < 0 ? 0.0 : raw, 1e-12, 1e-300) << t;
    }
    EXPECT_GE(negative, 2);
}

TEST_F(TwoDimSolution, OneTermReadsNoTermsAndAZeroFirstConcentrationDividesByZero) {
    DataSet d = twoDimModel("Infinite", "Gaussian");
    d.terms.clear();  // any read would be a bounds error
    ScriptedUserInterface ui;
    EXPECT_NO_THROW(solve(d, ui));
    setTerms(d, {{0, 0}, {10, 1}});
    EXPECT_EQ(raisedError([&] { solve(d, ui); }), err::DivisionByZero);
    // ... but only once a later term takes part.
    setTerms(d, {{0, 0}, {100, 1}});
    EXPECT_NO_THROW(solve(d, ui));
}

// --- Stop, the selected point, the mode text -------------------------------

TEST_F(TwoDimSolution, StoppedRunLeavesTheModeTextAndClearsTheFlag) {
    DataSet d = twoDimModel("Infinite", "Gaussian");
    d.calculationMode = "Regular";
    d.currentConcentration = 0.125;
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 40) d.stopRequested = true;
    };
    EXPECT_EQ(solve(d, ui), 0.0);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(d.calculationMode, "Regular");
    EXPECT_EQ(d.currentConcentration, 0.125);
    EXPECT_EQ(ui.progress.size(), 40u);

    // Stop before the first point: the grid stays at zero.
    DataSet z = twoDimModel("Infinite", "Gaussian");
    z.stopRequested = true;
    z.calculationMode = "0.5";
    ScriptedUserInterface quiet;
    EXPECT_EQ(solve(z, quiet), 0.0);
    EXPECT_FALSE(z.stopRequested);
    EXPECT_EQ(z.calculationMode, "0.5");
    EXPECT_TRUE(quiet.progress.empty());
    for (int j = 1; j <= 4; ++j)
        for (int i = 1; i <= 5; ++i)
            for (int k = 1; k <= 5; ++k) EXPECT_EQ(z.result2D(i, k, j), 0.0);
}

TEST_F(TwoDimSolution, SelectedPointIsComputedAndTheListsRestored) {
    DataSet d = twoDimModel("Infinite", "Finite Line");
    d.xRange = "0:40:10:15";
    d.yRange = "-10:10:5:2.5";
    d.timeRange = "0:30:10:25";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    const double last = solve(d, ui);
    EXPECT_EQ(last, d.result2D(5, 5, 4));
    EXPECT_CLOSE(d.currentConcentration, direct(kFiniteLineSource2D, twoDimRecord(), 25, 15, 2.5), 1e-13, 0);
    EXPECT_EQ(d.calculationMode, formatNumber(d.currentConcentration));
    EXPECT_EQ(d.xValues(1), 0.0);
    EXPECT_EQ(d.yValues(1), -10.0);
    EXPECT_EQ(d.tValues(1), 0.0);

    // One count other than 1 is enough.
    DataSet one = twoDimModel("Infinite", "Finite Line");
    one.xRange = "12";
    one.yRange = "0.5";
    one.timeRange = "0:30:10:17";
    parseCoordinates(one);
    solve(one, ui);
    EXPECT_CLOSE(one.currentConcentration, direct(kFiniteLineSource2D, twoDimRecord(), 17, 12, 0.5), 1e-13, 0);
    EXPECT_EQ(one.tValues(1), 0.0);

    // All counts 1: the grid's only value, and "Monte Carlo" is never overwritten.
    DataSet single = twoDimModel("Infinite", "Finite Line");
    single.xRange = "12";
    single.yRange = "0.5";
    single.timeRange = "17";
    single.calculationMode = "Monte Carlo";
    parseCoordinates(single);
    solve(single, ui);
    EXPECT_EQ(single.currentConcentration, single.result2D(1, 1, 1));
    EXPECT_EQ(single.currentConcentration, one.currentConcentration);
    EXPECT_EQ(single.calculationMode, "Monte Carlo");
}

TEST_F(TwoDimSolution, MonteCarloIterationIsOnePointAtTheSimulationPoint) {
    DataSet d = twoDimModel("Infinite", "Gaussian");
    d.calculationMode = "Monte Carlo";
    d.mcAtX = "15";
    d.mcAtY = "-3";
    d.mcAtT = "22";
    d.velocity = formFieldMarker("0.3", 1);
    setTerms(d, {{0, 1}, {5, 2}});
    d.terms(1).concentration = boundaryCellMarker("1", 2, 20);
    d.MonteSamples.redim({2, 3, 1});
    d.MonteSamples(1, 2, 1) = 0.6;  // effective velocity 2
    d.MonteSamples(2, 2, 1) = 4.0;  // first term 4: the step to 2 is -2/4
    d.MonteSamples(1, 1, 1) = 0.3;
    d.MonteSamples(2, 1, 1) = 1.0;
    ScriptedUserInterface ui;
    solve(d, ui, true, 1);  // the first iteration chooses the case
    const double value = solve(d, ui, true, 2);
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.numYTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.xValues(1), 15.0);
    EXPECT_EQ(d.yValues(1), -3.0);
    EXPECT_EQ(d.tValues(1), 22.0);
    TwoDimParameters p = twoDimRecord();
    p.effectiveVelocity = 0.6 / 0.3;
    const double expected = expectedAt(kGaussianSource2D, p, {{0, 4}, {5, 2}}, 15, -3, 22);
    EXPECT_CLOSE(value, expected, 1e-13, 0);
    EXPECT_LT(value, direct(kGaussianSource2D, p, 22, 15, -3));
    EXPECT_EQ(d.currentConcentration, value);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    EXPECT_TRUE(ui.progress.empty());
}

}  // namespace
}  // namespace bm
