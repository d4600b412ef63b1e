#pragma once
// The temporary files of saves not yet finished. Each has a short name of its
// own in the target's folder (".brenmoor-XXXXXX.tmp", so that a target name of
// any length can be saved) and is held under an exclusive lock by the process
// that writes it. The lock dies with that process, however it ends, so a later
// save into the same folder can tell a temporary file left by a process that
// was killed from one still being written, and removes it. A process ended by
// SIGINT, SIGTERM or SIGHUP removes its own at once, once the handlers are
// installed.

#include <string>
#include <string_view>

namespace bm {

// Whether a file name (without folder) has the form of a temporary file.
bool isTemporaryFileName(std::string_view name);

// Creates, locks and registers a new temporary file in `folder` (read and
// write, closed on exec). Returns its descriptor and sets `path`; -1 with
// errno set when no file could be made.
int createTemporaryFile(const std::string& folder, std::string& path);

// Unregisters a temporary file (it has been renamed, or is about to be removed).
void forgetTemporaryFile(const std::string& path);

// Removes the temporary files in `folder` whose writer is gone (no process
// holds their lock). Returns how many were removed; a folder that cannot be
// read is left alone.
int removeAbandonedTemporaryFiles(const std::string& folder);

// Installs handlers of SIGINT, SIGTERM and SIGHUP (where they are not
// ignored) that remove the registered temporary files and then end the
// process as the signal would have.
void removeTemporaryFilesOnTermination();

}  // namespace bm
