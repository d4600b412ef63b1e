// brenmoor-calc against a hostile user: models that fault in the calculation,
// errors the workbench passes over in silence, standard output that cannot be
// written, targets that alias one another or are no files, and inputs that are
// no data files. Every failure must end the program normally with status 3
// (or 1 for a command line that names unusable targets), with its reason on
// standard error, and leave every file on disk as it was.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "calculator_process.h"
#include "handler_lines.h"
#include "testing/test_paths.h"

namespace {

namespace fs = std::filesystem;
using bm::testkit::CalculatorRun;
using bm::testkit::fixturePath;
using bm::testkit::readFileBytes;
using bm::testkit::runCalculator;
using bm::testkit::StandardOutput;
using bm::testkit::TempDir;
using bm::testkit::writeFileBytes;

constexpr int kWrongCommandLine = 1;
constexpr int kRuntimeError = 3;
constexpr int kNotCalculable = 4;

const std::string kOldContents = "the old file, which no failed run may touch\n";
using bm::testkit::kBoundsLine;
const std::string& kDivisionByZero = bm::testkit::kDivisionByZeroLine;
const std::string& kOverflow = bm::testkit::kOverflowLine;
const std::string& kIllegalCall = bm::testkit::kIllegalFunctionCallLine;

std::string hostile(const std::string& name) { return fixturePath("apps/brenmoor-calc", "hostile/" + name).string(); }
std::string sample(const std::string& name) { return (bm::testkit::sourceDir() / "data" / "sampldat" / name).string(); }

std::vector<std::string> folderEntries(const TempDir& dir) {
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(dir.path())) names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// Runs `input` with --save over an old file and --output to a new name: a
// failed run must leave the old file, make no output file and no other file.
CalculatorRun runOverOldSave(const std::string& input) {
    const TempDir dir;
    writeFileBytes(dir.file("saved"), kOldContents);
    const CalculatorRun r = runCalculator({"--save", "saved", "--output", "output", input}, dir.path().string());
    EXPECT_TRUE(r.exited) << input << " ended by signal " << r.status;
    EXPECT_EQ(readFileBytes(dir.file("saved")), kOldContents) << input;
    EXPECT_EQ(folderEntries(dir), std::vector<std::string>{"saved"}) << input;
    EXPECT_EQ(r.out, "");
    return r;
}

std::string replacedLine(const std::string& file, const std::string& from, const std::string& to) {
    std::string text = readFileBytes(file);
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) text.replace(at, from.size(), to);
    return text;
}

// ---- arithmetic faults in the checks before the run ----------------------------------------

TEST(BatchHostile, AnUnsaturatedModelWithAZeroTermIsRefusedByItsChecks) {
    // The zeros that would divide in the solution never reach it.
    const std::pair<const char*, const char*> cases[] = {
        {"unsat_zero_half_life.u1d", "Improper input data: Zero input value has been given for  Contaminant Halflife.  "
                                     "Please give a proper input value.\n"},
        {"unsat_zero_saturation.u1d", "Improper input data: Zero or less than zero input value has been given for  "
                                      "Saturation (Sw).  Please give a proper input value.\n"},
        {"unsat_zero_porosity.u1d", "Improper input data: Zero input value has been given for  Aquifer Porosity (n).  "
                                    "Please give a proper input value.\n"},
    };
    for (const auto& [name, message] : cases) {
        const CalculatorRun r = runOverOldSave(hostile(name));
        EXPECT_EQ(r.status, 2) << name;
        EXPECT_EQ(r.err, message) << name;
    }
}

TEST(BatchHostile, AnUnsaturatedHalfLifeThatIsNoFiniteNumberFaultsWithAMessage) {
    const TempDir dir;
    for (const char* value : {"NaN", "1e999", "-1e999"}) {
        writeFileBytes(dir.file("model.u1d"),
                       replacedLine(hostile("unsat_zero_half_life.u1d"), "HalfLife: 0\r\n",
                                    std::string("HalfLife: ") + value + "\r\n"));
        const CalculatorRun r = runOverOldSave(dir.file("model.u1d"));
        EXPECT_TRUE(r.status == kRuntimeError || r.status == 2) << value;  // refused or faulted, never a crash
        EXPECT_NE(r.err, "") << value;
    }
}

