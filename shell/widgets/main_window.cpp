#include "shell/widgets/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QFrame>
#include <QLabel>
#include <QMenuBar>
#include <QPixmap>
#include <QPrintDialog>
#include <QPrinter>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "model/app_state.h"
#include "model/data_set.h"
#include "shell/base/user_interface.h"
#include "shell/widgets/help_viewer.h"
#include "shell/widgets/info_dialogs.h"
#include "shell/widgets/model_screens.h"
#include "shell/widgets/new_model_dialogs.h"
#include "shell/widgets/preferences_dialog.h"
#include "shell/widgets/report_printer.h"
#include "shell/widgets/usual_shortcuts.h"

namespace bm {

namespace {

// The program's user interface, except that the next Open dialog is answered
// with a file already chosen (on the command line).
class ChosenFile : public UserInterface {
public:
    ChosenFile(UserInterface& inner, std::string path) : inner_(inner), path_(std::move(path)) {}
    MessageAnswer showMessage(const MessageRequest& request) override { return inner_.showMessage(request); }
    std::optional<std::string> askFile(const FileDialogRequest& request) override {
        if (path_ && request.kind == FileDialogRequest::Kind::Open) return std::exchange(path_, std::nullopt);
        return inner_.askFile(request);
    }
    void setBusy(bool busy) override { inner_.setBusy(busy); }
    void reportProgress(ProgressOwner owner, double total, double done) override { inner_.reportProgress(owner, total, done); }
    void processEvents() override { inner_.processEvents(); }
    bool startProgram(const std::string& program, const std::vector<std::string>& arguments) override {
        return inner_.startProgram(program, arguments);
    }

private:
    UserInterface& inner_;
    std::optional<std::string> path_;
};

bool hasModelExtension(const QString& path) {
    static const QStringList extensions = {"one", "two", "tri", "mc1", "mc2", "mc3", "u1d", "mcu", "var"};
    return extensions.contains(QFileInfo(path).suffix().toLower());
}

}  // namespace

MainWindow::MainWindow(DataSet& dataSet, AppState& appState, FileCommands& files, QWidget* parent)
    : QMainWindow(parent), data_(dataSet), state_(appState) {
    setObjectName(QStringLiteral("Main"));
    form_ = std::make_unique<MainForm>(dataSet, appState, *this, ui(), files);

    auto* elastic = new QFrame(this);
    elastic->setObjectName(QStringLiteral("vsElastic1"));
    elastic->setAutoFillBackground(true);
    QPalette pal = elastic->palette();
    pal.setColor(QPalette::Window, QColor(0, 64, 96));
    pal.setColor(QPalette::WindowText, Qt::white);
    elastic->setPalette(pal);
    auto* layout = new QVBoxLayout(elastic);
    title_ = new QLabel(elastic);
    title_->setObjectName(QStringLiteral("titleL"));
    title_->setAlignment(Qt::AlignCenter);
    QFont f = title_->font();
    f.setPointSize(16);
    f.setBold(true);
    title_->setFont(f);
    image_ = new QLabel(elastic);
    image_->setObjectName(QStringLiteral("Image1"));
    image_->setAlignment(Qt::AlignCenter);
    layout->addStretch();
    layout->addWidget(image_);
    layout->addWidget(title_);
    layout->addStretch();
    setCentralWidget(elastic);

    panel_ = new QLabel(QString::fromStdString(form_->filenamePanel()), this);
    panel_->setObjectName(QStringLiteral("filenamePanel"));
    panel_->setFrameShape(QFrame::Panel);
    panel_->setFrameShadow(QFrame::Sunken);
    statusBar()->addWidget(panel_, 1);
    statusBar()->setSizeGripEnabled(false);

    buildMenus();
    applyUsualShortcuts(this);
    auto* f1 = new QShortcut(QKeySequence(Qt::Key_F1), this);
    connect(f1, &QShortcut::activated, this, [this] { form_->helpKey(); });
    resize(900, 640);
}

MainWindow::~MainWindow() = default;

QAction* MainWindow::addItem(QMenu* menu, const QString& name, const QString& caption) {
    QAction* a = menu->addAction(caption);
    a->setObjectName(name);
    return a;
}

QAction* MainWindow::menuItem(const QString& name) const { return findChild<QAction*>(name); }

void MainWindow::buildMenus() {
    QMenuBar* bar = menuBar();
    MainForm* f = form_.get();

    // menuMain(0) "&File": the items of menuFile by index.
    QMenu* file = bar->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("menuFile"));
    file->menuAction()->setObjectName(QStringLiteral("menuMain(0)"));
    const struct {
        int index;
        const char* caption;
    } fileItems[] = {{10, "&New"}, {20, "&Open..."}, {23, "&Edit..."}, {25, nullptr},
                     {40, "&Close"}, {45, nullptr}, {60, "E&xit Ground Water Model"}};
    for (const auto& item : fileItems) {
        const QString name = QStringLiteral("menuFile(%1)").arg(item.index);
        QAction* a = item.caption ? addItem(file, name, QString::fromLatin1(item.caption)) : file->addSeparator();
        a->setObjectName(name);
        a->setData(item.index);
        if (item.caption) connect(a, &QAction::triggered, this, [f, i = item.index] { f->menuFileClick(i); });
    }
    menuItem(QStringLiteral("menuFile(23)"))->setVisible(false);

