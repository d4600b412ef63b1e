#pragma once
// The suite's shared settings file, "orva.ini": its path, its defaults, the
// lenient reader (a key is any line that holds its word, a later line wins)
// and the writer that replaces the file whole.

#include <functional>
#include <string>

#include "model/app_state.h"

namespace bm {

class UserInterface;

// The suite root without a trailing separator.
std::string settingsRoot(const std::string& suiteRoot);
// root + "/orva.ini".
std::string settingsFilePath(const std::string& suiteRoot);

// The eight settings as the file would give them with no file at all.
void applyDefaultSettings(AppState& state, const std::string& root, const std::string& windowsDirectory);

// Reads the file at `path`. With no file, every setting takes its default (the
// file is not created). Otherwise the settings start empty and each line fills
// the first setting whose key word its upper-cased text holds, in the order
// TEXTEDITOR, TEMPORARYDATAPATH, CHEMICALDBNAME, AIRDATAPATH,
// GROUNDWATERDATAPATH, SURFACEPATH, PLANTPATH, GRAPH. A failure goes to the
// error handler with the path as its extra text: when the handler answers
// "resume" the reading goes on with the next line, otherwise it stops and the
// result is false (the settings keep what was read).
bool readSettings(const std::string& path, const std::string& root, const std::string& windowsDirectory,
                  AppState& state, UserInterface& ui);

// Test support: `check` sees every line before it is read into the settings
// (and may raise a run-time error there) while the object lives.
class ScopedSettingsLineCheck {
public:
    using Check = std::function<void(const std::string& line)>;
    explicit ScopedSettingsLineCheck(Check check);
    ~ScopedSettingsLineCheck();
    ScopedSettingsLineCheck(const ScopedSettingsLineCheck&) = delete;
    ScopedSettingsLineCheck& operator=(const ScopedSettingsLineCheck&) = delete;
};

// The file's text: the sections in their fixed order, each heading followed
// directly by its keys, lines ended by CR LF.
std::string settingsFileText(const AppState& state);

// Replaces the file whole. A failure goes to the error handler with the path as
// extra text, leaves the file as it was and returns false.
bool writeSettings(const std::string& path, const AppState& state, UserInterface& ui);

}  // namespace bm
