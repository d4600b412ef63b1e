#include "saturated/widgets/input_form.h"

#include <QAction>
#include <QApplication>
#include <QFocusEvent>
#include <QFontMetricsF>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "model/data_set.h"
#include "shell/widgets/model_screens.h"
#include "shell/widgets/numeric_key_filter.h"
#include "shell/widgets/term_grid_view.h"

namespace bm {

namespace {

const char* const kDimensionProperty = "bmDimension";
const char* const kRowProperty = "bmRow";

QString q(const std::string& s) { return QString::fromStdString(s); }

QString indexed(const QString& name, int index) { return indexedName(name, index); }

}  // namespace

// ---------------------------------------------------------------- construction

InputForm::InputForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent)
    : InputForm(std::make_unique<InputFormModel>(dataSet, state, ui), ProgressOwner::InputForm,
                QStringLiteral("inputForm"), parent) {}

InputForm::InputForm(std::unique_ptr<InputFormModel> model, ProgressOwner owner, const QString& name, QWidget* parent)
    : ModelScreenDialog(parent), model_(std::move(model)) {
    setObjectName(name);
    QVBoxLayout* outer = attach(*model_, owner);
    addCaptions(outer);

    // mainElastic: every input of the model; TabElastic holds the tab set of each dimension.
    mainElastic_ = new QWidget(this);
    mainElastic_->setObjectName(QStringLiteral("mainElastic"));
    auto* mainLayout = new QVBoxLayout(mainElastic_);
    mainLayout->setContentsMargins(0, 4, 0, 0);
    tabElastic_ = new QStackedWidget(mainElastic_);
    tabElastic_->setObjectName(QStringLiteral("TabElastic"));
    for (int d = 1; d <= 3; ++d) tabElastic_->addWidget(buildTabSet(d));
    mainLayout->addWidget(tabElastic_);
    outer->addWidget(mainElastic_, 1);
    for (QWidget* w : std::initializer_list<QWidget*>{mainElastic_, tabElastic_}) w->installEventFilter(this);

    addStatusLine(outer);
    resize(1280, 800);
}

void InputForm::addRow(int dimension, int index, QGridLayout* layout, int line) {
    const FormRow& r = model_->row(dimension, index);
    RowWidgets& w = rows_[static_cast<std::size_t>(dimension)][static_cast<std::size_t>(index)];
    QWidget* parent = layout->parentWidget();
    w.panel = new QLabel(parent);
    w.panel->setObjectName(indexed(QStringLiteral("Text%1Panel").arg(dimension), index));
    w.panel->setMinimumWidth(380);
    w.units = new QLabel(parent);
    w.units->setObjectName(indexed(QStringLiteral("Text%1Units").arg(dimension), index));
    w.units->setMinimumWidth(90);
    layout->addWidget(w.panel, line, 0);
    if (r.kind == RowKind::ConcentrationCaption) {
        auto* result = panelLabel(QString::fromLatin1(InputFormModel::resultLabelName(dimension)), parent);
        result->setMinimumWidth(220);
        result->setStyleSheet(QStringLiteral("QLabel { font-weight: bold; }"));
        resultLabels_[static_cast<std::size_t>(dimension)] = result;
        layout->addWidget(result, line, 1);
    } else {
        w.entry = new QLineEdit(parent);
        w.entry->setObjectName(indexed(QStringLiteral("Text%1").arg(dimension), index));
        w.entry->setMinimumWidth(220);
        w.entry->installEventFilter(NumericKeyFilter::instance());
        w.entry->installEventFilter(this);  // the screen's own filter comes first
        connect(w.entry, &QLineEdit::textEdited, this, [this, dimension, index](const QString& t) {
            if (dimension == model_->dimension()) model_->rowEdited(index, t.toStdString());
        });
        layout->addWidget(w.entry, line, 1);
    }
    layout->addWidget(w.units, line, 2);
    for (QWidget* x : std::initializer_list<QWidget*>{w.panel, w.entry, w.units}) {
        if (!x) continue;
        x->setProperty(kDimensionProperty, dimension);
        x->setProperty(kRowProperty, index);
        if (x != w.entry) x->installEventFilter(this);
    }
}

