#pragma once
// SelectChemicalForm: the modal picker of a chain's chemical (cmbChemicals).

#include <QDialog>

#include "species/chain/chemical_choice.h"

class QComboBox;

namespace bm {

class SelectChemicalForm : public QDialog {
    Q_OBJECT
public:
    explicit SelectChemicalForm(ChemicalChoice& choice, QWidget* parent = nullptr);
    QComboBox* list() const { return list_; }

private:
    ChemicalChoice& choice_;
    QComboBox* list_;
};

// The picker shown modally over `parent`: OK sets selectedChemical.
void showSelectChemicalForm(DataSet& data, QWidget* parent);
// pickChemical with the picker shown over `parent`.
bool pickChemicalOnScreen(DataSet& data, QWidget* parent);

}  // namespace bm
