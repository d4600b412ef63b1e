// The decay chain's solution through the calculation pass, against references
// that do not use the chain's matrices: a numerical Laplace inversion of the
// coupled advection-dispersion-decay equations (solved chemical by chemical in
// the transform domain), the closed form of a single species, and the
// single-species solvers for the two-chemical identity C2 = U1 - U2.

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>
#include <string>
#include <vector>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "montecarlo/pass/monte_setup.h"
#include "saturated/tests/three_dim_test_model.h"
#include "saturated/tests/two_dim_test_model.h"
#include "species/chain/chain_kinds.h"
#include "species/chain/chain_solution.h"
#include "species/chain/chain_validation.h"
#include "species/chain/chemical_choice.h"
#include "species/tests/chain_test_model.h"
#include "testing/is_close.h"
#include "testing/one_dim_test_model.h"
#include "testing/points_file.h"
#include "testing/scripted_user_interface.h"
#include "unsaturated/tests/unsat_reference.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;
using testkit::Chain;
using testkit::chainModel;
using testkit::text15;

// ---- the Laplace-domain reference of the coupled one-dimensional problem
//   dC_i/dt = D C_i'' - V C_i' - k_i C_i + y_i k_(i-1) C_(i-1),
//   C_i(0, t) = c_i, C_i(x, 0) = 0, C_i bounded as x grows.
// The transform of chemical i is a sum of exp(r_j x) over j <= i, with
// D r_j^2 - V r_j = s + k_j; the term of an earlier root is the particular
// solution of the source from the chemical before, the own root takes up the
// boundary value.
using Complex = std::complex<double>;

std::vector<Complex> transformedChain(const Chain& chain, double V, double D, double x, Complex s) {
    const std::size_t n = chain.rates.size();
    std::vector<Complex> roots(n), result(n);
    for (std::size_t j = 0; j < n; ++j) roots[j] = (V - std::sqrt(V * V + 4.0 * D * (s + chain.rates[j]))) / (2.0 * D);
    std::vector<std::vector<Complex>> alpha(n, std::vector<Complex>(n));
    for (std::size_t i = 0; i < n; ++i) {
        Complex own = chain.sources[i] / s;
        for (std::size_t j = 0; j < i; ++j) {
            alpha[i][j] = chain.yields[i] * chain.rates[i - 1] * alpha[i - 1][j] / (chain.rates[i] - chain.rates[j]);
            own -= alpha[i][j];
        }
        alpha[i][i] = own;
        for (std::size_t j = 0; j <= i; ++j) result[i] += alpha[i][j] * std::exp(roots[j] * x);
    }
    return result;
}

// The fixed Talbot contour inversion.
std::vector<double> chainReference(const Chain& chain, double V, double D, double x, double t) {
    const int M = 24;
    const double r = 2.0 * M / (5.0 * t);
    const std::size_t n = chain.rates.size();
    std::vector<double> sum(n);
    const std::vector<Complex> first = transformedChain(chain, V, D, x, Complex(r, 0));
    for (std::size_t i = 0; i < n; ++i) sum[i] = 0.5 * std::exp(r * t) * first[i].real();
    for (int k = 1; k < M; ++k) {
        const double theta = k * std::numbers::pi / M;
        const double cot = 1.0 / std::tan(theta);
        const Complex delta = r * theta * Complex(cot, 1.0);
        const Complex gamma(1.0, theta + (theta * cot - 1.0) * cot);
        const std::vector<Complex> value = transformedChain(chain, V, D, x, delta);
        for (std::size_t i = 0; i < n; ++i) sum[i] += (std::exp(t * delta) * value[i] * gamma).real();
    }
    for (double& v : sum) v *= r / M;
    return sum;
}

TEST(ChainReference, LaplaceInversionOfOneSpeciesIsTheClosedForm) {
    const Chain one{{0.1}, {1}, {1}};
    for (double x : {0.0, 2.0, 5.0})
        for (double t : {1.0, 3.0, 5.0})
            EXPECT_NEAR(chainReference(one, 1, 0.5, x, t)[0], testkit::semiInfiniteDirichletReference(1, 0.5, 0.1, x, t),
                        1e-8);
}

