#include "shell/screen/viewers.h"

#include "fitting/fit_plot_file.h"
#include "model/app_state.h"
#include "shell/base/common_services.h"
#include "shell/base/program_paths.h"
#include "shell/base/runtime_error.h"
#include "shell/base/user_interface.h"

namespace bm {

namespace {

std::string inTemporaryFolder(const AppState& s, const char* name) {
    std::string p = s.temporaryDataPath;
    if (p.empty() || (p.back() != '/' && p.back() != '\\')) p += kPathSeparator;
    return p + name;
}

}  // namespace

std::string plotFileName(const AppState& s) { return inTemporaryFolder(s, "brenmoor.plt"); }

std::string fitPlotFileName(const AppState& s) { return inTemporaryFolder(s, kFitPlotFileName); }

namespace {

bool fileIsMissing(const std::string& file, UserInterface& ui) {
    if (fileExists(file)) return false;
    ui.setBusy(false);
    ui.message(MessageIcon::Exclamation, MessageButtons::Ok, "Drive Read Only",
               "Unable to find the output graph file: " + displayPath(file) + ".");
    return true;
}

void start(const std::string& program, const std::string& file, UserInterface& ui) {
    // The file goes as one argument, as typed: no quotes are added.
    if (!ui.startProgram(program, {file})) raiseError(err::PathFileAccessError);
}

}  // namespace

void viewGraph(const std::string& plotFile, const AppState& s, UserInterface& ui) {
    if (fileIsMissing(plotFile, ui)) return;
    if (!fileExists(s.graphUtilityPath)) {
        ui.message(MessageIcon::Exclamation, MessageButtons::Ok, "Missing Trazel Utility",
                   "Unable to find Trazel utility: " + displayPath(s.graphUtilityPath) + "." + "\r\r" +
                       "Trazel program must be present at the above location.");
        return;
    }
    start(s.graphUtilityPath, plotFile, ui);
}

void viewText(const std::string& textFile, const AppState& s, UserInterface& ui) {
    if (fileIsMissing(textFile, ui)) return;
    if (!fileExists(s.textEditorPath)) {
        ui.message(MessageIcon::Exclamation, MessageButtons::Ok, "Missing Text Editor",
                   "Please select an appropriate text editor before using this option.");
        return;
    }
    start(s.textEditorPath, textFile, ui);
}

void viewExistingFile(int index, AppState& s, UserInterface& ui) {
    const bool graph = index == 1;
    std::string& last = graph ? s.lastGraphFile : s.lastOutputFile;
    FileDialogRequest r;
    r.kind = FileDialogRequest::Kind::Open;
    r.title = graph ? "Open Plot / Graph File" : "Open Output File";
    r.filter = kExistingOutputFilter;
    r.filterIndex = graph ? 3 : 2;
    std::string directory, name;
    if (!last.empty()) splitPath(last, directory, name);
    r.initialDirectory = directory.empty() ? s.groundwaterDataPath : directory;
    const auto chosen = ui.askFile(r);
    if (!chosen) return;
    last = *chosen;
    if (graph)
        viewGraph(*chosen, s, ui);
    else
        viewText(*chosen, s, ui);
}

}  // namespace bm
