#include "shell/base/program_paths.h"

#include "shell/base/path_text.h"
#include "shell/base/runtime_error.h"

namespace bm {

std::string joinPath(std::string_view base, std::string_view name) {
    std::string out(base);
    if (!out.empty() && out.back() != '/') out += '/';
    while (!name.empty() && name.front() == '/') name.remove_prefix(1);
    out += name;
    return out;
}

std::string withoutTrailingSeparator(std::string_view path) {
    std::string out(path);
    while (out.size() > 1 && (out.back() == '/' || out.back() == '\\')) out.pop_back();
    return out;
}

std::string displayPath(std::string_view path) { return upperCasePath(path); }

namespace {
// Position (0-based) of the last occurrence of the folder word; npos when absent.
std::size_t folderWordPosition(std::string_view appPath) {
    return lowerCasePath(appPath).rfind(kProgramFolderWord);
}
}  // namespace

std::string suiteRootOf(std::string_view appPath) {
    const auto p = folderWordPosition(appPath);
    // The cut keeps what stands before the word, less the separator in front of it;
    // a missing word makes the length negative.
    if (p == std::string::npos || p == 0) raiseError(err::InvalidProcedureCall);
    return std::string(appPath.substr(0, p - 1));
}

std::string suiteRootOrEmpty(std::string_view appPath) {
    const auto p = folderWordPosition(appPath);
    if (p == std::string::npos || p == 0) return {};
    return std::string(appPath.substr(0, p - 1));
}

std::string plotUtilityRootOf(std::string_view appPath) {
    const std::string lower = lowerCasePath(appPath);
    std::size_t best = std::string::npos;
    for (const char* word : {"air", kProgramFolderWord, "surface"}) {
        // A folder word: "/word" followed by a separator or the end.
        const std::string w = std::string("/") + word;
        for (std::size_t p = lower.find(w); p != std::string::npos; p = lower.find(w, p + 1)) {
            const std::size_t end = p + w.size();
            if (end == lower.size() || lower[end] == '/') {
                if (p < best) best = p;
                break;
            }
        }
    }
    if (best == std::string::npos) return withoutTrailingSeparator(suiteRootOrEmpty(appPath));
    return std::string(appPath.substr(0, best));
}

}  // namespace bm
