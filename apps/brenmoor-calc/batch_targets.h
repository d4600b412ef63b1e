#pragma once
// The files a batch run writes, checked before anything is read or written.
// A target must be a file, or the name of one not made yet: a folder, a named
// pipe (whose reader may never come) and a device are refused, "-" stands for
// standard output. No two outputs may land in one file, the output file may
// not replace the data file it was calculated from, and no file target may be
// the file that standard output is redirected to. Paths are compared as files:
// symbolic links followed to their end, then the same device and inode when
// both files exist, else the same absolute path with "." and ".." resolved.

#include <string>

#include "apps/brenmoor-calc/batch_calculator.h"

namespace bm {

// Whether two paths name one file.
bool nameTheSameFile(const std::string& a, const std::string& b);

// Empty when the targets of `options` can be written; otherwise why not, for a
// line "brenmoor-calc: REASON". `standardOutput` is the descriptor that "-"
// writes to.
std::string refuseBatchTargets(const BatchOptions& options, int standardOutput);

}  // namespace bm
