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
#include "shell/help_context.h"
#include "shell/main_form.h"
#include "shell/widgets/help_viewer.h"
#include "shell/widgets/model_screens.h"
#include "shell/widgets/new_model_dialogs.h"
#include "shell/widgets/qt_user_interface.h"
#include "shell/widgets/report_printer.h"
#include "shell/widgets/usual_shortcuts.h"
#include "saturated/widgets/notes_dialog.h"
#include "saturated/widgets/numeric_key_filter.h"
#include "saturated/widgets/progress_picture.h"
#include "saturated/widgets/term_grid_view.h"

namespace bm {

namespace {

const char* const kDimensionProperty = "bmDimension";
const char* const kRowProperty = "bmRow";

std::function<void(QWidget*)>& monteCarloOpener() {
    static std::function<void(QWidget*)> opener;
    return opener;
}

QString q(const std::string& s) { return QString::fromStdString(s); }

QString indexed(const QString& name, int index) { return name + u'(' + QString::number(index) + u')'; }

QLabel* panelLabel(const QString& name, QWidget* parent) {
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    l->setFrameShape(QFrame::StyledPanel);
    l->setFrameShadow(QFrame::Sunken);
    l->setMinimumHeight(24);
    return l;
}

bool isTyping(const QKeyEvent* key) {
    if (key->key() == Qt::Key_Backspace || key->key() == Qt::Key_Delete) return true;
    const QString t = key->text();
    return !t.isEmpty() && t.at(0).unicode() >= 32 && t.at(0).unicode() != 127;
}

}  // namespace

void setMonteCarloScreenOpener(std::function<void(QWidget*)> opener) { monteCarloOpener() = std::move(opener); }
bool hasMonteCarloScreenOpener() { return static_cast<bool>(monteCarloOpener()); }

// ---------------------------------------------------------------- construction

InputForm::InputForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent)
    : QDialog(parent), model_(std::make_unique<InputFormModel>(dataSet, state, ui)) {
    setObjectName(QStringLiteral("inputForm"));
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    model_->setHost(this);

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(6, 0, 6, 4);
    auto* bar = new QMenuBar(this);
    bar->setObjectName(QStringLiteral("mnuFile"));
    buildMenus(bar);
    applyUsualShortcuts(this);
    outer->setMenuBar(bar);

    // The model's identity, the Monte Carlo panel and the notes.
    auto* header = new QGridLayout;
    header->setHorizontalSpacing(8);
    modelE_ = panelLabel(QStringLiteral("ModelE"), this);
    aquiferE_ = panelLabel(QStringLiteral("AquiferE"), this);
    contaminantE_ = panelLabel(QStringLiteral("ContaminantE"), this);
    monteCarloElastic_ = panelLabel(QStringLiteral("MonteCarloElastic"), this);
    monteCarloElastic_->setAlignment(Qt::AlignCenter);
    monteCarloElastic_->setMinimumWidth(150);
    monteCarloElastic_->setStyleSheet(QStringLiteral("QLabel { color: rgb(255, 0, 0); font-weight: bold; }"));
    monteCarloElastic_->setCursor(Qt::PointingHandCursor);
    header->addWidget(modelE_, 0, 0, 1, 2);
    header->addWidget(aquiferE_, 0, 2, 1, 2);
    header->addWidget(contaminantE_, 0, 4, 1, 2);
    header->addWidget(monteCarloElastic_, 0, 6);
    const auto noteRow = [&](int line, int column, const QString& labelName, const QString& caption,
                             const QString& entryName, QLabel*& label, QLineEdit*& entry, int span) {
        label = new QLabel(caption, this);
        label->setObjectName(labelName);
        label->setCursor(Qt::PointingHandCursor);
        label->setStyleSheet(QStringLiteral("QLabel { color: rgb(0, 0, 160); text-decoration: underline; }"));
        entry = new QLineEdit(this);
        entry->setObjectName(entryName);
        header->addWidget(label, line, column);
        header->addWidget(entry, line, column + 1, 1, span);
    };
    noteRow(1, 0, QStringLiteral("TitleE"), QStringLiteral("Title:"), QStringLiteral("TitleTB"), titleE_, titleTB_, 3);
    noteRow(1, 4, QStringLiteral("authorE"), QStringLiteral("Author:"), QStringLiteral("AuthorTB"), authorE_, authorTB_, 2);
    noteRow(2, 0, QStringLiteral("CommentsE"), QStringLiteral("Comments:"), QStringLiteral("CommentsTB"), commentsE_,
            commentsTB_, 6);
    header->setColumnStretch(1, 3);
    header->setColumnStretch(3, 2);
    header->setColumnStretch(5, 2);
    outer->addLayout(header);

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

    // The status line, the progress picture and Stop.
    auto* status = new QHBoxLayout;
    helpPanel_ = panelLabel(QStringLiteral("HelpPanel"), this);
    helpPanel_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    helpPanel_->setMinimumWidth(200);
    pictureDest_ = new ProgressPicture(this);
    pictureDest_->setMaximumWidth(360);
    stopCB_ = new QPushButton(QStringLiteral("&Stop"), this);
    stopCB_->setObjectName(QStringLiteral("stopCB"));
    stopCB_->setAutoDefault(false);
    status->addWidget(helpPanel_, 1);
    status->addWidget(pictureDest_);
    status->addWidget(stopCB_);
    outer->addLayout(status);
    pictureDest_->hide();
    stopCB_->hide();

    // Wiring.
    connect(stopCB_, &QPushButton::clicked, this, [this] { model_->stopClicked(); });
    for (auto [entry, field] : {std::pair{titleTB_, NoteField::Title}, std::pair{authorTB_, NoteField::Author},
                                std::pair{commentsTB_, NoteField::Comments}}) {
        connect(entry, &QLineEdit::textEdited, this,
                [this, f = field](const QString& t) { model_->noteEdited(f, t.toStdString()); });
        entry->installEventFilter(this);
    }
    for (QWidget* w : std::initializer_list<QWidget*>{modelE_, aquiferE_, contaminantE_, titleE_, authorE_, commentsE_,
                                                      monteCarloElastic_, mainElastic_, tabElastic_})
        w->installEventFilter(this);

    qtUserInterface().setProgressSink(ProgressOwner::InputForm, [this](double total, double done) {
        showProgress(total, done);
    });
    resize(1280, 800);
}

