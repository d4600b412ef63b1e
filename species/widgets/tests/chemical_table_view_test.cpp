#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

#include "species/widgets/chemical_table_view.h"
#include "testing/qt_test_support.h"
#include "testing/scripted_user_interface.h"

using namespace bm;
using bm::qtest::settle;

namespace {

const std::string kMarker = std::string(15, ' ') + "Monte Carlo" + std::string(50, ' ') + "|0.2: 3";

ChemicalTables twoChemicals() {
    ChemicalTables t;
    t.resize(2);
    t.chemicals = {{"TCE", "0.1", "1"}, {"DCE", kMarker, "0.5"}};
    return t;
}

// The view bound to its tables as the screen binds it, shown.
struct BoundView {
    ChemicalTables tables = twoChemicals();
    testkit::ScriptedUserInterface ui;
    ChemicalTableView view{QStringLiteral("ChemicalInput1TG")};
    BoundView() {
        view.beforeEdit = [this](int r, int c) { return tables.chemicalBeforeEdit(r, c, ui); };
        view.edited = [this](int r, int c, const std::string& text) { tables.chemicalEdited(r, c, text); };
        view.showTable(tables);
        view.resize(600, 200);
        view.show();
        settle();
    }
};

}  // namespace

TEST(ChemicalTableView, ShowsTheTableWithItsHeadingsAndMarkerCellsInTheStyle) {
    ChemicalTables t = twoChemicals();
    t.setUnitHeadings("day");
    ChemicalTableView view(QString::fromStdString(ChemicalTables::chemicalTableName(1)));
    view.showTable(t);
    EXPECT_EQ(view.objectName(), "ChemicalInput1TG");
    ASSERT_EQ(view.rowCount(), 2);
    ASSERT_EQ(view.columnCount(), 3);
    EXPECT_EQ(view.horizontalHeaderItem(0)->text(), "Chemical Name");
    EXPECT_EQ(view.horizontalHeaderItem(1)->text(), "Decay Rate (1/day)");
    EXPECT_EQ(view.horizontalHeaderItem(2)->text(), "Yield Factor (M/M)");
    EXPECT_EQ(view.item(0, 0)->text(), "TCE");
    EXPECT_EQ(view.item(1, 1)->text(), "Monte Carlo");  // the marker shows its visible word
    EXPECT_EQ(view.cellStyle(1, 1), "MonteCarloStyle4");
    EXPECT_EQ(view.item(1, 1)->foreground().color(), QColor(255, 0, 0));
    EXPECT_EQ(view.cellStyle(1, 2), "");

    t.resize(4);  // the table follows the count
    view.showTable(t);
    EXPECT_EQ(view.rowCount(), 4);
    t.resize(1);
    view.showTable(t);
    EXPECT_EQ(view.rowCount(), 1);
    EXPECT_EQ(view.item(0, 0)->text(), "TCE");
}

TEST(ChemicalTableView, EditsGoToTheTablesAndAMarkerCellRefusesTheEdit) {
    BoundView bound;
    ChemicalTables& t = bound.tables;
    testkit::ScriptedUserInterface& ui = bound.ui;
    ChemicalTableView& view = bound.view;

    view.setCurrentCell(1, 1);
    view.editItem(view.item(1, 1));
    EXPECT_EQ(view.viewport()->findChild<QLineEdit*>(), nullptr);  // no editor opened
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Read Only");

    view.item(0, 1)->setText(QStringLiteral("0.15"));
    EXPECT_EQ(t.chemicals[0].rate, "0.15");
    view.setCurrentCell(1, 0);
    view.editItem(view.item(1, 0));
    settle();
    QLineEdit* editor = view.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(ui.messages.size(), 1u);
}

TEST(PointResultsView, ShowsEachChemicalsNameAndResult) {
    PointResultsTable table;
    table.concentrationHeading = "Conc. (mg/l)";
    table.rows = {{"TCE", "0.5"}, {"DCE", "Monte Carlo"}};
    PointResultsView view(QStringLiteral("grd1DResults"));
    view.showTable(table);
    ASSERT_EQ(view.rowCount(), 2);
    EXPECT_EQ(view.horizontalHeaderItem(0)->text(), "Chemical");
    EXPECT_EQ(view.horizontalHeaderItem(1)->text(), "Conc. (mg/l)");
    EXPECT_EQ(view.item(1, 0)->text(), "DCE");
    EXPECT_EQ(view.item(1, 1)->text(), "Monte Carlo");
    EXPECT_EQ(view.editTriggers(), QAbstractItemView::NoEditTriggers);
}

TEST(ChemicalTableView, NamesAreFreeTextAndRatesAndYieldsTakeNumbersOnly) {
    BoundView bound;
    ChemicalTables& t = bound.tables;
    ChemicalTableView& view = bound.view;
    const auto typeInto = [&](int row, int column, const QString& keys) {
        view.setFocus();
        view.setCurrentCell(row, column);
        view.editItem(view.item(row, column));
        settle();
        QLineEdit* editor = view.viewport()->findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, keys);
        QTest::keyClick(editor, Qt::Key_Return);
        settle();
    };
    typeInto(0, 0, QStringLiteral("PCE 2"));
    EXPECT_EQ(t.chemicals[0].name, "PCE 2");
    typeInto(0, 1, QStringLiteral("x0y.05"));
    EXPECT_EQ(t.chemicals[0].rate, "0.05");
    typeInto(1, 2, QStringLiteral("a0.7b"));
    EXPECT_EQ(t.chemicals[1].yield, "0.7");
}
