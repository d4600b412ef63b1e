#include "shell/widgets/model_screen_dialog.h"

#include <QAction>
#include <QFocusEvent>
#include <QFontMetricsF>
#include <QFrame>
#include <QGroupBox>
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
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <array>

#include "fitting/widgets/fit_dialog.h"
#include "shell/help_context.h"
#include "shell/widgets/help_viewer.h"
#include "shell/widgets/model_screens.h"
#include "shell/widgets/new_model_dialogs.h"
#include "shell/widgets/notes_dialog.h"
#include "shell/widgets/numeric_key_filter.h"
#include "shell/widgets/progress_picture.h"
#include "shell/widgets/qt_user_interface.h"
#include "shell/widgets/report_printer.h"
#include "shell/widgets/term_grid_view.h"
#include "shell/widgets/usual_shortcuts.h"
#include "species/widgets/select_chemical_form.h"

namespace bm {

namespace {

QString q(const std::string& s) { return QString::fromStdString(s); }

const std::array<std::pair<UnitMenu, const char*>, 3> kUnitMenus = {
    std::pair{UnitMenu::Length, "menuLength"}, std::pair{UnitMenu::Time, "menuTime"},
    std::pair{UnitMenu::Concentration, "menuConc"}};

}  // namespace

std::function<void(QWidget*, bool)> modelScreenOpener(ModelScreen self, ModelScreenFactory make) {
    return [self, make](QWidget* parent, bool saveEnabled) {
        bool other = false;
        {
            const std::unique_ptr<ModelScreenDialog> screen = make(parent, saveEnabled);
            ui().setBusy(false);
            screen->exec();
            other = screen->wantsOtherScreen();
        }
        const DataSet& d = theDataSet();
        const ModelScreen next = modelScreenFor(d.modelType, d.multiChemical);
        if (other && next != self) openModelScreen(parent, next, true);
    };
}

QLabel* panelLabel(const QString& name, QWidget* parent) {
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    l->setFrameShape(QFrame::StyledPanel);
    l->setFrameShadow(QFrame::Sunken);
    l->setMinimumHeight(24);
    return l;
}

void showInputRow(QLabel* panel, QLineEdit* entry, QLabel* units, const std::string& caption,
                  const std::string& unitCaption, const std::string& text, bool enabled, bool locked) {
    panel->setText(q(caption));
    units->setText(q(unitCaption));
    if (!entry) return;
    if (entry->text() != q(text)) {
        entry->setText(q(text));
        entry->setCursorPosition(0);  // a marker shows its visible word
    }
    entry->setEnabled(enabled);
    entry->setReadOnly(locked);
    entry->setStyleSheet(locked ? QStringLiteral("QLineEdit { color: rgb(255, 0, 0); }") : QString());
}

QString indexedName(const QString& name, int index) { return name + u'(' + QString::number(index) + u')'; }

ModelScreenDialog::ModelScreenDialog(QWidget* parent) : QDialog(parent) {
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

ModelScreenDialog::~ModelScreenDialog() {
    qtUserInterface().setProgressSink(owner_, nullptr);
    if (model_) model_->setHost(nullptr);
}

QVBoxLayout* ModelScreenDialog::attach(ScreenModel& model, ProgressOwner owner) {
    model_ = &model;
    owner_ = owner;
    model.setHost(this);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(6, 0, 6, 4);
    auto* bar = new QMenuBar(this);
    bar->setObjectName(QStringLiteral("mnuFile"));
    buildMenus(bar);
    applyUsualShortcuts(this);
    outer->setMenuBar(bar);
    qtUserInterface().setProgressSink(owner, [this](double total, double done) { showProgress(total, done); });
    return outer;
}

// ---------------------------------------------------------------- the shared parts

QAction* ModelScreenDialog::addItem(QMenu* menu, const QString& name, const QString& caption,
                                    std::function<void()> action) {
    QAction* a = menu->addAction(caption);
    a->setObjectName(name);
    connect(a, &QAction::triggered, this, [action] { action(); });
    actions_[name] = a;
    return a;
}

void ModelScreenDialog::buildMenus(QMenuBar* bar) {
    ScreenModel& m = *model_;
    const auto top = [&](int index, const QString& caption) {
        QMenu* menu = bar->addMenu(caption);
        menu->setObjectName(indexedName(QStringLiteral("mnuFile"), index));
        menu->menuAction()->setObjectName(indexedName(QStringLiteral("mnuFile"), index));
        actions_[indexedName(QStringLiteral("mnuFile"), index)] = menu->menuAction();
        return menu;
    };
    QMenu* file = top(topMenu::File, QStringLiteral("&File"));
    for (const MenuItem& item : m.fileMenu()) {
        if (item.separatorBefore) file->addSeparator();
        addItem(file, indexedName(QStringLiteral("menuFile"), item.index), q(item.caption),
                [this, i = item.index] { model_->menuFileClick(i); });
    }
    QAction* calculate = bar->addAction(QStringLiteral("&Calculate!"));
    calculate->setObjectName(indexedName(QStringLiteral("mnuFile"), topMenu::Calculate));
    actions_[calculate->objectName()] = calculate;
    connect(calculate, &QAction::triggered, this, [this] { model_->mnuFileClick(topMenu::Calculate); });
    QAction* fit = bar->addAction(q(m.fitMenuItem().caption));
    fit->setObjectName(QStringLiteral("mnuFit"));
    actions_[fit->objectName()] = fit;
    connect(fit, &QAction::triggered, this, [this] { model_->fitToObservations(); });

    QMenu* results = top(topMenu::Results, QStringLiteral("&Results"));
    for (const MenuItem& item : m.resultsMenu())
        addItem(results, indexedName(QStringLiteral("menuResults"), item.index), q(item.caption),
                [this, i = item.index] { model_->menuResultsClick(i); });

    QMenu* units = top(topMenu::Units, QStringLiteral("&Units"));
    const std::array<QString, 3> unitCaptions = {QStringLiteral("&Length"), QStringLiteral("&Time"),
                                                 QStringLiteral("&Concentration")};
    for (std::size_t k = 0; k < kUnitMenus.size(); ++k) {
        if (!m.offersUnitMenu(kUnitMenus[k].first)) continue;
        const QString name = QString::fromLatin1(kUnitMenus[k].second);
        QMenu* sub = units->addMenu(unitCaptions[k]);
        sub->setObjectName(name);
        for (const MenuItem& item : m.unitMenu(kUnitMenus[k].first)) {
            if (item.separatorBefore) sub->addSeparator();
            QAction* a = addItem(sub, indexedName(name, item.index), q(item.caption),
                                 [this, menu = kUnitMenus[k].first, i = item.index] { model_->menuUnitsClick(menu, i); });
            a->setCheckable(true);
        }
    }

    QMenu* monte = top(topMenu::MonteCarlo, QStringLiteral("&Monte Carlo"));
    for (const MenuItem& item : m.monteCarloMenu()) {
        if (item.separatorBefore) monte->addSeparator();
        addItem(monte, indexedName(QStringLiteral("menuMonteCarlo"), item.index), q(item.caption),
                [this, i = item.index] { model_->menuMonteCarloClick(i); });
    }
    QAction* help = bar->addAction(QStringLiteral("&Help"));
    help->setObjectName(indexedName(QStringLiteral("mnuFile"), topMenu::Help));
    actions_[help->objectName()] = help;
    connect(help, &QAction::triggered, this, [this] { model_->mnuFileClick(topMenu::Help); });
}

void ModelScreenDialog::addCaptions(QVBoxLayout* outer) {
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

    for (auto [entry, field] : {std::pair{titleTB_, NoteField::Title}, std::pair{authorTB_, NoteField::Author},
                                std::pair{commentsTB_, NoteField::Comments}}) {
        connect(entry, &QLineEdit::textEdited, this,
                [this, f = field](const QString& t) { model_->noteEdited(f, t.toStdString()); });
        entry->installEventFilter(this);
    }
    for (QWidget* w : std::initializer_list<QWidget*>{modelE_, aquiferE_, contaminantE_, titleE_, authorE_, commentsE_,
                                                      monteCarloElastic_})
        w->installEventFilter(this);
}

void ModelScreenDialog::addStatusLine(QVBoxLayout* outer) {
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
    connect(stopCB_, &QPushButton::clicked, this, [this] { model_->stopClicked(); });
}

QAction* ModelScreenDialog::menuItem(const QString& name) const {
    const auto it = actions_.find(name);
    return it == actions_.end() ? nullptr : it->second;
}

// ---------------------------------------------------------------- showing the model

void ModelScreenDialog::refreshMenus() {
    const ScreenModel& m = *model_;
    for (const MenuItem& item : m.topMenus())
        if (QAction* a = menuItem(indexedName(QStringLiteral("mnuFile"), item.index))) a->setEnabled(item.enabled);
    for (const MenuItem& item : m.fileMenu())
        if (QAction* a = menuItem(indexedName(QStringLiteral("menuFile"), item.index))) a->setEnabled(item.enabled);
    if (QAction* a = menuItem(QStringLiteral("mnuFit"))) a->setEnabled(m.fitMenuItem().enabled);
    for (const auto& [menu, name] : kUnitMenus)
        for (const MenuItem& item : m.unitMenu(menu))
            if (QAction* a = menuItem(indexedName(QString::fromLatin1(name), item.index))) a->setChecked(item.checked);
}

void ModelScreenDialog::refresh() {
    ScreenModel& m = *model_;
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
    refreshInputs();
    // While a run goes, Stop is the one control that answers.
    for (QWidget* w : std::initializer_list<QWidget*>{titleTB_, authorTB_, commentsTB_, titleE_, authorE_, commentsE_,
                                                      monteCarloElastic_})
        w->setEnabled(!m.running);
    pictureDest_->setVisible(m.progressVisible);
    if (!m.progressVisible) pictureDest_->setProgress(0, 0);
    stopCB_->setVisible(m.stopVisible);
    refreshMenus();
}

void ModelScreenDialog::showProgress(double total, double done) { pictureDest_->setProgress(total, done); }

// ---------------------------------------------------------------- events

bool ModelScreenDialog::sharedEvent(QObject* watched, QEvent* event) {
    ScreenModel& m = *model_;
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
    }
    return false;
}

namespace {

bool isTyping(const QKeyEvent* key) {
    if (key->key() == Qt::Key_Backspace || key->key() == Qt::Key_Delete) return true;
    const QString t = key->text();
    return !t.isEmpty() && t.at(0).unicode() >= 32 && t.at(0).unicode() != 127;
}

}  // namespace

bool ModelScreenDialog::rowEvent(QObject* watched, QEvent* event, QObject* entry, const RowEvents& on) {
    switch (event->type()) {
    case QEvent::KeyPress: {
        if (watched != entry) break;
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {  // "{TAB}"
            focusNextChild();
            return true;
        }
        if (isTyping(key) && !on.keyPress()) return true;
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (!on.clicked()) return true;
        break;
    case QEvent::FocusIn:
        if (watched == entry) on.entered();
        break;
    case QEvent::FocusOut: {
        if (watched != entry) break;
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        // Another window taking the focus is no leaving of the row.
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) break;
        if (!closing()) on.left();
        break;
    }
    default: break;
    }
    return false;
}

ModelScreenDialog::InputRowWidgets ModelScreenDialog::addInputRow(QGridLayout* layout, int line, const QString& array,
                                                                   int index, const char* property,
                                                                   std::function<void(const std::string&)> edited) {
    InputRowWidgets w;
    QWidget* parent = layout->parentWidget();
    w.panel = new QLabel(parent);
    w.panel->setObjectName(indexedName(array + QStringLiteral("Panel"), index));
    w.panel->setWordWrap(true);
    w.panel->setMinimumWidth(170);
    w.units = new QLabel(parent);
    w.units->setObjectName(indexedName(array + QStringLiteral("Units"), index));
    w.units->setMinimumWidth(72);
    layout->addWidget(w.panel, line, 0);
    layout->addWidget(w.units, line, 2);
    if (edited) {
        w.entry = new QLineEdit(parent);
        w.entry->setObjectName(indexedName(array, index));
        w.entry->setMinimumWidth(120);
        w.entry->installEventFilter(NumericKeyFilter::instance());
        w.entry->installEventFilter(this);  // the screen's own filter comes first
        connect(w.entry, &QLineEdit::textEdited, this,
                [edited = std::move(edited)](const QString& t) { edited(t.toStdString()); });
        layout->addWidget(w.entry, line, 1);
    }
    for (QWidget* x : std::initializer_list<QWidget*>{w.panel, w.entry, w.units}) {
        if (!x) continue;
        x->setProperty(property, index);
        if (x != w.entry) x->installEventFilter(this);
    }
    return w;
}

QWidget* ModelScreenDialog::inScrollArea(QWidget* page) {
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(page);
    return scroll;
}

QGridLayout* ModelScreenDialog::inputGroup(QWidget* page, const QString& title) {
    auto* box = new QGroupBox(title, page);
    auto* grid = new QGridLayout(box);
    grid->setVerticalSpacing(5);
    grid->setHorizontalSpacing(8);
    grid->setColumnStretch(0, 1);
    return grid;
}

QLabel* ModelScreenDialog::computedAtLabel(QWidget* parent) {
    auto* label = new QLabel(QStringLiteral("Computed at"), parent);
    label->setObjectName(QStringLiteral("Label5"));
    label->setStyleSheet(QStringLiteral("QLabel { font-weight: bold; }"));
    return label;
}

void ModelScreenDialog::focusCell(QTableWidget* table, const FocusRequest& focus) {
    table->setCurrentCell(focus.gridRow, focus.gridColumn);
    table->setFocus(Qt::OtherFocusReason);
    if (focus.editMode)
        if (QTableWidgetItem* item = table->item(focus.gridRow, focus.gridColumn)) table->editItem(item);
}

void ModelScreenDialog::focusEntry(QLineEdit* entry) {
    if (!entry) return;
    entry->setFocus(Qt::OtherFocusReason);
    entry->selectAll();
}

bool ModelScreenDialog::sharedFocus(const FocusRequest& focus) {
    if (focus.stop) {
        stopCB_->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (focus.next) {
        focusNextChild();
        return true;
    }
    return false;
}

bool ModelScreenDialog::eventFilter(QObject* watched, QEvent* event) {
    if (sharedEvent(watched, event)) return true;
    return QDialog::eventFilter(watched, event);
}

void ModelScreenDialog::keyPressEvent(QKeyEvent* event) {
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

void ModelScreenDialog::done(int result) {
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

// ---------------------------------------------------------------- host services

void ModelScreenDialog::showNotes(NotesPad& pad) {
    NotesDialog dialog(pad, this);
    dialog.exec();
}

bool ModelScreenDialog::showFitDialog(DataSet& model) {
    FitDialog dialog(model, model_->ui(), &model_->appState(), this);
    dialog.exec();
    return dialog.applied();
}

bool ModelScreenDialog::showNewModelDialog() {
    NewFileDialog dialog(this);  // it starts from the process-wide model
    if (dialog.exec() != QDialog::Accepted) return false;
    dialog.form().ok(model_->data());
    return true;
}

void ModelScreenDialog::showChemicalPicker(DataSet& model) { showSelectChemicalForm(model, this); }

bool ModelScreenDialog::printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) {
    return printColumnReport(windowTitle().section(QStringLiteral(" -- "), 0, 0), lines, tabColumns, this, pdfOutput_);
}

void ModelScreenDialog::printerSetup() {
    QPrintDialog dialog(&sharedPrinter(), this);
    dialog.setObjectName(QStringLiteral("CMDialog1"));
    dialog.setWindowTitle(QStringLiteral("Printer Setup"));
    dialog.exec();
}

void ModelScreenDialog::showHelp() { bm::showHelp(HelpCommand::Context, refreshMenuLabels(model_->data()), this); }

bool ModelScreenDialog::screenAvailable(ModelScreen screen) { return hasModelScreen(screen); }

void ModelScreenDialog::openScreen(ModelScreen screen) { openModelScreen(this, screen, true); }

void ModelScreenDialog::openScreenForModel() {
    otherScreen_ = true;
    QTimer::singleShot(0, this, [this] { QDialog::done(QDialog::Accepted); });
}

void ModelScreenDialog::closeScreen() {
    closePathDone_ = true;
    QDialog::done(QDialog::Accepted);
}

}  // namespace bm
