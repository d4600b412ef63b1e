#pragma once
// A plot file of a run that Stop ended early carries a note beside it: a file
// of the same name with ".stopped" added. The plot file itself keeps its
// layout line for line; the plotting utility looks for the note to say in its
// title that the values are partial.

#include <string>

namespace bm {

inline constexpr const char* kStoppedRunNoteSuffix = ".stopped";

// Writes the note beside plotFile when the run was stopped, removes a note left
// by an earlier run otherwise. Failures are ignored: the note is a courtesy to
// the plotting utility, never a reason to refuse the plot.
void markStoppedRun(const std::string& plotFile, bool stopped);

}  // namespace bm
