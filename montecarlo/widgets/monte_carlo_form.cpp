#include "montecarlo/widgets/monte_carlo_form.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "montecarlo/monte_selection.h"
#include "montecarlo/pass/monte_setup.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "shell/screen/viewers.h"
#include "shell/widgets/model_screens.h"
#include "shell/widgets/report_printer.h"

namespace bm {

namespace {

QString q(const std::string& s) { return QString::fromStdString(s); }

// A column whose cells are picked from a list: the editor is a drop-down that
// commits as soon as an entry is chosen.
class DropDownDelegate : public QStyledItemDelegate {
public:
    DropDownDelegate(QString name, QStringList choices, QObject* parent)
        : QStyledItemDelegate(parent), name_(std::move(name)), choices_(std::move(choices)) {}
    void setChoices(QStringList choices) { choices_ = std::move(choices); }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const override {
        auto* combo = new QComboBox(parent);
        combo->setObjectName(name_);
        combo->addItems(choices_);
        combo->setMaxVisibleItems(choices_.size());
        connect(combo, &QComboBox::activated, this, [this, combo] {
            auto* self = const_cast<DropDownDelegate*>(this);
            emit self->commitData(combo);
            emit self->closeEditor(combo);
        });
        return combo;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        auto* combo = static_cast<QComboBox*>(editor);
        const int at = combo->findText(index.data().toString().trimmed());
        combo->setCurrentIndex(at >= 0 ? at : -1);
        // The list drops down at once, once the editor stands in its cell.
        QTimer::singleShot(0, combo, [combo] { combo->showPopup(); });
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        const auto* combo = static_cast<QComboBox*>(editor);
        if (combo->currentIndex() >= 0) model->setData(index, combo->currentText());
    }

private:
    QString name_;
    QStringList choices_;
};

QStringList listOf(const auto& texts) {
    QStringList list;
    for (const auto& t : texts) list << QString::fromUtf8(std::string(t).c_str());
    return list;
}

QTableWidget* makeGrid(const QString& name, const QStringList& captions, QWidget* parent) {
    auto* grid = new QTableWidget(parent);
    grid->setObjectName(name);
    grid->setColumnCount(static_cast<int>(captions.size()));
    grid->setHorizontalHeaderLabels(captions);
    grid->setMouseTracking(true);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->verticalHeader()->setDefaultSectionSize(24);
    grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    grid->horizontalHeader()->setStretchLastSection(true);
    // Wide enough for the longest variant name; the others for their headings.
    grid->horizontalHeader()->resizeSection(0, 330);
    const QFontMetrics metrics = grid->horizontalHeader()->fontMetrics();
    for (int c = 1; c < grid->columnCount(); ++c)
        grid->horizontalHeader()->resizeSection(c, std::max(100, metrics.horizontalAdvance(captions[c]) + 24));
    return grid;
}

void setCell(QTableWidget* grid, int row, int column, const QString& text) {
    QTableWidgetItem* it = grid->item(row, column);
    if (!it) {
        it = new QTableWidgetItem;
        grid->setItem(row, column, it);
    }
    if (it->text() != text) it->setText(text);
}

}  // namespace

MonteCarloForm::MonteCarloForm(DataSet& dataSet, AppState& state, UserInterface& ui, MonteCarloSetup setup,
                               QWidget* parent)
    : QDialog(parent), state_(state), ui_(ui) {
    setObjectName(QStringLiteral("MonteCarloForm"));
    model_ = std::make_unique<MonteCarloFormModel>(dataSet, ui, std::move(setup));
    model_->setHost(this);
    setWindowTitle(q(model_->title));

    auto* layout = new QVBoxLayout(this);
    auto* bar = new QMenuBar(this);
    bar->setObjectName(QStringLiteral("MonteCarloMenu"));
    QMenu* file = bar->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    const auto item = [this](QMenu* menu, const char* name, const QString& caption, auto slot) {
        QAction* a = menu->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        connect(a, &QAction::triggered, this, slot);
        return a;
    };
    item(file, "mnuPrint", QStringLiteral("&Print"), [this] { model_->print(); });
    file->addSeparator();
    item(file, "mnuView", QStringLiteral("&View Simulation Output"), [this] { model_->view("Numbers"); });
    item(file, "mnuGraph", QStringLiteral("&Graph Simulation Output"), [this] { model_->view("Trazelh"); });
    file->addSeparator();
    item(file, "mnuExit", QStringLiteral("E&xit"), [this] { model_->exit(); });
    QAction* generate = bar->addAction(QStringLiteral("&Generate"));
    generate->setObjectName(QStringLiteral("mnuGenerate"));
    generate->setShortcut(QKeySequence(Qt::Key_F7));
    generate->setShortcutContext(Qt::WindowShortcut);
    addAction(generate);  // F7 wherever the focus is on the screen
    connect(generate, &QAction::triggered, this, [this] { this->generate(); });
    layout->setMenuBar(bar);

    panel_ = new QLabel(this);
    panel_->setObjectName(QStringLiteral("TitlePanel"));
    panel_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    panel_->setAlignment(Qt::AlignCenter);
    panel_->setMinimumHeight(28);
    layout->addWidget(panel_);

    auto* inputCaption = new QLabel(QStringLiteral("Variants and their distributions"), this);
    layout->addWidget(inputCaption);
    inputTG_ = makeGrid(QStringLiteral("InputTG"), listOf(kInputColumnCaptions), this);
    inputTG_->setItemDelegateForColumn(kVariantColumn,
                                       new DropDownDelegate(QStringLiteral("variantLB"), {}, inputTG_));
    inputTG_->setItemDelegateForColumn(
        kDistributionColumn, new DropDownDelegate(QStringLiteral("distributionCombo"), listOf(kDistributionChoices), inputTG_));
    inputTG_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                              QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    layout->addWidget(inputTG_, 1);

    auto* resultCaption = new QLabel(QStringLiteral("Statistics of the generated samples"), this);
    layout->addWidget(resultCaption);
    resultTG_ = makeGrid(QStringLiteral("ResultTG"), listOf(kResultColumnCaptions), this);
    resultTG_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    layout->addWidget(resultTG_, 1);

    auto* hints = new QLabel(this);
    hints->setObjectName(QStringLiteral("HintsPanel"));
    hints->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    QString hintText;
    for (const char* hint : kMonteFormHints) hintText += (hintText.isEmpty() ? QString() : QStringLiteral("\n")) + QString::fromLatin1(hint);
    hints->setText(hintText);
    layout->addWidget(hints);

    helpPanel_ = new QLabel(this);
    helpPanel_->setObjectName(QStringLiteral("HelpPanel"));
    helpPanel_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    helpPanel_->setMinimumHeight(24);
    layout->addWidget(helpPanel_);

    connect(inputTG_, &QTableWidget::cellChanged, this, [this](int r, int c) { inputCellChanged(r, c); });
    connect(inputTG_, &QTableWidget::cellEntered, this, [this](int, int c) { model_->inputColumnHovered(c); });
    connect(resultTG_, &QTableWidget::cellEntered, this, [this](int, int c) { model_->resultColumnHovered(c); });
    connect(resultTG_, &QTableWidget::cellDoubleClicked, this,
            [this](int r, int c) { model_->resultDoubleClicked(r + 1, c); });
    inputTG_->horizontalHeader()->viewport()->installEventFilter(this);
    resultTG_->horizontalHeader()->viewport()->installEventFilter(this);
    resize(1060, 680);
}

MonteCarloForm::~MonteCarloForm() = default;

QAction* MonteCarloForm::action(const QString& name) const { return findChild<QAction*>(name); }

void MonteCarloForm::load() {
    static_cast<DropDownDelegate*>(inputTG_->itemDelegateForColumn(kVariantColumn))
        ->setChoices(listOf(model_->variantChoices()));
    model_->load();
    inputTG_->setFocus();
    if (inputTG_->rowCount() > 0) inputTG_->setCurrentCell(0, 0);
}

void MonteCarloForm::refresh() {
    if (refreshing_) return;
    refreshing_ = true;
    setWindowTitle(q(model_->title));
    panel_->setText(q(model_->panelCaption));
    helpPanel_->setText(q(model_->helpPanel));
    {
        const QSignalBlocker block(inputTG_);
        if (inputTG_->rowCount() != model_->rowCount()) inputTG_->setRowCount(model_->rowCount());
        for (int r = 0; r < model_->rowCount(); ++r)
            for (int c = 0; c < kMonteGridColumns; ++c)
                setCell(inputTG_, r, c, q(model_->inputGrid[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)]));
    }
    {
        const QSignalBlocker block(resultTG_);
        if (resultTG_->rowCount() != model_->rowCount()) resultTG_->setRowCount(model_->rowCount());
        const QPalette palette = resultTG_->palette();
        for (int r = 0; r < model_->rowCount(); ++r) {
            const int selected = model_->selectedColumn(r + 1);
            for (int c = 0; c < kMonteGridColumns; ++c) {
                setCell(resultTG_, r, c, q(model_->resultGrid[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)]));
                QTableWidgetItem* it = resultTG_->item(r, c);
                // The cell the model takes is drawn as selected.
                const bool chosen = c == selected;
                it->setBackground(chosen ? palette.brush(QPalette::Highlight) : QBrush());
                it->setForeground(chosen ? palette.brush(QPalette::HighlightedText) : QBrush());
                it->setData(Qt::UserRole, chosen);
            }
        }
    }
    refreshing_ = false;
}

