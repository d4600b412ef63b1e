#pragma once
// Output, plot and report files: text the program writes for the viewers, in
// the same code page as the data files, replacing a file only once the new one
// is complete.

#include <string>

namespace bm {

// Writes UTF-8 text to `path` in the Windows-1252 code page; run-time errors
// as replaceFileContents raises them (61 disk full, 75 not writable, 76 no folder).
void writeTextFile(const std::string& path, std::string utf8Text);

}  // namespace bm
