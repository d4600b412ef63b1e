#pragma once
// MCUnsatForm: the unsaturated screen of a decay chain, bound to
// MCUnsatFormModel. It is unsatForm with the number of chemicals in row 14 of
// Text1, the chemicals' table ChemicalInput1TG, the inputs table Input1TG (a
// source per chemical) in place of the terms, and the points table
// grd1DResults of each chemical's concentration at the selected point.

#include "unsaturated/form/mc_unsat_form_model.h"
#include "unsaturated/widgets/unsat_form.h"

namespace bm {

class ChemicalTableView;
class PointResultsView;

class MCUnsatForm : public UnsatForm {
    Q_OBJECT
public:
    MCUnsatForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent = nullptr);

    MCUnsatFormModel& chainModel() { return *chain_; }
    ChemicalTableView* chemicalTable() const { return chemicals_; }
    PointResultsView* resultsTable() const { return results_; }

    void moveFocus(const FocusRequest& focus) override;

protected:
    void addOwnInputs(QVBoxLayout* layout) override;
    void refreshOwnInputs() override;

private:
    MCUnsatFormModel* chain_ = nullptr;
    ChemicalTableView* chemicals_ = nullptr;
    PointResultsView* results_ = nullptr;
};

// Registers MCUnsatForm with the shell's screen registry.
void registerMCUnsatForm();

}  // namespace bm
