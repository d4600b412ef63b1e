#include "shell/preferences_form.h"

#include "model/number_text.h"
#include "shell/base/common_services.h"
#include "shell/base/program_paths.h"
#include "shell/settings_file.h"
#include "shell/base/user_interface.h"

namespace bm {

namespace {
const char* const kHelpLines[] = {
    "Change text editor by clicking button",
    "Change chemical database by clicking button",
    "Change temporary directory by clicking button",
    "Change data directory of Air/Soil Models by clicking button",
    "Change data directory of Ground Water Models by clicking button",
    "Change data directory of Surface Water Models by clicking button",
};
const char* const kRowHelpLines[] = {
    "Change text editor",
    "Change chemical database",
    "Change temporary directory",
    "Change data directory of Air/Soil Models",
    "Change data directory of Ground Water Models",
    "Change data directory of Surface Water Models",
};
}  // namespace

const char* PreferencesForm::helpLine(Row row) { return kHelpLines[row]; }
const char* PreferencesForm::rowHelpLine(Row row) { return kRowHelpLines[row]; }

PreferencesForm::PreferencesForm(AppState& state, UserInterface& ui, DirectoryPicker picker)
    : state_(state), ui_(ui), picker_(std::move(picker)) {}

std::string& PreferencesForm::field(Row row) {
    switch (row) {
    case TextEditor: return state_.textEditorPath;
    case ChemicalDatabase: return state_.chemicalDbName;
    case TemporaryDirectory: return state_.temporaryDataPath;
    case AirData: return state_.airDataPath;
    case GroundWaterData: return state_.groundwaterDataPath;
    default: return state_.surfaceDataPath;
    }
}

const std::string& PreferencesForm::value(Row row) const { return const_cast<PreferencesForm*>(this)->field(row); }

void PreferencesForm::setValue(Row row, const std::string& text) {
    std::string& f = field(row);
    if (f == text) return;
    f = text;
    changed_ = true;
}

void PreferencesForm::clickButton(Row row) {
    if (row == TextEditor || row == ChemicalDatabase) {
        FileDialogRequest r;
        r.kind = FileDialogRequest::Kind::Open;
        if (row == TextEditor) {
            r.title = "Select Default Editor";
            r.filter = "Text Editor (*.exe)|*.exe|All Files (*.*)|*.*";
        } else {
            r.title = "Select Default Chemical Database";
            r.filter = "Chemical Database (*.mdb)|*.mdb|All Files (*.*)|*.*";
        }
        std::string directory, name;
        splitPath(value(row), directory, name);
        r.initialDirectory = directory;
        if (const auto chosen = ui_.askFile(r)) setValue(row, *chosen);
        return;
    }
    if (!picker_) return;
    const std::string chosen = picker_(kRowHelpLines[row], value(row));
    if (chosen == kDirectoryCancelled) return;  // the old value stays
    setValue(row, chosen);
}

std::string PreferencesForm::plotUtilityPath(int version) const {
    return joinPath(plotUtilityRootOf(state_.appPath), version == 1 ? "trazel/trazel1" : "trazel/trazel");
}

int PreferencesForm::plotUtilityChoice() const {
    return state_.graphUtilityPath == plotUtilityPath(1) ? 1 : 0;
}

void PreferencesForm::choosePlotUtility(int version) {
    const std::string path = plotUtilityPath(version);
    if (state_.graphUtilityPath == path) return;
    state_.graphUtilityPath = path;
    changed_ = true;
}

std::string PreferencesForm::freeSpaceText(double freeBytes) {
    return formatPattern(freeBytes / 1024.0, "###,###") + " KBytes";
}

std::string PreferencesForm::freeSpaceText() const {
    const std::string& where = state_.currentDirectory.empty() ? state_.appPath : state_.currentDirectory;
    return freeSpaceText(freeDiskSpace(where.empty() ? std::string(".") : where));
}

bool PreferencesForm::save() {
    // A failed write is reported; the settings in memory stay as they are.
    if (!writeSettings(state_.iniFilePath, state_, ui_)) return false;
    changed_ = false;
    return true;
}

bool PreferencesForm::leave() {
    if (!changed_) return true;
    const auto answer = ui_.message(MessageIcon::Question, MessageButtons::YesNo, "Save changes",
                                    std::string("Path settings have been changed.") + "\r\n" +
                                        "Do you want to save changes?");
    if (answer == MessageAnswer::Yes) save();
    return true;
}

}  // namespace bm
