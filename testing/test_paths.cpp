#include "testing/test_paths.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bm::testkit {

namespace fs = std::filesystem;

fs::path sourceDir() {
    if (const char* s = std::getenv("BRENMOOR_SOURCE_DIR")) return s;
    return BRENMOOR_SOURCE_DIR_DEFAULT;
}

fs::path binaryDir() {
    if (const char* s = std::getenv("BRENMOOR_BINARY_DIR")) return s;
    return BRENMOOR_BINARY_DIR_DEFAULT;
}

fs::path fixturePath(const std::string& folder, const std::string& name) {
    return sourceDir() / folder / "tests" / "fixtures" / name;
}

std::string readFileBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + path.string());
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

void writeFileBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary);
    out << bytes;
}

TempDir::TempDir() {
    std::string pattern = (fs::temp_directory_path() / "bmtest-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
}

TempDir::~TempDir() {
    std::error_code ec;
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(path_, ec);
}

}  // namespace bm::testkit
