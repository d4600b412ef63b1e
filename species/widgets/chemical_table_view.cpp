#include "species/widgets/chemical_table_view.h"

#include <QHeaderView>

#include "shell/widgets/term_grid_view.h"

namespace bm {

namespace {

QTableWidgetItem* cellItem(QTableWidget& table, int row, int column) {
    QTableWidgetItem* it = table.item(row, column);
    if (!it) {
        it = new QTableWidgetItem;
        table.setItem(row, column, it);
    }
    return it;
}

}  // namespace

ChemicalTableView::ChemicalTableView(const QString& name, QWidget* parent) : GatedTable(parent) {
    setObjectName(name);
    setColumnCount(kChemicalColumns);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    horizontalHeader()->setSectionResizeMode(1, QHeaderView::Interactive);
    horizontalHeader()->setSectionResizeMode(2, QHeaderView::Interactive);
    horizontalHeader()->resizeSection(1, 170);
    horizontalHeader()->resizeSection(2, 150);
    verticalHeader()->setDefaultSectionSize(24);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    // A name is free text; rates and yields are numbers.
    takeNumbersIn(static_cast<int>(ChemicalColumn::Rate));
    takeNumbersIn(static_cast<int>(ChemicalColumn::Yield));
    connect(this, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (edited) edited(item->row(), item->column(), item->text().toStdString());
    });
}

void ChemicalTableView::showTable(const ChemicalTables& tables) {
    const QSignalBlocker block(this);
    setHorizontalHeaderLabels({QString::fromStdString(tables.nameHeading), QString::fromStdString(tables.rateHeading),
                               QString::fromStdString(tables.yieldHeading)});
    if (rowCount() != tables.count()) setRowCount(tables.count());
    for (int r = 0; r < tables.count(); ++r)
        for (int c = 0; c < kChemicalColumns; ++c) showCell(r, c, tables.chemicalCell(r, c), tables.chemicalStyle(r, c));
}

PointResultsView::PointResultsView(const QString& name, QWidget* parent) : QTableWidget(parent) {
    setObjectName(name);
    setColumnCount(2);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    verticalHeader()->setDefaultSectionSize(24);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::NoSelection);
}

void showChemicalHeadings(QTableWidget* inputs, const ChemicalTables& tables) {
    QStringList names;
    for (const ChemicalRow& r : tables.chemicals) names << QString::fromStdString(r.name);
    inputs->setVerticalHeaderLabels(names);
}

void PointResultsView::showTable(const PointResultsTable& table) {
    setHorizontalHeaderLabels(
        {QString::fromStdString(table.chemicalHeading), QString::fromStdString(table.concentrationHeading)});
    const int rows = static_cast<int>(table.rows.size());
    if (rowCount() != rows) setRowCount(rows);
    for (int r = 0; r < rows; ++r) {
        cellItem(*this, r, 0)->setText(QString::fromStdString(table.rows[static_cast<std::size_t>(r)].first));
        cellItem(*this, r, 1)->setText(QString::fromStdString(table.rows[static_cast<std::size_t>(r)].second));
    }
}

}  // namespace bm
