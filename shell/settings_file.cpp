#include "shell/settings_file.h"

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <unistd.h>

#include "model/number_text.h"
#include "shell/base/common_services.h"
#include "shell/base/error_handler.h"
#include "shell/base/program_paths.h"
#include "shell/base/runtime_error.h"
#include "shell/base/user_interface.h"

namespace bm {

std::string settingsRoot(const std::string& suiteRoot) { return withoutTrailingSeparator(trim(suiteRoot)); }

std::string settingsFilePath(const std::string& suiteRoot) {
    return settingsRoot(suiteRoot) + kPathSeparator + "orva.ini";
}

void applyDefaultSettings(AppState& s, const std::string& root, const std::string& windowsDirectory) {
    s.textEditorPath = windowsDirectory + "notepad.exe";
    s.temporaryDataPath = joinPath(root, "Trazel");
    s.chemicalDbName = joinPath(root, "chemical/chemical.mdb");
    s.surfaceDataPath = joinPath(root, "surface/sampldat");
    s.plantDataPath = joinPath(root, "plant/sampldat");
    s.airDataPath = joinPath(root, "air/sampldat");
    s.groundwaterDataPath = joinPath(root, "brenmoor/sampldat");
    s.graphUtilityPath = joinPath(root, "trazel/trazel");
}

namespace {

ScopedSettingsLineCheck::Check& lineCheck() {
    static ScopedSettingsLineCheck::Check check;
    return check;
}

void clearSettings(AppState& s) {
    for (std::string* f : {&s.textEditorPath, &s.temporaryDataPath, &s.chemicalDbName, &s.surfaceDataPath,
                           &s.plantDataPath, &s.airDataPath, &s.groundwaterDataPath, &s.graphUtilityPath})
        f->clear();
}

// The first setting whose key word the upper-cased line holds, or null.
std::string* settingOfLine(const std::string& upperLine, AppState& s) {
    struct Key {
        const char* word;
        std::string AppState::*field;
    };
    static const Key keys[] = {
        {"TEXTEDITOR", &AppState::textEditorPath},
        {"TEMPORARYDATAPATH", &AppState::temporaryDataPath},
        {"CHEMICALDBNAME", &AppState::chemicalDbName},
        {"AIRDATAPATH", &AppState::airDataPath},
        {"GROUNDWATERDATAPATH", &AppState::groundwaterDataPath},
        {"SURFACEPATH", &AppState::surfaceDataPath},
        {"PLANTPATH", &AppState::plantDataPath},
        {"GRAPH", &AppState::graphUtilityPath},
    };
    for (const Key& k : keys)
        if (upperLine.find(k.word) != std::string::npos) return &(s.*k.field);
    return nullptr;
}

}  // namespace

bool readSettings(const std::string& path, const std::string& root, const std::string& windowsDirectory,
                  AppState& state, UserInterface& ui) {
    if (!fileExists(path)) {
        applyDefaultSettings(state, root, windowsDirectory);
        return true;
    }
    clearSettings(state);
    std::ifstream in;
    try {
        in.open(path, std::ios::binary);
        if (!in) raiseError(err::PathFileAccessError);
    } catch (const RuntimeError& e) {
        handleError(e, "", path, ui);
        return false;
    }
    bool complete = true;
    std::string line;
    while (std::getline(in, line)) {
        // An error in a line is the handler's: on "resume" the next line is read.
        try {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            if (lineCheck()) lineCheck()(line);
            if (std::string* field = settingOfLine(toUpper(line), state)) *field = trim(textAfter(line, "="));
            continue;
        } catch (const RuntimeError& e) {
            if (handleError(e, "", path, ui) == kResume) continue;
        } catch (const std::exception&) {
            if (handleError(err::OutOfMemory, "", path, ui) == kResume) continue;
        }
        return false;
    }
    if (in.bad()) {
        handleError(err::PathFileAccessError, "", path, ui);
        complete = false;
    }
    return complete;
}

ScopedSettingsLineCheck::ScopedSettingsLineCheck(Check check) { lineCheck() = std::move(check); }
ScopedSettingsLineCheck::~ScopedSettingsLineCheck() { lineCheck() = nullptr; }

std::string settingsFileText(const AppState& s) {
    const std::string crlf = "\r\n";
    std::string t;
    t += "[General]" + crlf;
    t += "TextEditor=" + s.textEditorPath + crlf;
    t += "TemporaryDataPath=" + s.temporaryDataPath + crlf;
    t += "ChemicalDBName=" + s.chemicalDbName + crlf;
    t += "[Surface Model]" + crlf;
    t += "SurfacePath=" + s.surfaceDataPath + crlf;
    t += "[Plant and Animal Model]" + crlf;
    t += "plantPath=" + s.plantDataPath + crlf;
    t += "[Air Model]" + crlf;
    t += "AirDataPath=" + s.airDataPath + crlf;
    t += "[Ground Water Model]" + crlf;
    t += "GroundWaterDataPath=" + s.groundwaterDataPath + crlf;
    t += "[Graphics]" + crlf;
    t += "Graph=" + s.graphUtilityPath + crlf;
    return t;
}

namespace {

int errorOfErrno(int e) {
    if (e == ENOSPC || e == EDQUOT) return err::DiskFull;
    if (e == ENOENT || e == ENOTDIR) return err::PathNotFound;
    return err::PathFileAccessError;
}

// Writes `text` to `path`; on failure the partial file is removed and the error number returned.
int writeWhole(const std::string& path, const std::string& text) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return errorOfErrno(errno);
    const bool written = std::fwrite(text.data(), 1, text.size(), f) == text.size();
    const int writeErrno = errno;
    const bool closed = std::fclose(f) == 0;
    if (written && closed) return 0;
    return errorOfErrno(written ? errno : writeErrno);
}

}  // namespace

bool writeSettings(const std::string& path, const AppState& state, UserInterface& ui) {
    const std::string text = settingsFileText(state);
    try {
        // A new file beside the old one, then a rename, so a failure leaves the old file whole.
        const std::string fresh = path + ".new";
        int e = writeWhole(fresh, text);
        if (e == 0) {
            if (std::rename(fresh.c_str(), path.c_str()) != 0) {
                e = errorOfErrno(errno);
                ::unlink(fresh.c_str());
            }
        } else {
            ::unlink(fresh.c_str());
            // A folder that takes no new file may still let the file itself be rewritten.
            if (e != err::DiskFull && fileExists(path) && ::access(path.c_str(), W_OK) == 0) e = writeWhole(path, text);
        }
        if (e != 0) raiseError(e);
        return true;
    } catch (const RuntimeError& e) {
        handleError(e, "", path, ui);
    }
    return false;
}

}  // namespace bm
