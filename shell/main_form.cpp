#include "shell/main_form.h"

#include <exception>
#include <fstream>

#include "model/app_state.h"
#include "model/data_set.h"
#include "model/number_text.h"
#include "shell/base/common_services.h"
#include "shell/base/error_handler.h"
#include "shell/file_commands.h"
#include "shell/help_context.h"
#include "shell/base/program_paths.h"
#include "shell/base/runtime_error.h"
#include "shell/base/user_interface.h"
#include "shell/screen/viewers.h"
#include "timevarying/var_record.h"

namespace bm {

MainForm::MainForm(DataSet& data, AppState& state, MainHost& host, UserInterface& ui, FileCommands& files)
    : data_(data), state_(state), host_(host), ui_(ui), files_(files) {}

void MainForm::handle(const std::exception_ptr& error, const std::string& context) {
    try {
        std::rethrow_exception(error);
    } catch (const RuntimeError& e) {
        handleError(e, context, "", ui_);
    } catch (const std::bad_alloc&) {
        handleError(err::OutOfMemory, context, "", ui_);
    } catch (const std::exception& e) {
        handleError(RuntimeError(51, e.what()), context, "", ui_);
    }
}

void MainForm::load(const std::vector<std::string>& arguments, const std::string& programDirectory) {
    try {
        data_.dataState = kDataUnchanged;
        data_.monteCarloValueInUse = false;
        data_.monteCarloValueInUseMulti = false;
        caption_ = applyCommandLine(commandLineText(arguments), data_);
        paths_ = checkEnvironment(programDirectory, state_, data_, ui_);
        helpContext_ = paths_.helpContext ? paths_.helpContext : refreshMenuLabels(data_);
        state_.crlf = "\r\n";
    } catch (...) {
        handle(std::current_exception(), "brenmoor");
    }
}

void MainForm::setPanel(const std::string& text) {
    panel_ = text;
    host_.filenamePanelChanged(panel_);
}

void MainForm::openScreenForModel(bool saveEnabled) {
    ui_.setBusy(true);
    helpContext_ = refreshMenuLabels(data_);
    setPanel("Filename: " + data_.currentFileName);
    host_.showModelScreen(modelScreenFor(data_.modelType, data_.multiChemical), saveEnabled);
    setPanel("Filename: " + data_.currentFileName);
    helpContext_ = refreshMenuLabels(data_);
    ui_.setBusy(false);
}

void MainForm::menuFileClick(int index) {
    try {
        data_.newModelConfirmed = false;
        switch (index) {
        case fileMenu::New:
            if (!files_.saveDataFilePrompt(data_)) return;
            data_.monteCarloValueInUse = false;
            data_.monteCarloValueInUseMulti = false;
            closeModel(data_, "Complete");
            host_.showNewModelDialog(newModelDialogFor(data_.modelType));
            if (data_.newModelConfirmed) openScreenForModel(false);
            return;
        case fileMenu::Open:
            tag_ = kTagNewModel;
            if (!files_.saveDataFilePrompt(data_)) return;
            if (!files_.openModelFile(data_, "Open Data File", 0)) tag_ = kTagFileError;
            if (tag_ == kTagNewModel) openScreenForModel(true);
            return;
        case fileMenu::Edit:
            data_.needsDisplayRefresh = true;
            data_.dataState = kDataUnchanged;
            openScreenForModel(true);
            return;
        case fileMenu::CloseOld:
        case fileMenu::Close:
            if (!files_.saveDataFilePrompt(data_)) return;
            closeModel(data_, "Complete");
            setPanel("Filename: ");
            return;
        case fileMenu::Print:
            host_.showPrintDialog();
            return;
        case fileMenu::Exit:
            host_.quit();
            return;
        default:
            return;
        }
    } catch (...) {
        ui_.setBusy(false);
        handle(std::current_exception(), "brenmoor");
    }
}

void MainForm::menuModelClick(int index) { menuFileClick(index == 0 ? fileMenu::New : fileMenu::Open); }

void MainForm::runProgramClick() { menuFileClick(fileMenu::New); }

void MainForm::viewOutputClick() {
    try {
        viewText(plotFileName(state_), state_, ui_);
    } catch (...) {
        handle(std::current_exception(), "View Output");
    }
}

void MainForm::createPlotClick() {
    try {
        viewGraph(plotFileName(state_), state_, ui_);
    } catch (...) {
        handle(std::current_exception(), "View Contour Plot");
    }
}

void MainForm::mnuExistClick(int index) {
    try {
        viewExistingFile(index, state_, ui_);
    } catch (...) {
        handle(std::current_exception(), "View Existing Output");
    }
}

void MainForm::mnuInfoClick(int index) {
    switch (index) {
    case 1: host_.showAbout(); break;
    case 2: host_.showDisclaimer(); break;
    case 3: host_.showHelp(HelpCommand::Context, help::References); break;
    default: break;
    }
}

void MainForm::mnuHelpClick(int index) {
    switch (index) {
    case 0: host_.showHelp(HelpCommand::Contents, help::Contents); break;
    case 1: host_.showHelp(HelpCommand::Index, helpContext_); break;
    case 2: host_.showSupport(); break;
    case 3: host_.showAbout(); break;
    default: break;
    }
}

void MainForm::helpKey() { host_.showHelp(HelpCommand::Context, helpContext_); }

void MainForm::menuStatusClick() { host_.showPreferences(); }

// The item is always offered, whatever model the program was started for.
bool MainForm::timeVaryingItemVisible() const { return true; }

void MainForm::menuTimeVaryingClick() {
    try {
        // A time-varying model with its source chosen goes straight to its screen;
        // anything else starts a new one through the time-varying dialog.
        if (modelKindOf(data_.modelType, false) == ModelKind::TimeVarying && varSourceCode(data_.contaminantType) != 0) {
            host_.showModelScreen(ModelScreen::merlaform, true);
            return;
        }
        data_.newModelConfirmed = false;
        if (!files_.saveDataFilePrompt(data_)) return;
        const std::string kept = data_.modelType;
        closeModel(data_, "Complete");
        data_.modelType = modelTypeOf(ModelKind::TimeVarying);
        host_.showNewModelDialog(NewModelDialog::timeVaryingNewForm);
        if (data_.newModelConfirmed)
            openScreenForModel(false);
        else
            data_.modelType = kept;
    } catch (...) {
        ui_.setBusy(false);
        handle(std::current_exception(), "brenmoor");
    }
}

void MainForm::mnureturnshellClick() {
    if (!state_.openFileName.empty()) {
        ui_.message(MessageIcon::Critical, MessageButtons::Ok, "Cannot Exit",
                    state_.openFileName + " is open." + state_.crlf +
                        "Please close this file by choosing Close option from the File menu before exit.");
        return;
    }
    if (ui_.message(MessageIcon::Question, MessageButtons::YesNo, "End Program", "Exit Ground Water Model?") ==
        MessageAnswer::Yes)
        host_.quit();
}

void MainForm::menuExitClick() {
    host_.closeHelp();
    host_.quit();
}

void MainForm::menuIconClick() { host_.minimize(); }

void MainForm::menuPrinterSetupClick() { host_.showPrintDialog(); }

bool readFileDescription(const std::string& path, std::string& description) {
    std::ifstream in(path, std::ios::binary);
    if (!in) raiseError(err::FileNotFound);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.find("Description:") != std::string::npos) {
            description = textAfter(line, ":");
            return true;
        }
    }
    return false;
}