void MonteCarloForm::inputCellChanged(int row, int column) {
    if (refreshing_) return;
    const QTableWidgetItem* it = inputTG_->item(row, column);
    model_->inputCellEdited(row + 1, column, it ? it->text().toStdString() : std::string());
}

void MonteCarloForm::generate() {
    // An open cell edit is committed first, as when the focus leaves the grid:
    // leaving the current cell commits its editor.
    const QModelIndex current = inputTG_->currentIndex();
    if (current.isValid() && inputTG_->indexWidget(current)) {
        inputTG_->setCurrentIndex(QModelIndex());
        inputTG_->setCurrentIndex(current);
    }
    model_->generate();
}

bool MonteCarloForm::printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) {
    return printColumnReport(windowTitle(), lines, tabColumns, this, pdfOutput_);
}

void MonteCarloForm::showFile(const std::string& path, const std::string& kind) {
    try {
        if (kind == "Trazelh")
            viewGraph(path, state_, ui_);
        else
            viewText(path, state_, ui_);
    } catch (const RuntimeError& e) {
        handleError(e, "MonteCarloForm", path, ui_);
    }
}

void MonteCarloForm::closeForm() {
    exited_ = true;
    QDialog::done(QDialog::Accepted);
}

void MonteCarloForm::done(int result) {
    // Every way out is File > Exit: the tables go back into the model's block.
    if (!exited_) {
        model_->exit();
        if (exited_) return;
    }
    QDialog::done(result);
}

bool MonteCarloForm::eventFilter(QObject* watched, QEvent* event) {
    // The pointer over a column heading shows that column's hint too.
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::Enter) {
        for (QTableWidget* grid : {inputTG_, resultTG_}) {
            if (watched != grid->horizontalHeader()->viewport()) continue;
            const QPoint at = grid->horizontalHeader()->viewport()->mapFromGlobal(QCursor::pos());
            const int column = grid->horizontalHeader()->logicalIndexAt(at);
            if (column < 0) continue;
            if (grid == inputTG_) model_->inputColumnHovered(column);
            else model_->resultColumnHovered(column);
        }
    }
    return QDialog::eventFilter(watched, event);
}

void registerMonteCarloForm() {
    registerModelScreen(ModelScreen::MonteCarloForm, [](QWidget* parent, bool) {
        DataSet& data = theDataSet();
        std::optional<MonteCarloSetup> setup = monteCarloSetup(data);
        if (!setup) return;
        setup->viewPath = plotFileName(theAppState());
        MonteCarloForm form(data, theAppState(), ui(), std::move(*setup), parent);
        form.load();
        ui().setBusy(false);
        form.exec();
        ui().setBusy(true);  // the model screen's Generate goes on under the busy pointer
    });
}

}  // namespace bm