InputForm::~InputForm() {
    qtUserInterface().setProgressSink(ProgressOwner::InputForm, nullptr);
    model_->setHost(nullptr);
}

QAction* InputForm::addItem(QMenu* menu, const QString& name, const QString& caption, std::function<void()> action) {
    QAction* a = menu->addAction(caption);
    a->setObjectName(name);
    connect(a, &QAction::triggered, this, [action] { action(); });
    actions_[name] = a;
    return a;
}

void InputForm::buildMenus(QMenuBar* bar) {
    InputFormModel& m = *model_;
    const auto top = [&](int index, const QString& caption) {
        QMenu* menu = bar->addMenu(caption);
        menu->setObjectName(indexed(QStringLiteral("mnuFile"), index));
        menu->menuAction()->setObjectName(indexed(QStringLiteral("mnuFile"), index));
        topMenus_[index] = menu;
        actions_[indexed(QStringLiteral("mnuFile"), index)] = menu->menuAction();
        return menu;
    };
    QMenu* file = top(topMenu::File, QStringLiteral("&File"));
    for (const MenuItem& item : m.fileMenu()) {
        if (item.separatorBefore) file->addSeparator();
        addItem(file, indexed(QStringLiteral("menuFile"), item.index), q(item.caption),
                [this, i = item.index] { model_->menuFileClick(i); });
    }
    calculateAction_ = bar->addAction(QStringLiteral("&Calculate!"));
    calculateAction_->setObjectName(indexed(QStringLiteral("mnuFile"), topMenu::Calculate));
    actions_[calculateAction_->objectName()] = calculateAction_;
    connect(calculateAction_, &QAction::triggered, this, [this] { model_->mnuFileClick(topMenu::Calculate); });

    QMenu* results = top(topMenu::Results, QStringLiteral("&Results"));
    for (const MenuItem& item : m.resultsMenu())
        addItem(results, indexed(QStringLiteral("menuResults"), item.index), q(item.caption),
                [this, i = item.index] { model_->menuResultsClick(i); });

    QMenu* units = top(topMenu::Units, QStringLiteral("&Units"));
    const std::array<std::pair<UnitMenu, QString>, 3> unitMenus = {
        std::pair{UnitMenu::Length, QStringLiteral("menuLength")}, std::pair{UnitMenu::Time, QStringLiteral("menuTime")},
        std::pair{UnitMenu::Concentration, QStringLiteral("menuConc")}};
    const std::array<QString, 3> unitCaptions = {QStringLiteral("&Length"), QStringLiteral("&Time"),
                                                 QStringLiteral("&Concentration")};
    for (std::size_t k = 0; k < unitMenus.size(); ++k) {
        QMenu* sub = units->addMenu(unitCaptions[k]);
        sub->setObjectName(unitMenus[k].second);
        for (const MenuItem& item : m.unitMenu(unitMenus[k].first)) {
            if (item.separatorBefore) sub->addSeparator();
            QAction* a = addItem(sub, indexed(unitMenus[k].second, item.index), q(item.caption),
                                 [this, menu = unitMenus[k].first, i = item.index] { model_->menuUnitsClick(menu, i); });
            a->setCheckable(true);
        }
    }

    QMenu* monte = top(topMenu::MonteCarlo, QStringLiteral("&Monte Carlo"));
    for (const MenuItem& item : m.monteCarloMenu()) {
        if (item.separatorBefore) monte->addSeparator();
        addItem(monte, indexed(QStringLiteral("menuMonteCarlo"), item.index), q(item.caption),
                [this, i = item.index] { model_->menuMonteCarloClick(i); });
    }
    QAction* help = bar->addAction(QStringLiteral("&Help"));
    help->setObjectName(indexed(QStringLiteral("mnuFile"), topMenu::Help));
    actions_[help->objectName()] = help;
    connect(help, &QAction::triggered, this, [this] { model_->mnuFileClick(topMenu::Help); });
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

    // Boundary conditions: the source rows, the superposition index and the grid.
    for (int i = 0; i < count; ++i)
        if (model_->row(d, i).tab == kBoundaryTab && model_->row(d, i).kind == RowKind::Value) place(i);
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

QAction* InputForm::menuItem(const QString& name) const {
    const auto it = actions_.find(name);
    return it == actions_.end() ? nullptr : it->second;
}

QLineEdit* InputForm::rowEntry(int d, int i) const { return rows_.at(static_cast<std::size_t>(d)).at(static_cast<std::size_t>(i)).entry; }
QLabel* InputForm::rowCaption(int d, int i) const { return rows_.at(static_cast<std::size_t>(d)).at(static_cast<std::size_t>(i)).panel; }
QLabel* InputForm::rowUnits(int d, int i) const { return rows_.at(static_cast<std::size_t>(d)).at(static_cast<std::size_t>(i)).units; }
TermGridView* InputForm::grid(int d) const { return grids_.at(static_cast<std::size_t>(d)); }
QTabWidget* InputForm::tabSet(int d) const { return tabs_.at(static_cast<std::size_t>(d)); }
QLabel* InputForm::resultLabel(int d) const { return resultLabels_.at(static_cast<std::size_t>(d)); }

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

void InputForm::formChanged() { refresh(); }

void InputForm::refreshMenus() {
    const InputFormModel& m = *model_;
    for (const MenuItem& item : m.topMenus()) {
        if (QAction* a = menuItem(indexed(QStringLiteral("mnuFile"), item.index))) a->setEnabled(item.enabled);
    }
    for (const MenuItem& item : m.fileMenu())
        if (QAction* a = menuItem(indexed(QStringLiteral("menuFile"), item.index))) a->setEnabled(item.enabled);
    const std::array<std::pair<UnitMenu, QString>, 3> unitMenus = {
        std::pair{UnitMenu::Length, QStringLiteral("menuLength")}, std::pair{UnitMenu::Time, QStringLiteral("menuTime")},
        std::pair{UnitMenu::Concentration, QStringLiteral("menuConc")}};
    for (const auto& [menu, name] : unitMenus)
        for (const MenuItem& item : m.unitMenu(menu))
            if (QAction* a = menuItem(indexed(name, item.index))) a->setChecked(item.checked);
}

void InputForm::refresh() {
    InputFormModel& m = *model_;
    setWindowTitle(q(m.windowTitle()));
    modelE_->setText(q(m.modelCaption));
    aquiferE_->setText(q(m.aquiferCaption));
    contaminantE_->setText(q(m.contaminantCaption));
    monteCarloElastic_->setText(q(m.monteCarloCaption));
    for (auto [entry, text] : {std::pair{titleTB_, &m.titleText}, std::pair{authorTB_, &m.authorText},
                               std::pair{commentsTB_, &m.commentsText}})
        if (entry->text() != q(*text)) {
            entry->setText(q(*text));
            entry->setCursorPosition(0);
        }
    helpPanel_->setText(q(m.helpPanel));

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
            w.panel->setText(q(r.caption));
            w.units->setText(q(r.unitCaption));
            if (!w.entry) continue;
            const QString text = q(r.text);
            if (w.entry->text() != text) {
                w.entry->setText(text);
                w.entry->setCursorPosition(0);  // a marker shows its visible word
            }
            w.entry->setEnabled(r.enabled);
            const bool locked = m.rowLocked(static_cast<int>(i));
            w.entry->setReadOnly(locked);
            w.entry->setStyleSheet(locked ? QStringLiteral("QLineEdit { color: rgb(255, 0, 0); }") : QString());
        }
        if (QLabel* result = resultLabels_[static_cast<std::size_t>(d)]) result->setText(q(m.resultLabel));
        if (QLabel* l5 = label5_[static_cast<std::size_t>(d)]) l5->setText(q(m.resultCaption));
        grids_[static_cast<std::size_t>(d)]->showGrid(m.grid(), [&m](int r, int c) { return m.cellStyle(r, c); });
    }
    mainElastic_->setEnabled(m.mainEnabled);
    // While a run goes, Stop is the one control that answers.
    for (QWidget* w : std::initializer_list<QWidget*>{titleTB_, authorTB_, commentsTB_, titleE_, authorE_, commentsE_,
                                                      monteCarloElastic_})
        w->setEnabled(!m.running);
    pictureDest_->setVisible(m.progressVisible);
    if (!m.progressVisible) pictureDest_->setProgress(0, 0);
    stopCB_->setVisible(m.stopVisible);
    refreshMenus();
}

