#pragma once
// The include order of the tree: each source file belongs to a layer by its
// folder (build/layers.txt lists the folders and the lower layers of each),
// and may include the headers of its own layer and of the layers below it,
// never those of a higher layer, of another branch (one kind's solvers from
// another's), or of the tests. Tests, test support, programs and benchmarks
// stand above every layer.

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace bm::testkit {

struct Layer {
    std::string name;
    std::vector<std::string> folders;  // relative to the tree
    std::set<std::string> visible;     // itself and every layer below it
};

struct LayerMap {
    std::vector<Layer> layers;
};

// Reads a map of lines "name folder,folder,... lower,lower,...".
LayerMap readLayerMap(const std::filesystem::path& path);

// The layer of a file (path relative to the tree): "" for the code above the
// layers (tests, test support, programs, benchmarks), nothing for a code file
// in a folder no layer claims.
std::optional<std::string> layerOf(const LayerMap& map, const std::string& relativePath);

struct IncludeFault {
    std::string file;     // relative to the tree
    int line = 0;
    std::string include;  // as written
    std::string reason;
};

// Every .h and .cpp of the tree (build folders, .git and fixtures left out),
// checked include by include.
std::vector<IncludeFault> checkIncludes(const std::filesystem::path& root, const LayerMap& map);

// How many code files the last check read.
int filesChecked();

}  // namespace bm::testkit
