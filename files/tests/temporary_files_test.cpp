// The temporary files of saves: their short names, the lock that tells a
// living writer from a killed one, and the two-step replacement.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include "files/safe_save.h"
#include "files/temporary_files.h"
#include "shell/base/runtime_error.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

namespace fs = std::filesystem;
using testkit::readFileBytes;
using testkit::TempDir;
using testkit::writeFileBytes;

int entriesIn(const TempDir& dir) {
    int n = 0;
    for ([[maybe_unused]] const auto& e : fs::directory_iterator(dir.path())) ++n;
    return n;
}

TEST(TemporaryFiles, NamesAreShortAndHidden) {
    EXPECT_TRUE(isTemporaryFileName(".brenmoor-a1B2c3.tmp"));
    EXPECT_FALSE(isTemporaryFileName(".brenmoor-a1B2c.tmp"));    // five random characters
    EXPECT_FALSE(isTemporaryFileName(".brenmoor-a1B2c3.tmpx"));
    EXPECT_FALSE(isTemporaryFileName("brenmoor-a1B2c3.tmp"));
    EXPECT_FALSE(isTemporaryFileName(".brenmoor-a1B2-3.tmp"));
    EXPECT_FALSE(isTemporaryFileName(".saved.one.Xy12ab"));

    TempDir dir;
    std::string path;
    const int fd = createTemporaryFile(dir.path().string(), path);
    ASSERT_GE(fd, 0);
    EXPECT_EQ(fs::path(path).parent_path(), dir.path());
    EXPECT_TRUE(isTemporaryFileName(fs::path(path).filename().string())) << path;
    EXPECT_EQ(fs::path(path).filename().string().size(), 20u);
    forgetTemporaryFile(path);
    ::unlink(path.c_str());
    ::close(fd);
}

TEST(TemporaryFiles, OneThatItsWriterStillHoldsIsLeftAlone) {
    TempDir dir;
    std::string path;
    const int fd = createTemporaryFile(dir.path().string(), path);
    ASSERT_GE(fd, 0);
    // Another process looks at the folder while this one still writes.
    const pid_t child = ::fork();
    if (child == 0) ::_exit(removeAbandonedTemporaryFiles(dir.path().string()));
    int raw = 0;
    ::waitpid(child, &raw, 0);
    EXPECT_EQ(WEXITSTATUS(raw), 0);
    EXPECT_TRUE(fs::exists(path));
    forgetTemporaryFile(path);
    ::unlink(path.c_str());
    ::close(fd);
}

TEST(TemporaryFiles, OneThatNoProcessHoldsIsRemovedAndOtherFilesStay) {
    TempDir dir;
    writeFileBytes(dir.file(".brenmoor-Ab12Cd.tmp"), "left by a killed save");
    writeFileBytes(dir.file(".brenmoor-notours.txt"), "someone else's");
    writeFileBytes(dir.file("model.one"), "a model");
    EXPECT_EQ(removeAbandonedTemporaryFiles(dir.path().string()), 1);
    EXPECT_FALSE(fs::exists(dir.file(".brenmoor-Ab12Cd.tmp")));
    EXPECT_EQ(entriesIn(dir), 2);
    // A folder of that name is no temporary file.
    fs::create_directory(dir.file(".brenmoor-Zz99Zz.tmp"));
    EXPECT_EQ(removeAbandonedTemporaryFiles(dir.path().string()), 0);
    EXPECT_TRUE(fs::is_directory(dir.file(".brenmoor-Zz99Zz.tmp")));
}

TEST(TemporaryFiles, ASaveRemovesWhatAKilledSaveLeftInItsFolder) {
    TempDir dir;
    writeFileBytes(dir.file(".brenmoor-Ab12Cd.tmp"), "left by a killed save");
    replaceFileContents(dir.file("model.one"), "new");
    EXPECT_EQ(readFileBytes(dir.file("model.one")), "new");
    EXPECT_EQ(entriesIn(dir), 1);
}

TEST(PreparedReplacement, NothingChangesUntilTheCommitAndADroppedOneLeavesNothing) {
    TempDir dir;
    writeFileBytes(dir.file("a.one"), "old a");
    writeFileBytes(dir.file("b.one"), "old b");
    {
        PreparedReplacement a(dir.file("a.one"), "new a");
        PreparedReplacement b(dir.file("b.one"), "new b");
        EXPECT_EQ(readFileBytes(dir.file("a.one")), "old a");
        EXPECT_EQ(readFileBytes(a.temporaryPath()), "new a");
        EXPECT_EQ(entriesIn(dir), 4);
        a.commit();
        EXPECT_EQ(readFileBytes(dir.file("a.one")), "new a");
        EXPECT_EQ(a.temporaryPath(), "");
        // b is dropped without its commit, as when a later output fails.
    }
    EXPECT_EQ(readFileBytes(dir.file("b.one")), "old b");
    EXPECT_EQ(entriesIn(dir), 2);
}

TEST(PreparedReplacement, ATargetNameOfTheLongestLengthCanBeReplaced) {
    TempDir dir;
    const std::string name = std::string(251, 'n') + ".one";  // 255 bytes, the longest name
    replaceFileContents(dir.file(name), "first");
    replaceFileContents(dir.file(name), "second");
    EXPECT_EQ(readFileBytes(dir.file(name)), "second");
    EXPECT_EQ(entriesIn(dir), 1);
}

TEST(SafeSaveTarget, LinksAreFollowedToTheirEndDanglingOrNot) {
    TempDir dir;
    fs::create_symlink("b", dir.file("a"));
    fs::create_symlink("c.one", dir.file("b"));
    EXPECT_EQ(saveTargetOf(dir.file("a")), dir.file("c.one"));  // c.one does not exist yet
    replaceFileContents(dir.file("a"), "through two links");
    EXPECT_EQ(readFileBytes(dir.file("c.one")), "through two links");
    EXPECT_TRUE(fs::is_symlink(dir.file("a")));
    fs::create_symlink("loop2", dir.file("loop1"));
    fs::create_symlink("loop1", dir.file("loop2"));
    try {
        saveTargetOf(dir.file("loop1"));
        ADD_FAILURE() << "a loop of links was followed";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 75);
    }
}

}  // namespace
}  // namespace bm
