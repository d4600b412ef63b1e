// A save never damages the file on disk: a failed write leaves the old file
// byte for byte and no temporary file behind.

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "file_test_support.h"
#include "files/data_file.h"
#include "files/safe_save.h"
#include "sample_models.h"
#include "testing/test_paths.h"

namespace bm {
namespace {



namespace fs = std::filesystem;
using testkit::readFileBytes;
using testkit::TempDir;
using testkit::writeFileBytes;

const std::string kOldBytes = "Version 9.1\r\nthe old model, which must survive\r\n";

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// Runs `f` in a child process and returns its exit code (the error number, or 0).
int inChild(const std::function<int()>& f) {
    const pid_t pid = ::fork();
    if (pid == 0) _exit(f());
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

TEST(SafeSave, WritesANewFileWithTheUsualPermissions) {
    TempDir dir;
    const std::string path = dir.file("new.one");
    replaceFileContents(path, "abc\r\n");
    EXPECT_EQ(readFileBytes(path), "abc\r\n");
    const mode_t mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(fs::status(path).permissions(), static_cast<fs::perms>(0666 & ~mask));
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"new.one"});
}

TEST(SafeSave, ReplacesAnOldFileAndKeepsItsPermissions) {
    TempDir dir;
    const std::string path = dir.file("old.one");
    writeFileBytes(path, kOldBytes);
    fs::permissions(path, static_cast<fs::perms>(0640));
    replaceFileContents(path, "new contents");
    EXPECT_EQ(readFileBytes(path), "new contents");
    EXPECT_EQ(fs::status(path).permissions(), static_cast<fs::perms>(0640));
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"old.one"});
}

TEST(SafeSave, DiskFullHalfWayLeavesTheOldFileAndNoTemporaryFile) {
    TempDir dir;
    const std::string path = dir.file("model.one");
    writeFileBytes(path, kOldBytes);
    int calls = 0;
    ScopedWriteHook full([&](int fd, const void* data, std::size_t size) -> ssize_t {
        if (++calls == 1) return ::write(fd, data, size / 2);  // half of it reaches the disk
        errno = ENOSPC;
        return -1;
    });
    DataSet d = samples::threeRegular();
    EXPECT_EQ(raisedError([&] { writeDataFile(d, path); }), 61);
    EXPECT_EQ(readFileBytes(path), kOldBytes);
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"model.one"});
}

TEST(SafeSave, AWriteThatStallsCountsAsADiskFull) {
    TempDir dir;
    const std::string path = dir.file("model.two");
    writeFileBytes(path, kOldBytes);
    ScopedWriteHook stall([](int, const void*, std::size_t) -> ssize_t { return 0; });
    DataSet d = samples::twoRegular();
    EXPECT_EQ(raisedError([&] { writeDataFile(d, path); }), 61);
    EXPECT_EQ(readFileBytes(path), kOldBytes);
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"model.two"});
}

TEST(SafeSave, DeviceFailureIsDiskNotReadyAndLeavesTheOldFile) {
    TempDir dir;
    const std::string path = dir.file("model.one");
    writeFileBytes(path, kOldBytes);
    ScopedWriteHook broken([](int, const void*, std::size_t) -> ssize_t {
        errno = EIO;
        return -1;
    });
    DataSet d = samples::oneRegular();
    EXPECT_EQ(raisedError([&] { writeDataFile(d, path); }), 71);
    EXPECT_EQ(readFileBytes(path), kOldBytes);
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"model.one"});
}

TEST(SafeSave, AnyOtherWriteFailureIsAnAccessError) {
    TempDir dir;
    const std::string path = dir.file("model.one");
    writeFileBytes(path, kOldBytes);
    ScopedWriteHook broken([](int, const void*, std::size_t) -> ssize_t {
        errno = EBADF;
        return -1;
    });
    DataSet d = samples::oneRegular();
    EXPECT_EQ(raisedError([&] { writeDataFile(d, path); }), 75);
    EXPECT_EQ(readFileBytes(path), kOldBytes);
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"model.one"});
}

