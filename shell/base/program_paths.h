#pragma once
// Where the suite's pieces are: the program folder, the suite root in front of
// the program's own folder word, and the paths built from them. Paths keep
// their case for opening; upper case is for showing only.

#include <string>
#include <string_view>

namespace bm {

// The program's own folder word.
inline constexpr const char* kProgramFolderWord = "brenmoor";

// `base` + "/" + `name`, with no doubled separator.
std::string joinPath(std::string_view base, std::string_view name);
// A path without its trailing separators (a lone "/" stays).
std::string withoutTrailingSeparator(std::string_view path);
// The path as the messages show it: upper case.
std::string displayPath(std::string_view path);

// The text of `appPath` in front of the program's folder word (its last
// occurrence, found in lower case), minus the separator before it. Raises
// error 5 (the negative cut) when the path lacks the word.
std::string suiteRootOf(std::string_view appPath);
// The same without an error: empty when the word is missing.
std::string suiteRootOrEmpty(std::string_view appPath);

// The root the preferences' plot-utility buttons build on: the text in front of
// the first folder word "air", "brenmoor" or "surface" of `appPath`; the suite
// root when none stands there.
std::string plotUtilityRootOf(std::string_view appPath);

}  // namespace bm
