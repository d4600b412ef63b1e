#include "files/safe_save.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

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

// Removes the temporary file unless the rename has taken it.
class TemporaryFile {
public:
    TemporaryFile(std::string path, int fd) : path_(std::move(path)), fd_(fd) {}
    ~TemporaryFile() {
        if (fd_ >= 0) ::close(fd_);
        if (!path_.empty()) ::unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    int fd() const { return fd_; }
    const std::string& path() const { return path_; }
    // Closes the descriptor; returns the errno of a failed close, or 0.
    int close() {
        const int result = ::close(fd_);
        fd_ = -1;
        return result == 0 ? 0 : errno;
    }
    void release() { path_.clear(); }

private:
    std::string path_;
    int fd_;
};

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
    TemporaryFile stream("", fd);  // closes it; nothing to unlink
    writeAll(stream.fd(), bytes, folder, path);
    if (const int error = stream.close(); error != 0) raiseFor(error, folder, path);
}

}  // namespace

ScopedWriteHook::ScopedWriteHook(WriteFunction write) { writeHook() = std::move(write); }
ScopedWriteHook::~ScopedWriteHook() { writeHook() = nullptr; }

void replaceFileContents(const std::string& path, std::string_view bytes) {
    fs::path target(path);
    std::error_code ec;
    // Follow a link, so that the file it points to is replaced and the link kept.
    if (fs::is_symlink(target, ec)) {
        const fs::path resolved = fs::weakly_canonical(target, ec);
        if (!ec) target = resolved;
    }
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    fs::path folder = target.parent_path();
    if (folder.empty()) folder = ".";
    // A device or a pipe (/dev/null, /dev/stdout, a named pipe) holds nothing
    // that could be lost and cannot be renamed over: it is written directly.
    if (exists && (S_ISCHR(old.st_mode) || S_ISFIFO(old.st_mode))) {
        writeToStream(target.string(), bytes, folder.string(), path);
        return;
    }
    if (exists && !S_ISREG(old.st_mode))
        raiseError(err::PathFileAccessError, "Path/File access error: " + path + " is not a file and cannot be replaced");

    // A file the user may not write stays as it is, though the rename could replace it.
    if (exists && ::access(target.c_str(), W_OK) != 0) raiseFor(errno, folder.string(), path);
    std::string pattern = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
    const int fd = ::mkstemp(pattern.data());
    if (fd < 0) raiseFor(errno, folder.string(), path);
    TemporaryFile temp(pattern, fd);

    // The new file gets the old one's permissions, or those of a newly made file.
    const mode_t mode = exists ? (old.st_mode & 07777) : (0666 & ~currentUmask());
    ::fchmod(temp.fd(), mode);

    writeAll(temp.fd(), bytes, folder.string(), path);
    if (::fsync(temp.fd()) != 0) raiseFor(errno, folder.string(), path);
    if (const int error = temp.close(); error != 0) raiseFor(error, folder.string(), path);
    if (::rename(temp.path().c_str(), target.c_str()) != 0) raiseFor(errno, folder.string(), path);
    temp.release();

    // Make the rename itself durable (best effort: not every file system allows it).
    const int dirFd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (dirFd >= 0) {
        ::fsync(dirFd);
        ::close(dirFd);
    }
}

}  // namespace bm
