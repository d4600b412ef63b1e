#pragma once
// Input1TG, Input2TG, Input3TG: the grid of inflow terms, time and
// concentration. A cell whose text holds a marker carries the grid's named
// style ("MonteCarloStyle1"...), drawn red, and cannot be edited.

#include <QTableWidget>
#include <functional>

#include "model/term_grid.h"

namespace bm {

class TermGridView : public QTableWidget {
    Q_OBJECT
public:
    explicit TermGridView(const QString& name, QWidget* parent = nullptr);
    // Asked before a cell goes into edit mode; false cancels the edit.
    std::function<bool(int row, int column)> beforeEdit;
    // Shows the grid of the form model (headings, cells, styles).
    void showGrid(const TermGrid& grid, const std::function<std::string(int, int)>& styleOf);
    // The named style of a cell, empty for the plain style.
    QString cellStyle(int row, int column) const;
    static QColor styleColour() { return QColor(255, 0, 0); }

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
};

}  // namespace bm
