// Every sample model and every data-file fixture through the batch calculator,
// compared byte for byte with what it wrote when the files in goldens/expected
// were recorded: the saved data file, the output file, the messages on
// standard error and the exit status. goldens/manifest.txt lists each input
// (relative to the source tree, as the output file names it) and its status;
// goldens/inputs holds the models made for this comparison alone (Monte Carlo
// runs of every saturated dimension, refusals of the unsaturated model). Each
// runs on all cores, on one thread and on three (more threads than this
// machine may have cores), spreading however short it is, and on two with
// the programs' own rule that keeps a short run on the calling thread: the
// files are the same whatever the threads.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "testing/test_paths.h"

namespace {

namespace fs = std::filesystem;
using bm::testkit::readFileBytes;
using bm::testkit::sourceDir;
using bm::testkit::TempDir;

struct GoldenCase {
    std::string input;  // relative to the source tree
    int status = 0;
    int threads = 0;  // --threads; 0: not given (all cores)
    // The programs' own threshold below which a run stays on the calling
    // thread; otherwise every run on more than one thread spreads, as in
    // every test.
    bool shortRunsStay = false;
};

fs::path goldenDir() { return sourceDir() / "apps" / "brenmoor-calc" / "tests" / "goldens"; }

std::vector<GoldenCase> goldenCases() {
    std::vector<GoldenCase> cases;
    std::ifstream manifest(goldenDir() / "manifest.txt");
    std::string input;
    int status = 0;
    while (manifest >> input >> status)
    {
        for (int threads : {0, 1, 3}) cases.push_back({input, status, threads});
        cases.push_back({input, status, 2, true});
    }
    return cases;
}

// The name of an input's expected files: its path with "/" as "__".
std::string flatName(std::string path) {
    for (std::size_t at = path.find('/'); at != std::string::npos; at = path.find('/', at + 2)) path.replace(at, 1, "__");
    return path;
}

std::string readIfThere(const fs::path& path) { return fs::exists(path) ? readFileBytes(path) : std::string(); }

// Where two texts part, with a little of each around it.
std::string firstDifference(const std::string& got, const std::string& expected) {
    const auto parted = std::mismatch(got.begin(), got.end(), expected.begin(), expected.end());
    const std::size_t at = static_cast<std::size_t>(parted.first - got.begin());
    const std::size_t from = at < 40 ? 0 : at - 40;
    std::ostringstream s;
    s << "sizes " << got.size() << " and " << expected.size() << ", first difference at byte " << at
      << "\n got: [" << got.substr(from, 80) << "]\n expected: [" << expected.substr(from, 80) << "]";
    return s.str();
}

class BatchGolden : public testing::TestWithParam<GoldenCase> {};

TEST_P(BatchGolden, WritesTheRecordedFilesMessagesAndStatus) {
    const GoldenCase& c = GetParam();
    const TempDir dir;
    const std::string threads = c.threads > 0 ? " --threads " + std::to_string(c.threads) : std::string();
    const std::string serialBelow = c.shortRunsStay ? "BRENMOOR_SERIAL_BELOW=0.008 " : "";
    const std::string command = "cd '" + sourceDir().string() + "' && " + serialBelow + "'" + BRENMOOR_CALC_PROGRAM + "'" + threads + " --save '" +
                                dir.file("saved") + "' --output '" + dir.file("output") + "' '" + c.input + "' 2>'" +
                                dir.file("messages") + "'";
    const int raw = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(raw)) << command;
    EXPECT_EQ(WEXITSTATUS(raw), c.status) << c.input;

    const fs::path expected = goldenDir() / "expected" / flatName(c.input);
    const struct {
        const char* what;
        std::string got, wanted;
        bool written;
    } files[] = {
        {"saved data file", readIfThere(dir.file("saved")), readIfThere(expected.string() + ".save"),
         fs::exists(expected.string() + ".save")},
        {"output file", readIfThere(dir.file("output")), readIfThere(expected.string() + ".out"),
         fs::exists(expected.string() + ".out")},
        {"messages", readIfThere(dir.file("messages")), readIfThere(expected.string() + ".err"), true},
    };
    EXPECT_EQ(fs::exists(dir.file("saved")), files[0].written) << c.input << ": whether a data file is saved";
    EXPECT_EQ(fs::exists(dir.file("output")), files[1].written) << c.input << ": whether an output file is written";
    for (const auto& f : files)
        EXPECT_TRUE(f.got == f.wanted) << c.input << ", " << f.what << ": " << firstDifference(f.got, f.wanted);
}

std::string caseName(const testing::TestParamInfo<GoldenCase>& info) {
    std::string name = fs::path(info.param.input).filename().string() + "_" + std::to_string(info.index) +
                       (info.param.threads > 0 ? "_threads" + std::to_string(info.param.threads) : "") +
                       (info.param.shortRunsStay ? "_shortRunsStay" : "");
    for (char& ch : name)
        if (!std::isalnum(static_cast<unsigned char>(ch))) ch = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(AllModels, BatchGolden, testing::ValuesIn(goldenCases()), caseName);

TEST(BatchGoldenManifest, NamesEverySampleModelAndEveryDataFileFixture) {
    std::vector<std::string> listed;
    for (const GoldenCase& c : goldenCases())
        if (c.threads == 0) listed.push_back(c.input);
    std::vector<std::string> missing;
    for (const char* folder : {"data/sampldat", "apps/brenmoor-calc/tests/fixtures", "files/tests/fixtures",
                               "apps/brenmoor-calc/tests/goldens/inputs"}) {
        for (const auto& entry : fs::directory_iterator(sourceDir() / folder)) {
            if (!entry.is_regular_file() || entry.path().filename().string().front() == '.') continue;
            const std::string relative = std::string(folder) + "/" + entry.path().filename().string();
            if (std::find(listed.begin(), listed.end(), relative) == listed.end()) missing.push_back(relative);
        }
    }
    EXPECT_TRUE(missing.empty()) << "not in goldens/manifest.txt: " << testing::PrintToString(missing);
    EXPECT_GE(listed.size(), 60u);
}

}  // namespace