TEST(ChainSolution, ThreeMembersInOneDimensionAgreeWithTheCoupledEquations) {
    const Chain chain{{0.1, 0.25, 0.05}, {1, 1, 0.5}, {1, 0, 0}};
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), chain);
    d.xRange = "0:10:0.5";
    d.timeRange = "0:20:2";
    d.mcAtX = "4";
    d.mcAtT = "10";
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    ASSERT_TRUE(outcome.finished);
    ASSERT_TRUE(ui.messages.empty());
    ASSERT_EQ(d.chemResult1D.ub(0), 3);
    ASSERT_EQ(d.numXTerms, 21);
    ASSERT_EQ(d.numTTerms, 11);
    double largest = 0;
    for (int t = 2; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x) {
            const std::vector<double> expected = chainReference(chain, 1, 0.5, d.xValues(x), d.tValues(t));
            for (int i = 1; i <= 3; ++i) {
                EXPECT_NEAR(d.chemResult1D(i, x, t), expected[i - 1], 1e-5) << "chemical " << i << " x " << d.xValues(x)
                                                                              << " t " << d.tValues(t);
                largest = std::max(largest, d.chemResult1D(i, x, t));
            }
        }
    EXPECT_GT(largest, 0.1);
    // at time 0 the inlet holds the sources and the aquifer nothing
    for (int i = 1; i <= 3; ++i) {
        EXPECT_NEAR(d.chemResult1D(i, 1, 1), chain.sources[i - 1], 1e-12);
        EXPECT_NEAR(d.chemResult1D(i, 5, 1), 0.0, 1e-12);
    }
    // the point values: the solver's printed value of its last point (x 10,
    // t 20) for each chemical, coupled as the grids are
    const std::vector<double> atPoint = chainReference(chain, 1, 0.5, 10, 20);
    for (int i = 1; i <= 3; ++i) EXPECT_NEAR(textValue(d.resultsInPoint(i)), atPoint[i - 1], 1e-4);
}

TEST(ChainSolution, NonzeroSourcesOfLaterChemicals) {
    const Chain chain{{0.3, 0.1, 0.02}, {1, 0.8, 0.5}, {2, 1, 0.5}};
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), chain);
    ScriptedUserInterface ui;
    ASSERT_TRUE(runCalculation(d, ui).finished);
    for (int t = 2; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x) {
            const std::vector<double> expected = chainReference(chain, 1, 0.5, d.xValues(x), d.tValues(t));
            for (int i = 1; i <= 3; ++i) EXPECT_NEAR(d.chemResult1D(i, x, t), expected[i - 1], 1e-5);
        }
}

// ---- C2 = U1 - U2 for k1 = 0.1, k2 = 0.2, y2 = 1, c = (1, 0), in every kind

// The single-species grid of rate k through the single-species kind.
DataSet singleSpeciesRun(DataSet d, double rate) {
    d.multiChemical = false;
    d.halfLife = text15(std::numbers::ln2 / rate);
    ScriptedUserInterface ui;
    EXPECT_TRUE(runCalculation(d, ui).finished);
    for (const auto& m : ui.messages) ADD_FAILURE() << m.title << ": " << m.text;
    return d;
}

struct KindCase {
    const char* name;
    DataSet model;
};

std::vector<KindCase> everyKind() {
    testkit::UnsatInputs unsat;
    return {{"one dimension", testkit::oneDimModel("Semi-Infinite", "Dirichlet")},
            {"two dimensions", testkit::twoDimModel("Infinite", "Finite / Line")},
            {"three dimensions", testkit::threeDimModel("Infinite", "Finite / Patch")},
            {"unsaturated", testkit::unsatModel(unsat, "0:4:0.5", "0:20:2")}};
}

