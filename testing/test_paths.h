#pragma once
// Paths the tests need: the source tree (for fixtures), the build tree, and
// fresh temporary folders that are removed at the end of a test.

#include <filesystem>
#include <string>

namespace bm::testkit {

std::filesystem::path sourceDir();
std::filesystem::path binaryDir();
// <source>/<folder>/tests/fixtures/<name>
std::filesystem::path fixturePath(const std::string& folder, const std::string& name);
std::string readFileBytes(const std::filesystem::path& path);
void writeFileBytes(const std::filesystem::path& path, const std::string& bytes);

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::filesystem::path& path() const { return path_; }
    std::string file(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

}  // namespace bm::testkit