// ---- errors that the workbench passes over in silence -----------------------------------

TEST(BatchHostile, ADownwardTimeRangeIsRefusedBeforeTheRun) {
    // The unsaturated checks refuse a time range that runs downwards (it used
    // to claim a negative count of times and strike a bounds error in the run).
    CalculatorRun r = runOverOldSave(hostile("unsat_time_range_downward.u1d"));
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.err, "Improper input data: Maximum time is less than minimum time value.  Please check the input data.\n");
    // A y range that runs downwards: the time-varying screen's checks refuse it
    // before the run now; the old save must survive (it used to be replaced
    // before the failure).
    r = runOverOldSave(hostile("var_y_range_downward.var"));
}

TEST(BatchHostile, AnUnknownTimeVaryingSourceIsAFailureNotAnAllZeroGrid) {
    const CalculatorRun r = runOverOldSave(hostile("var_unknown_contaminant.var"));
    EXPECT_EQ(r.status, kRuntimeError);
    EXPECT_EQ(r.err, "brenmoor: Contaminant Source not identified, copyToDLLStructure \n");
}

// ---- standard output ----------------------------------------------------------------

TEST(BatchHostile, AFullStandardOutputIsADiskFullError) {
    const TempDir dir;
    const CalculatorRun r = runCalculator({"--save", "-", sample("sample1.one")}, dir.path().string(),
                                          StandardOutput::FullDevice);
    ASSERT_TRUE(r.exited);
    EXPECT_EQ(r.status, kRuntimeError);
    EXPECT_EQ(r.err,
              "Save Vipripro's File Error: No space left on the device. standard output cannot be saved. Please make "
              "sure there is enough free space on the disk before saving this file.\n");
}

TEST(BatchHostile, AClosedStandardOutputIsAnErrorAndNoFileTakesItsPlace) {
    const TempDir dir;
    writeFileBytes(dir.file("saved"), kOldContents);
    // The save target is opened while standard output is missing: nothing meant
    // for standard output may land in it, and it stays as it was.
    const CalculatorRun r = runCalculator({"--save", "saved", "--output", "-", sample("sample1.one")},
                                          dir.path().string(), StandardOutput::Closed);
    ASSERT_TRUE(r.exited);
    EXPECT_EQ(r.status, kRuntimeError);
    EXPECT_EQ(r.err,
              "Error: Error # 75 was generated by brenmoor with the following description: Path/File access error: "
              "standard output cannot be written (Bad file descriptor).\n");
    EXPECT_EQ(readFileBytes(dir.file("saved")), kOldContents);
    EXPECT_EQ(folderEntries(dir), std::vector<std::string>{"saved"});
}

TEST(BatchHostile, AReaderThatHasGoneIsABrokenPipeError) {
    const TempDir dir;
    writeFileBytes(dir.file("saved"), kOldContents);
    const CalculatorRun r = runCalculator({"--save", "saved", "--output", "-", sample("sample1.one")},
                                          dir.path().string(), StandardOutput::PipeWithoutReader);
    ASSERT_TRUE(r.exited) << "ended by signal " << r.status;
    EXPECT_EQ(r.status, kRuntimeError);
    EXPECT_EQ(r.err,
              "Error: Error # 75 was generated by brenmoor with the following description: Path/File access error: "
              "standard output cannot be written (Broken pipe).\n");
    EXPECT_EQ(readFileBytes(dir.file("saved")), kOldContents);
}

// ---- targets --------------------------------------------------------------------------