void InputForm::showProgress(double total, double done) { pictureDest_->setProgress(total, done); }

// ---------------------------------------------------------------- events

bool InputForm::eventFilter(QObject* watched, QEvent* event) {
    InputFormModel& m = *model_;
    const QEvent::Type type = event->type();

    // The status line follows the pointer.
    if (type == QEvent::Enter) {
        static const std::map<QString, HintPlace> places = {
            {QStringLiteral("mainElastic"), HintPlace::mainElastic}, {QStringLiteral("TabElastic"), HintPlace::TabElastic},
            {QStringLiteral("AquiferE"), HintPlace::AquiferE},       {QStringLiteral("ContaminantE"), HintPlace::ContaminantE},
            {QStringLiteral("ModelE"), HintPlace::ModelE},           {QStringLiteral("authorE"), HintPlace::authorE},
            {QStringLiteral("CommentsE"), HintPlace::CommentsE},     {QStringLiteral("MonteCarloElastic"), HintPlace::MonteCarloElastic},
        };
        const auto it = places.find(watched->objectName());
        if (it != places.end()) m.hover(it->second);
        else if (qobject_cast<TermGridView*>(watched)) m.hover(HintPlace::Grid);
        return false;
    }

    // Clicks on the labels of the notes and on the Monte Carlo panel.
    if (type == QEvent::MouseButtonPress) {
        if (watched == titleE_) { m.noteLabelClicked(NoteField::Title); return true; }
        if (watched == authorE_) { m.noteLabelClicked(NoteField::Author); return true; }
        if (watched == commentsE_) { m.noteLabelClicked(NoteField::Comments); return true; }
        if (watched == monteCarloElastic_) {
            if (m.menusEnabled) m.menuMonteCarloClick(monteCarloItem::Generate);
            return true;
        }
    }
    if (type == QEvent::KeyPress && (watched == titleTB_ || watched == authorTB_ || watched == commentsTB_)) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {  // "{TAB}"
            focusNextChild();
            return true;
        }
        return false;
    }
    if (qobject_cast<TermGridView*>(watched) && type == QEvent::FocusIn) {
        m.gridEntered();
        return false;
    }

    int d = 0;
    const int r = rowOf(watched, d);
    if (r < 0 || d != m.dimension()) return QDialog::eventFilter(watched, event);
    const RowWidgets& w = rows_[static_cast<std::size_t>(d)][static_cast<std::size_t>(r)];

    switch (type) {
    case QEvent::KeyPress: {
        if (watched != w.entry) break;
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {  // "{TAB}"
            focusNextChild();
            return true;
        }
        if (isTyping(key) && !m.rowKeyPress(r)) return true;
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (!m.rowClicked(r)) return true;
        break;
    case QEvent::FocusIn:
        if (watched == w.entry) m.rowEntered(r);
        break;
    case QEvent::FocusOut: {
        if (watched != w.entry) break;
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        // Another window taking the focus is no leaving of the row.
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) break;
        if (!closing_) m.rowLeft(r);
        break;
    }
    default: break;
    }
    return QDialog::eventFilter(watched, event);
}

