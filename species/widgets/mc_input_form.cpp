#include "species/widgets/mc_input_form.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>

#include "shell/widgets/term_grid_view.h"
#include "species/widgets/chemical_table_view.h"

namespace bm {

namespace {

// A widget on a new line at the foot of a tab page, taking the page's spare height.
void addAtFoot(QGridLayout* page, QWidget* widget) {
    int line = page->rowCount();
    // The page ends in an empty stretching line: the widget takes it.
    if (line > 0 && !page->itemAtPosition(line - 1, 0)) --line;
    page->addWidget(widget, line, 0, 1, 4);
    page->setRowStretch(line, 1);
}

}  // namespace

MCInputForm::MCInputForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent)
    : InputForm(std::make_unique<MCInputFormModel>(dataSet, state, ui), ProgressOwner::MultiChemicalForm,
                QStringLiteral("MCInputForm"), parent) {
    chain_ = static_cast<MCInputFormModel*>(&model());
    for (int d = 1; d <= 3; ++d) addTables(d);
}

void MCInputForm::addTables(int d) {
    // The rows a chain does without.
    const auto& rows = chain_->rows(d);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].field != RowField::halfLife && rows[i].field != RowField::superpositionIndex) continue;
        const int index = static_cast<int>(i);
        for (QWidget* w : std::initializer_list<QWidget*>{rowCaption(d, index), rowEntry(d, index), rowUnits(d, index)})
            if (w) w->hide();
    }

    QGridLayout* boundary = tabLayout(d, kBoundaryTab);
    auto* chemicals =
        new ChemicalTableView(QString::fromStdString(ChemicalTables::chemicalTableName(d)), boundary->parentWidget());
    chemicals->setMinimumHeight(150);
    chemicals->beforeEdit = [this, d](int row, int column) {
        return d != chain_->dimension() || chain_->chemicalBeforeEdit(row, column);
    };
    chemicals->edited = [this, d](int row, int column, const std::string& text) {
        if (d == chain_->dimension()) chain_->chemicalEdited(row, column, text);
    };
    chemicals->installEventFilter(this);
    addAtFoot(boundary, chemicals);
    chemicalViews_[static_cast<std::size_t>(d)] = chemicals;
    grid(d)->setMinimumHeight(150);

    QGridLayout* coordinates = tabLayout(d, kCoordinatesTab);
    auto* results =
        new PointResultsView(QString::fromStdString(ChemicalTables::resultsTableName(d)), coordinates->parentWidget());
    results->setMinimumHeight(120);
    addAtFoot(coordinates, results);
    resultViews_[static_cast<std::size_t>(d)] = results;
}

ChemicalTableView* MCInputForm::chemicalTable(int d) const { return chemicalViews_.at(static_cast<std::size_t>(d)); }
PointResultsView* MCInputForm::resultsTable(int d) const { return resultViews_.at(static_cast<std::size_t>(d)); }

void MCInputForm::refreshInputs() {
    InputForm::refreshInputs();
    const int d = chain_->dimension();
    if (d < 1) return;
    const ChemicalTables& tables = chain_->tables();
    chemicalViews_[static_cast<std::size_t>(d)]->showTable(tables);
    resultViews_[static_cast<std::size_t>(d)]->showTable(chain_->pointsTable());
    showChemicalHeadings(grid(d), tables);
}

void MCInputForm::moveFocus(const FocusRequest& focus) {
    if (!focus.chemicalTable) {
        InputForm::moveFocus(focus);
        return;
    }
    QTimer::singleShot(0, this, [this, focus] {
        const int d = focus.dimension;
        if (d < 1 || d > 3) return;
        if (focus.tab >= 0) tabSet(d)->setCurrentIndex(focus.tab);
        focusCell(chemicalViews_[static_cast<std::size_t>(d)], focus);
    });
}

void registerMCInputForm() { registerScreenForm<MCInputForm>(ModelScreen::MCInputForm); }

}  // namespace bm
