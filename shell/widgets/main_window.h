#pragma once
// Main: the start window. Its menus carry the control names and indices of
// the screen; each command goes to MainForm, which calls back through MainHost.

#include <QMainWindow>
#include <memory>
#include <string>
#include <vector>

#include "shell/main_form.h"

class QAction;
class QLabel;
class QMenu;

namespace bm {

class MainWindow : public QMainWindow, public MainHost {
    Q_OBJECT
public:
    MainWindow(DataSet& data, AppState& state, FileCommands& files, QWidget* parent = nullptr);
    ~MainWindow() override;

    // The load of Main: the command line, the environment check, the splash
    // picture. A data file named on the command line is then opened as File >
    // Open does (once the event loop runs).
    void start(const std::vector<std::string>& arguments, const std::string& programDirectory);
    // The data file that command-line words name (joined by blanks, as the
    // model words are), made absolute; empty for a model word or words that
    // name no data file (an existing file, or a name with a model's extension).
    static std::string dataFileOnCommandLine(const std::vector<std::string>& arguments);
    // File > Open with its dialog answered by `path`.
    void openNamedFile(const std::string& path);
    MainForm& form() { return *form_; }
    QString filenamePanelText() const;
    bool quitRequested() const { return quitRequested_; }
    // The action of a menu item by its control name ("menuFile(10)", "menuRun2").
    QAction* menuItem(const QString& name) const;

    // MainHost
    void showNewModelDialog(NewModelDialog dialog) override;
    void showModelScreen(ModelScreen screen, bool saveEnabled) override;
    void filenamePanelChanged(const std::string& text) override;
    void showPrintDialog() override;
    void showPreferences() override;
    void showAbout() override;
    void showDisclaimer() override;
    void showSupport() override;
    void showHelp(HelpCommand command, int context) override;
    void closeHelp() override;
    void minimize() override;
    void quit() override;

signals:
    void quitting();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    QAction* addItem(QMenu* menu, const QString& name, const QString& caption);
    DataSet& data_;
    AppState& state_;
    std::unique_ptr<MainForm> form_;
    QLabel* panel_ = nullptr;
    QLabel* image_ = nullptr;
    QLabel* title_ = nullptr;
    QAction* timeVarying_ = nullptr;
    bool quitRequested_ = false;
};

}  // namespace bm
