// The radicand test: its threshold, its message, and its agreement with the
// square root that the driver takes.

#include <gtest/gtest.h>

#include <cmath>

#include "shell/base/runtime_error.h"
#include "testing/scripted_user_interface.h"
#include "unsat_reference.h"
#include "unsaturated/unsat_parameters.h"
#include "unsaturated/unsat_radicand.h"
#include "unsaturated/unsat_solution.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;

// q 0.5, theta 0.5, Sw 1: V = 1; rho 1, Kd 0.5: R = 2; Dv 1; no decay to speak
// of: the radicand is 1 - 8 gamma, negative above gamma = 0.125.
bool refused(double gamma, ScriptedUserInterface& ui) {
    return unsatRadicandNegative(0.5, 1.0, 1e300, 1.0, 0.5, 0.5, 1.0, gamma, ui);
}

TEST(UnsatRadicand, RefusesWhenVSquaredIsBelowFourDTimesRGammaLessLambda) {
    ScriptedUserInterface ui;
    EXPECT_FALSE(refused(0.124, ui));
    EXPECT_FALSE(refused(0.0, ui));
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_TRUE(refused(0.126, ui));
    ASSERT_EQ(ui.messages.size(), 1u);

    // With degradation: lambda = ln 2 / 10 lowers the bound to gamma = (1 / 4 + lambda) / R.
    const double lambda = std::log(2.0) / 10;
    const double bound = (0.25 + lambda) / 2;
    ScriptedUserInterface ui2;
    EXPECT_FALSE(unsatRadicandNegative(0.5, 1.0, 10, 1.0, 0.5, 0.5, 1.0, bound * 0.999, ui2));
    EXPECT_TRUE(unsatRadicandNegative(0.5, 1.0, 10, 1.0, 0.5, 0.5, 1.0, bound * 1.001, ui2));
}

TEST(UnsatRadicand, MessageWordsTitleIconAndPointer) {
    ScriptedUserInterface ui;
    ui.setBusy(true);
    ASSERT_TRUE(refused(1.0, ui));
    ASSERT_EQ(ui.messages.size(), 1u);
    const MessageRequest& m = ui.messages[0];
    const std::string expected = std::string("During computation of analytical solution the value of expression: ") +
                                 "\r\r" + "[ Vv " + "\xC2\xB2" +
                                 " + 4 * Dv * ( First Order Degration Rate - Source Decay Rate * R ) ]   is less "
                                 "than zero." +
                                 "\r\r" + " The input values must be modified in order to compute the solution.";
    EXPECT_EQ(m.text, expected);
    EXPECT_EQ(m.title, "Improper input data");
    EXPECT_EQ(m.icon, MessageIcon::Exclamation);
    EXPECT_EQ(m.buttons, MessageButtons::Ok);
    // the pointer went back to normal before the box
    ASSERT_EQ(ui.busyCalls.size(), 2u);
    EXPECT_FALSE(ui.busyCalls[1]);
    EXPECT_FALSE(ui.busy);
}

TEST(UnsatRadicand, ZeroPoreSpaceOrHalfLifeIsADivisionFault) {
    ScriptedUserInterface ui;
    EXPECT_THROW(unsatRadicandNegative(0.5, 1.0, 10, 1.0, 0.5, 0.0, 1.0, 0.1, ui), RuntimeError);
    EXPECT_THROW(unsatRadicandNegative(0.5, 1.0, 0.0, 1.0, 0.5, 0.5, 1.0, 0.1, ui), RuntimeError);
    EXPECT_TRUE(ui.messages.empty());
}

TEST(UnsatRadicand, AgreesInSignWithTheDriversSquareRoot) {
    testkit::UnsatInputs in;
    in.constantInlet = false;
    for (double gamma = 0.0; gamma <= 0.05; gamma += 0.0025) {
        in.gamma = gamma;
        DataSet d = testkit::unsatModel(in, "0:2:1", "0:10:5");
        UnsatParameters p;
        fillUnsatParameters(d, p, false, 0);
        ScriptedUserInterface ui;
        const bool negative = unsatRadicandNegative(p.percolationRate, p.dispersion, p.halfLife, p.bulkDensity,
                                                    p.distributionCoefficient, p.porosity, p.saturation,
                                                    p.sourceDecayRate, ui);
        bool fault = false;
        try {
            solveUnsaturated(d, p, false, ui);
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.number(), err::InvalidProcedureCall);
            fault = true;
        }
        EXPECT_EQ(negative, fault) << "gamma " << gamma;
    }
}

}  // namespace
}  // namespace bm
