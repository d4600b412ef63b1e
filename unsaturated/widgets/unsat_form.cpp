#include "unsaturated/widgets/unsat_form.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "shell/widgets/term_grid_view.h"

namespace bm {

namespace {

const char* const kRowProperty = "bmRow";

QString q(const std::string& s) { return QString::fromStdString(s); }

}  // namespace

UnsatForm::UnsatForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent)
    : UnsatForm(std::make_unique<UnsatFormModel>(dataSet, state, ui), QStringLiteral("unsatForm"), parent) {
    build(ProgressOwner::UnsaturatedForm);
}

UnsatForm::UnsatForm(std::unique_ptr<UnsatFormModel> model, const QString& name, QWidget* parent)
    : ModelScreenDialog(parent), model_(std::move(model)) {
    setObjectName(name);
}

void UnsatForm::build(ProgressOwner owner) {
    QVBoxLayout* outer = attach(*model_, owner);
    addCaptions(outer);
    mainElastic_ = new QWidget(this);
    mainElastic_->setObjectName(QStringLiteral("mainElastic"));
    auto* mainLayout = new QVBoxLayout(mainElastic_);
    mainLayout->setContentsMargins(0, 4, 0, 0);
    tabs_ = new QTabWidget(mainElastic_);
    tabs_->setObjectName(QStringLiteral("TabElastic"));
    tabs_->addTab(buildInputs(), QStringLiteral("Coor&dinates and Constants"));
    mainLayout->addWidget(tabs_);
    outer->addWidget(mainElastic_, 1);
    mainElastic_->installEventFilter(this);
    addStatusLine(outer);
    resize(1280, 800);
}

void UnsatForm::addRow(int index, QGridLayout* layout, int line) {
    const InputRowWidgets made = addInputRow(layout, line, QStringLiteral("Text1"), index, kRowProperty,
                                             [this, index](const std::string& t) { model_->rowEdited(index, t); });
    rows_[static_cast<std::size_t>(index)] = made;
}

QWidget* UnsatForm::buildInputs() {
    rows_.assign(model_->rows().size(), InputRowWidgets{});
    auto* page = new QWidget;
    auto* columns = new QHBoxLayout(page);
    const auto group = [page](const QString& title) { return inputGroup(page, title); };

    // Left: the coordinates, the selected point and its concentration, the boundary condition.
    auto* left = new QVBoxLayout;
    QGridLayout* coordinates = group(QStringLiteral("Coordinates"));
    int line = 0;
    for (int i : {unsatrow::X, unsatrow::Time}) addRow(i, coordinates, line++);
    label5_ = computedAtLabel(coordinates->parentWidget());
    coordinates->addWidget(label5_, line++, 0, 1, 3);
    for (int i : {unsatrow::PointX, unsatrow::PointT}) addRow(i, coordinates, line++);
    auto* concentration = new QLabel(q(" Concentration (C/Co)"), coordinates->parentWidget());
    concentration->setObjectName(QStringLiteral("Text1Panel(9)"));
    resultLabel_ = panelLabel(QStringLiteral("LabelResult1D"), coordinates->parentWidget());
    resultLabel_->setMinimumWidth(120);
    resultLabel_->setStyleSheet(QStringLiteral("QLabel { font-weight: bold; }"));
    coordinates->addWidget(concentration, line, 0);
    coordinates->addWidget(resultLabel_, line++, 1);
    left->addWidget(coordinates->parentWidget());

    QGridLayout* boundary = group(QStringLiteral("Boundary Conditions"));
    boundary_ = static_cast<QGroupBox*>(boundary->parentWidget());
    addRow(unsatrow::Superposition, boundary, 0);
    grid_ = new TermGridView(QStringLiteral("Input1TG"), boundary_);
    grid_->setMinimumHeight(150);
    grid_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    boundary->addWidget(grid_, 1, 0, 1, 3);
    grid_->beforeEdit = [this](int row, int column) { return model_->gridBeforeEdit(row, column); };
    connect(grid_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        model_->gridEdited(item->row(), item->column(), item->text().toStdString());
    });
    grid_->installEventFilter(this);
    left->addWidget(boundary_, 1);

    // Right: the field and chemical constants, then what a screen adds.
    auto* right = new QVBoxLayout;
    QGridLayout* constants = group(QStringLiteral("Field and Chemical Constants"));
    line = 0;
    for (int i : {unsatrow::Percolation, unsatrow::Dispersion, unsatrow::HalfLife, unsatrow::BulkDensity,
                  unsatrow::Distribution, unsatrow::Porosity, unsatrow::Saturation, unsatrow::SourceDecay,
                  unsatrow::Chemicals})
        addRow(i, constants, line++);
    right->addWidget(constants->parentWidget());
    addOwnInputs(right);
    right->addStretch(1);

    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    return inScrollArea(page);
}

