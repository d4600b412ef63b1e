#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>

#include "species/widgets/select_chemical_form.h"
#include "testing/qt_test_support.h"

using namespace bm;

namespace {

DataSet threeChemicals() {
    DataSet d;
    d.multiChemical = true;
    d.numChemicals = 3;
    d.chemicalName.redim(3);
    d.chemicalName(1) = "TCE";
    d.chemicalName(2) = "DCE";
    d.chemicalName(3) = "VC";
    return d;
}

}  // namespace

TEST(SelectChemicalForm, ListsTheChemicalsAndOkSetsThePositionPlusOne) {
    DataSet d = threeChemicals();
    ChemicalChoice choice(d);
    SelectChemicalForm form(choice);
    EXPECT_EQ(form.windowTitle(), "Select Chemical");
    QComboBox* list = form.findChild<QComboBox*>("cmbChemicals");
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->itemText(2), "VC");
    EXPECT_EQ(list->currentIndex(), 0);
    list->setCurrentIndex(1);
    form.findChild<QPushButton*>("cmdOK")->click();
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(d.selectedChemical, 2);
}

TEST(SelectChemicalForm, CancelLeavesNoChemicalAndTheCommandEnds) {
    DataSet d = threeChemicals();
    d.selectedChemical = 3;
    qtest::onModal("SelectChemicalForm", [](QWidget* form) { form->findChild<QPushButton*>("cmdCancel")->click(); });
    EXPECT_FALSE(pickChemicalOnScreen(d, nullptr));
    EXPECT_EQ(d.selectedChemical, 0);
}

TEST(SelectChemicalForm, OkInTheModalPickerChoosesForTheCommand) {
    DataSet d = threeChemicals();
    qtest::onModal("SelectChemicalForm", [](QWidget* form) {
        qtest::saveShot(form, "SelectChemicalForm");
        static_cast<SelectChemicalForm*>(form)->list()->setCurrentIndex(2);
        form->findChild<QPushButton*>("cmdOK")->click();
    });
    EXPECT_TRUE(pickChemicalOnScreen(d, nullptr));
    EXPECT_EQ(d.selectedChemical, 3);
}
