#include "files/temporary_files.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace bm {

namespace {

constexpr std::string_view kPrefix = ".brenmoor-";
constexpr std::string_view kSuffix = ".tmp";
constexpr std::size_t kRandomPart = 6;  // the XXXXXX of mkstemps

// The registered temporary files, for the signal handler: a fixed table that
// the handler can read without taking a lock or allocating.
struct Slot {
    std::atomic<int> state{0};  // 0 free, 1 being filled, 2 registered
    char path[PATH_MAX] = {};
};
constexpr int kSlots = 16;
Slot slots[kSlots];

void rememberTemporaryFile(const std::string& path) {
    if (path.size() >= PATH_MAX) return;  // never created: mkstemps refuses such a name
    for (Slot& slot : slots) {
        int expected = 0;
        if (!slot.state.compare_exchange_strong(expected, 1)) continue;
        std::memcpy(slot.path, path.c_str(), path.size() + 1);
        slot.state.store(2, std::memory_order_release);
        return;
    }
    // Every slot taken: this one is removed by the next save into its folder.
}

extern "C" void removeTemporaryFilesAndEnd(int signalNumber) {
    const int savedErrno = errno;
    for (Slot& slot : slots)
        if (slot.state.load(std::memory_order_acquire) == 2) ::unlink(slot.path);
    ::signal(signalNumber, SIG_DFL);
    errno = savedErrno;
    ::raise(signalNumber);  // delivered when the handler returns: the process ends by the signal
}

// The temporary file behind `fd` is still the file named `name` in the folder.
bool stillNamed(int folderFd, const char* name, const struct stat& file) {
    struct stat named {};
    return ::fstatat(folderFd, name, &named, AT_SYMLINK_NOFOLLOW) == 0 && named.st_dev == file.st_dev &&
           named.st_ino == file.st_ino;
}

}  // namespace

bool isTemporaryFileName(std::string_view name) {
    if (name.size() != kPrefix.size() + kRandomPart + kSuffix.size()) return false;
    if (name.substr(0, kPrefix.size()) != kPrefix || name.substr(name.size() - kSuffix.size()) != kSuffix) return false;
    for (char c : name.substr(kPrefix.size(), kRandomPart))
        if (!(c >= '0' && c <= '9') && !(c >= 'a' && c <= 'z') && !(c >= 'A' && c <= 'Z')) return false;
    return true;
}

namespace {

// Holds back the terminating signals while a temporary file is made and
// registered, so that none can end the process between the two.
class TerminationHeld {
public:
    TerminationHeld() {
        sigset_t held;
        sigemptyset(&held);
        for (int signalNumber : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signalNumber);
        ::pthread_sigmask(SIG_BLOCK, &held, &previous_);
    }
    ~TerminationHeld() { ::pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }
    TerminationHeld(const TerminationHeld&) = delete;
    TerminationHeld& operator=(const TerminationHeld&) = delete;

private:
    sigset_t previous_;
};

}  // namespace

int createTemporaryFile(const std::string& folder, std::string& path) {
    const TerminationHeld held;
    // A file that a cleaner in another process locked before this process
    // did is given up (that cleaner removes it) and another one is made.
    for (int attempt = 0; attempt < 16; ++attempt) {
        std::string pattern = folder + "/" + std::string(kPrefix) + "XXXXXX" + std::string(kSuffix);
        const int fd = ::mkostemps(pattern.data(), static_cast<int>(kSuffix.size()), O_CLOEXEC);
        if (fd < 0) return -1;
        struct stat st {};
        if (::flock(fd, LOCK_EX | LOCK_NB) == 0 && ::fstat(fd, &st) == 0 && st.st_nlink > 0) {
            rememberTemporaryFile(pattern);
            path = pattern;
            return fd;
        }
        ::close(fd);
    }
    errno = EEXIST;
    return -1;
}

void forgetTemporaryFile(const std::string& path) {
    for (Slot& slot : slots)
        if (slot.state.load(std::memory_order_acquire) == 2 && path == slot.path) slot.state.store(0);
}

int removeAbandonedTemporaryFiles(const std::string& folder) {
    DIR* dir = ::opendir(folder.c_str());
    if (dir == nullptr) return 0;
    const int folderFd = ::dirfd(dir);
    int removed = 0;
    while (const dirent* entry = ::readdir(dir)) {
        if (!isTemporaryFileName(entry->d_name)) continue;
        const int fd = ::openat(folderFd, entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (fd < 0) continue;
        struct stat st {};
        // A lock granted means that its writer has gone.
        if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && ::flock(fd, LOCK_EX | LOCK_NB) == 0 &&
            stillNamed(folderFd, entry->d_name, st) && ::unlinkat(folderFd, entry->d_name, 0) == 0)
            ++removed;
        ::close(fd);
    }
    ::closedir(dir);
    return removed;
}

void removeTemporaryFilesOnTermination() {
    for (int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction current {};
        if (::sigaction(signalNumber, nullptr, &current) != 0 || current.sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        action.sa_handler = removeTemporaryFilesAndEnd;
        sigemptyset(&action.sa_mask);
        for (int other : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&action.sa_mask, other);
        ::sigaction(signalNumber, &action, nullptr);
    }
}

}  // namespace bm
