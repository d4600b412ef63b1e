#include "timevarying/widgets/merla_form.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "model/data_set.h"
#include "shell/widgets/model_screens.h"

namespace bm {

namespace {

const char* const kRowProperty = "bmRow";

QString q(const std::string& s) { return QString::fromStdString(s); }

}  // namespace

MerlaForm::MerlaForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent)
    : ModelScreenDialog(parent), model_(std::make_unique<MerlaFormModel>(dataSet, state, ui)) {
    setObjectName(QStringLiteral("merlaform"));
    QVBoxLayout* outer = attach(*model_, ProgressOwner::TimeVaryingForm);
    addCaptions(outer);

    mainElastic_ = new QWidget(this);
    mainElastic_->setObjectName(QStringLiteral("mainElastic"));
    auto* mainLayout = new QVBoxLayout(mainElastic_);
    mainLayout->setContentsMargins(0, 4, 0, 0);
    tabs_ = new QTabWidget(mainElastic_);
    tabs_->setObjectName(QStringLiteral("TabElastic"));
    tabs_->addTab(buildInputs(), QStringLiteral("Input &Data"));
    mainLayout->addWidget(tabs_);
    outer->addWidget(mainElastic_, 1);
    mainElastic_->installEventFilter(this);

    addStatusLine(outer);
    resize(1280, 760);
}

void MerlaForm::addRow(int index, QGridLayout* layout, int line) {
    const bool result = model_->row(index).result;
    const InputRowWidgets made =
        addInputRow(layout, line, QStringLiteral("Text2"), index, kRowProperty,
                    result ? std::function<void(const std::string&)>()
                           : [this, index](const std::string& t) { model_->rowEdited(index, t); });
    InputRowWidgets& w = rows_[static_cast<std::size_t>(index)];
    w = made;
    if (result) {
        resultLabel_ = panelLabel(QStringLiteral("LabelResult"), layout->parentWidget());
        resultLabel_->setMinimumWidth(130);
        resultLabel_->setStyleSheet(QStringLiteral("QLabel { font-weight: bold; }"));
        layout->addWidget(resultLabel_, line, 1);
    } else {
        w.entry->setMinimumWidth(130);
    }
}

QWidget* MerlaForm::buildInputs() {
    rows_.assign(model_->rows().size(), InputRowWidgets{});
    auto* page = new QWidget;
    auto* columns = new QHBoxLayout(page);
    const auto group = [page](const QString& title) { return inputGroup(page, title); };

    // Left: the coordinates, then the selected point and its concentration.
    auto* left = new QVBoxLayout;
    QGridLayout* coordinates = group(QStringLiteral("Coordinates"));
    int line = 0;
    for (int i : {varrow::X, varrow::Y, varrow::Time}) addRow(i, coordinates, line++);
    left->addWidget(coordinates->parentWidget());
    QGridLayout* point = group(QString());
    label5_ = computedAtLabel(point->parentWidget());
    point->addWidget(label5_, 0, 0, 1, 3);
    line = 1;
    for (int i : {varrow::PointX, varrow::PointY, varrow::PointT, varrow::Concentration}) addRow(i, point, line++);
    left->addWidget(point->parentWidget());
    left->addStretch(1);

    // Right: the field and chemical constants.
    auto* right = new QVBoxLayout;
    QGridLayout* constants = group(QStringLiteral("Field and Chemical Constants"));
    line = 0;
    for (int i : {varrow::Mass, varrow::VelocityX, varrow::VelocityY, varrow::Porosity, varrow::Retardation,
                  varrow::MolecularDiffusion, varrow::MaximumDiffusion, varrow::DispersionRatio, varrow::MeanTravelTime,
                  varrow::Decay})
        addRow(i, constants, line++);
    right->addWidget(constants->parentWidget());
    right->addStretch(1);

    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    return inScrollArea(page);
}

QLineEdit* MerlaForm::rowEntry(int i) const { return rows_.at(static_cast<std::size_t>(i)).entry; }
QLabel* MerlaForm::rowCaption(int i) const { return rows_.at(static_cast<std::size_t>(i)).panel; }
QLabel* MerlaForm::rowUnits(int i) const { return rows_.at(static_cast<std::size_t>(i)).units; }

void MerlaForm::load(bool saveEnabled) {
    model_->load(saveEnabled);
    refresh();
}

void MerlaForm::refreshInputs() {
    MerlaFormModel& m = *model_;
    tabs_->setEnabled(m.tabEnabled);
    const auto& rows = m.rows();
    for (std::size_t i = 0; i < rows.size() && i < rows_.size(); ++i) {
        const VarRow& r = rows[i];
        const InputRowWidgets& w = rows_[i];
        showInputRow(w.panel, w.entry, w.units, r.caption, r.unitCaption, r.text, r.enabled,
                     m.rowLocked(static_cast<int>(i)));
    }
    resultLabel_->setText(q(m.resultLabel));
    label5_->setText(q(m.resultCaption));
    mainElastic_->setEnabled(m.mainEnabled);
}

bool MerlaForm::eventFilter(QObject* watched, QEvent* event) {
    if (sharedEvent(watched, event)) return true;
    const QVariant property = watched->property(kRowProperty);
    if (!property.isValid()) return QDialog::eventFilter(watched, event);
    const int r = property.toInt();
    MerlaFormModel& m = *model_;
    const RowEvents on{[&m, r] { return m.rowKeyPress(r); }, [&m, r] { return m.rowClicked(r); },
                       [&m, r] { return m.rowLeft(r); }, [&m, r] { m.rowEntered(r); }};
    if (rowEvent(watched, event, rows_.at(static_cast<std::size_t>(r)).entry, on)) return true;
    return QDialog::eventFilter(watched, event);
}

void MerlaForm::moveFocus(const FocusRequest& focus) {
    // After the event that asked for it: a focus change inside a focus event is not taken.
    QTimer::singleShot(0, this, [this, focus] {
        if (sharedFocus(focus)) return;
        if (focus.row >= 0 && focus.row < static_cast<int>(rows_.size()))
            focusEntry(rows_[static_cast<std::size_t>(focus.row)].entry);
    });
}

void registerMerlaForm() { registerScreenForm<MerlaForm>(ModelScreen::merlaform); }

}  // namespace bm
