#include "apps/brenmoor-calc/batch_targets.h"

#include <filesystem>
#include <sys/stat.h>

#include "files/safe_save.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace fs = std::filesystem;

namespace {

struct FileIdentity {
    bool exists = false;
    dev_t device = 0;
    ino_t inode = 0;
    std::string absolute;  // symbolic links followed, "." and ".." resolved
};

FileIdentity identify(const std::string& path) {
    FileIdentity id;
    std::string target = path;
    try {
        target = saveTargetOf(path);
    } catch (const RuntimeError&) {
        // a loop of links: compared by its own name
    }
    struct stat st {};
    if (::stat(target.c_str(), &st) == 0) {
        id.exists = true;
        id.device = st.st_dev;
        id.inode = st.st_ino;
    }
    std::error_code ec;
    const fs::path absolute = fs::absolute(target, ec);
    const fs::path canonical = fs::weakly_canonical(ec ? fs::path(target) : absolute, ec);
    id.absolute = (ec ? absolute.lexically_normal() : canonical).string();
    return id;
}

bool sameFile(const FileIdentity& a, const FileIdentity& b) {
    if (a.exists && b.exists) return a.device == b.device && a.inode == b.inode;
    if (a.exists != b.exists) return false;
    return a.absolute == b.absolute;
}

// Why `path` cannot be written as the target of `option`; empty when it can.
std::string kindRefusal(const std::string& option, const std::string& path) {
    if (path == "-") return {};
    std::string target;
    try {
        target = saveTargetOf(path);
    } catch (const RuntimeError&) {
        return option + " " + path + ": its symbolic links go round in a loop";
    }
    struct stat st {};
    if (::stat(target.c_str(), &st) != 0) return {};  // a new file; its folder is checked on writing
    if (S_ISDIR(st.st_mode)) return option + " " + path + ": this is a folder, not a file";
    if (S_ISFIFO(st.st_mode))
        return option + " " + path + ": this is a named pipe, not a file (use - to write to standard output)";
    if (S_ISCHR(st.st_mode) || S_ISBLK(st.st_mode))
        return option + " " + path + ": this is a device, not a file (use - to write to standard output)";
    if (!S_ISREG(st.st_mode)) return option + " " + path + ": this is not a file";
    return {};
}

}  // namespace

bool nameTheSameFile(const std::string& a, const std::string& b) { return sameFile(identify(a), identify(b)); }

std::string refuseBatchTargets(const BatchOptions& options, int standardOutput) {
    const bool toStandardOutput = options.savePath.empty() && options.outputPath.empty();
    const std::string outputPath = toStandardOutput ? std::string("-") : options.outputPath;
    if (std::string why = kindRefusal("--save", options.savePath); !why.empty()) return why;
    if (std::string why = kindRefusal("--output", outputPath); !why.empty()) return why;
    const std::string& plotPath = options.fit.plotPath;
    if (std::string why = kindRefusal("--plot", plotPath); !why.empty()) return why;

    const bool saveToFile = !options.savePath.empty() && options.savePath != "-";
    const bool outputToFile = !outputPath.empty() && outputPath != "-";
    if (saveToFile && outputToFile && nameTheSameFile(options.savePath, outputPath))
        return "--save and --output name the same file";
    if (outputToFile && nameTheSameFile(outputPath, options.dataFile))
        return "--output names the data file itself, which the output file would replace";
    if (!plotPath.empty()) {
        if (nameTheSameFile(plotPath, options.dataFile)) return "--plot names the data file itself";
        for (const auto& [option, path, toFile] : {std::tuple{"--save", options.savePath, saveToFile},
                                                   std::tuple{"--output", outputPath, outputToFile}})
            if (toFile && nameTheSameFile(plotPath, path)) return std::string(option) + " and --plot name the same file";
    }

    // "-" into a file that is also a target: the rename would leave the
    // redirected output in a file that no longer has a name.
    const bool usesStandardOutput = options.savePath == "-" || outputPath == "-";
    struct stat out {};
    if (usesStandardOutput && ::fstat(standardOutput, &out) == 0 && S_ISREG(out.st_mode)) {
        for (const auto& [option, path, toFile] : {std::tuple{"--save", options.savePath, saveToFile},
                                                   std::tuple{"--output", outputPath, outputToFile},
                                                   std::tuple{"--plot", plotPath, !plotPath.empty()}}) {
            if (!toFile) continue;
            const FileIdentity id = identify(path);
            if (id.exists && id.device == out.st_dev && id.inode == out.st_ino)
                return std::string(option) + " names the file that standard output goes to";
        }
    }
    return {};
}

}  // namespace bm
