#include "shell/widgets/new_model_dialogs.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "model/data_set.h"
#include "shell/help_context.h"
#include "shell/widgets/help_viewer.h"

namespace bm {

OptionFrame::OptionFrame(const QString& title, const QString& frameName, const QString& optionName,
                         OptionGroup& group, int buttonCount, QWidget* parent)
    : QGroupBox(title, parent), group_(group) {
    setObjectName(frameName);
    auto* layout = new QVBoxLayout(this);
    for (int i = 0; i < buttonCount; ++i) {
        auto* b = new QRadioButton(this);
        b->setObjectName(QStringLiteral("%1(%2)").arg(optionName).arg(i));
        layout->addWidget(b);
        buttons_ << b;
        connect(b, &QRadioButton::toggled, this, [this, i](bool on) {
            if (!on || group_.selected == i) return;
            group_.selected = i;
            emit chosen(i);
        });
    }
    refresh();
}

void OptionFrame::refresh() {
    for (int i = 0; i < buttons_.size(); ++i) {
        QRadioButton* b = buttons_.at(i);
        const bool offered = i < static_cast<int>(group_.captions.size());
        b->setVisible(offered);
        if (offered) b->setText(QString::fromStdString(group_.captions[static_cast<std::size_t>(i)]));
    }
    if (QRadioButton* b = buttons_.value(group_.selected)) {
        const QSignalBlocker block(b);
        b->setChecked(true);
    }
}

NewModelDialogBase::NewModelDialogBase(QWidget* parent) : QDialog(parent) {}

void NewModelDialogBase::finishLayout() {
    auto* outer = qobject_cast<QVBoxLayout*>(layout());
    auto* bar = new QMenuBar(this);
    auto* file = bar->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("menuFile"));
    auto* ret = file->addAction(QStringLiteral("&Return to Main Window"));
    ret->setObjectName(QStringLiteral("menuFileReturn"));
    auto* ext = file->addAction(QStringLiteral("E&xit"));
    ext->setObjectName(QStringLiteral("menuFileExt"));
    connect(ret, &QAction::triggered, this, &QDialog::reject);
    connect(ext, &QAction::triggered, this, &QDialog::reject);
    auto* helpAction = bar->addAction(QStringLiteral("&Help"));
    helpAction->setObjectName(QStringLiteral("menuHelp"));
    connect(helpAction, &QAction::triggered, this, &NewModelDialogBase::showDialogHelp);
    outer->setMenuBar(bar);

    auto* buttons = new QDialogButtonBox(this);
    auto* ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("okCB"));
    auto* cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("cancelCB"));
    connect(ok, &QPushButton::clicked, this, [this] {
        confirm();
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    outer->addWidget(buttons);
}

void NewModelDialogBase::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        showDialogHelp();
        return;
    }
    QDialog::keyPressEvent(event);
}

void NewModelDialogBase::showDialogHelp() { showHelp(HelpCommand::Context, help::NewModel, this); }

NewFileDialog::NewFileDialog(QWidget* parent) : NewModelDialogBase(parent) {
    setObjectName(QStringLiteral("NewFile"));
    setWindowTitle(QString::fromLatin1(NewFileForm::kCaption));
    form_.load(theDataSet());
    auto* outer = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    modelType_ = new OptionFrame(QStringLiteral("Model Type"), QStringLiteral("MT_Frame"), QStringLiteral("Model_Type"),
                                 form_.modelType, 3, this);
    aquifer_ = new OptionFrame(QStringLiteral("Aquifer Type"), QStringLiteral("AT_Frame"), QStringLiteral("Aquifer_Type"),
                               form_.aquiferType, 2, this);
    contaminant_ = new OptionFrame(QStringLiteral("Contaminant"), QStringLiteral("Contam_Frame"),
                                   QStringLiteral("Contaminant"), form_.contaminant, 3, this);
    chemicals_ = new OptionFrame(QStringLiteral("Chemicals"), QStringLiteral("Frame1"), QStringLiteral("optChemicals"),
                                 form_.chemicals, 2, this);
    grid->addWidget(modelType_, 0, 0);
    grid->addWidget(chemicals_, 0, 1);
    grid->addWidget(aquifer_, 1, 0);
    grid->addWidget(contaminant_, 1, 1);
    outer->addLayout(grid);
    connect(modelType_, &OptionFrame::chosen, this, [this](int index) {
        form_.selectModelType(index);
        aquifer_->refresh();
        contaminant_->refresh();
    });
    finishLayout();
}

void NewFileDialog::confirm() { form_.ok(theDataSet()); }

UnsaturatedNewFileDialog::UnsaturatedNewFileDialog(QWidget* parent) : NewModelDialogBase(parent) {
    setObjectName(QStringLiteral("unsaturatedNewFile"));
    setWindowTitle(QString::fromLatin1(UnsaturatedNewFileForm::kCaption));
    form_.load(theDataSet());
    auto* outer = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    row->addWidget(new OptionFrame(QStringLiteral("Chemicals"), QStringLiteral("Frame1"), QStringLiteral("optChemicals"),
                                   form_.chemicals, 2, this));
    row->addWidget(new OptionFrame(QStringLiteral("Aquifer Type"), QStringLiteral("AT_Frame"),
                                   QStringLiteral("Aquifer_Type"), form_.aquiferType, 2, this));
    row->addWidget(new OptionFrame(QStringLiteral("Contaminant"), QStringLiteral("Contam_Frame"),
                                   QStringLiteral("Contaminant"), form_.contaminant, 2, this));
    outer->addLayout(row);
    finishLayout();
}

void UnsaturatedNewFileDialog::confirm() { form_.ok(theDataSet()); }

TimeVaryingNewDialog::TimeVaryingNewDialog(QWidget* parent) : NewModelDialogBase(parent) {
    setObjectName(QStringLiteral("timeVaryingNewForm"));
    setWindowTitle(QString::fromLatin1(TimeVaryingNewForm::kCaption));
    form_.load(theDataSet());
    auto* outer = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    row->addWidget(new OptionFrame(QStringLiteral("Contaminant Source"), QStringLiteral("contaminantSourceF"),
                                   QStringLiteral("contaminantSourceO"), form_.contaminantSource, 2, this));
    row->addWidget(new OptionFrame(QStringLiteral("Source Type"), QStringLiteral("sourceTypeF"),
                                   QStringLiteral("sourceTypeO"), form_.sourceType, 3, this));
    row->addWidget(new OptionFrame(QStringLiteral("Dispersion Coefficient Function"),
                                   QStringLiteral("DispersionCoefficientFunctionF"),
                                   QStringLiteral("DispersionCoefficientFunctionO"), form_.dispersionFunction, 4, this));
    outer->addLayout(row);
    finishLayout();
}

void TimeVaryingNewDialog::confirm() { form_.ok(theDataSet()); }

}  // namespace bm