TEST(BatchHostile, TargetsThatNameOneFileAreRefusedBeforeAnythingIsWritten) {
    const TempDir dir;
    writeFileBytes(dir.file("a.tri"), kOldContents);
    fs::create_directory(dir.file("sub"));
    fs::create_symlink("a.tri", dir.file("link.tri"));
    fs::create_hard_link(dir.file("a.tri"), dir.file("hard.tri"));
    const std::string model = sample("sample1.tri");
    for (const std::string& other :
         std::vector<std::string>{"./a.tri", "sub/../a.tri", "link.tri", "hard.tri", dir.file("a.tri")}) {
        const CalculatorRun r = runCalculator({"--save", "a.tri", "--output", other, model}, dir.path().string());
        EXPECT_EQ(r.status, kWrongCommandLine) << other;
        EXPECT_EQ(r.err, "brenmoor-calc: --save and --output name the same file\n") << other;
        EXPECT_EQ(readFileBytes(dir.file("a.tri")), kOldContents) << other;
    }
    // Neither file exists yet: compared by their resolved names.
    CalculatorRun r = runCalculator({"--save", "new.tri", "--output", "sub/../new.tri", model}, dir.path().string());
    EXPECT_EQ(r.status, kWrongCommandLine);
    EXPECT_FALSE(fs::exists(dir.file("new.tri")));
    // The output file over the data file it comes from.
    writeFileBytes(dir.file("model.tri"), readFileBytes(model));
    r = runCalculator({"--output", "./model.tri", "model.tri"}, dir.path().string());
    EXPECT_EQ(r.status, kWrongCommandLine);
    EXPECT_EQ(r.err, "brenmoor-calc: --output names the data file itself, which the output file would replace\n");
    EXPECT_EQ(readFileBytes(dir.file("model.tri")), readFileBytes(model));
    // Saving into the data file itself is the ordinary recalculation.
    r = runCalculator({"--save", "model.tri", "model.tri"}, dir.path().string());
    EXPECT_EQ(r.status, 0) << r.err;
}

TEST(BatchHostile, EmptyOrRepeatedTargetsAreAWrongCommandLine) {
    const TempDir dir;
    const std::string model = sample("sample1.one");
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"--save", "", model}, {"--output", "", model},
          {"--save", "a.one", "--save", "b.one", model}, {"--output", "a", "--output", "b", model},
          {"--save", "-", "--output", "-", model}}) {
        const CalculatorRun r = runCalculator(args, dir.path().string());
        EXPECT_EQ(r.status, kWrongCommandLine) << args[1];
        EXPECT_EQ(r.err.rfind("brenmoor-calc: ", 0), 0u) << r.err;
    }
    EXPECT_TRUE(folderEntries(dir).empty());
}

TEST(BatchHostile, AFolderAPipeOrADeviceIsRefusedAsATarget) {
    const TempDir dir;
    ASSERT_EQ(::mkfifo(dir.file("pipe").c_str(), 0644), 0);
    fs::create_directory(dir.file("folder"));
    const std::string model = sample("sample1.one");
    struct Case {
        std::vector<std::string> args;
        std::string message;
    };
    for (const Case& c : std::vector<Case>{
             {{"--save", "pipe", model},
              "brenmoor-calc: --save pipe: this is a named pipe, not a file (use - to write to standard output)\n"},
             {{"--output", "folder", model}, "brenmoor-calc: --output folder: this is a folder, not a file\n"},
             {{"--save", "/dev/null", model},
              "brenmoor-calc: --save /dev/null: this is a device, not a file (use - to write to standard output)\n"}}) {
        const CalculatorRun r = runCalculator(c.args, dir.path().string(), StandardOutput::File, 20);
        EXPECT_TRUE(r.exited) << "the run hung on " << c.args[1];
        EXPECT_EQ(r.status, kWrongCommandLine);
        EXPECT_EQ(r.err, c.message);
    }
}

TEST(BatchHostile, AStandardOutputRedirectedIntoTheSaveTargetIsRefused) {
    const TempDir dir;
    // The helper sends standard output to a file of its own; point --save at it
    // through /proc, which names the same file.
    const std::string target = "/proc/self/fd/1";  // resolved in the child: its own standard output
    const CalculatorRun r = runCalculator({"--save", target, "--output", "-", sample("sample1.one")},
                                          dir.path().string());
    EXPECT_EQ(r.status, kWrongCommandLine);
    EXPECT_EQ(r.err, "brenmoor-calc: --save names the file that standard output goes to\n");
}

