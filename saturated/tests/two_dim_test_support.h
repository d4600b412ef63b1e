#pragma once
// Support of the two- and three-dimensional driver tests: the program's points
// file for the tests' runs, the Gauss-Legendre rule built independently of that
// file for calling the libraries directly, inflow terms as numbers, and the
// checks of a run-time error raised or handled.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "model/app_state.h"
#include "model/data_set.h"
#include "model/number_text.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/base/runtime_error.h"
#include "testing/scripted_user_interface.h"
#include "testing/points_file.h"
#include "testing/test_paths.h"
#include "shell/base/raised_error.h"

namespace bm::testkit {

// The 256-point rule computed here, not read from the file.
struct Rule {
    std::vector<double> nodes, weights;
    Rule() { gaussLegendre(256, nodes, weights); }
};
inline const Rule& rule() {
    static const Rule r;
    return r;
}

// One inflow term as numbers.
struct TermValue {
    double time, concentration;
};

// The terms as the screen would leave them: the count and the texts.
inline void setTerms(DataSet& d, const std::vector<TermValue>& terms) {
    d.superpositionIndex = static_cast<std::int16_t>(terms.size());
    d.terms.redim(static_cast<int>(terms.size()));
    for (std::size_t k = 0; k < terms.size(); ++k) {
        d.terms(static_cast<int>(k + 1)).time = formatNumber(terms[k].time);
        d.terms(static_cast<int>(k + 1)).concentration = formatNumber(terms[k].concentration);
    }
}

// Calculate! on the model ends at the error handler with one message box of
// this title; the run is not finished and the controls are given back.
inline void expectHandledError(DataSet& d, const char* title) {
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_FALSE(outcome.finished);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages.front().title, title);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_FALSE(ui.busy);
}

}  // namespace bm::testkit