QWidget* InputForm::buildTabSet(int d) {
    auto* tabs = new QTabWidget;
    tabs->setObjectName(QString::fromLatin1(InputFormModel::tabSetName(d)));
    tabs_[static_cast<std::size_t>(d)] = tabs;
    rows_[static_cast<std::size_t>(d)].assign(model_->rows(d).size(), RowWidgets{});
    const DimensionRows& n = dimensionRows(d);
    const int count = static_cast<int>(model_->rows(d).size());

    std::array<QGridLayout*, 3> layouts{};
    for (int t = 0; t < 3; ++t) {
        auto* scroll = new QScrollArea;
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        auto* page = new QWidget;
        auto* grid = new QGridLayout(page);
        grid->setColumnStretch(3, 1);
        grid->setVerticalSpacing(6);
        grid->setHorizontalSpacing(10);
        scroll->setWidget(page);
        tabs->addTab(scroll, QString::fromLatin1(kTabCaptions[t]));
        layouts[static_cast<std::size_t>(t)] = grid;
        pages_[static_cast<std::size_t>(d)][static_cast<std::size_t>(t)] = grid;
    }
    std::array<int, 3> line{};
    const auto place = [&](int index) {
        const int t = model_->row(d, index).tab;
        addRow(d, index, layouts[static_cast<std::size_t>(t)], line[static_cast<std::size_t>(t)]++);
    };

    // Coordinates: the ranges, then the computed point and its concentration.
    for (int i = 0; i < count; ++i)
        if (model_->row(d, i).kind == RowKind::Range) place(i);
    {
        QGridLayout* g = layouts[kCoordinatesTab];
        auto* label5 = new QLabel(QStringLiteral("Computed at"), g->parentWidget());
        label5->setObjectName(QStringLiteral("Label5"));
        label5->setStyleSheet(QStringLiteral("QLabel { font-weight: bold; margin-top: 12px; }"));
        label5_[static_cast<std::size_t>(d)] = label5;
        g->addWidget(label5, line[kCoordinatesTab]++, 0, 1, 3);
    }
    for (int i : {n.mcX, n.mcY, n.mcZ, n.mcT})
        if (i >= 0) place(i);
    place(n.concentrationCaption);

    // Boundary conditions: the source rows (a chain's number of chemicals with
    // them), the superposition index and the grid.
    for (int i = 0; i < count; ++i) {
        const FormRow& r = model_->row(d, i);
        if (r.tab == kBoundaryTab && (r.kind == RowKind::Value || r.kind == RowKind::ChemicalCount)) place(i);
    }
    place(n.superposition);
    {
        QGridLayout* g = layouts[kBoundaryTab];
        auto* grid = new TermGridView(QStringLiteral("Input%1TG").arg(d), g->parentWidget());
        grid->setMinimumHeight(220);
        grids_[static_cast<std::size_t>(d)] = grid;
        g->addWidget(grid, line[kBoundaryTab]++, 0, 1, 4);
        g->setRowStretch(line[kBoundaryTab] - 1, 1);
        grid->beforeEdit = [this, d](int row, int column) {
            return d != model_->dimension() || model_->gridBeforeEdit(row, column);
        };
        connect(grid, &QTableWidget::itemChanged, this, [this, d](QTableWidgetItem* item) {
            if (d == model_->dimension()) model_->gridEdited(item->row(), item->column(), item->text().toStdString());
        });
        grid->installEventFilter(this);
    }

    // Field and chemical constants.
    for (int i = 0; i < count; ++i)
        if (model_->row(d, i).tab == kFieldTab) place(i);
    for (QGridLayout* g : layouts) g->setRowStretch(g->rowCount(), 1);

    connect(tabs, &QTabWidget::currentChanged, this,
            [this, d](int index) { model_->currentTab[static_cast<std::size_t>(d)] = index; });
    return tabs;
}

// ---------------------------------------------------------------- access

