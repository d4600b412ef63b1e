#pragma once
// The start of Main: the model word of the command line, and the check of the
// environment (settings, paths, companion programs, help, splash picture).

#include <string>
#include <vector>

namespace bm {

struct AppState;
struct DataSet;
class UserInterface;

inline constexpr const char* kCaptionTimeVarying =
    "Ground Water Contaminant Transport Model with Variable Dispersion Coefficients";
inline constexpr const char* kCaptionUnsaturated = "Unsaturated Ground Water Contaminant Transport - Marino Model";
inline constexpr const char* kCaptionConstant =
    "Ground Water Contaminant Transport Model with Constant Dispersion Coefficients";

// The command line as one text: the arguments joined by blanks.
std::string commandLineText(const std::vector<std::string>& arguments);

// Applies the model word of the command line to modelType and returns the window caption.
std::string applyCommandLine(const std::string& commandLine, DataSet& data);

// What the environment check found besides the settings in AppState.
struct ShellPaths {
    std::string helpFile;     // suite root + "/orvahelp.hlp"
    std::string splashFile;   // the splash picture, empty when there is none
    int helpContext = 0;
    bool completed = false;   // false when an error left the check early
};

// The environment check of Main's start, in its fixed order. `programDirectory`
// is the program's own folder. Every finding is a message; nothing stops the start.
ShellPaths checkEnvironment(const std::string& programDirectory, AppState& state, DataSet& data, UserInterface& ui);

}  // namespace bm
