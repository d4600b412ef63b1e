#include "unsaturated/widgets/mc_unsat_form.h"

#include <QGroupBox>
#include <QTimer>
#include <QVBoxLayout>

#include "species/widgets/chemical_table_view.h"

namespace bm {

MCUnsatForm::MCUnsatForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent)
    : UnsatForm(std::make_unique<MCUnsatFormModel>(dataSet, state, ui), QStringLiteral("MCUnsatForm"), parent) {
    chain_ = static_cast<MCUnsatFormModel*>(&model());
    build(ProgressOwner::MultiUnsaturatedForm);
    chemicals_->beforeEdit = [this](int row, int column) { return chain_->chemicalBeforeEdit(row, column); };
    chemicals_->edited = [this](int row, int column, const std::string& text) { chain_->chemicalEdited(row, column, text); };
}

void MCUnsatForm::addOwnInputs(QVBoxLayout* layout) {
    auto* box = new QGroupBox(QStringLiteral("Chemicals"));
    auto* inner = new QVBoxLayout(box);
    chemicals_ = new ChemicalTableView(QString::fromStdString(ChemicalTables::chemicalTableName(1)), box);
    chemicals_->setMinimumHeight(140);
    chemicals_->installEventFilter(this);
    inner->addWidget(chemicals_);
    results_ = new PointResultsView(QString::fromStdString(ChemicalTables::resultsTableName(1)), box);
    results_->setMinimumHeight(110);
    inner->addWidget(results_);
    layout->addWidget(box, 1);
}

void MCUnsatForm::refreshOwnInputs() {
    if (!chain_) return;  // still being built
    const ChemicalTables& tables = chain_->tables();
    chemicals_->showTable(tables);
    results_->showTable(chain_->pointsTable());
    showChemicalHeadings(grid(), tables);
}

void MCUnsatForm::moveFocus(const FocusRequest& focus) {
    if (!focus.chemicalTable) {
        UnsatForm::moveFocus(focus);
        return;
    }
    QTimer::singleShot(0, this, [this, focus] { focusCell(chemicals_, focus); });
}

void registerMCUnsatForm() { registerScreenForm<MCUnsatForm>(ModelScreen::MCUnsatForm); }

}  // namespace bm