QLineEdit* InputForm::rowEntry(int d, int i) const { return rows_.at(static_cast<std::size_t>(d)).at(static_cast<std::size_t>(i)).entry; }
QLabel* InputForm::rowCaption(int d, int i) const { return rows_.at(static_cast<std::size_t>(d)).at(static_cast<std::size_t>(i)).panel; }
QLabel* InputForm::rowUnits(int d, int i) const { return rows_.at(static_cast<std::size_t>(d)).at(static_cast<std::size_t>(i)).units; }
TermGridView* InputForm::grid(int d) const { return grids_.at(static_cast<std::size_t>(d)); }
QTabWidget* InputForm::tabSet(int d) const { return tabs_.at(static_cast<std::size_t>(d)); }
QLabel* InputForm::resultLabel(int d) const { return resultLabels_.at(static_cast<std::size_t>(d)); }
QGridLayout* InputForm::tabLayout(int d, int tab) const {
    return pages_.at(static_cast<std::size_t>(d)).at(static_cast<std::size_t>(tab));
}

int InputForm::rowOf(QObject* widget, int& dimension) const {
    const QVariant d = widget->property(kDimensionProperty);
    const QVariant r = widget->property(kRowProperty);
    if (!d.isValid() || !r.isValid()) return -1;
    dimension = d.toInt();
    return r.toInt();
}

// ---------------------------------------------------------------- showing the model

void InputForm::load(bool saveEnabled) {
    model_->load(saveEnabled);
    refresh();
    const int d = model_->dimension();
    if (d >= 1) tabs_[static_cast<std::size_t>(d)]->setCurrentIndex(model_->currentTab[static_cast<std::size_t>(d)]);
}

void InputForm::refreshInputs() {
    InputFormModel& m = *model_;
    const int d = m.dimension();
    if (d >= 1) {
        tabElastic_->setCurrentIndex(d - 1);
        // The tab brought forward follows the user, or a focus request (moveFocus); a
        // refresh in the middle of a tab change must not turn it back.
        tabs_[static_cast<std::size_t>(d)]->setEnabled(m.tabEnabled);
        const auto& rows = m.rows(d);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const FormRow& r = rows[i];
            RowWidgets& w = rows_[static_cast<std::size_t>(d)][i];
            showInputRow(w.panel, w.entry, w.units, r.caption, r.unitCaption, r.text, r.enabled,
                         m.rowLocked(static_cast<int>(i)));
        }
        if (QLabel* result = resultLabels_[static_cast<std::size_t>(d)]) result->setText(q(m.resultLabel));
        if (QLabel* l5 = label5_[static_cast<std::size_t>(d)]) l5->setText(q(m.resultCaption));
        grids_[static_cast<std::size_t>(d)]->showGrid(m.grid(), [&m](int r, int c) { return m.cellStyle(r, c); });
    }
    mainElastic_->setEnabled(m.mainEnabled);
}

// ---------------------------------------------------------------- events

bool InputForm::eventFilter(QObject* watched, QEvent* event) {
    if (sharedEvent(watched, event)) return true;
    InputFormModel& m = *model_;
    const QEvent::Type type = event->type();
    if (qobject_cast<TermGridView*>(watched) && type == QEvent::FocusIn) {
        m.gridEntered();
        return false;
    }

    int d = 0;
    const int r = rowOf(watched, d);
    if (r < 0 || d != m.dimension()) return QDialog::eventFilter(watched, event);
    const RowWidgets& w = rows_[static_cast<std::size_t>(d)][static_cast<std::size_t>(r)];

    const RowEvents on{[&m, r] { return m.rowKeyPress(r); }, [&m, r] { return m.rowClicked(r); },
                       [&m, r] { return m.rowLeft(r); }, [&m, r] { m.rowEntered(r); }};
    if (rowEvent(watched, event, w.entry, on)) return true;
    return QDialog::eventFilter(watched, event);
}

void InputForm::moveFocus(const FocusRequest& focus) {
    // After the event that asked for it: a focus change inside a focus event is not taken.
    QTimer::singleShot(0, this, [this, focus] {
        if (sharedFocus(focus)) return;
        const int d = focus.dimension;
        if (d < 1 || d > 3) return;
        QTabWidget* tabs = tabs_[static_cast<std::size_t>(d)];
        if (focus.tab >= 0) tabs->setCurrentIndex(focus.tab);
        if (focus.grid) {
            focusCell(grids_[static_cast<std::size_t>(d)], focus);
        } else if (focus.row >= 0) {
            focusEntry(rows_[static_cast<std::size_t>(d)][static_cast<std::size_t>(focus.row)].entry);
        }
    });
}

// ---------------------------------------------------------------- registration

void registerInputForm() { registerScreenForm<InputForm>(ModelScreen::inputForm); }

}  // namespace bm