    // menuMain(1) "&Model".
    QMenu* model = bar->addMenu(QStringLiteral("&Model"));
    model->setObjectName(QStringLiteral("menuModel"));
    model->menuAction()->setObjectName(QStringLiteral("menuMain(1)"));
    connect(addItem(model, QStringLiteral("menuModel(0)"), QStringLiteral("&New")), &QAction::triggered, this,
            [f] { f->menuModelClick(0); });
    connect(addItem(model, QStringLiteral("menuModel(1)"), QStringLiteral("&Load")), &QAction::triggered, this,
            [f] { f->menuModelClick(1); });

    // The hidden mnuFile: alternative routes.
    QMenu* hidden = bar->addMenu(QStringLiteral("&File"));
    hidden->setObjectName(QStringLiteral("mnuFile"));
    hidden->menuAction()->setObjectName(QStringLiteral("mnuFileMenu"));
    hidden->menuAction()->setVisible(false);
    connect(addItem(hidden, QStringLiteral("menuNew"), QStringLiteral("&New")), &QAction::triggered, this,
            [f] { f->menuFileClick(fileMenu::New); });
    connect(addItem(hidden, QStringLiteral("menuOpen"), QStringLiteral("&Open...")), &QAction::triggered, this,
            [f] { f->menuOpenClick(); });
    connect(addItem(hidden, QStringLiteral("menuEdit"), QStringLiteral("&Edit...")), &QAction::triggered, this,
            [f] { f->menuFileClick(fileMenu::Edit); });
    connect(addItem(hidden, QStringLiteral("menuClose"), QStringLiteral("&Close")), &QAction::triggered, this,
            [f] { f->menuFileClick(fileMenu::Close); });
    connect(addItem(hidden, QStringLiteral("menuIcon"), QStringLiteral("&Iconize")), &QAction::triggered, this,
            [f] { f->menuIconClick(); });
    hidden->addSeparator()->setObjectName(QStringLiteral("menusep"));
    connect(addItem(hidden, QStringLiteral("menuPrint"), QStringLiteral("&Print")), &QAction::triggered, this,
            [f] { f->menuFileClick(fileMenu::Print); });
    connect(addItem(hidden, QStringLiteral("menuPrinterSetup"), QStringLiteral("Printer &Setup")), &QAction::triggered,
            this, [f] { f->menuPrinterSetupClick(); });
    hidden->addSeparator()->setObjectName(QStringLiteral("menusep2"));
    addItem(hidden, QStringLiteral("menuTest"), QStringLiteral("Testing..."))->setEnabled(false);
    connect(addItem(hidden, QStringLiteral("mnureturnshell"), QStringLiteral("&Return to Main Shell")),
            &QAction::triggered, this, [f] { f->mnureturnshellClick(); });
    connect(addItem(hidden, QStringLiteral("menuExit"), QStringLiteral("E&xit Program")), &QAction::triggered, this,
            [f] { f->menuExitClick(); });

    // menuRun.
    QMenu* run = bar->addMenu(QStringLiteral("&Run"));
    run->setObjectName(QStringLiteral("menuRun"));
    connect(addItem(run, QStringLiteral("menuRun2"), QStringLiteral("&Run Program")), &QAction::triggered, this,
            [f] { f->runProgramClick(); });
    connect(addItem(run, QStringLiteral("menuView"), QStringLiteral("&View Output")), &QAction::triggered, this,
            [f] { f->viewOutputClick(); });
    connect(addItem(run, QStringLiteral("menuCreate"), QStringLiteral("View &Contour Plot")), &QAction::triggered, this,
            [f] { f->createPlotClick(); });
    run->addSeparator()->setObjectName(QStringLiteral("mnuRunSep"));
    connect(addItem(run, QStringLiteral("mnuExist(0)"), QStringLiteral("View Existing Output")), &QAction::triggered,
            this, [f] { f->mnuExistClick(0); });
    connect(addItem(run, QStringLiteral("mnuExist(1)"), QStringLiteral("View Existing Graphs / Plots")),
            &QAction::triggered, this, [f] { f->mnuExistClick(1); });

    // menuInfo.
    QMenu* info = bar->addMenu(QStringLiteral("&Info"));
    info->setObjectName(QStringLiteral("menuInfo"));
    const char* infoItems[] = {"&About", "&Disclaimer", "&References"};
    for (int i = 1; i <= 3; ++i) {
        QAction* a = addItem(info, QStringLiteral("mnuInfo(%1)").arg(i), QString::fromLatin1(infoItems[i - 1]));
        a->setData(i);
        connect(a, &QAction::triggered, this, [f, i] { f->mnuInfoClick(i); });
    }

