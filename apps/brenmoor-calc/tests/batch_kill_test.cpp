// brenmoor-calc killed in the middle of a save, 60 times: 25 times by SIGKILL,
// 25 times by SIGTERM and 10 times by SIGINT, each at a random moment (fixed
// seed) after its temporary file has appeared. The target must be the old file
// or the complete new one every time; SIGTERM and SIGINT leave no temporary
// file, and whatever SIGKILL left is gone after the next run that saves into
// the folder.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "testing/test_paths.h"

namespace {

namespace fs = std::filesystem;
using bm::testkit::readFileBytes;
using bm::testkit::TempDir;
using bm::testkit::writeFileBytes;
using Clock = std::chrono::steady_clock;

const std::string kOldContents = "the old file, which a killed save must leave whole\r\n";

// The temporary files of saves in `folder`: the hidden names the saves give them.
std::vector<std::string> temporaryFiles(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(folder)) {
        const std::string name = e.path().filename().string();
        if (name.rfind(".brenmoor-", 0) == 0) names.push_back(name);
    }
    return names;
}

pid_t startSave(const std::string& model, const std::string& target) {
    const pid_t child = ::fork();
    if (child == 0) {
        std::freopen("/dev/null", "w", stdout);
        std::freopen("/dev/null", "w", stderr);
        // A test run in the background may have SIGINT ignored, which exec would keep.
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGTERM, SIG_DFL);
        ::execl(BRENMOOR_CALC_PROGRAM, BRENMOOR_CALC_PROGRAM, "--save", target.c_str(), model.c_str(),
                static_cast<char*>(nullptr));
        ::_exit(127);
    }
    return child;
}

// Waits until a temporary file shows in `folder` or the child has ended.
// True when the file showed while the child still ran.
bool awaitTemporaryFile(pid_t child, const std::string& folder) {
    const auto deadline = Clock::now() + std::chrono::seconds(30);
    while (Clock::now() < deadline) {
        if (!temporaryFiles(folder).empty()) return true;
        int raw = 0;
        if (::waitpid(child, &raw, WNOHANG) == child) return false;
    }
    return false;
}

// A one-dimensional model whose saved file runs to about a megabyte, so that
// the save takes long enough to be cut.
std::string largeModel() {
    std::string text = readFileBytes(bm::testkit::sourceDir() / "data" / "sampldat" / "sample1.one");
    for (const auto& [from, to] : {std::pair<std::string, std::string>{"X: 0:200:10:100\r\n", "X: 0:2000:1:50\r\n"},
                                   {"Time: 0:730:73:365\r\n", "Time: 0:1000:20:100\r\n"}}) {
        const auto at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        if (at != std::string::npos) text.replace(at, from.size(), to);
    }
    return text;
}

TEST(BatchKill, AKilledSaveLeavesTheOldFileOrTheNewOneAndNoTemporaryFileAfterTheNextRun) {
    const TempDir inputs, outputs;
    const std::string model = inputs.file("large.one");
    writeFileBytes(model, largeModel());
    const std::string target = outputs.file("saved.one");

    // The complete new file, and how long a save takes from its temporary file to the end.
    writeFileBytes(target, kOldContents);
    // On a loaded machine the poll may miss a save's temporary file: a few tries.
    pid_t first = -1;
    for (int attempt = 0; attempt < 10 && first < 0; ++attempt) {
        const pid_t child = startSave(model, target);
        if (awaitTemporaryFile(child, outputs.path().string())) first = child;
        else ::waitpid(child, nullptr, 0);
    }
    ASSERT_GE(first, 0) << "no save showed its temporary file in ten tries";
    const auto shown = Clock::now();
    int raw = 0;
    ::waitpid(first, &raw, 0);
    const auto saveMicroseconds =
        std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - shown).count();
    ASSERT_TRUE(WIFEXITED(raw) && WEXITSTATUS(raw) == 0);
    const std::string newContents = readFileBytes(target);
    ASSERT_GT(newContents.size(), 500000u);
    ASSERT_TRUE(temporaryFiles(outputs.path().string()).empty());

    std::mt19937 rng(16u);
    // A random delay up to a bound that starts at half the measured save and
    // follows the machine's pace: halved after a kill that came too late,
    // widened after one that struck in time.
    double bound = std::max(2.0, static_cast<double>(saveMicroseconds) / 2);
    int killedMidSave = 0, leftBySigkill = 0, oldKept = 0;
    // At least 60 runs, then on until 50 kills struck mid-save and 5 kept the
    // old file (a loaded machine lets more kills come too late), at most 400.
    for (int k = 0; k < 400 && (k < 60 || killedMidSave < 50 || oldKept < 5); ++k) {
        const int signalNumber = k % 6 == 5 ? SIGINT : k % 2 == 0 ? SIGKILL : SIGTERM;
        writeFileBytes(target, kOldContents);
        const pid_t child = startSave(model, target);
        const bool showed = awaitTemporaryFile(child, outputs.path().string());
        if (showed) {
            std::uniform_int_distribution<long> delay(0, static_cast<long>(bound));
            std::this_thread::sleep_for(std::chrono::microseconds(delay(rng)));
            ::kill(child, signalNumber);
        }
        ::waitpid(child, &raw, 0);
        const bool killed = WIFSIGNALED(raw);
        if (killed) ++killedMidSave;
        bound = killed ? std::min(bound * 1.25, static_cast<double>(saveMicroseconds)) : std::max(2.0, bound / 2);

        const std::string now = readFileBytes(target);
        EXPECT_TRUE(now == kOldContents || now == newContents)
            << "kill " << k << ": the target is neither the old file nor the new one (" << now.size() << " bytes)";
        if (now == kOldContents) ++oldKept;
        const auto left = temporaryFiles(outputs.path().string());
        if (signalNumber != SIGKILL)
            EXPECT_TRUE(left.empty()) << "kill " << k << ": signal " << signalNumber << " left " << left[0];
        else leftBySigkill += static_cast<int>(left.size());
        // The next run that saves here removes what a killed one left.
        if (!left.empty()) {
            const pid_t next = startSave(model, outputs.file("next.one"));
            ::waitpid(next, &raw, 0);
            EXPECT_TRUE(WIFEXITED(raw) && WEXITSTATUS(raw) == 0);
            EXPECT_TRUE(temporaryFiles(outputs.path().string()).empty()) << "kill " << k;
        }
    }
    // Most kills must have struck while the save was under way, or the test proves little.
    EXPECT_GE(killedMidSave, 50);
    EXPECT_GE(oldKept, 5);
    RecordProperty("killedMidSave", killedMidSave);
    RecordProperty("leftBySigkill", leftBySigkill);
    RecordProperty("oldKept", oldKept);
}

}  // namespace
