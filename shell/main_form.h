#pragma once
// Main, the start screen, as a form model: its load, its menus and their
// dispatch by index, the file name panel and the help context. The window
// (or a test) is the host that shows the dialogs and screens it asks for.

#include <exception>
#include <string>
#include <vector>

#include "model/model_kinds.h"
#include "shell/start_up.h"

namespace bm {

struct AppState;
struct DataSet;
class FileCommands;
class UserInterface;

// The model screen and the new-model dialog of a model are the model kinds'
// (modelScreenFor, newModelDialogFor in model/model_kinds.h).

enum class HelpCommand { Contents, Index, Context };

// What Main's window does for the form model.
class MainHost {
public:
    virtual ~MainHost() = default;
    // Shows the dialog modally; its OK writes into the DataSet.
    virtual void showNewModelDialog(NewModelDialog dialog) = 0;
    // Shows the model screen modally; returns when it has closed.
    virtual void showModelScreen(ModelScreen screen, bool saveEnabled) = 0;
    virtual void filenamePanelChanged(const std::string& text) = 0;
    virtual void showPrintDialog() = 0;
    virtual void showPreferences() = 0;
    virtual void showAbout() = 0;
    virtual void showDisclaimer() = 0;
    virtual void showSupport() = 0;
    virtual void showHelp(HelpCommand command, int context) = 0;
    virtual void closeHelp() = 0;
    virtual void minimize() = 0;
    virtual void quit() = 0;
};

// Menu indices of menuFile.
namespace fileMenu {
inline constexpr int New = 10, Open = 20, Edit = 23, CloseOld = 30, Close = 40, Print = 50, Exit = 60;
}

inline constexpr const char* kTagNewModel = "New Model Selected";
inline constexpr const char* kTagFileError = "File Error";
inline constexpr const char* kHiddenOpenFilter = "Data Files (*.dat)|*.dat|All Files|*.*";

class MainForm {
public:
    MainForm(DataSet& data, AppState& state, MainHost& host, UserInterface& ui, FileCommands& files);

    // The load of Main: flags, the command line, the environment check.
    void load(const std::vector<std::string>& arguments, const std::string& programDirectory);

    // menuFile by index (also the routes of menuModel and the hidden mnuFile).
    void menuFileClick(int index);
    // menuModel: 0 "&New", 1 "&Load".
    void menuModelClick(int index);
    // menuRun's items.
    void runProgramClick();
    void viewOutputClick();
    void createPlotClick();
    void mnuExistClick(int index);
    // mnuInfo: 1 About, 2 Disclaimer, 3 References.
    void mnuInfoClick(int index);
    // mnuHelp: 0 Contents, 1 Index of Topics, 2 Technical Support, 3 About.
    void mnuHelpClick(int index);
    void menuStatusClick();
    void menuTimeVaryingClick();
    void mnureturnshellClick();
    void menuExitClick();
    void menuIconClick();
    void menuPrinterSetupClick();
    // The hidden "menuOpen" route: an old-style ".dat" file by its description line.
    void menuOpenClick();
    // The help key over Main.
    void helpKey();

    const std::string& caption() const { return caption_; }
    const std::string& filenamePanel() const { return panel_; }
    const std::string& tag() const { return tag_; }
    int helpContext() const { return helpContext_; }
    const ShellPaths& paths() const { return paths_; }
    bool editItemVisible() const { return false; }
    bool timeVaryingItemVisible() const;
    // The description read by the hidden open route.
    const std::string& openFileDescription() const { return description_; }

private:
    void setPanel(const std::string& text);
    void openScreenForModel(bool saveEnabled);
    void handle(const std::exception_ptr& error, const std::string& context);

    DataSet& data_;
    AppState& state_;
    MainHost& host_;
    UserInterface& ui_;
    FileCommands& files_;
    std::string caption_;
    std::string panel_ = " Filename:";
    std::string tag_;
    std::string description_;
    int helpContext_ = 0;
    ShellPaths paths_;
};

// Reads lines until one holds "Description:"; true and its text when found.
bool readFileDescription(const std::string& path, std::string& description);

}  // namespace bm
