#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "apps/brenmoor-calc/batch_calculator.h"
#include "model/number_text.h"
#include "testing/is_close.h"
#include "testing/test_paths.h"

using namespace bm;
using bm::testkit::TempDir;
using bm::testkit::readFileBytes;
using bm::testkit::writeFileBytes;

namespace {

struct ProgramRun {
    int status = -1;
    std::string out, err;
};

ProgramRun runProgram(const std::string& arguments, const TempDir& dir) {
    const std::string outPath = dir.file("stdout.txt"), errPath = dir.file("stderr.txt");
    const std::string command =
        std::string(BRENMOOR_CALC_PROGRAM) + " " + arguments + " >" + outPath + " 2>" + errPath;
    ProgramRun r;
    const int raw = std::system(command.c_str());
    r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    r.out = readFileBytes(outPath);
    r.err = readFileBytes(errPath);
    return r;
}

std::string crlf(const std::vector<std::string>& lines) {
    std::string s;
    for (const auto& l : lines) s += l + "\r\n";
    return s;
}

// A semi-infinite aquifer with a Dirichlet inlet and no decay worth the name,
// written by hand in the data file layout.
std::string semiInfiniteDirichletModel(const std::string& xRange, const std::string& timeRange,
                                       const std::string& halfLife = "1E+30") {
    return crlf({"Version 9.1", "[Begin Input Data]", "Author: Tester", "", "[Begin Title]", "Title: Column",
                 "[End Title]", "", "[Begin Comments]", "Comments: none", "[End Comments]", "",
                 "Model: One Dimensional", "Aquifer: Semi-Infinite", "Contaminant: Dirichlet", "", "Units",
                 "Length: m", "Time: day", "Concentration: mg/l", "", "Coor Data", "X: " + xRange,
                 "Time: " + timeRange, "Monte Carlo simulation at x: 50", "Monte Carlo simulation at t: 100", "",
                 "Properties:", "Velocity: 0.3", "HalfLife: " + halfLife, "Dispersion_X: 2", "Aquifer Porosity: 0.3",
                 "Retardation Coefficient (R): 1", "", "Superposition Index: 1", "", "T 1: 0", "Concentration: 1", "",
                 "[End Input Data]", "", "[Begin Output Data]", "Regular", "Number of x terms:  0",
                 "Number of t terms:  0", "[End Output Data]", "", "[Begin Monte Carlo Data]", " 0 ", " 0 ", " 1 ",
                 "[Begin Chemical  1 ]", "[End Chemical  1 ]", "[End MonteCarlo Data]", "[End File]"});
}

// C/Co of the semi-infinite Dirichlet column without decay (pore velocity v, dispersion D).
double dirichletColumn(double x, double t, double v, double d) {
    if (t == 0) return x == 0 ? 1 : 0;
    const double s = 2 * std::sqrt(d * t);
    return 0.5 * std::erfc((x - v * t) / s) + 0.5 * std::exp(v * x / d) * std::erfc((x + v * t) / s);
}

std::vector<std::string> splitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::string line;
    for (char c : text) {
        if (c == '\n') {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            lines.push_back(line);
            line.clear();
        } else {
            line += c;
        }
    }
    lines.push_back(line);
    return lines;
}

std::vector<double> cells(const std::string& line) {
    std::vector<double> v;
    std::stringstream s(line);
    std::string cell;
    while (std::getline(s, cell, ',')) v.push_back(textValue(cell));
    return v;
}

}  // namespace

TEST(BatchArguments, OptionsAndMisuse) {
    BatchOptions o;
    std::string error;
    ASSERT_TRUE(parseBatchArguments({"--save", "a.one", "--output", "-", "--chemical", "2", "m.one"}, o, error));
    EXPECT_EQ(o.savePath, "a.one");
    EXPECT_EQ(o.outputPath, "-");
    EXPECT_EQ(o.chemical, 2);
    EXPECT_EQ(o.dataFile, "m.one");
    BatchOptions p;
    EXPECT_FALSE(parseBatchArguments({}, p, error));
    EXPECT_FALSE(parseBatchArguments({"--bogus", "m.one"}, p, error));
    EXPECT_FALSE(parseBatchArguments({"--chemical", "0", "m.one"}, p, error));
    EXPECT_FALSE(parseBatchArguments({"--save"}, p, error));
    EXPECT_FALSE(parseBatchArguments({"a.one", "b.one"}, p, error));
}