    // menuSpecial "&Options".
    QMenu* options = bar->addMenu(QStringLiteral("&Options"));
    options->setObjectName(QStringLiteral("menuSpecial"));
    connect(addItem(options, QStringLiteral("menuStatus"), QStringLiteral("&Preferences...")), &QAction::triggered,
            this, [f] { f->menuStatusClick(); });

    // menuHelp.
    QMenu* help = bar->addMenu(QStringLiteral("&Help"));
    help->setObjectName(QStringLiteral("menuHelp"));
    const char* helpItems[] = {"&Contents", "&Index of Topics...", "&Obtaining Technical Support..",
                               "&About Ground Water Model..."};
    for (int i = 0; i < 4; ++i) {
        QAction* a = addItem(help, QStringLiteral("mnuHelp(%1)").arg(i), QString::fromLatin1(helpItems[i]));
        a->setData(i);
        connect(a, &QAction::triggered, this, [f, i] { f->mnuHelpClick(i); });
    }

    // menuTimeVarying: opens the time-varying screen directly.
    timeVarying_ = bar->addAction(QStringLiteral("Time varying"));
    timeVarying_->setObjectName(QStringLiteral("menuTimeVarying"));
    timeVarying_->setVisible(false);
    connect(timeVarying_, &QAction::triggered, this, [f] { f->menuTimeVaryingClick(); });
}

std::string MainWindow::dataFileOnCommandLine(const std::vector<std::string>& arguments) {
    const std::string words = commandLineText(arguments);
    DataSet scratch;
    if (words.empty() || applyCommandLine(words, scratch) != kCaptionConstant) return {};
    const QFileInfo file(QString::fromStdString(words));
    if (!file.isFile() && !hasModelExtension(file.filePath())) return {};
    return file.absoluteFilePath().toStdString();
}

void MainWindow::openNamedFile(const std::string& path) {
    UserInterface& previous = ui();
    ChosenFile chosen(previous, path);
    setUserInterface(&chosen);
    form_->menuFileClick(fileMenu::Open);
    setUserInterface(&previous);
}

void MainWindow::start(const std::vector<std::string>& arguments, const std::string& programDirectory) {
    const std::string named = dataFileOnCommandLine(arguments);  // relative to where the program was started
    form_->load(arguments, programDirectory);
    setWindowTitle(QString::fromStdString(form_->caption()));
    title_->setText(QString::fromStdString(form_->caption()));
    setHelpFilePath(form_->paths().helpFile);
    timeVarying_->setVisible(form_->timeVaryingItemVisible());
    if (!form_->paths().splashFile.empty()) {
        const QPixmap picture(QString::fromStdString(form_->paths().splashFile));
        if (!picture.isNull()) image_->setPixmap(picture);
    }
    filenamePanelChanged(form_->filenamePanel());
    if (!named.empty()) QTimer::singleShot(0, this, [this, named] { openNamedFile(named); });
}

QString MainWindow::filenamePanelText() const { return panel_->text(); }

void MainWindow::showNewModelDialog(NewModelDialog dialog) {
    switch (dialog) {
    case NewModelDialog::NewFile: {
        NewFileDialog d(this);
        d.exec();
        break;
    }
    case NewModelDialog::unsaturatedNewFile: {
        UnsaturatedNewFileDialog d(this);
        d.exec();
        break;
    }
    case NewModelDialog::timeVaryingNewForm: {
        TimeVaryingNewDialog d(this);
        d.exec();
        break;
    }
    }
}

void MainWindow::showModelScreen(ModelScreen screen, bool saveEnabled) { openModelScreen(this, screen, saveEnabled); }

void MainWindow::filenamePanelChanged(const std::string& text) { panel_->setText(QString::fromStdString(text)); }

void MainWindow::showPrintDialog() {
    QPrintDialog dialog(&sharedPrinter(), this);
    dialog.setObjectName(QStringLiteral("CMDialog1"));
    dialog.exec();
}

void MainWindow::showPreferences() {
    PreferencesDialog d(state_, this);
    d.exec();
}

void MainWindow::showAbout() {
    AboutForm d(this);
    d.exec();
}

void MainWindow::showDisclaimer() {
    DisclaimerForm d(this);
    d.exec();
}

void MainWindow::showSupport() {
    SupportForm d(this);
    d.exec();
}

void MainWindow::showHelp(HelpCommand command, int context) { bm::showHelp(command, context, this); }

void MainWindow::closeHelp() { bm::closeHelp(); }

void MainWindow::minimize() { showMinimized(); }

void MainWindow::quit() {
    quitRequested_ = true;
    emit quitting();
    bm::closeHelp();
    close();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    bm::closeHelp();
    // When Main goes, the process's folder is the suite root.
    if (!state_.suiteRoot.empty()) QDir::setCurrent(QString::fromStdString(state_.suiteRoot));
    QMainWindow::closeEvent(event);
}

}  // namespace bm