TEST(BatchHostile, SymbolicLinksAreFollowedDanglingOrNot) {
    const TempDir dir;
    const std::string model = sample("sample1.one");
    fs::create_symlink("kept.one", dir.file("live"));
    writeFileBytes(dir.file("kept.one"), kOldContents);
    fs::create_symlink("later.one", dir.file("dangling"));
    EXPECT_EQ(runCalculator({"--save", "live", model}, dir.path().string()).status, 0);
    EXPECT_EQ(runCalculator({"--save", "dangling", model}, dir.path().string()).status, 0);
    EXPECT_TRUE(fs::is_symlink(dir.file("live")));
    EXPECT_TRUE(fs::is_symlink(dir.file("dangling")));
    EXPECT_NE(readFileBytes(dir.file("kept.one")), kOldContents);
    EXPECT_EQ(readFileBytes(dir.file("kept.one")), readFileBytes(dir.file("later.one")));
}

TEST(BatchHostile, ATargetNameOfTheLongestLengthCanBeSaved) {
    const TempDir dir;
    for (std::size_t length : {248u, 252u, 255u}) {
        const std::string name = std::string(length - 4, 'n') + ".one";
        const CalculatorRun r = runCalculator({"--save", name, sample("sample1.one")}, dir.path().string());
        EXPECT_EQ(r.status, 0) << length << ": " << r.err;
        EXPECT_TRUE(fs::exists(dir.file(name))) << length;
        EXPECT_EQ(folderEntries(dir).size(), 1u) << "a temporary file stayed";
        fs::remove(dir.file(name));
    }
}

TEST(BatchHostile, AnOutputThatCannotBeWrittenLeavesTheSaveTargetAsItWas) {
    const TempDir dir;
    writeFileBytes(dir.file("saved"), kOldContents);
    const CalculatorRun r =
        runCalculator({"--save", "saved", "--output", "missing/output", sample("sample1.one")}, dir.path().string());
    EXPECT_EQ(r.status, kRuntimeError);
    EXPECT_EQ(readFileBytes(dir.file("saved")), kOldContents);
    EXPECT_EQ(folderEntries(dir), std::vector<std::string>{"saved"});
    EXPECT_NE(r.err.find("missing/output"), std::string::npos) << r.err;
}

// ---- inputs ---------------------------------------------------------------------------

TEST(BatchHostile, TheKindComesFromTheFileNamesOwnExtension) {
    const TempDir dir;
    fs::create_directory(dir.file("data.v2"));
    fs::copy_file(sample("sample1.mc1"), dir.file("data.v2/a.mc1"));
    fs::copy_file(sample("sample1.mc1"), dir.file("sample1.mc1"));
    for (const std::string input : {"./sample1.mc1", "data.v2/a.mc1"}) {
        const CalculatorRun r = runCalculator({input}, dir.path().string());
        // Read as the chain it is (not "Improper File Name"), and calculated.
        EXPECT_EQ(r.status, 0) << input << ": " << r.err;
        EXPECT_EQ(r.err, "") << input;
        EXPECT_EQ(r.out.rfind("Ground Water\r\n", 0), 0u) << input;
    }
}

TEST(BatchHostile, AFolderOrADeviceAsInputIsSaidToBeNoDataFile) {
    const TempDir dir;
    fs::create_directory(dir.file("models"));
    CalculatorRun r = runCalculator({"models"}, dir.path().string());
    EXPECT_EQ(r.status, kRuntimeError);
    EXPECT_EQ(r.err,
              "Error: Error # 75 was generated by brenmoor with the following description: Path/File access error: "
              "models is a folder, not a data file.\n");
    r = runCalculator({"/dev/null"}, dir.path().string());
    EXPECT_EQ(r.status, kRuntimeError);
    EXPECT_EQ(r.err,
              "Error: Error # 75 was generated by brenmoor with the following description: Path/File access error: "
              "/dev/null is a device or a pipe, not a data file.\n");
}

}  // namespace