TEST(SafeSave, FileSizeLimitOfTheSystemIsADiskFull) {
    // A real refusal by the kernel: the child may not write files past 200 bytes.
    TempDir dir;
    const std::string path = dir.file("model.tri");
    writeFileBytes(path, kOldBytes);
    const int code = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{200, 200};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 99;
        DataSet d = samples::threeRegular();
        return raisedError([&] { writeDataFile(d, path); });
    });
    EXPECT_EQ(code, 61);
    EXPECT_EQ(readFileBytes(path), kOldBytes);
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"model.tri"});
}

TEST(SafeSave, ReadOnlyFolderIsAClearErrorAndLeavesTheOldFile) {
    TempDir dir;
    const fs::path folder = dir.path() / "readonly";
    fs::create_directory(folder);
    const std::string path = (folder / "model.one").string();
    writeFileBytes(path, kOldBytes);
    fs::permissions(dir.path(), static_cast<fs::perms>(0755));  // reachable for an ordinary user
    fs::permissions(folder, static_cast<fs::perms>(0555));
    const int code = inChild([&] {
        // The super-user writes anywhere; drop to an ordinary user first.
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) return 98;
        if (readFileBytes(path) != kOldBytes) return 95;  // the old file is in reach
        DataSet d = samples::oneRegular();
        try {
            writeDataFile(d, path);
        } catch (const RuntimeError& e) {
            // The message names the file and says why.
            if (e.description().find(path) == std::string::npos) return 97;
            if (e.description().find("Permission denied") == std::string::npos) return 96;
            return e.number();
        }
        return 0;
    });
    fs::permissions(folder, static_cast<fs::perms>(0755));
    EXPECT_EQ(code, 75);
    EXPECT_EQ(readFileBytes(path), kOldBytes);
    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"model.one"});
}

TEST(SafeSave, ReadOnlyFileIsNotReplaced) {
    TempDir dir;
    fs::permissions(dir.path(), static_cast<fs::perms>(0777));  // the folder itself may be written
    const std::string path = dir.file("protected.one");
    writeFileBytes(path, kOldBytes);
    fs::permissions(path, static_cast<fs::perms>(0444));
    const int code = inChild([&] {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) return 98;
        DataSet d = samples::oneRegular();
        return raisedError([&] { writeDataFile(d, path); });
    });
    EXPECT_EQ(code, 75);
    EXPECT_EQ(readFileBytes(path), kOldBytes);
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"protected.one"});
}

TEST(SafeSave, MissingFolderIsPathNotFound) {
    TempDir dir;
    DataSet d = samples::oneRegular();
    EXPECT_EQ(raisedError([&] { writeDataFile(d, dir.file("no/such/folder/model.one")); }), 76);
}

TEST(SafeSave, AFolderInThePlaceOfTheFileIsRefused) {
    TempDir dir;
    fs::create_directory(dir.path() / "model.one");
    DataSet d = samples::oneRegular();
    EXPECT_EQ(raisedError([&] { writeDataFile(d, dir.file("model.one")); }), 75);
    EXPECT_TRUE(fs::is_directory(dir.path() / "model.one"));
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"model.one"});
}

TEST(SafeSave, ALinkKeepsPointingAtTheReplacedFile) {
    TempDir dir;
    const fs::path target = dir.path() / "target.one";
    writeFileBytes(target, kOldBytes);
    fs::create_symlink(target, dir.path() / "link.one");
    replaceFileContents(dir.file("link.one"), "new");
    EXPECT_TRUE(fs::is_symlink(dir.path() / "link.one"));
    EXPECT_EQ(readFileBytes(target), "new");
}

TEST(SafeSave, ADeviceIsWrittenDirectlyAndStaysADevice) {
    replaceFileContents("/dev/null", "discarded\r\n");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(SafeSave, ANamedPipeReceivesTheBytesAndStaysAPipe) {
    TempDir dir;
    const std::string pipe = dir.file("results.pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] {
        FILE* in = std::fopen(pipe.c_str(), "rb");
        if (in == nullptr) return;
        char buffer[256];
        for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, in)) > 0;) received.append(buffer, n);
        std::fclose(in);
    });
    replaceFileContents(pipe, "C/Co\r\n0.5\r\n");
    reader.join();
    EXPECT_EQ(received, "C/Co\r\n0.5\r\n");
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"results.pipe"});
}

}  // namespace
}  // namespace bm
