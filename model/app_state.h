#pragma once
// Application-wide values kept beside the DataSet and not cleared with it:
// the paths of the settings file, the program's folders, the note pad.

#include <string>

namespace bm {

struct AppState {
    // Settings of the suite's settings file.
    std::string textEditorPath, temporaryDataPath, chemicalDbName, surfaceDataPath, plantDataPath, airDataPath,
        groundwaterDataPath, graphUtilityPath;
    // Folders of the program.
    std::string appPath, suiteRoot, windowsDirectory, windowsDrive, iniFilePath, gaussPointsFile, currentDirectory;
    std::string crlf = "\r\n";
    // The note pad: the field under edit ("AUTHOR", "TITLE" or "COMMENTS") and its text.
    std::string notesField, notesText;
    // The hidden open route and the view dialogs' memory.
    std::string openFileName, lastOutputFile, lastGraphFile;
};

AppState& theAppState();

}  // namespace bm
