// Bad data files through brenmoor-calc: truncated, a count past 16 bits, a
// damaged Monte Carlo block, binary bytes, 100 MB. Each run must end within its
// time limit with exit status 3, the error handler's message on standard error
// as "TITLE: TEXT", nothing on standard output, no file written, and the data
// file itself untouched.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "handler_lines.h"
#include "testing/test_paths.h"

namespace {

namespace fs = std::filesystem;
using bm::testkit::fixturePath;
using bm::testkit::readFileBytes;
using bm::testkit::TempDir;
using bm::testkit::writeFileBytes;

constexpr int kRuntimeErrorStatus = 3;
constexpr int kTimedOut = 124;

using bm::testkit::improperFileName;
const std::string& kOverflow = bm::testkit::kOverflowLine;
const std::string& kTypeMismatch = bm::testkit::kTypeMismatchLine;

struct RefusedRun {
    int status = -1;
    std::string out, err;
};

// Runs the program on `input` with --save and --output into `dir`, under a time
// limit, and checks what every refused file must leave: no output files, no
// other file in the folder, the input as it was.
RefusedRun runRefused(const TempDir& dir, const std::string& input, int seconds = 60) {
    const std::string before = readFileBytes(input);
    std::set<std::string> entries;
    for (const auto& e : fs::directory_iterator(dir.path())) entries.insert(e.path().filename().string());
    const std::string saved = dir.file("saved.one"), output = dir.file("output.txt");
    const std::string outPath = dir.path().parent_path() / (dir.path().filename().string() + ".stdout");
    const std::string errPath = dir.path().parent_path() / (dir.path().filename().string() + ".stderr");
    const std::string command = "timeout -k 5 " + std::to_string(seconds) + " " + BRENMOOR_CALC_PROGRAM +
                                " --save " + saved + " --output " + output + " " + input + " >" + outPath + " 2>" +
                                errPath;
    const int raw = std::system(command.c_str());
    RefusedRun r;
    r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    r.out = readFileBytes(outPath);
    r.err = readFileBytes(errPath);
    fs::remove(outPath);
    fs::remove(errPath);
    EXPECT_NE(r.status, kTimedOut) << "no answer within " << seconds << " s";
    EXPECT_FALSE(fs::exists(saved));
    EXPECT_FALSE(fs::exists(output));
    std::set<std::string> after;
    for (const auto& e : fs::directory_iterator(dir.path())) after.insert(e.path().filename().string());
    EXPECT_EQ(after, entries) << "the run left a file behind";
    EXPECT_TRUE(readFileBytes(input) == before) << "the data file was changed";
    EXPECT_EQ(r.out, "");
    return r;
}

// A valid model written by hand, to damage.
std::string validModel() { return readFileBytes(fixturePath("apps/brenmoor-calc", "finite_dirichlet.one")); }

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) text.replace(at, from.size(), to);
    return text;
}

TEST(BatchBadInput, TheValidModelItselfIsCalculated) {
    // The damaged files below differ from this one only by their damage.
    TempDir dir;
    writeFileBytes(dir.file("model.one"), validModel());
    const std::string command = std::string("timeout -k 5 60 ") + BRENMOOR_CALC_PROGRAM + " --save " +
                                dir.file("saved.one") + " " + dir.file("model.one") + " >/dev/null 2>&1";
    const int raw = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(raw));
    EXPECT_EQ(WEXITSTATUS(raw), 0);
    EXPECT_TRUE(fs::exists(dir.file("saved.one")));
}

