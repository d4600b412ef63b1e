#include "model/term_grid.h"

#include <algorithm>

namespace bm {

namespace {

const std::string kEmpty;

}  // namespace

const std::string& TermGrid::cell(int row, int column) const {
    if (row < 0 || row >= static_cast<int>(cells.size())) return kEmpty;
    return column == 0 ? cells[static_cast<std::size_t>(row)].time : cells[static_cast<std::size_t>(row)].concentration;
}

void termsToGrid(const DataSet& data, TermGrid& grid) {
    const int n = std::max<int>(1, data.superpositionIndex);
    grid.cells.assign(static_cast<std::size_t>(n), Term{});
    for (int i = 1; i <= n && i <= data.terms.ub(); ++i) grid.cells[static_cast<std::size_t>(i - 1)] = data.terms(i);
}

void gridToTerms(const TermGrid& grid, DataSet& data) {
    const int n = std::max<int>(1, data.superpositionIndex);
    data.terms.redimPreserve(n);
    for (int i = 1; i <= n; ++i) {
        data.terms(i).time = grid.cell(i - 1, 0);
        data.terms(i).concentration = grid.cell(i - 1, 1);
    }
}

}  // namespace bm