void MainForm::menuOpenClick() {
    std::string chosen;
    try {
        if (!state_.openFileName.empty()) {
            ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "A File Already Open",
                        displayPath(state_.openFileName) + " is already open." + state_.crlf + state_.crlf +
                            "  First choose Close or Iconize from the file menu before opening another file.");
            return;
        }
        FileDialogRequest r;
        r.kind = FileDialogRequest::Kind::Open;
        r.title = "Open Ground Water Data File";
        r.filter = kHiddenOpenFilter;
        r.initialDirectory = state_.groundwaterDataPath;
        const auto file = ui_.askFile(r);
        if (!file) return;
        chosen = *file;
        if (!fileExists(chosen)) raiseError(err::FileNotFound);
        std::string description;
        if (!readFileDescription(chosen, description)) {
            ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "Incorrect Data File",
                        "The data file chosen was not in the correct format.  Please select another data file");
            state_.openFileName.clear();
            menuFileClick(fileMenu::Open);
            return;
        }
        description_ = description;
        state_.openFileName = chosen;
        std::string directory, name;
        splitPath(chosen, directory, name);
        setPanel("Filename: " + name);
    } catch (const RuntimeError& e) {
        handleError(e, "Open Ground Water Data File", chosen, ui_);
    } catch (...) {
        handle(std::current_exception(), "Open Ground Water Data File");
    }
}

}  // namespace bm