TEST(BatchArguments, ThreadsAreAWholeNumberFromOne) {
    BatchOptions o;
    std::string error;
    EXPECT_EQ(o.threads, 0);  // all cores unless given
    ASSERT_TRUE(parseBatchArguments({"--threads", "3", "m.one"}, o, error));
    EXPECT_EQ(o.threads, 3);
    for (const char* bad : {"0", "-2", "2.5", "many", "1025"}) {
        BatchOptions p;
        EXPECT_FALSE(parseBatchArguments({"--threads", bad, "m.one"}, p, error)) << bad;
        EXPECT_EQ(error, "--threads needs a whole number from 1 to 1024") << bad;
    }
    BatchOptions q;
    EXPECT_FALSE(parseBatchArguments({"m.one", "--threads"}, q, error));
}

TEST(BatchProgram, ABadThreadCountIsAWrongCommandLine) {
    TempDir dir;
    const ProgramRun r = runProgram("--threads 0 x.one", dir);
    EXPECT_EQ(r.status, kExitUsage);
    EXPECT_NE(r.err.find("brenmoor-calc: --threads needs a whole number from 1 to 1024"), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("Usage: brenmoor-calc"), std::string::npos);
    EXPECT_NE(runProgram("--help", dir).out.find("--threads N"), std::string::npos);
}

TEST(BatchProgram, HelpDocumentsOptionsAndExitStatus) {
    TempDir dir;
    const ProgramRun r = runProgram("--help", dir);
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("--save FILE"), std::string::npos);
    EXPECT_NE(r.out.find("Exit status"), std::string::npos);
    EXPECT_EQ(runProgram("--frobnicate x.one", dir).status, kExitUsage);
}

TEST(BatchProgram, OneDimensionalGridAgreesWithTheClosedForm) {
    TempDir dir;
    writeFileBytes(dir.file("column.one"), semiInfiniteDirichletModel("0:100:10", "0:200:50"));
    const ProgramRun r = runProgram(dir.file("column.one"), dir);
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");
    const auto lines = splitLines(r.out);
    std::size_t table = 0;
    while (table < lines.size() && lines[table].rfind("Time:", 0) != 0) ++table;
    ASSERT_LT(table + 11, lines.size() + 1);
    const std::vector<double> times = {0, 50, 100, 150, 200};
    for (int i = 0; i <= 10; ++i) {
        const auto row = cells(lines[table + 1 + static_cast<std::size_t>(i)]);
        ASSERT_EQ(row.size(), 6u) << lines[table + 1 + static_cast<std::size_t>(i)];
        EXPECT_EQ(row[0], 10.0 * i);
        for (std::size_t j = 0; j < times.size(); ++j) {
            // The output file carries five significant digits at most.
            EXPECT_CLOSE(row[j + 1], dirichletColumn(10.0 * i, times[j], 0.3 / 0.3, 2.0), 1e-4, 1e-5)
                << "x " << 10 * i << " t " << times[j];
        }
    }
}

TEST(BatchProgram, SaveWritesTheResultsIntoTheDataFile) {
    TempDir dir;
    writeFileBytes(dir.file("column.one"), semiInfiniteDirichletModel("0:20:10", "0:50:50"));
    const ProgramRun r = runProgram("--save " + dir.file("saved.one") + " " + dir.file("column.one"), dir);
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "");
    const std::string saved = readFileBytes(dir.file("saved.one"));
    // The selected point (x 50, t 100) as the mode line, then the grid.
    EXPECT_NE(saved.find("[Begin Output Data]\r\n" + formatNumber(dirichletColumn(20, 50, 1, 2)) + "\r\n"),
              std::string::npos)
        << saved;
    EXPECT_NE(saved.find("Number of x terms:  3\r\nNumber of t terms:  2\r\n"), std::string::npos);
}