TEST(ChainSolution, DaughterIsTheDifferenceOfTheTwoSingleSpeciesSolutionsInEveryKind) {
    const testkit::PointsFileScope pointsFile;
    const Chain chain{{0.1, 0.2}, {1, 1}, {1, 0}};
    for (const KindCase& k : everyKind()) {
        SCOPED_TRACE(k.name);
        const DataSet u1 = singleSpeciesRun(k.model, 0.1);
        const DataSet u2 = singleSpeciesRun(k.model, 0.2);
        DataSet d = chainModel(k.model, chain);
        ScriptedUserInterface ui;
        ASSERT_TRUE(runCalculation(d, ui).finished);
        ASSERT_TRUE(ui.messages.empty());
        int points = 0;
        double largest = 0;
        const auto check = [&](double parent, double daughter, double one, double two) {
            EXPECT_NEAR(parent, one, 1e-12);
            EXPECT_NEAR(daughter, std::max(0.0, one - two), 1e-12);
            EXPECT_GE(daughter, 0.0);
            largest = std::max(largest, daughter);
            ++points;
        };
        if (d.modelType == "One Dimensional") {
            for (int t = 1; t <= d.numTTerms; ++t)
                for (int x = 1; x <= d.numXTerms; ++x)
                    check(d.chemResult1D(1, x, t), d.chemResult1D(2, x, t), u1.result1D(x, t), u2.result1D(x, t));
        } else if (d.modelType == "Two Dimensional") {
            for (int t = 1; t <= d.numTTerms; ++t)
                for (int y = 1; y <= d.numYTerms; ++y)
                    for (int x = 1; x <= d.numXTerms; ++x)
                        check(d.chemResult2D(1, x, y, t), d.chemResult2D(2, x, y, t), u1.result2D(x, y, t),
                              u2.result2D(x, y, t));
        } else if (d.modelType == "Three Dimensional") {
            for (int t = 1; t <= d.numTTerms; ++t)
                for (int z = 1; z <= d.numZTerms; ++z)
                    for (int y = 1; y <= d.numYTerms; ++y)
                        for (int x = 1; x <= d.numXTerms; ++x)
                            check(d.chemResult3D(1, x, y, z, t), d.chemResult3D(2, x, y, z, t),
                                  u1.result3D(x, y, z, t), u2.result3D(x, y, z, t));
        } else {
            for (int t = 1; t <= d.numTTerms; ++t)
                for (int x = 1; x <= d.numXTerms; ++x)
                    check(d.chemResultUnsat(1, x, t), d.chemResultUnsat(2, x, t), u1.resultUnsat(x, t),
                          u2.resultUnsat(x, t));
        }
        EXPECT_GT(points, 10);
        EXPECT_GT(largest, 1e-3);  // the daughter is really there
    }
}

TEST(ChainSolution, DaughterInOneDimensionAgreesWithTheClosedForms) {
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), {{0.1, 0.2}, {1, 1}, {1, 0}});
    ScriptedUserInterface ui;
    ASSERT_TRUE(runCalculation(d, ui).finished);
    for (int t = 2; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x) {
            const double u1 = testkit::semiInfiniteDirichletReference(1, 0.5, 0.1, d.xValues(x), d.tValues(t));
            const double u2 = testkit::semiInfiniteDirichletReference(1, 0.5, 0.2, d.xValues(x), d.tValues(t));
            EXPECT_NEAR(d.chemResult1D(2, x, t), u1 - u2, 1e-10);
        }
}

// ---- edge cases

TEST(ChainSolution, OneChemicalIsItsSourceTimesTheSingleSpeciesSolution) {
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), {{0.1}, {1}, {3}});
    ScriptedUserInterface ui;
    ASSERT_TRUE(runCalculation(d, ui).finished);
    EXPECT_EQ(d.chemicalTermConcentration(1), "3");
    for (int t = 2; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x)
            EXPECT_NEAR(d.chemResult1D(1, x, t),
                        3 * testkit::semiInfiniteDirichletReference(1, 0.5, 0.1, d.xValues(x), d.tValues(t)), 1e-10);
}

TEST(ChainSolution, ZeroYieldPassesAndKeepsThePairsInTheOrderBalancingGives) {
    // With y2 = 0 the chain matrix is diag(-k1, -k2); balancing isolates its
    // rows so that the pairs arrive as -k2, -k1 and Z is the permutation
    // ((0, 1), (1, 0)), which nothing repairs. Chemical j is still solved with
    // its own rate k_j, so b = Z⁻¹ c = (c2, c1) and C = Z (b1 U(k1), b2 U(k2))
    // = (c1 U(k2), c2 U(k1)).
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), {{0.1, 0.2}, {1, 0}, {1, 2}});
    ScriptedUserInterface ui;
    ASSERT_TRUE(chainTablesAccepted(d, ui));
    ASSERT_TRUE(runCalculation(d, ui).finished);
    ASSERT_TRUE(ui.messages.empty());
    EXPECT_EQ(d.chemicalTermConcentration(1), "2");
    EXPECT_EQ(d.chemicalTermConcentration(2), "1");
    for (int t = 2; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x) {
            EXPECT_NEAR(d.chemResult1D(1, x, t),
                        testkit::semiInfiniteDirichletReference(1, 0.5, 0.2, d.xValues(x), d.tValues(t)), 1e-10);
            EXPECT_NEAR(d.chemResult1D(2, x, t),
                        2 * testkit::semiInfiniteDirichletReference(1, 0.5, 0.1, d.xValues(x), d.tValues(t)), 1e-10);
        }
}

