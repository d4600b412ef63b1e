// Damaged, truncated, binary and huge files end in a run-time error, never in
// a crash or another kind of exception.

#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "files/code_page.h"
#include "files/data_file.h"
#include "sample_models.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::fixturePath;
using testkit::readFileBytes;

// 0 when the text reads, the error number otherwise; any other exception fails the test.
int parseOutcome(const std::string& bytes, const std::string& name) {
    DataSet d;
    try {
        parseDataFile(d, windows1252ToUtf8(bytes), name);
        composeDataFile(d);  // whatever was read can be written again
    } catch (const RuntimeError& e) {
        return e.number();
    } catch (const std::exception& e) {
        ADD_FAILURE() << "unexpected exception: " << e.what();
        return -1;
    }
    return 0;
}

TEST(MalformedInput, EveryTruncationOfEveryGoldenFileEndsInAnError) {
    for (const samples::Golden& golden : samples::goldenFiles()) {
        SCOPED_TRACE(golden.fixture);
        const std::string bytes = readFileBytes(fixturePath("files", golden.fixture));
        // Every text that ends before the "[End File]" line lacks a line it needs;
        // that last line is read but not compared.
        const std::size_t complete = bytes.rfind("[End File]") + 1;
        for (std::size_t n = 0; n < complete; ++n) {
            const int error = parseOutcome(bytes.substr(0, n), golden.fixture);
            EXPECT_NE(error, 0) << "cut at " << n;
            if (::testing::Test::HasFailure()) return;
        }
        EXPECT_EQ(parseOutcome(bytes.substr(0, complete), golden.fixture), 0);
    }
}

TEST(MalformedInput, RandomDamageNeverCrashes) {
    std::mt19937 rng(7u);
    using namespace std::string_literals;  // keeps the NUL in the junk
    const std::string junk = "\r\n,: -.0123456789E[]\"Monte\x81\xFF\0"s;
    for (const samples::Golden& golden : samples::goldenFiles()) {
        const std::string original = readFileBytes(fixturePath("files", golden.fixture));
        for (int trial = 0; trial < 300; ++trial) {
            std::string bytes = original;
            const int edits = std::uniform_int_distribution<int>(1, 6)(rng);
            for (int e = 0; e < edits; ++e) {
                const std::size_t at = std::uniform_int_distribution<std::size_t>(0, bytes.size() - 1)(rng);
                const char c = junk[std::uniform_int_distribution<std::size_t>(0, junk.size() - 1)(rng)];
                switch (std::uniform_int_distribution<int>(0, 2)(rng)) {
                case 0: bytes[at] = c; break;
                case 1: bytes.insert(at, 1, c); break;
                default: bytes.erase(at, 1); break;
                }
            }
            parseOutcome(bytes, golden.fixture);
            if (::testing::Test::HasFailure()) return;
        }
    }
}

TEST(MalformedInput, BinaryFilesAreRefused) {
    std::mt19937 rng(11u);
    for (int trial = 0; trial < 50; ++trial) {
        std::string bytes(4096, '\0');
        for (char& c : bytes) c = static_cast<char>(std::uniform_int_distribution<int>(0, 255)(rng));
        EXPECT_NE(parseOutcome(bytes, "binary.one"), 0);
    }
    // A binary file that happens to start with the word passes the gate and still fails.
    EXPECT_NE(parseOutcome(std::string("Version\r\n") + std::string(1000, '\xFE'), "binary.one"), 0);
}

TEST(MalformedInput, HugeLinesAreReadAndRefusedQuickly) {
    const auto start = std::chrono::steady_clock::now();
    const std::string line(8 * 1024 * 1024, 'x');
    EXPECT_EQ(parseOutcome(line, "huge.one"), 62);                           // old format, no "Description"
    EXPECT_EQ(parseOutcome("Version 9.1\r\n" + line, "huge.one"), 62);       // the current reader runs out
    EXPECT_EQ(parseOutcome("Version\r\n[\r\nAuthor: " + line + "\r\n", "huge.two"), 62);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_LT(seconds, 20.0);  // linear work, not a hang
}

TEST(MalformedInput, TitleWithoutItsEndMarkerRunsOutAtTheEnd) {
    std::string bytes = readFileBytes(fixturePath("files", "one_regular.one"));
    const auto at = bytes.find("[End Title]");
    bytes.replace(at, 11, "[End Titel]");
    EXPECT_EQ(parseOutcome(bytes, "a.one"), 62);
}

TEST(MalformedInput, NegativeCountsReadNothing) {
    std::string bytes = readFileBytes(fixturePath("files", "one_never_calculated.one"));
    const auto at = bytes.find("Number of x terms:  0");
    bytes.replace(at, 21, "Number of x terms: -5");
    EXPECT_EQ(parseOutcome(bytes, "a.one"), 0);
}

}  // namespace
}  // namespace bm