TEST(BatchBadInput, EveryTruncationIsAnImproperFile) {
    // Cut at every line end and in the middle of every line: the reader runs
    // out of lines before "[End File]".
    const std::string model = validModel();
    std::vector<std::size_t> cuts;
    for (std::size_t at = model.find("\r\n"); at != std::string::npos; at = model.find("\r\n", at + 2)) {
        cuts.push_back(at + 2);
        cuts.push_back(at);  // the CR LF missing
    }
    std::size_t lineStart = 0;
    for (std::size_t at = model.find("\r\n"); at != std::string::npos; at = model.find("\r\n", at + 2)) {
        if (at > lineStart + 1) cuts.push_back((lineStart + at) / 2);
        lineStart = at + 2;
    }
    TempDir dir;
    const std::string input = dir.file("cut.one");
    int runs = 0;
    for (std::size_t cut : cuts) {
        if (cut >= model.rfind("[End File]")) continue;  // only the last line's own text is not compared
        writeFileBytes(input, model.substr(0, cut));
        const RefusedRun r = runRefused(dir, input, 30);
        EXPECT_EQ(r.status, kRuntimeErrorStatus) << "cut at " << cut;
        EXPECT_EQ(r.err, improperFileName(input)) << "cut at " << cut;
        ++runs;
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(runs, 150);
}

TEST(BatchBadInput, CountsBeyondSixteenBitsAreAnOverflow) {
    TempDir dir;
    const std::string input = dir.file("counts.one");
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"Number of x terms:  0", "Number of x terms:  32768"},
             {"Number of t terms:  0", "Number of t terms:  100000"},
             {"Number of x terms:  0", "Number of x terms: -40000"},
             {"Superposition Index: 3", "Superposition Index: 70000"},
             {"\r\n 1 \r\n[Begin Chemical", "\r\n 1E+30 \r\n[Begin Chemical"}}) {
        writeFileBytes(input, replaced(validModel(), from, to));
        const RefusedRun r = runRefused(dir, input);
        EXPECT_EQ(r.status, kRuntimeErrorStatus) << to;
        EXPECT_EQ(r.err, kOverflow) << to;
    }
}

TEST(BatchBadInput, ADamagedMonteCarloBlockIsAnImproperFile) {
    TempDir dir;
    const std::string input = dir.file("monte.one");
    const std::string records =
        "Ground Water Darcy Velocity (V)\r\n0.1\r\n0.05\r\n0.15\r\n0.001\r\n2\r\nNormal\r\n-1 \r\n";
    struct Damage {
        std::string from, to, message;
    };
    const std::vector<Damage> damages = {
        // markers that do not match
        {"[Begin Monte Carlo Data]", "[Begin Monte Carlo]", improperFileName(input)},
        {"[Begin Chemical  1 ]", "[Begin Chemical  2 ]", improperFileName(input)},
        {"[End MonteCarlo Data]", "[End Monte Carlo Data]", improperFileName(input)},
        // counts that promise records the block does not hold
        {"[Begin Monte Carlo Data]\r\n 0 \r\n", "[Begin Monte Carlo Data]\r\n 3 \r\n", improperFileName(input)},
        // a result record with no input record to stand beside: a bounds
        // error while reading, which the workbench passes over without a box
        {"[Begin Monte Carlo Data]\r\n 0 \r\n 0 \r\n 1 \r\n[Begin Chemical  1 ]\r\n",
         "[Begin Monte Carlo Data]\r\n 0 \r\n 1 \r\n 2 \r\n[Begin Chemical  1 ]\r\n" + records + "Median\r\n 0.1 \r\n",
         bm::testkit::kBoundsLine},
        // a comma inside a record shifts every field behind it: the flag is then read from a word
        {"[Begin Monte Carlo Data]\r\n 0 \r\n 0 \r\n 1 \r\n[Begin Chemical  1 ]\r\n",
         "[Begin Monte Carlo Data]\r\n 1 \r\n 0 \r\n 1 \r\n[Begin Chemical  1 ]\r\nVelocity, Darcy\r\n0.1\r\n0.05\r\n"
         "0.15\r\n0.001\r\n2\r\nNormal\r\n-1 \r\n",
         kTypeMismatch}};
    for (const Damage& d : damages) {
        writeFileBytes(input, replaced(validModel(), d.from, d.to));
        const RefusedRun r = runRefused(dir, input);
        EXPECT_EQ(r.status, kRuntimeErrorStatus) << d.to;
        EXPECT_EQ(r.err, d.message) << d.to;
    }
}