TEST(ChainSolution, TermsEndWithTheFirstChemicalsSources) {
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), {{0.1, 0.2, 0.3}, {1, 1, 1}, {5, 6, 7}});
    d.superpositionIndex = 2;
    ScriptedUserInterface ui;
    ASSERT_TRUE(runCalculation(d, ui).finished);
    ASSERT_EQ(d.terms.ub(), 2);
    EXPECT_EQ(d.terms(1).concentration, "5");
    EXPECT_EQ(d.terms(2).concentration, "6");
    // the solver saw the last chemical's rate
    EXPECT_EQ(d.halfLife, text15(std::numbers::ln2 / 0.3));
}

TEST(ChainSolution, StopDuringTheSecondChemicalLeavesTheFirstUncoupled) {
    const Chain chain{{0.1, 0.2}, {1, 1}, {1, 0}};
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), chain);
    ScriptedUserInterface ui;
    int steps = 0;
    const int pointsPerChemical = 66;
    ui.onProgress = [&](const ScriptedUserInterface::Progress&) {
        if (++steps == pointsPerChemical + 10) {  // Stop answered Yes on the chain's screen
            d.stopRequested = true;
            d.stopRequestedMulti = true;
            d.runStopped = true;
        }
    };
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.stopped);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_FALSE(d.stopRequestedMulti);
    // b = (1, -1): the first chemical holds b1 U1, not coupled back
    for (int t = 2; t <= d.numTTerms; ++t)
        for (int x = 1; x <= d.numXTerms; ++x)
            EXPECT_NEAR(d.chemResult1D(1, x, t),
                        testkit::semiInfiniteDirichletReference(1, 0.5, 0.1, d.xValues(x), d.tValues(t)), 1e-10);
    EXPECT_EQ(d.chemicalTermConcentration(2), "-1");
}

TEST(ChainSolution, ChainMatrixOfRatesAndYields) {
    DataSet d = chainModel(DataSet{}, {{0.1, 0.2, 0.4}, {7, 0.5, 0.25}, {1, 0, 0}});
    SquareMatrix a;
    buildChainMatrix(d, a);
    ASSERT_EQ(a.ub(), 3);
    EXPECT_EQ(a(1, 1), -0.1);
    EXPECT_EQ(a(2, 2), -0.2);
    EXPECT_EQ(a(3, 3), -0.4);
    EXPECT_EQ(a(2, 1), 0.5 * 0.1);
    EXPECT_EQ(a(3, 2), 0.25 * 0.2);
    EXPECT_EQ(a(1, 2), 0.0);
    EXPECT_EQ(a(3, 1), 0.0);
    EXPECT_EQ(a(1, 3), 0.0);
}

TEST(ChainSolution, TwoChemicalExampleDecomposes) {
    DataSet d = chainModel(DataSet{}, {{0.1, 0.2}, {1, 1}, {1, 0}});
    ChainTransform tr;
    ScriptedUserInterface ui;
    ASSERT_TRUE(decomposeChain(d, tr, ui));
    // Z = ((1, 0), (1, 1)) flat row after row; b = (1, -1)
    EXPECT_NEAR(tr.eigenVectors(1), 1, 1e-14);
    EXPECT_NEAR(tr.eigenVectors(2), 0, 1e-14);
    EXPECT_NEAR(tr.eigenVectors(3), 1, 1e-14);
    EXPECT_NEAR(tr.eigenVectors(4), 1, 1e-14);
    EXPECT_EQ(d.chemicalTermConcentration(1), "1");
    EXPECT_EQ(d.chemicalTermConcentration(2), "-1");
}

// ---- the tables' checks

struct Refusal {
    std::string title, text;
};

