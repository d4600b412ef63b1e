#include "shell/widgets/preferences_dialog.h"

#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "shell/base/user_interface.h"

namespace bm {

namespace {
const char* const kRowTitles[] = {"Text Editor", "Chemical Database", "Temporary Directory",
                                  "Air/Soil Models Data", "Ground Water Models Data", "Surface Water Models Data"};
}

PreferencesDialog::PreferencesDialog(AppState& state, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("statusForm"));
    setWindowTitle(QString::fromLatin1(PreferencesForm::kCaption));
    form_ = std::make_unique<PreferencesForm>(state, ui(), [this](const std::string& title, const std::string& current) {
        const QString chosen = QFileDialog::getExistingDirectory(this, QString::fromStdString(title),
                                                                 QString::fromStdString(current),
                                                                 QFileDialog::DontUseNativeDialog);
        return chosen.isEmpty() ? std::string(PreferencesForm::kDirectoryCancelled) : chosen.toStdString();
    });

    auto* outer = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    for (int r = 0; r < PreferencesForm::RowCount; ++r) {
        const auto row = static_cast<PreferencesForm::Row>(r);
        auto* label = new QLabel(QString::fromLatin1(kRowTitles[r]), this);
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QStringLiteral("pathTB(%1)").arg(r));
        edit->setMinimumWidth(380);
        edit->setProperty("helpLine", QString::fromLatin1(PreferencesForm::rowHelpLine(row)));
        edit->installEventFilter(this);
        auto* button = new QPushButton(QStringLiteral("..."), this);
        button->setObjectName(QStringLiteral("pathCB(%1)").arg(r));
        button->setProperty("helpLine", QString::fromLatin1(PreferencesForm::helpLine(row)));
        button->setToolTip(QString::fromLatin1(PreferencesForm::helpLine(row)));
        button->installEventFilter(this);
        grid->addWidget(label, r, 0);
        grid->addWidget(edit, r, 1);
        grid->addWidget(button, r, 2);
        rows_ << edit;
        connect(edit, &QLineEdit::textEdited, this,
                [this, row](const QString& text) { form_->setValue(row, text.toStdString()); });
        connect(button, &QPushButton::clicked, this, [this, row] {
            form_->clickButton(row);
            refresh();
        });
    }
    outer->addLayout(grid);

    auto* utility = new QGroupBox(QStringLiteral("Plotting Utility"), this);
    utility->setObjectName(QStringLiteral("plotUtilityF"));
    auto* utilityLayout = new QHBoxLayout(utility);
    original_ = new QRadioButton(QStringLiteral("Original version"), utility);
    original_->setObjectName(QStringLiteral("optTrazel(0)"));
    original_->setProperty("helpLine", QStringLiteral("Select original version by clicking radio button"));
    newer_ = new QRadioButton(QStringLiteral("New version"), utility);
    newer_->setObjectName(QStringLiteral("optTrazel(1)"));
    newer_->setProperty("helpLine", QStringLiteral("Select new version by clicking radio button"));
    for (QRadioButton* b : {original_, newer_}) {
        b->installEventFilter(this);
        utilityLayout->addWidget(b);
    }
    connect(original_, &QRadioButton::clicked, this, [this] { form_->choosePlotUtility(0); });
    connect(newer_, &QRadioButton::clicked, this, [this] { form_->choosePlotUtility(1); });
    outer->addWidget(utility);

    auto* spaceRow = new QHBoxLayout;
    spaceRow->addWidget(new QLabel(QStringLiteral("Free space on the current disk:"), this));
    freeSpace_ = new QLabel(this);
    freeSpace_->setObjectName(QStringLiteral("freeSpaceL"));
    spaceRow->addWidget(freeSpace_);
    spaceRow->addStretch();
    outer->addLayout(spaceRow);

    helpLine_ = new QLabel(this);
    helpLine_->setObjectName(QStringLiteral("helpLineL"));
    helpLine_->setFrameShape(QFrame::Panel);
    helpLine_->setFrameShadow(QFrame::Sunken);
    outer->addWidget(helpLine_);

    auto* buttons = new QHBoxLayout;
    auto* save = new QPushButton(QStringLiteral("&Save"), this);
    save->setObjectName(QStringLiteral("saveCB"));
    save->setProperty("helpLine", QStringLiteral("Save changes to preferences"));
    save->setToolTip(QStringLiteral("Save changes to preferences"));
    save->installEventFilter(this);
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setObjectName(QStringLiteral("closeCB"));
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(close);
    outer->addLayout(buttons);
    connect(save, &QPushButton::clicked, this, [this] { form_->save(); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    refresh();
}

void PreferencesDialog::refresh() {
    for (int r = 0; r < rows_.size(); ++r) {
        const QString v = QString::fromStdString(form_->value(static_cast<PreferencesForm::Row>(r)));
        if (rows_[r]->text() != v) rows_[r]->setText(v);
    }
    (form_->plotUtilityChoice() == 1 ? newer_ : original_)->setChecked(true);
    freeSpace_->setText(QString::fromStdString(form_->freeSpaceText()));
}

QString PreferencesDialog::helpLine() const { return helpLine_->text(); }

bool PreferencesDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::FocusIn) {
        const QVariant line = watched->property("helpLine");
        if (line.isValid()) helpLine_->setText(line.toString());
    }
    return QDialog::eventFilter(watched, event);
}

void PreferencesDialog::done(int result) {
    form_->leave();
    QDialog::done(result);
}

}  // namespace bm
