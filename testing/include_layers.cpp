#include "testing/include_layers.h"

#include <fstream>
#include <map>
#include <regex>
#include <sstream>

namespace bm::testkit {

namespace fs = std::filesystem;

namespace {

int checked = 0;

std::vector<std::string> splitCommas(const std::string& text) {
    std::vector<std::string> parts;
    std::stringstream s(text);
    std::string part;
    while (std::getline(s, part, ','))
        if (!part.empty()) parts.push_back(part);
    return parts;
}

bool aboveTheLayers(const fs::path& relative) {
    const std::string first = relative.begin() == relative.end() ? std::string() : relative.begin()->string();
    if (first == "testing" || first == "apps" || first == "bench" || first == "data") return true;
    for (const auto& part : relative)
        if (part == "tests") return true;
    return false;
}

bool isCode(const fs::path& path) { return path.extension() == ".h" || path.extension() == ".cpp"; }

bool skipped(const fs::path& relative) {
    for (const auto& part : relative) {
        const std::string p = part.string();
        if (p == ".git" || p == "fixtures" || p.rfind("build", 0) == 0) return true;
    }
    return false;
}

}  // namespace

LayerMap readLayerMap(const fs::path& path) {
    LayerMap map;
    std::map<std::string, std::vector<std::string>> lower;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        std::stringstream s(line);
        std::string name, folders, below;
        if (!(s >> name)) continue;
        s >> folders >> below;
        map.layers.push_back({name, splitCommas(folders), {}});
        lower[name] = splitCommas(below);
    }
    // Each layer sees itself and, through the layers it links, everything below.
    for (Layer& layer : map.layers) {
        std::vector<std::string> pending{layer.name};
        while (!pending.empty()) {
            const std::string next = pending.back();
            pending.pop_back();
            if (!layer.visible.insert(next).second) continue;
            for (const std::string& l : lower[next]) pending.push_back(l);
        }
    }
    return map;
}

std::optional<std::string> layerOf(const LayerMap& map, const std::string& relativePath) {
    const fs::path relative(relativePath);
    if (aboveTheLayers(relative)) return std::string();
    const std::string folder = relative.parent_path().generic_string();
    for (const Layer& layer : map.layers)
        for (const std::string& f : layer.folders)
            if (f == folder) return layer.name;
    return std::nullopt;
}

std::vector<IncludeFault> checkIncludes(const fs::path& root, const LayerMap& map) {
    static const std::regex include(R"re(^\s*#\s*include\s*"([^"]+)")re");
    std::vector<IncludeFault> faults;
    checked = 0;
    for (auto it = fs::recursive_directory_iterator(root); it != fs::recursive_directory_iterator(); ++it) {
        const fs::path relative = fs::relative(it->path(), root);
        if (it->is_directory() && skipped(relative)) {
            it.disable_recursion_pending();
            continue;
        }
        if (!it->is_regular_file() || !isCode(it->path()) || skipped(relative)) continue;
        ++checked;
        const std::string file = relative.generic_string();
        const std::optional<std::string> layer = layerOf(map, file);
        if (!layer) {
            faults.push_back({file, 0, "", "no layer claims its folder"});
            continue;
        }
        if (layer->empty()) continue;  // tests and programs may include anything
        const Layer* own = nullptr;
        for (const Layer& l : map.layers)
            if (l.name == *layer) own = &l;
        std::ifstream in(it->path());
        std::string line;
        int number = 0;
        while (std::getline(in, line)) {
            ++number;
            std::smatch m;
            if (!std::regex_search(line, m, include)) continue;
            const std::string written = m[1].str();
            // A bare name is a neighbour in the same folder.
            const std::string target =
                written.find('/') == std::string::npos ? (relative.parent_path() / written).generic_string() : written;
            const std::optional<std::string> targetLayer = layerOf(map, target);
            if (!targetLayer) faults.push_back({file, number, written, "no layer claims the included folder"});
            else if (targetLayer->empty()) faults.push_back({file, number, written, "a layer includes test or program code"});
            else if (!own->visible.count(*targetLayer))
                faults.push_back({file, number, written, *layer + " may not include " + *targetLayer});
        }
    }
    return faults;
}

int filesChecked() { return checked; }

}  // namespace bm::testkit
