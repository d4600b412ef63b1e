#pragma once
// ChemicalInput1TG, ChemicalInput2TG, ChemicalInput3TG: the chemicals' table
// of a decay chain (name, decay rate, yield factor per chemical), bound to
// ChemicalTables; and grd1DResults ...: the read-only points table of the
// results. A cell whose text holds a marker carries the table's named style
// ("MonteCarloStyle4" ...), drawn red, and cannot be edited.

#include <QTableWidget>
#include <functional>

#include "shell/widgets/term_grid_view.h"
#include "species/form/chemical_tables.h"

namespace bm {

class ChemicalTableView : public GatedTable {
    Q_OBJECT
public:
    explicit ChemicalTableView(const QString& name, QWidget* parent = nullptr);
    // A cell typed into.
    std::function<void(int row, int column, const std::string& text)> edited;
    // Shows the chemicals' table (headings, cells, styles).
    void showTable(const ChemicalTables& tables);
};

// The inputs table of a chain has a row per chemical: its row headings name them.
void showChemicalHeadings(QTableWidget* inputs, const ChemicalTables& tables);

class PointResultsView : public QTableWidget {
    Q_OBJECT
public:
    explicit PointResultsView(const QString& name, QWidget* parent = nullptr);
    void showTable(const PointResultsTable& table);
};

}  // namespace bm
