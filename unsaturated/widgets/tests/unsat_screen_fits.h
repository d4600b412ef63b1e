#pragma once
// What a picture of an unsaturated screen must show whole: every row in use
// (a caption wraps rather than being cut, so every word fits its width; the
// unit fits; the entry is wide enough to read) and the inflow grid's headings.

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>

#include "shell/widgets/term_grid_view.h"
#include "unsaturated/widgets/unsat_form.h"

namespace bm::testkit {

inline void expectNothingCut(UnsatForm& form) {
    for (int i = 0; i < unsatrow::Count; ++i) {
        if (!form.model().row(i).inUse) continue;
        QLabel* caption = form.rowCaption(i);
        for (const QString& word : caption->text().split(u' ', Qt::SkipEmptyParts))
            EXPECT_GE(caption->width(), caption->fontMetrics().horizontalAdvance(word)) << i;
        QLabel* unit = form.rowUnits(i);
        EXPECT_GE(unit->width(), unit->fontMetrics().horizontalAdvance(unit->text())) << i;
        EXPECT_GE(form.rowEntry(i)->width(), 100) << i;
    }
    TermGridView* grid = form.grid();
    for (int c = 0; c < grid->columnCount(); ++c)
        EXPECT_GE(grid->columnWidth(c), grid->horizontalHeader()->fontMetrics().horizontalAdvance(
                                            grid->horizontalHeaderItem(c)->text()))
            << c;
}

}  // namespace bm::testkit
