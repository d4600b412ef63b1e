#pragma once
// The outside viewers: the text editor for reports, the plotting utility for
// plot files, and the dialog that picks an existing output or plot file.

#include <string>

namespace bm {

struct AppState;
class UserInterface;

// temporaryDataPath, a separator when it has none at its end, and "brenmoor.plt".
std::string plotFileName(const AppState& state);
// The fit's plot file beside it: "brenmoor_fit.plt" in the same folder.
std::string fitPlotFileName(const AppState& state);

// Starts the plotting utility on a file, or says what is missing. A failed
// start raises a run-time error (75) for the caller's handler.
void viewGraph(const std::string& plotFile, const AppState& state, UserInterface& ui);
// Starts the text editor on a file, or says what is missing.
void viewText(const std::string& textFile, const AppState& state, UserInterface& ui);

inline constexpr const char* kExistingOutputFilter =
    "Data Files (*.dat)|*.dat|Output (*.out)|*.out|Plot Files (*.plt)|*.plt";

// mnuExist: 0 "View Existing Output" (title "Open Output File", then viewText),
// 1 "View Existing Graphs / Plots" (title "Open Plot / Graph File", then viewGraph).
// A cancel does nothing.
void viewExistingFile(int index, AppState& state, UserInterface& ui);

}  // namespace bm