TEST(BatchBadInput, BinaryFilesAreImproperFiles) {
    TempDir dir;
    const std::string input = dir.file("binary.one");
    std::mt19937 rng(2024u);
    auto randomBytes = [&](std::size_t n) {
        std::string bytes(n, '\0');
        for (char& c : bytes) c = static_cast<char>(std::uniform_int_distribution<int>(0, 255)(rng));
        return bytes;
    };
    const std::vector<std::string> files = {
        randomBytes(4096),
        std::string("\x7f" "ELF\x02\x01\x01", 7) + std::string(2000, '\0') + randomBytes(2000),
        // past the version gate, then bytes
        "Version 9.1\r\n" + randomBytes(4096),
        // a whole valid input block, then bytes where the output should be
        validModel().substr(0, validModel().find("[Begin Output Data]")) + randomBytes(1000),
    };
    for (std::size_t k = 0; k < files.size(); ++k) {
        writeFileBytes(input, files[k]);
        const RefusedRun r = runRefused(dir, input);
        EXPECT_EQ(r.status, kRuntimeErrorStatus) << "file " << k;
        // Bytes where numbers belong may also read as a word that is no number.
        EXPECT_TRUE(r.err == improperFileName(input) || r.err == kTypeMismatch) << "file " << k << ": " << r.err;
    }
}

// 100 MB written straight to disk in pieces, so the test itself stays small.
void writeHuge(const std::string& path, const std::string& head, const std::string& unit, std::size_t bytes,
               const std::string& tail) {
    std::ofstream out(path, std::ios::binary);
    out << head;
    std::string block;
    while (block.size() < (1u << 20)) block += unit;
    std::size_t written = 0;
    while (written < bytes) {
        out.write(block.data(), static_cast<std::streamsize>(block.size()));
        written += block.size();
    }
    out << tail;
}

TEST(BatchBadInput, HundredMegabyteFilesAreRefusedWithoutHanging) {
    constexpr std::size_t kHundredMegabytes = 100u << 20;
    TempDir dir;
    const std::string input = dir.file("huge.one");
    const std::string model = validModel();
    const std::string inputPart = model.substr(0, model.find("[Begin Output Data]"));

    // A grid of 32000 by 32000 claimed, 100 MB of values that cannot fill it.
    writeHuge(input,
              inputPart + "[Begin Output Data]\r\nRegular\r\nNumber of x terms:  32000\r\nNumber of t terms:  32000\r\n",
              " 0.5 ,", kHundredMegabytes, "\r\n");
    ASSERT_GE(fs::file_size(input), kHundredMegabytes);
    RefusedRun r = runRefused(dir, input, 120);
    EXPECT_EQ(r.status, kRuntimeErrorStatus);
    EXPECT_EQ(r.err, improperFileName(input));

    // A valid beginning, then one line of 100 MB that never ends the title.
    writeHuge(input, "Version 9.1\r\n[Begin Input Data]\r\nAuthor: A\r\n\r\n[Begin Title]\r\nTitle: ", "x", kHundredMegabytes,
              "");
    r = runRefused(dir, input, 120);
    EXPECT_EQ(r.status, kRuntimeErrorStatus);
    EXPECT_EQ(r.err, improperFileName(input));

    // A whole model whose comments run to 100 MB: it reads, but its claimed
    // grid of 32767 by 32767 points has no values behind it.
    std::string bigComments = replaced(model, "Number of x terms:  0\r\nNumber of t terms:  0\r\n",
                                       "Number of x terms:  32767\r\nNumber of t terms:  32767\r\n");
    const std::size_t at = bigComments.find("Comments: ") + 10;
    {
        std::ofstream out(input, std::ios::binary);
        out << bigComments.substr(0, at);
        const std::string block(1u << 20, 'c');
        for (std::size_t w = 0; w < kHundredMegabytes; w += block.size()) out << block;
        out << bigComments.substr(at);
    }
    r = runRefused(dir, input, 120);
    EXPECT_EQ(r.status, kRuntimeErrorStatus);
    EXPECT_EQ(r.err, improperFileName(input));
    fs::remove(input);
}

}  // namespace
