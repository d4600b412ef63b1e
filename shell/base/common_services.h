#pragma once
// Small helpers every screen and solver calls: the key filter of numeric
// cells, path and string helpers, and the free disk test.

#include <cstdint>
#include <string>
#include <string_view>

namespace bm {

// Set by each numeric cell's key-down handler when Shift is held; shared by all cells.
extern bool shiftHeld;

// Returns the key code, or 0 when the key is refused in a number or range cell.
int filterNumericKey(int keyCode);

// `text` with the first `find` replaced; with no match (or an empty `find`), `text`.
std::string replaceFirst(std::string_view find, std::string_view replacement, std::string_view text);

// Splits the trimmed path at its last "\", "/" or ":".
void splitPath(std::string_view path, std::string& directory, std::string& fileName);

// The system directory with a trailing separator ("/usr/bin/" here).
std::string systemDirectory();
// Free bytes on the disk that holds `path`; 0 when it cannot be read.
double freeDiskSpace(const std::string& path);

// True when the trimmed path names a file (hidden ones included); false on any error.
bool fileExists(std::string_view path);
bool directoryExists(std::string_view path);

// The platform's path separator as text.
inline constexpr const char* kPathSeparator = "/";

}  // namespace bm
