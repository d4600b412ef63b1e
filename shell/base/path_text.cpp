#include "shell/base/path_text.h"

#include <algorithm>
#include <cctype>

namespace bm {

namespace {

template <class Fold>
std::string folded(std::string_view path, Fold fold) {
    std::string out(path);
    std::transform(out.begin(), out.end(), out.begin(), [&](unsigned char c) { return static_cast<char>(fold(c)); });
    return out;
}

}  // namespace

std::string trimmedPath(std::string_view path) {
    const auto first = path.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return std::string(path.substr(first, path.find_last_not_of(" \t") - first + 1));
}

std::string lowerCasePath(std::string_view path) { return folded(path, [](int c) { return std::tolower(c); }); }

std::string upperCasePath(std::string_view path) { return folded(path, [](int c) { return std::toupper(c); }); }

}  // namespace bm