void InputForm::moveFocus(const FocusRequest& focus) {
    // After the event that asked for it: a focus change inside a focus event is not taken.
    QTimer::singleShot(0, this, [this, focus] {
        const int d = focus.dimension;
        if (focus.stop) {
            stopCB_->setFocus(Qt::OtherFocusReason);
            return;
        }
        if (focus.next) {
            focusNextChild();
            return;
        }
        if (d < 1 || d > 3) return;
        QTabWidget* tabs = tabs_[static_cast<std::size_t>(d)];
        if (focus.tab >= 0) tabs->setCurrentIndex(focus.tab);
        if (focus.grid) {
            TermGridView* g = grids_[static_cast<std::size_t>(d)];
            g->setCurrentCell(focus.gridRow, focus.gridColumn);
            g->setFocus(Qt::OtherFocusReason);
            if (focus.editMode)
                if (QTableWidgetItem* item = g->item(focus.gridRow, focus.gridColumn)) g->editItem(item);
        } else if (focus.row >= 0) {
            if (QLineEdit* e = rows_[static_cast<std::size_t>(d)][static_cast<std::size_t>(focus.row)].entry) {
                e->setFocus(Qt::OtherFocusReason);
                e->selectAll();
            }
        }
    });
}

// ---------------------------------------------------------------- host services