Refusal refusalOf(const DataSet& d) {
    ScriptedUserInterface ui;
    EXPECT_FALSE(chainTablesAccepted(d, ui));
    if (ui.messages.size() != 1) return {};
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Critical);
    return {ui.messages[0].title, ui.messages[0].text};
}

TEST(ChainValidation, EqualRatesAreRefusedInSinglePrecision) {
    DataSet d = chainModel(DataSet{}, {{0.1, 0.2, 0.3}, {1, 1, 1}, {1, 0, 0}});
    d.timeRange = "0:5:1";
    d.decayRate(3) = "0.10000001";
    const Refusal r = refusalOf(d);
    EXPECT_EQ(r.title, "Improper input data");
    EXPECT_EQ(r.text,
              "The decay rate of chemical C1 is the same as that of chemical C3\r\rThis will result in incorrect "
              "solution. Please give the proper values\rfor the decay rates.");
    d.decayRate(3) = "0.1000001";
    ScriptedUserInterface ui;
    EXPECT_TRUE(chainTablesAccepted(d, ui));
    // a marker counts as the number it carries
    d.decayRate(3) = chemicalCellMarker("0.2", 4);
    EXPECT_EQ(refusalOf(d).text.substr(0, 65), "The decay rate of chemical C2 is the same as that of chemical C3\r");
}

TEST(ChainValidation, MessagesInTheirOrder) {
    const DataSet good = [] {
        DataSet d = chainModel(DataSet{}, {{0.1, 0.2}, {1, 1}, {1, 0}});
        d.timeRange = "0:5:1";
        return d;
    }();
    ScriptedUserInterface ok;
    EXPECT_TRUE(chainTablesAccepted(good, ok));
    struct Case {
        void (*spoil)(DataSet&);
        const char* title;
        const char* text;
    };
    const Case cases[] = {
        {[](DataSet& d) { d.suppositionTime(2) = "x"; }, "Invalid input format",
         "The times must be numeric values.\r\rPlease give a proper value for it."},
        {[](DataSet& d) { d.suppositionTime(2) = "-1"; }, "Improper input data",
         "The values of time must be greater than zero.\r\rPlease give a proper values for time."},
        {[](DataSet& d) { d.suppositionTime(2) = "6"; }, "Improper input data",
         "Input value given for the time must be between  0 and 5\r\rPlease give a proper input value for it."},
        {[](DataSet& d) { d.suppositionConcentration(1) = "one"; }, "Invalid input format",
         "The concentration must be numeric values.\r\rPlease give a proper value for it."},
        {[](DataSet& d) { d.suppositionConcentration(1) = "-2"; }, "Improper input data",
         "The value of concetration must be greater than zero.\r\rPlease give a proper values for it."},
        {[](DataSet& d) { d.chemicalName(2) = "  "; }, "No input data",
         "Not all values have been given for chemical names.\r\rPlease give proper chemical names."},
        {[](DataSet& d) { d.decayRate(1) = "fast"; }, "Invalid input format",
         "The destruction rates must be numeric values.\r\rPlease give a proper value for it."},
        {[](DataSet& d) { d.decayRate(1) = "0"; }, "Improper input data",
         "The value of destruction rates must be greater than zero.\r\rPlease give a proper values for destruction "
         "rates."},
        {[](DataSet& d) { d.yieldFactor(2) = "half"; }, "Invalid input format",
         "The yield facotrs must be numeric values.\r\rPlease give a proper value for it."},
        {[](DataSet& d) { d.yieldFactor(2) = "-0.5"; }, "Improper input data",
         "The value of yield facotrs must be greater than zero.\r\rPlease give a proper value for it."},
    };
    for (const Case& c : cases) {
        DataSet d = good;
        c.spoil(d);
        const Refusal r = refusalOf(d);
        EXPECT_EQ(r.title, c.title);
        EXPECT_EQ(r.text, c.text);
    }
    // exactly 0 passes for a time, a concentration and a yield
    DataSet zeros = good;
    zeros.suppositionConcentration(1) = "0";
    zeros.yieldFactor(2) = "0";
    ScriptedUserInterface ui;
    EXPECT_TRUE(chainTablesAccepted(zeros, ui));
    // the inputs table is checked before the chemicals' table
    DataSet both = good;
    both.decayRate(1) = "0";
    both.suppositionTime(1) = "x";
    EXPECT_EQ(refusalOf(both).text.substr(0, 10), "The times ");
}

// ---- simulations

