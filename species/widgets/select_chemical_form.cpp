#include "species/widgets/select_chemical_form.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace bm {

SelectChemicalForm::SelectChemicalForm(ChemicalChoice& choice, QWidget* parent) : QDialog(parent), choice_(choice) {
    setObjectName(QStringLiteral("SelectChemicalForm"));
    setWindowTitle(QString::fromLatin1(kSelectChemicalCaption));
    setModal(true);
    auto* layout = new QVBoxLayout(this);
    list_ = new QComboBox(this);
    list_->setObjectName(QStringLiteral("cmbChemicals"));
    for (const std::string& name : choice.names()) list_->addItem(QString::fromStdString(name));
    list_->setCurrentIndex(choice.names().empty() ? -1 : 0);
    layout->addWidget(list_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* okButton = new QPushButton(QStringLiteral("&OK"), this);
    okButton->setObjectName(QStringLiteral("cmdOK"));
    okButton->setDefault(true);
    auto* cancelButton = new QPushButton(QStringLiteral("&Cancel"), this);
    cancelButton->setObjectName(QStringLiteral("cmdCancel"));
    buttons->addWidget(okButton);
    buttons->addWidget(cancelButton);
    layout->addLayout(buttons);
    connect(okButton, &QPushButton::clicked, this, [this] {
        choice_.current = list_->currentIndex();
        choice_.ok();
        accept();
    });
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    resize(300, 110);
}

void showSelectChemicalForm(DataSet& data, QWidget* parent) {
    ChemicalChoice choice(data);
    SelectChemicalForm form(choice, parent);
    form.exec();
}

bool pickChemicalOnScreen(DataSet& data, QWidget* parent) {
    return pickChemical(data, [&] { showSelectChemicalForm(data, parent); });
}

}  // namespace bm
