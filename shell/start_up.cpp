#include "shell/start_up.h"

#include "model/app_state.h"
#include "model/data_set.h"
#include "model/model_kinds.h"
#include "model/number_text.h"
#include "shell/base/common_services.h"
#include "shell/base/error_handler.h"
#include "shell/help_context.h"
#include "shell/base/program_paths.h"
#include "shell/base/runtime_error.h"
#include "shell/settings_file.h"
#include "shell/base/user_interface.h"

namespace bm {

std::string commandLineText(const std::vector<std::string>& arguments) {
    std::string out;
    for (const auto& a : arguments) {
        if (!out.empty()) out += ' ';
        out += a;
    }
    return out;
}

std::string applyCommandLine(const std::string& commandLine, DataSet& data) {
    if (commandLine == "Time Varying") {
        data.modelType = modelTypeOf(ModelKind::TimeVarying);
        return kCaptionTimeVarying;
    }
    if (commandLine == "Unsaturated One Dimensional" || commandLine == "Unsaturated" || commandLine == "unsaturated") {
        data.modelType = modelTypeOf(ModelKind::Unsaturated);
        return kCaptionUnsaturated;
    }
    return kCaptionConstant;
}

namespace {

const char* const kTwoReturns = "\r\r";

void warn(UserInterface& ui, MessageIcon icon, const std::string& title, const std::string& text) {
    ui.message(icon, MessageButtons::Ok, title, text);
}

}  // namespace

ShellPaths checkEnvironment(const std::string& programDirectory, AppState& s, DataSet& data, UserInterface& ui) {
    ShellPaths out;
    try {
        // 1. The program's folders.
        s.appPath = withoutTrailingSeparator(programDirectory);
        s.currentDirectory = s.appPath;
        s.windowsDirectory = toLower(systemDirectory());
        s.windowsDrive = s.windowsDirectory.substr(0, 1);

        // 2. The settings file. A failure blanks the three paths that have start-up defaults.
        const std::string root = settingsRoot(suiteRootOrEmpty(s.appPath));
        s.iniFilePath = settingsFilePath(root);
        if (!readSettings(s.iniFilePath, root, s.windowsDirectory, s, ui)) {
            s.textEditorPath.clear();
            s.groundwaterDataPath.clear();
            s.temporaryDataPath.clear();
        }

        // 3. Gauss points and the suite root (an error when the folder word is missing).
        s.gaussPointsFile = joinPath(s.appPath, "glq.pts");
        s.suiteRoot = suiteRootOf(s.appPath);

        // 4, 5. Help file and help context.
        out.helpFile = joinPath(s.suiteRoot, "orvahelp.hlp");
        out.helpContext = refreshMenuLabels(data);

        // 6. The data directory of the ground water model.
        s.currentDirectory = s.groundwaterDataPath;

        // 7. Text editor.
        s.textEditorPath = trim(s.textEditorPath);
        if (s.textEditorPath.empty()) s.textEditorPath = s.windowsDirectory + "notepad.exe";
        if (!fileExists(s.textEditorPath))
            warn(ui, MessageIcon::Critical, "Missing Text Editor",
                 "Specified text editor " + displayPath(s.textEditorPath) + "  was not found." + kTwoReturns +
                     "Please select an apropriate text editor. Such a selection can be made by using the "
                     "Configuration menu in the initial window of ORVA software.");

        // 8. Sample data.
        s.groundwaterDataPath = trim(s.groundwaterDataPath);
        if (s.groundwaterDataPath.empty()) s.groundwaterDataPath = joinPath(s.appPath, "sampldat");
        if (!directoryExists(s.groundwaterDataPath))
            warn(ui, MessageIcon::Exclamation, "Missing Paths",
                 "Selected sample data directory " + s.groundwaterDataPath + "  was not found." + kTwoReturns +
                     "Please select an apropriate sample data directory. Such a selection can be made by using the "
                     "Configuration menu in the initial window of ORVA software.");

        // 9. Temporary directory.
        s.temporaryDataPath = trim(s.temporaryDataPath);
        if (s.temporaryDataPath.empty()) s.temporaryDataPath = s.groundwaterDataPath;
        if (!directoryExists(s.temporaryDataPath))
            warn(ui, MessageIcon::Exclamation, "Missing Paths",
                 "Selected temporary directory " + s.temporaryDataPath + "  was not found." + kTwoReturns +
                     "Please select an apropriate temporary directory. This directory is used to used for writing "
                     "files before displaying graphs. Such a selection can be made by using the Configuration menu "
                     "in the initial window of ORVA software.");

        // 10. Plot utility.
        if (!fileExists(s.graphUtilityPath))
            warn(ui, MessageIcon::Exclamation, "Missing Program Files",
                 "Unable to find trazel utility: " + s.graphUtilityPath + "." + kTwoReturns +
                     "For viewing graphs, TRAZEL.EXE must be present at the above location.");

        // 11. Gauss points.
        if (!fileExists(s.gaussPointsFile))
            warn(ui, MessageIcon::Exclamation, "Missing Program Files",
                 "Unable to data file: " + s.gaussPointsFile + "." + kTwoReturns +
                     "For proper calculations in Two and Three dimensional models GLQ.PTS must be present at the "
                     "above location.");

        // 12. Help file.
        if (!fileExists(out.helpFile))
            warn(ui, MessageIcon::Exclamation, "Missing Program Files",
                 "Unable to locate ground water model help file " + out.helpFile + "." + kTwoReturns +
                     "For viewing online help, BRENMOOR.HLP must be present in the above directory.");

        // 13. Gauss points, again.
        if (!fileExists(s.gaussPointsFile))
            warn(ui, MessageIcon::Exclamation, "Missing Program Files",
                 "Unable to locate ground water model file " + s.gaussPointsFile + "." + kTwoReturns +
                     "For certain computations for two and three dimensional models , GLQ.PTS must be present the "
                     "above location.");

        // 14. Splash picture.
        const std::string splash = joinPath(s.appPath, "ZENWA_gw.bmp");
        if (fileExists(splash)) out.splashFile = splash;
        out.completed = true;
    } catch (const RuntimeError& e) {
        handleError(e, "", "", ui);
    }
    return out;
}

}  // namespace bm
