#include "shell/base/common_services.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include "shell/base/path_text.h"

namespace bm {

bool shiftHeld = false;

int filterNumericKey(int keyCode) {
    if (shiftHeld) return keyCode;
    const bool refused = (keyCode >= 33 && keyCode <= 42) || keyCode == 44 || keyCode == 47 ||
                         (keyCode >= 59 && keyCode <= 68) || (keyCode >= 70 && keyCode <= 100) ||
                         (keyCode >= 102 && keyCode <= 126);
    return refused ? 0 : keyCode;
}

std::string replaceFirst(std::string_view find, std::string_view replacement, std::string_view text) {
    if (find.empty()) return std::string(text);
    const auto p = text.find(find);
    if (p == std::string_view::npos) return std::string(text);
    std::string out(text.substr(0, p));
    out += replacement;
    out += text.substr(p + find.size());
    return out;
}

void splitPath(std::string_view path, std::string& directory, std::string& fileName) {
    const std::string t = trimmedPath(path);
    const auto p = t.find_last_of("\\/:");
    if (p == std::string::npos) {
        directory.clear();
        fileName = t;
        return;
    }
    directory = t.substr(0, p);
    fileName = t.substr(p + 1);
}

std::string systemDirectory() { return "/usr/bin/"; }

double freeDiskSpace(const std::string& path) {
    struct statvfs s {};
    if (statvfs(path.c_str(), &s) != 0) return 0;
    return static_cast<double>(s.f_bavail) * static_cast<double>(s.f_frsize);
}

bool fileExists(std::string_view path) {
    const std::string t = trimmedPath(path);
    if (t.empty()) return false;
    struct stat st {};
    return stat(t.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

bool directoryExists(std::string_view path) {
    const std::string t = trimmedPath(path);
    if (t.empty()) return false;
    struct stat st {};
    return stat(t.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

}  // namespace bm