TEST(BatchProgram, MissingFileIsReportedOnStandardErrorAndNothingIsWritten) {
    TempDir dir;
    const ProgramRun r = runProgram("--save " + dir.file("out.one") + " " + dir.file("nothere.one"), dir);
    EXPECT_EQ(r.status, kExitRuntimeError);
    EXPECT_EQ(r.err, dir.file("nothere.one") + " not found!: File not found. The selected file: " +
                         dir.file("nothere.one") + " is not found. Please check filename and path.\n");
    EXPECT_FALSE(std::ifstream(dir.file("out.one")).good());
}

TEST(BatchProgram, AZeroHalfLifeIsRefusedByTheValidatorAndTheOldSaveStays) {
    TempDir dir;
    writeFileBytes(dir.file("zero.one"), semiInfiniteDirichletModel("0:20:10", "0:50:50", "0"));
    writeFileBytes(dir.file("keep.one"), "previous contents");
    const ProgramRun r = runProgram("--save " + dir.file("keep.one") + " " + dir.file("zero.one"), dir);
    EXPECT_EQ(r.status, kExitInputRefused);
    EXPECT_EQ(r.err, "Improper input data: Zero input value has been given for  Contaminant Half-Life.  Please give a "
                     "proper input value.\n");
    EXPECT_EQ(readFileBytes(dir.file("keep.one")), "previous contents");
}

TEST(BatchProgram, AnArithmeticFaultIsARunTimeErrorAndTheOldSaveStays) {
    TempDir dir;
    // A velocity of 0 passes the validation (it has no zero test) and the
    // semi-infinite Cauchy solution with decay divides by it.
    std::string model = semiInfiniteDirichletModel("0:20:10", "0:50:50", "100");
    model.replace(model.find("Velocity: 0.3"), 13, "Velocity: 0");
    model.replace(model.find("Contaminant: Dirichlet"), 22, "Contaminant: Cauchy");
    writeFileBytes(dir.file("zero.one"), model);
    writeFileBytes(dir.file("keep.one"), "previous contents");
    const ProgramRun r = runProgram("--save " + dir.file("keep.one") + " " + dir.file("zero.one"), dir);
    EXPECT_EQ(r.status, kExitRuntimeError);
    EXPECT_NE(r.err.find("Division by zero: "), std::string::npos) << r.err;
    EXPECT_EQ(readFileBytes(dir.file("keep.one")), "previous contents");
}

TEST(BatchProgram, AFileThatIsNotADataFileIsRefused) {
    TempDir dir;
    writeFileBytes(dir.file("junk.one"), std::string("\x7f" "ELF\x01\x02 binary garbage without lines", 35));
    const ProgramRun r = runProgram(dir.file("junk.one"), dir);
    EXPECT_EQ(r.status, kExitRuntimeError);
    EXPECT_NE(r.err.find("Improper File Name: "), std::string::npos) << r.err;
}

namespace {
std::string sample(const std::string& name) { return (bm::testkit::sourceDir() / "data" / "sampldat" / name).string(); }
}  // namespace

TEST(BatchProgram, UnsaturatedModelWritesItsPlotFile) {
    TempDir dir;
    const ProgramRun r = runProgram("--output " + dir.file("out.plt") + " " + sample("sample1.u1d"), dir);
    ASSERT_EQ(r.status, 0) << r.err;
    const std::string out = readFileBytes(dir.file("out.plt"));
    EXPECT_EQ(out.rfind("Ground Water\r\nModel: Unsaturated One Dimensional\r\n", 0), 0u);
    EXPECT_NE(out.find("Source Concentration Decay Rate: 0.0005\r\n"), std::string::npos);
}

TEST(BatchProgram, UnsaturatedRadicandBelowZeroRefusesTheInput) {
    TempDir dir;
    std::string model = readFileBytes(sample("sample1.u1d"));
    const std::string from = "Source Concentration Decay Rate: 0.0005";
    model.replace(model.find(from), from.size(), "Source Concentration Decay Rate: 0.05");
    writeFileBytes(dir.file("bad.u1d"), model);
    const ProgramRun r = runProgram(dir.file("bad.u1d"), dir);
    EXPECT_EQ(r.status, kExitInputRefused);
    EXPECT_EQ(r.err.rfind("Improper input data: During computation of analytical solution", 0), 0u) << r.err;
    EXPECT_EQ(r.out, "");
}

