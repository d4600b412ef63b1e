#include "files/safe_save.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "files/temporary_files.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace fs = std::filesystem;

namespace {

ScopedWriteHook::WriteFunction& writeHook() {
    static ScopedWriteHook::WriteFunction hook;
    return hook;
}

ssize_t writeSome(int fd, const char* data, std::size_t size) {
    if (writeHook()) return writeHook()(fd, data, size);
    return ::write(fd, data, size);
}

// The error of a failed system call, naming the file and, for a folder that
// cannot be written, the folder.
[[noreturn]] void raiseFor(int error, const std::string& folder, const std::string& path) {
    const std::string reason = std::strerror(error);
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        raiseError(err::DiskFull, "Disk full: " + path + " cannot be saved (" + reason + ")");
    case ENOENT:
    case ENOTDIR:
        raiseError(err::PathNotFound, "Path not found: " + path + " cannot be saved (the folder " + folder + ": " +
                                          reason + ")");
    case EIO:
    case ENODEV:
    case ENXIO:
    case ENOMEDIUM:
        raiseError(err::DiskNotReady, "Disk not ready: " + path + " cannot be saved (" + reason + ")");
    default:
        raiseError(err::PathFileAccessError, "Path/File access error: " + path + " cannot be saved (the folder " +
                                                 folder + ": " + reason + ")");
    }
}

mode_t currentUmask() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return mask;
}

void writeAll(int fd, std::string_view bytes, const std::string& folder, const std::string& path) {
    const char* data = bytes.data();
    std::size_t left = bytes.size();
    while (left > 0) {
        const ssize_t written = writeSome(fd, data, left);
        if (written < 0) {
            if (errno == EINTR) continue;
            raiseFor(errno, folder, path);
        }
        if (written == 0) raiseFor(ENOSPC, folder, path);
        data += written;
        left -= static_cast<std::size_t>(written);
    }
}

void writeToStream(const std::string& target, std::string_view bytes, const std::string& folder,
                   const std::string& path) {
    const int fd = ::open(target.c_str(), O_WRONLY | O_CLOEXEC);
    if (fd < 0) raiseFor(errno, folder, path);
    try {
        writeAll(fd, bytes, folder, path);
    } catch (...) {
        ::close(fd);
        throw;
    }
    if (::close(fd) != 0) raiseFor(errno, folder, path);
}

// Makes a rename in the folder durable (best effort: not every file system allows it).
void syncFolder(const std::string& folder) {
    const int dirFd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dirFd >= 0) {
        ::fsync(dirFd);
        ::close(dirFd);
    }
}

}  // namespace

std::string saveTargetOf(const std::string& path) {
    fs::path target(path);
    for (int hops = 0;; ++hops) {
        struct stat st {};
        if (::lstat(target.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return target.string();
        if (hops == 40) raiseFor(ELOOP, target.parent_path().string(), path);
        char buffer[PATH_MAX];
        const ssize_t n = ::readlink(target.c_str(), buffer, sizeof buffer);
        if (n < 0 || n == static_cast<ssize_t>(sizeof buffer)) return target.string();
        const fs::path link(std::string(buffer, static_cast<std::size_t>(n)));
        target = link.is_absolute() ? link : target.parent_path() / link;
    }
}

struct PreparedReplacement::State {
    std::string path;    // as the caller named it, for the messages
    std::string target;  // the file written
    std::string folder;
    std::string temporary;
    int fd = -1;
    bool stream = false;      // a device or a pipe, written at the commit
    std::string streamBytes;

    ~State() { discard(); }
    void discard() {
        if (fd >= 0) ::close(fd);
        fd = -1;
        if (!temporary.empty()) {
            ::unlink(temporary.c_str());
            forgetTemporaryFile(temporary);
            temporary.clear();
        }
    }
};

PreparedReplacement::PreparedReplacement(const std::string& path, std::string_view bytes)
    : state_(std::make_unique<State>()) {
    State& s = *state_;
    s.path = path;
    s.target = saveTargetOf(path);
    s.folder = fs::path(s.target).parent_path().string();
    if (s.folder.empty()) s.folder = ".";

    struct stat old {};
    const bool exists = ::stat(s.target.c_str(), &old) == 0;
    // A device or a pipe (/dev/null, /dev/stdout, a named pipe) holds nothing
    // that could be lost and cannot be renamed over: it is written directly.
    if (exists && (S_ISCHR(old.st_mode) || S_ISFIFO(old.st_mode))) {
        s.stream = true;
        s.streamBytes.assign(bytes);
        return;
    }
    if (exists && !S_ISREG(old.st_mode))
        raiseError(err::PathFileAccessError, "Path/File access error: " + path + " is not a file and cannot be replaced");
    // A file the user may not write stays as it is, though the rename could replace it.
    if (exists && ::access(s.target.c_str(), W_OK) != 0) raiseFor(errno, s.folder, path);

    removeAbandonedTemporaryFiles(s.folder);
    s.fd = createTemporaryFile(s.folder, s.temporary);
    if (s.fd < 0) raiseFor(errno, s.folder, path);

    // The new file gets the old one's permissions, or those of a newly made file.
    const mode_t mode = exists ? (old.st_mode & 07777) : (0666 & ~currentUmask());
    ::fchmod(s.fd, mode);
    writeAll(s.fd, bytes, s.folder, path);
    if (::fsync(s.fd) != 0) raiseFor(errno, s.folder, path);
}

PreparedReplacement::~PreparedReplacement() = default;
PreparedReplacement::PreparedReplacement(PreparedReplacement&&) noexcept = default;
PreparedReplacement& PreparedReplacement::operator=(PreparedReplacement&&) noexcept = default;

const std::string& PreparedReplacement::temporaryPath() const { return state_->temporary; }

void PreparedReplacement::commit() {
    State& s = *state_;
    if (s.stream) {
        writeToStream(s.target, s.streamBytes, s.folder, s.path);
        s.stream = false;
        return;
    }
    if (s.temporary.empty()) return;  // committed already
    if (::rename(s.temporary.c_str(), s.target.c_str()) != 0) raiseFor(errno, s.folder, s.path);
    forgetTemporaryFile(s.temporary);
    s.temporary.clear();
    // The lock goes with the descriptor, only now that the name is gone.
    ::close(s.fd);
    s.fd = -1;
    syncFolder(s.folder);
}

void replaceFileContents(const std::string& path, std::string_view bytes) {
    PreparedReplacement replacement(path, bytes);
    replacement.commit();
}

ScopedWriteHook::ScopedWriteHook(WriteFunction write) { writeHook() = std::move(write); }
ScopedWriteHook::~ScopedWriteHook() { writeHook() = nullptr; }

}  // namespace bm