// Samples of rows 1..2 in the working set and the store of the kind.
void giveSamples(DataSet& d, ModelKind kind, int iterations, const std::vector<std::vector<double>>& rows) {
    d.monteStore(kind).monteIterations = iterations;
    d.MonteSamples.redim({static_cast<int>(rows.size()), iterations, 1});
    for (std::size_t r = 0; r < rows.size(); ++r)
        for (int i = 1; i <= iterations - 1; ++i) d.MonteSamples(static_cast<int>(r) + 1, i, 1) = rows[r][i - 1];
}

TEST(ChainSimulation, SampledSourceScalesTheUnitSolutionsOfEachIteration) {
    const double k1 = 0.1, k2 = 0.3, y2 = 0.5;
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), {{k1, k2}, {1, y2}, {1, 0.5}});
    d.suppositionConcentration(1) = chemicalCellMarker("1", 1);
    const std::vector<double> samples{2, 4, 0.5};
    giveSamples(d, ModelKind::MultiOneDimensional, 4, {samples});
    d.mcAtX = "3";
    d.mcAtT = "4";
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    for (const auto& m : ui.messages) ADD_FAILURE() << m.title << ": " << m.text;
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    ASSERT_EQ(d.chemMcResult1D.ub(0), 2);
    ASSERT_EQ(d.chemMcResult1D.ub(1), 3);
    const double u1 = testkit::semiInfiniteDirichletReference(1, 0.5, k1, 3, 4);
    const double u2 = testkit::semiInfiniteDirichletReference(1, 0.5, k2, 3, 4);
    for (int m = 1; m <= 3; ++m) {
        const double c1 = samples[m - 1], c2 = 0.5;
        // the daughter: the parent's share y2 k1 / (k2 - k1) (U1 - U2) plus its own source
        const double expected2 = c1 * y2 * k1 / (k2 - k1) * (u1 - u2) + c2 * u2;
        EXPECT_NEAR(d.chemMcResult1D(1, m), c1 * u1, 1e-10);
        EXPECT_NEAR(d.chemMcResult1D(2, m), expected2, 1e-10);
    }
    // the word of the run stands in the point results
    EXPECT_EQ(d.resultsInPoint(1), "Monte Carlo");
}

TEST(ChainSimulation, NoClampOfNegativeIterations) {
    // a negative sample of the daughter's source is carried through
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), {{0.1, 0.2}, {1, 1}, {0, 1}});
    d.suppositionConcentration(2) = chemicalCellMarker("1", 1);
    giveSamples(d, ModelKind::MultiOneDimensional, 3, {{-1, 1}});
    d.mcAtX = "2";
    d.mcAtT = "3";
    ScriptedUserInterface ui;
    ASSERT_TRUE(runCalculation(d, ui).finished);
    for (const auto& m : ui.messages) ADD_FAILURE() << m.title << ": " << m.text;
    const double u2 = testkit::semiInfiniteDirichletReference(1, 0.5, 0.2, 2, 3);
    EXPECT_NEAR(d.chemMcResult1D(2, 1), -u2, 1e-10);
    EXPECT_LT(d.chemMcResult1D(2, 1), 0.0);
    EXPECT_NEAR(d.chemMcResult1D(2, 2), u2, 1e-10);
}

TEST(ChainSimulation, SampledRateIsAHalfLifeToTheSolverAndARateToTheChain) {
    const double k2 = 0.3, y2 = 1;
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), {{0.1, k2}, {1, y2}, {1, 0}});
    d.decayRate(1) = chemicalCellMarker("0.1", 1);
    const double h = 0.05;  // the sample
    giveSamples(d, ModelKind::MultiOneDimensional, 2, {{h}});
    d.mcAtX = "3";
    d.mcAtT = "4";
    ScriptedUserInterface ui;
    ASSERT_TRUE(runCalculation(d, ui).finished);
    const double u1 = testkit::semiInfiniteDirichletReference(1, 0.5, std::numbers::ln2 / h, 3, 4);
    const double u2 = testkit::semiInfiniteDirichletReference(1, 0.5, k2, 3, 4);
    const double z = y2 * h / (k2 - h);
    EXPECT_NEAR(d.chemMcResult1D(1, 1), u1, 1e-10);
    EXPECT_NEAR(d.chemMcResult1D(2, 1), z * u1 - z * u2, 1e-10);
}