TEST(BatchProgram, TimeVaryingModelSavesItsResults) {
    TempDir dir;
    const ProgramRun r = runProgram("--save " + dir.file("saved.var") + " --output - " + sample("sample1.var"), dir);
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out.rfind("Ground Water\r\n", 0), 0u);
    const std::string saved = readFileBytes(dir.file("saved.var"));
    EXPECT_NE(saved.find("Number of x terms:  20\r\nNumber of y terms:  10\r\nNumber of t terms:  6\r\n"),
              std::string::npos);
}

TEST(BatchProgram, TimeVaryingModelIsCheckedBeforeItRuns) {
    TempDir dir;
    std::string model = readFileBytes(sample("sample1.var"));
    const std::string from = "Aquifer Porosity: 0.3";
    model.replace(model.find(from), from.size(), "Aquifer Porosity: 1.5");
    writeFileBytes(dir.file("bad.var"), model);
    const ProgramRun r = runProgram("--save " + dir.file("saved.var") + " " + dir.file("bad.var"), dir);
    EXPECT_EQ(r.status, kExitInputRefused);
    EXPECT_EQ(r.err, "Improper input data: Aquifer Porosity (n) must be greater than 0 and less than or equal to 1.\n");
    EXPECT_EQ(r.out, "");
    EXPECT_FALSE(std::filesystem::exists(dir.file("saved.var")));
}

TEST(BatchProgram, MultipleChemicalModelsAreCalculatedChemicalByChemical) {
    TempDir dir;
    for (const char* name : {"sample1.mc1", "sample1.mc2", "sample1.mc3", "sample1.mcu"}) {
        const ProgramRun r = runProgram("--output - " + sample(name), dir);
        EXPECT_EQ(r.status, 0) << name << ": " << r.err;
        EXPECT_EQ(r.out.rfind("Ground Water\r\n", 0), 0u) << name;
    }
    // the chain's first chemical has its source at the inlet, the others none
    const ProgramRun first = runProgram("--chemical 1 --output - " + sample("sample1.mc1"), dir);
    const ProgramRun second = runProgram("--chemical 2 --output - " + sample("sample1.mc1"), dir);
    ASSERT_EQ(first.status, 0) << first.err;
    ASSERT_EQ(second.status, 0) << second.err;
    EXPECT_NE(first.out, second.out);
    const auto inletRow = [](const std::string& out) {
        std::vector<double> values;
        const std::size_t at = out.find("\r\n0, ", out.find("Time:"));
        if (at == std::string::npos) return values;
        std::istringstream row(out.substr(at + 5, out.find("\r\n", at + 2) - at - 5));
        std::string cell;
        while (std::getline(row, cell, ',')) values.push_back(std::stod(cell));
        return values;
    };
    for (const char* name : {"sample1.mc1", "sample1.mcu"}) {
        const ProgramRun parentRun = runProgram("--chemical 1 --output - " + sample(name), dir);
        const ProgramRun daughterRun = runProgram("--chemical 2 --output - " + sample(name), dir);
        ASSERT_EQ(parentRun.status, 0) << parentRun.err;
        ASSERT_EQ(daughterRun.status, 0) << daughterRun.err;
        const std::vector<double> parent = inletRow(parentRun.out), daughter = inletRow(daughterRun.out);
        ASSERT_EQ(parent.size(), 11u) << name;
        ASSERT_EQ(daughter.size(), 11u) << name;
        for (std::size_t t = 0; t < 11; ++t) {
            EXPECT_NEAR(parent[t], 1.0, 1e-12) << name;
            EXPECT_NEAR(daughter[t], 0.0, 1e-12) << name;
        }
    }
}

TEST(BatchProgram, AChemicalOutsideTheChainIsRefused) {
    TempDir dir;
    const ProgramRun r = runProgram("--chemical 9 --output " + dir.file("out.txt") + " " + sample("sample1.mc1"), dir);
    EXPECT_EQ(r.status, kExitUsage);
    EXPECT_NE(r.err.find("Improper chemical: --chemical 9 is outside the chain: the model holds "), std::string::npos)
        << r.err;
    EXPECT_FALSE(std::filesystem::exists(dir.file("out.txt")));
}