void InputForm::showNotes(NotesPad& pad) {
    NotesDialog dialog(pad, this);
    dialog.exec();
}

bool InputForm::showNewModelDialog() {
    NewFileDialog dialog(this);  // it starts from the process-wide model
    if (dialog.exec() != QDialog::Accepted) return false;
    dialog.form().ok(model_->data());
    return true;
}

bool InputForm::printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) {
    PrintedReport report;
    report.title = QStringLiteral("Ground Water Model (Saturated)");
    for (const std::string& l : lines) report.lines << q(l);
    // Tab(n) counts columns as wide as a figure of the font, so that a label
    // never reaches the column of its value.
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(report.fontPoints);
    const QFontMetricsF metrics(font);
    const double mmPerColumn = metrics.horizontalAdvance(QLatin1Char('0')) / logicalDpiX() * 25.4;
    for (int column : tabColumns) report.tabStopsMm << (column - 1) * mmPerColumn;
    if (!pdfOutput_.isEmpty()) return printReportToPdf(report, pdfOutput_);
    return printReportWithDialog(report, this);
}

void InputForm::printerSetup() {
    QPrintDialog dialog(&sharedPrinter(), this);
    dialog.setObjectName(QStringLiteral("CMDialog1"));
    dialog.setWindowTitle(QStringLiteral("Printer Setup"));
    dialog.exec();
}

void InputForm::showHelp() { bm::showHelp(HelpCommand::Context, refreshMenuLabels(model_->data()), this); }

bool InputForm::monteCarloScreenAvailable() { return hasMonteCarloScreenOpener(); }

void InputForm::showMonteCarloScreen() {
    if (monteCarloOpener()) monteCarloOpener()(this);
}

void InputForm::openScreenForModel() {
    otherScreen_ = true;
    QTimer::singleShot(0, this, [this] { QDialog::done(QDialog::Accepted); });
}

void InputForm::closeScreen() {
    closePathDone_ = true;
    QDialog::done(QDialog::Accepted);
}

void InputForm::keyPressEvent(QKeyEvent* event) {
    // The screen is left by its File menu or its window, not by Escape.
    if (event->key() == Qt::Key_Escape) {
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_F1) {
        model_->mnuFileClick(topMenu::Help);
        return;
    }
    QDialog::keyPressEvent(event);
}

void InputForm::done(int result) {
    if (model_->running) return;  // only Stop can end a run
    if (!closePathDone_ && !otherScreen_) {
        closing_ = true;
        const bool leave = model_->exitScreen();
        closing_ = false;
        if (!leave) return;
        closePathDone_ = true;
    }
    QDialog::done(result);
}

// ---------------------------------------------------------------- registration

void registerInputForm() {
    registerModelScreen(ModelScreen::inputForm, [](QWidget* parent, bool saveEnabled) {
        bool other = false;
        {
            InputForm form(theDataSet(), theAppState(), ui(), parent);
            form.load(saveEnabled);
            ui().setBusy(false);
            form.exec();
            other = form.wantsOtherScreen();
        }
        const DataSet& d = theDataSet();
        if (other && modelScreenFor(d.modelType, d.multiChemical) != ModelScreen::inputForm)
            openModelScreen(parent, modelScreenFor(d.modelType, d.multiChemical), true);
    });
}

}  // namespace bm
