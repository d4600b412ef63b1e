#pragma once
// The simulation screen as a user works it in a test: rows picked and typed,
// Generate, a double click on the wanted column of each row, Exit.

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kernels/kernmc.h"
#include "montecarlo/monte_carlo_form_model.h"
#include "montecarlo/pass/monte_setup.h"

namespace bm::testkit {

struct UserOnTheScreen {
    struct Row {
        std::string variant, minimum, maximum, variance, terms, distribution;
        int column;  // the result column double-clicked (0: all samples)
    };
    std::vector<Row> rows;
    std::uint64_t seed = 1;

    void operator()(DataSet& data, UserInterface& ui) const {
        std::optional<MonteCarloSetup> setup = monteCarloSetup(data);
        ASSERT_TRUE(setup.has_value());
        MonteCarloFormModel form(data, ui, std::move(*setup));
        form.load();
        int r = 1;
        for (const Row& row : rows) {
            form.inputCellEdited(r, 0, row.variant);
            form.inputCellEdited(r, 2, row.minimum);
            form.inputCellEdited(r, 3, row.maximum);
            form.inputCellEdited(r, 4, row.variance);
            if (!row.terms.empty()) form.inputCellEdited(r, 5, row.terms);
            form.inputCellEdited(r, 6, row.distribution);
            ++r;
        }
        seedMonteCarlo(seed);
        form.generate();
        r = 1;
        for (const Row& row : rows) form.resultDoubleClicked(r++, row.column);
        form.exit();
    }
};

}  // namespace bm::testkit