TEST(ChainSimulation, StopBetweenChemicalsEndsWithoutCoupling) {
    DataSet d = chainModel(testkit::oneDimModel("Semi-Infinite", "Dirichlet"), {{0.1, 0.2}, {1, 1}, {1, 0}});
    d.suppositionConcentration(1) = chemicalCellMarker("1", 1);
    giveSamples(d, ModelKind::MultiOneDimensional, 4, {{2, 3, 4}});
    d.mcAtX = "3";
    d.mcAtT = "4";
    ScriptedUserInterface ui;
    int steps = 0;
    ui.onProgress = [&](const ScriptedUserInterface::Progress&) {
        if (++steps == 3) d.stopRequestedMulti = true;  // the first chemical's last iteration
    };
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.stopped);
    EXPECT_FALSE(d.stopRequestedMulti);
    EXPECT_EQ(steps, 3);  // the second chemical never started
    // the first chemical's unit solutions, neither scaled by the samples nor coupled
    const double u1 = testkit::semiInfiniteDirichletReference(1, 0.5, 0.1, 3, 4);
    for (int m = 1; m <= 3; ++m) EXPECT_NEAR(d.chemMcResult1D(1, m), u1, 1e-10);
    EXPECT_EQ(d.chemMcResult1D(2, 1), 0.0);
}

TEST(ChainSimulation, VariantsAreTheSharedRowsWithoutHalfLifeThenEachChemicalsValues) {
    for (const KindCase& k : everyKind()) {
        SCOPED_TRACE(k.name);
        DataSet single = k.model;
        std::vector<std::string> expected;
        for (const MonteVariant& v : monteVariantsOf(single))
            if (!(v.field && v.field(single) == &single.halfLife)) expected.push_back(v.name);
        ASSERT_FALSE(expected.empty());
        for (const char* chemical : {"TCE", "DCE"})
            for (const char* value : {"'s Yield Factor", "'s Decay Rate", "'s Concentration"})
                expected.push_back(std::string(chemical) + value);
        DataSet d = chainModel(k.model, {{0.1, 0.2}, {1, 1}, {1, 0}});
        d.chemicalName(1) = "TCE";
        d.chemicalName(2) = " DCE ";
        std::vector<std::string> names;
        for (const MonteVariant& v : monteVariantsOf(d)) names.push_back(v.name);
        EXPECT_EQ(names, expected);
        EXPECT_EQ(names.size() + 1, monteVariantsOf(single).size() + 6);  // one half-life out, six chemical values in
    }
}

TEST(ChemicalCount, BelowOneIsRefusedAndTheCountKept) {
    DataSet d;
    d.numChemicals = 3;
    for (const char* text : {"0", "-2", "x", ""}) {
        ScriptedUserInterface ui;
        EXPECT_FALSE(acceptChemicalCount(d, text, ui));
        ASSERT_EQ(ui.messages.size(), 1u);
        EXPECT_EQ(ui.messages[0].icon, MessageIcon::Exclamation);
        EXPECT_EQ(ui.messages[0].title, "Improper input value");
        EXPECT_EQ(ui.messages[0].text, "'" + std::string(text) +
                                           "' is not a valid input value.\r\rThe number of chemicals must be greater "
                                           "than or equal to 1.");
        EXPECT_EQ(d.numChemicals, 3);
    }
    ScriptedUserInterface ui;
    EXPECT_TRUE(acceptChemicalCount(d, "5", ui));
    EXPECT_EQ(d.numChemicals, 5);
    EXPECT_TRUE(ui.messages.empty());
}

TEST(ChemicalChoice, OkSetsThePositionPlusOneAndTheCommandEndsWithout) {
    DataSet d = chainModel(DataSet{}, {{0.1, 0.2}, {1, 1}, {1, 0}});
    ChemicalChoice choice(d);
    ASSERT_EQ(choice.names(), (std::vector<std::string>{"C1", "C2"}));
    EXPECT_TRUE(pickChemical(d, [&] {
        ChemicalChoice shown(d);
        shown.current = 1;
        shown.ok();
    }));
    EXPECT_EQ(d.selectedChemical, 2);
    EXPECT_FALSE(pickChemical(d, [] {}));
    EXPECT_EQ(d.selectedChemical, 0);
}

}  // namespace
}  // namespace bm
