#pragma once
// Input1TG, Input2TG, Input3TG: the grid of inflow terms, time and
// concentration. A cell whose text holds a marker carries the grid's named
// style ("MonteCarloStyle1"...), drawn red, and cannot be edited.

#include <QTableWidget>
#include <functional>

#include "model/term_grid.h"

namespace bm {

// A table whose cells ask before they go into edit mode.
class GatedTable : public QTableWidget {
    Q_OBJECT
public:
    using QTableWidget::QTableWidget;
    // Asked before a cell goes into edit mode; false cancels the edit.
    std::function<bool(int row, int column)> beforeEdit;
    // The named style of a cell, empty for the plain style.
    QString cellStyle(int row, int column) const;
    // The editors of a column take numbers only (the common key filter).
    void takeNumbersIn(int column);

protected:
    // A cell's text, or for a cell in a named style its visible word "Monte Carlo" drawn red.
    void showCell(int row, int column, const std::string& text, const std::string& style);
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
};

class TermGridView : public GatedTable {
    Q_OBJECT
public:
    explicit TermGridView(const QString& name, QWidget* parent = nullptr);
    // Shows the grid of the form model (headings, cells, styles).
    void showGrid(const TermGrid& grid, const std::function<std::string(int, int)>& styleOf);
    static QColor styleColour() { return QColor(255, 0, 0); }
};

}  // namespace bm