QLineEdit* UnsatForm::rowEntry(int i) const { return rows_.at(static_cast<std::size_t>(i)).entry; }
QLabel* UnsatForm::rowCaption(int i) const { return rows_.at(static_cast<std::size_t>(i)).panel; }
QLabel* UnsatForm::rowUnits(int i) const { return rows_.at(static_cast<std::size_t>(i)).units; }

void UnsatForm::load(bool saveEnabled) {
    model_->load(saveEnabled);
    refresh();
}

void UnsatForm::refreshInputs() {
    UnsatFormModel& m = *model_;
    tabs_->setEnabled(m.tabEnabled);
    const auto& rows = m.rows();
    for (std::size_t i = 0; i < rows.size() && i < rows_.size(); ++i) {
        const UnsatRow& r = rows[i];
        const InputRowWidgets& w = rows_[i];
        if (!w.entry) continue;
        showInputRow(w.panel, w.entry, w.units, r.caption, r.unitCaption, r.text, true,
                     m.rowLocked(static_cast<int>(i)));
        for (QWidget* x : std::initializer_list<QWidget*>{w.panel, w.entry, w.units}) x->setVisible(r.inUse);
        // A click on the read-only row tells so and leaves the focus where it was.
        w.entry->setFocusPolicy(r.readOnly ? Qt::TabFocus : Qt::StrongFocus);
    }
    grid_->showGrid(m.grid(), [&m](int r, int c) { return m.cellStyle(r, c); });
    refreshOwnInputs();
    // The grid is never narrower than its headings (a chain's row headings name the chemicals).
    int headings = grid_->verticalHeader()->sizeHint().width() + 2 * grid_->frameWidth() + 24;
    for (int c = 0; c < grid_->columnCount(); ++c)
        if (const QTableWidgetItem* h = grid_->horizontalHeaderItem(c))
            headings += grid_->horizontalHeader()->fontMetrics().horizontalAdvance(h->text()) + 16;
    grid_->setMinimumWidth(headings);
    resultLabel_->setText(q(m.resultLabel));
    label5_->setText(q(m.resultCaption));
    mainElastic_->setEnabled(m.mainEnabled);
}

bool UnsatForm::eventFilter(QObject* watched, QEvent* event) {
    if (sharedEvent(watched, event)) return true;
    UnsatFormModel& m = *model_;
    if (watched == grid_ && event->type() == QEvent::FocusIn) {
        m.gridEntered();
        return false;
    }
    const QVariant property = watched->property(kRowProperty);
    if (!property.isValid()) return QDialog::eventFilter(watched, event);
    const int r = property.toInt();
    const InputRowWidgets& w = rows_.at(static_cast<std::size_t>(r));
    if (event->type() == QEvent::FocusIn && watched == w.entry) {
        // The window coming back after a message box is no entry into the row.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return false;
    }
    const RowEvents on{[&m, r] { return m.rowKeyPress(r); }, [&m, r] { return m.rowClicked(r); },
                       [&m, r] { return m.rowLeft(r); }, [&m, r] { m.rowEntered(r); }};
    if (rowEvent(watched, event, w.entry, on)) return true;
    return QDialog::eventFilter(watched, event);
}

void UnsatForm::moveFocus(const FocusRequest& focus) {
    // After the event that asked for it: a focus change inside a focus event is not taken.
    QTimer::singleShot(0, this, [this, focus] {
        if (sharedFocus(focus)) return;
        if (focus.grid) {
            focusCell(grid_, focus);
        } else if (focus.row >= 0 && focus.row < static_cast<int>(rows_.size())) {
            focusEntry(rows_[static_cast<std::size_t>(focus.row)].entry);
        }
    });
}

void registerUnsatForm() { registerScreenForm<UnsatForm>(ModelScreen::unsatForm); }

}  // namespace bm
