// The batch calculator over two- and three-dimensional models and a Monte Carlo
// model, each checked against closed forms evaluated here.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "model/number_text.h"
#include "testing/is_close.h"
#include "testing/test_paths.h"

using bm::testkit::readFileBytes;
using bm::testkit::TempDir;
using bm::testkit::writeFileBytes;

namespace {

int runCalc(const std::string& arguments, const TempDir& dir, std::string& out, std::string& err) {
    const std::string command = std::string(BRENMOOR_CALC_PROGRAM) + " " + arguments + " >" + dir.file("o.txt") +
                                " 2>" + dir.file("e.txt");
    const int raw = std::system(command.c_str());
    out = readFileBytes(dir.file("o.txt"));
    err = readFileBytes(dir.file("e.txt"));
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

std::string sampleText(const std::string& name) {
    return readFileBytes(bm::testkit::sourceDir() / "data" / "sampldat" / name);
}

// Replaces the value of a labelled line of the model block ("Width: 20" ->
// "Width: 1E+6"); the units above it have a "Time: " of their own. The model's
// words stand above the coordinates: `after` names the line to look from.
void setField(std::string& text, const std::string& label, const std::string& value,
              const std::string& after = "Coor Data") {
    const auto at = text.find("\r\n" + label, text.find(after));
    ASSERT_NE(at, std::string::npos) << label;
    const auto end = text.find("\r\n", at + 2);
    text.replace(at + 2, end - at - 2, label + value);
}

// C/Co of the semi-infinite Dirichlet column without decay.
double column(double x, double t, double v, double d) {
    if (t == 0) return x == 0 ? 1 : 0;
    const double s = 2 * std::sqrt(d * t);
    return 0.5 * std::erfc((x - v * t) / s) + 0.5 * std::exp(v * x / d) * std::erfc((x + v * t) / s);
}

std::vector<double> numbers(const std::string& line) {
    std::vector<double> v;
    std::stringstream s(line);
    std::string cell;
    while (std::getline(s, cell, ',')) v.push_back(bm::textValue(cell));
    return v;
}

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> out;
    std::stringstream s(text);
    std::string l;
    while (std::getline(s, l)) {
        if (!l.empty() && l.back() == '\r') l.pop_back();
        out.push_back(l);
    }
    return out;
}

}  // namespace

// The grid rows of an output table: each row holds the coordinates, then one
// value a time (two dimensions) or a z (three dimensions).
std::vector<std::vector<double>> tableRows(const std::string& out, const std::string& startsWith) {
    std::vector<std::vector<double>> rows;
    bool inTable = false;
    for (const auto& l : lines(out)) {
        if (l.rfind(startsWith, 0) == 0) {
            inTable = true;
            continue;
        }
        if (inTable && !l.empty() && l.find("Time is") == std::string::npos) rows.push_back(numbers(l));
    }
    return rows;
}

// A strip source far wider than the plume is the one-dimensional column.
TEST(BatchModels, TwoDimensionalWideStripIsTheColumn) {
    TempDir dir;
    std::string model = sampleText("sample1.two");
    setField(model, "X: ", "0:40:10");
    setField(model, "Y: ", "-5:5:5");
    setField(model, "Time: ", "0:60:20");
    setField(model, "Velocity: ", "0.3");
    setField(model, "HalfLife: ", "1E+30");
    setField(model, "Dispersion_X: ", "2");
    setField(model, "Width: ", "1E+6");
    writeFileBytes(dir.file("strip.two"), model);
    std::string out, err;
    ASSERT_EQ(runCalc(dir.file("strip.two"), dir, out, err), 0) << err;
    const auto rows = tableRows(out, "Time:");
    ASSERT_EQ(rows.size(), 5u * 3u);
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), 6u);
        for (int j = 0; j < 4; ++j) EXPECT_CLOSE(row[2 + j], column(row[0], 20.0 * j, 1.0, 2.0), 1e-4, 1e-5);
    }
}

// A patch far wider and higher than the plume is the one-dimensional column too.
TEST(BatchModels, ThreeDimensionalWidePatchIsTheColumn) {
    TempDir dir;
    std::string model = sampleText("sample1.tri");
    setField(model, "X: ", "0:40:20");
    setField(model, "Y: ", "-5:5:5");
    setField(model, "Z: ", "4:6:2");
    setField(model, "Time: ", "0:30:10");
    setField(model, "Velocity: ", "0.3");
    setField(model, "HalfLife: ", "1E+30");
    setField(model, "Dispersion_X: ", "2");
    setField(model, "Width: ", "1E+6");
    setField(model, "Height: ", "1E+6");
    setField(model, "Monte Carlo simulation at t: ", "30");
    writeFileBytes(dir.file("patch.tri"), model);
    std::string out, err;
    ASSERT_EQ(runCalc("--output " + dir.file("patch.plt") + " " + dir.file("patch.tri"), dir, out, err), 0) << err;
    const std::string plot = readFileBytes(dir.file("patch.plt"));
    std::vector<double> times;
    int block = -1;
    for (const auto& l : lines(plot)) {
        if (l.rfind("Time is ", 0) == 0) {
            times.push_back(bm::textValue(l.substr(8)));
            ++block;
        } else if (block >= 0 && !l.empty() && l.rfind("Z Coordinate", 0) != 0) {
            const auto row = numbers(l);
            ASSERT_EQ(row.size(), 4u) << l;
            for (int z = 0; z < 2; ++z) EXPECT_CLOSE(row[2 + z], column(row[0], times.back(), 1.0, 2.0), 1e-4, 1e-5) << l;
        }
    }
    EXPECT_EQ(times, (std::vector<double>{0, 10, 20, 30}));
}

// A simulation: the velocity varies over three samples; each iteration's value
// is the column at the simulation's point with that sample.
TEST(BatchModels, MonteCarloIterationsFollowTheirSamples) {
    TempDir dir;
    std::string model = sampleText("sample1.one");
    const std::string marker = "Monte Carlo" + std::string(500, ' ') + "|0.3: 1";
    setField(model, "Velocity: ", marker);
    setField(model, "HalfLife: ", "1E+30");
    setField(model, "Dispersion_X: ", "2");
    setField(model, "Retardation Coefficient (R): ", "1");
    setField(model, "Aquifer Porosity: ", "0.3");
    // The point of the simulation is the Constant of each range (validation
    // writes it into the point's rows).
    setField(model, "X: ", "0:200:10:10");
    setField(model, "Time: ", "0:730:73:20");
    // The sample table: one variant, three iterations of samples (count 4).
    const std::string block =
        "[Begin Monte Carlo Data]\r\n 1 \r\n 1 \r\n 4 \r\n[Begin Chemical  1 ]\r\n"
        "Ground Water Darcy Velocity (V)\r\n0.3\r\n0.15\r\n0.6\r\n0.01\r\n3\r\nUniform\r\n-1 \r\n"
        "Ground Water Darcy Velocity (V)\r\n0.3\r\n0.15\r\n0.6\r\n0.35\r\n0.31\r\n0.2\r\n-1 \r\nVariants\r\n"
        " 0.3 \r\n 0.6 \r\n 0.15 \r\n[End Chemical  1 ]\r\n[End MonteCarlo Data]\r\n";
    const auto from = model.find("[Begin Monte Carlo Data]");
    const auto to = model.find("[End File]");
    ASSERT_NE(from, std::string::npos);
    model.replace(from, to - from, block);
    writeFileBytes(dir.file("varied.one"), model);
    std::string out, err;
    ASSERT_EQ(runCalc(dir.file("varied.one"), dir, out, err), 0) << err;
    const auto ls = lines(out);
    ASSERT_GE(ls.size(), 4u);
    ASSERT_EQ(ls[0], "Monte Carlo");
    ASSERT_EQ(ls[2], "Number of Terms: 3");
    const std::vector<double> velocities = {0.3, 0.6, 0.15};
    for (int i = 0; i < 3; ++i) {
        const double value = bm::textValue(ls[ls.size() - 3 + static_cast<std::size_t>(i)]);
        EXPECT_CLOSE(value, column(10, 20, velocities[static_cast<std::size_t>(i)] / 0.3, 2.0), 1e-4, 1e-6) << i;
    }
}

namespace {

// Replaces a model's Monte Carlo block with one variant (named as the screen
// names it) and its samples.
void setSamples(std::string& model, const std::string& variant, const std::vector<std::string>& samples) {
    std::string block = "[Begin Monte Carlo Data]\r\n 1 \r\n 1 \r\n " + std::to_string(samples.size() + 1) +
                        " \r\n[Begin Chemical  1 ]\r\n" + variant +
                        "\r\n1\r\n0.1\r\n10\r\n0.01\r\n3\r\nUniform\r\n-1 \r\n" + variant +
                        "\r\n1\r\n0.1\r\n10\r\n1\r\n1\r\n0.2\r\n-1 \r\nVariants\r\n";
    for (const auto& s : samples) block += " " + s + " \r\n";
    block += "[End Chemical  1 ]\r\n[End MonteCarlo Data]\r\n";
    const auto from = model.find("[Begin Monte Carlo Data]");
    model.replace(from, model.find("[End File]") - from, block);
}

// The last `n` lines of a text, as numbers.
std::vector<double> lastValues(const std::string& text, std::size_t n) {
    const auto ls = lines(text);
    std::vector<double> v;
    for (std::size_t i = ls.size() - n; i < ls.size(); ++i) v.push_back(bm::textValue(ls[i]));
    return v;
}

}  // namespace

// An unsaturated column without sorption is the saturated column in pore-water
// terms: velocity q / (porosity * saturation).
TEST(BatchModels, UnsaturatedSimulationFollowsItsPercolationSamples) {
    TempDir dir;
    std::string model = sampleText("sample1.u1d");
    model.replace(model.find("Contaminant: Dirichlet/Exp. Decay"), 33, "Contaminant: Dirichlet");
    const auto decay = model.find("\r\nSource Concentration Decay Rate: ");
    model.erase(decay, model.find("\r\n", decay + 2) - decay);
    setField(model, "Steady-State Percolation Rate: ", "Monte Carlo" + std::string(500, ' ') + "|0.1: 1");
    setField(model, "Dispersion_X: ", "0.5");
    setField(model, "HalfLife: ", "1E+30");
    setField(model, "Contaminant Distribution Coefficient: ", "0");
    setField(model, "Aquifer Porosity: ", "0.5");
    setField(model, "Saturation: ", "0.4");
    setField(model, "Monte Carlo simulation at x: ", "2");
    setField(model, "Monte Carlo simulation at t: ", "3");
    setSamples(model, "Steady-State Percolation Rate (Q)", {"0.1", "0.2", "0.4"});
    writeFileBytes(dir.file("varied.u1d"), model);
    std::string out, err;
    ASSERT_EQ(runCalc(dir.file("varied.u1d"), dir, out, err), 0) << err;
    ASSERT_EQ(out.rfind("Monte Carlo\r\nType: Concentrations\r\nNumber of Terms: 3\r\n", 0), 0u) << out;
    const auto values = lastValues(out, 3);
    const std::vector<double> rates = {0.1, 0.2, 0.4};
    for (std::size_t i = 0; i < 3; ++i) EXPECT_CLOSE(values[i], column(2, 3, rates[i] / 0.2, 0.5), 1e-4, 1e-6) << i;
}

// A time-varying instantaneous point source with constant dispersion: the
// Gaussian puff of the released mass, moving with the sampled velocity.
TEST(BatchModels, TimeVaryingSimulationFollowsItsVelocitySamples) {
    TempDir dir;
    std::string model = sampleText("sample1.var");
    model.replace(model.find("Aquifer: Linear"), 15, "Aquifer: Constant");
    model.replace(model.find("Contaminant: Point (continuous)"), 31, "Contaminant: Point (instantaneous)");
    setField(model, "Magnitude of Source: ", "100");
    setField(model, "Steady State Velocity in X direction: ", "Monte Carlo" + std::string(500, ' ') + "|0.3: 1");
    setField(model, "First Order Decay Coefficient: ", "0");
    setField(model, "Dispersion Ratio Coefficient: ", "0.1");
    setField(model, "Maximum Dispersivity: ", "1");
    setField(model, "Molecular Diffusion: ", "0.01");
    setField(model, "Monte Carlo simulation at x: ", "6");
    setField(model, "Monte Carlo simulation at y: ", "0.5");
    setField(model, "Monte Carlo simulation at t: ", "5");
    setSamples(model, "Steady-state Darcy Velocity in X-Direction (u)", {"0.3", "0.36"});
    writeFileBytes(dir.file("puff.var"), model);
    std::string out, err;
    ASSERT_EQ(runCalc(dir.file("puff.var"), dir, out, err), 0) << err;
    ASSERT_EQ(out.rfind("Monte Carlo\r\n", 0), 0u) << out;
    const auto values = lastValues(out, 2);
    const double pi = 3.14159265358979323846, m = 100, a = 0.1, x = 6, y = 0.5, t = 5;
    for (std::size_t i = 0; i < 2; ++i) {
        const double u = (i == 0 ? 0.3 : 0.36) / 0.3;  // Darcy velocity over porosity
        const double alpha = (0.01 + 1.0 * u) * t;    // dispersion integrated over the travel time, R = 1
        const double c = m / (4 * pi * std::sqrt(a) * alpha) *
                         std::exp(-(x - u * t) * (x - u * t) / (4 * alpha) - y * y / (4 * a * alpha));
        EXPECT_CLOSE(values[i], c, 1e-4, 1e-7) << i;
    }
}

// ================================================================ the threads

namespace {

struct WrittenFiles {
    int status = -1;
    std::string saved, output, messages;
};

// The model run with --threads from `dir` (the output file names its data file).
WrittenFiles runOnThreads(const TempDir& dir, const std::string& name, int threads) {
    WrittenFiles files;
    std::string out;
    files.status = runCalc("--threads " + std::to_string(threads) + " --save " + dir.file("saved") + " --output " +
                               dir.file("output") + " " + dir.file(name),
                           dir, out, files.messages);
    // A run that fails writes neither.
    if (std::filesystem::exists(dir.file("saved"))) files.saved = readFileBytes(dir.file("saved"));
    if (std::filesystem::exists(dir.file("output"))) files.output = readFileBytes(dir.file("output"));
    std::remove(dir.file("saved").c_str());
    std::remove(dir.file("output").c_str());
    return files;
}

// The same files, messages and status on one thread and on three.
void expectTheSameOnAnyThreads(const std::string& model, const std::string& name, int status = 0) {
    const TempDir dir;
    writeFileBytes(dir.file(name), model);
    const WrittenFiles one = runOnThreads(dir, name, 1);
    const WrittenFiles three = runOnThreads(dir, name, 3);
    EXPECT_EQ(one.status, status) << name << ": " << one.messages;
    EXPECT_EQ(three.status, one.status) << name;
    EXPECT_TRUE(three.saved == one.saved) << name << ": the saved data files differ";
    EXPECT_TRUE(three.output == one.output) << name << ": the output files differ";
    EXPECT_EQ(three.messages, one.messages) << name;
    if (status == 0) {
        EXPECT_GT(one.output.size(), 2000u) << name;
    }
}

struct FinerModel {
    const char* sample;
    const char* aquifer;  // "" keeps the sample's
    const char* contaminant;
    const char* x;
    const char* time;
};

// A model's Monte Carlo samples, each row's variants stretched to `count`
// values made from its own (every value a little apart from the next).
std::string withMoreVariants(const std::string& model, int count) {
    std::vector<std::string> in = lines(model);
    std::vector<std::string> out;
    const auto header = std::find(in.begin(), in.end(), "[Begin Monte Carlo Data]");
    EXPECT_NE(header, in.end());
    if (header == in.end() || in.end() - header < 4) return model;
    header[3] = " " + std::to_string(count + 1) + " ";  // the iteration count: one more than the samples
    for (std::size_t i = 0; i < in.size(); ++i) {
        out.push_back(in[i]);
        if (in[i] != "Variants") continue;
        std::vector<double> own;
        while (i + 1 < in.size() && bm::isNumeric(in[i + 1])) own.push_back(bm::textValue(in[++i]));
        EXPECT_FALSE(own.empty());
        for (int k = 0; k < count && !own.empty(); ++k)
            out.push_back(" " + bm::generalText(own[static_cast<std::size_t>(k) % own.size()] * (1.0 + 0.001 * (k % 37))) +
                          " ");
    }
    std::string text;
    for (const std::string& l : out) text += l + "\r\n";
    return text;
}

}  // namespace

// Every sample model, and each source and aquifer of its kind, on grids of some
// thousands of points (many batches on the threads).
TEST(BatchThreads, EverySampleModelWritesTheSameFilesOnOneThreadAndOnThree) {
    const FinerModel models[] = {
        {"sample1.one", "", "", "0:200:1:100", "0:730:7.3:365"},
        {"sample1.one", "Finite", "Cauchy", "0:200:2:100", "0:730:7.3:365"},
        {"sample1.one", "Finite", "Dirichlet", "0:200:2:100", "0:730:7.3:365"},
        {"sample1.two", "", "", "0:500:5:200", "0:1825:365:1825"},
        {"sample1.two", "Finite", "Finite / Line", "0:500:10:200", "0:1825:365:1825"},
        {"sample1.two", "Infinite", "Gaussian", "0:500:10:200", "0:1825:365:1825"},
        {"sample1.two", "Infinite", "Continuous / Point", "0:500:5:200", "0:1825:365:1825"},
        {"sample1.tri", "", "", "0:500:25:200", "0:1825:365:1825"},
        {"sample1.tri", "Finite", "Finite / Patch", "0:500:50:200", "0:1825:365:1825"},
        {"sample1.tri", "Infinite", "Continuous / Point", "0:500:10:200", "0:1825:365:1825"},
        {"sample1.u1d", "", "", "0:10:0.05:5", "0:730:7.3:365"},
        {"sample1.var", "", "", "10:500:10:200", "0:1825:365:1825"},
        {"sample1.var", "", "Line (continuous)", "5:500:5:200", "0:1825:365:1825"},
    };
    for (const FinerModel& m : models) {
        std::string model = sampleText(m.sample);
        if (*m.aquifer != '\0') setField(model, "Aquifer: ", m.aquifer, "Model: ");
        if (*m.contaminant != '\0') setField(model, "Contaminant: ", m.contaminant, "Model: ");
        setField(model, "X: ", m.x);
        setField(model, "Time: ", m.time);
        const std::string name = std::string(m.sample);
        SCOPED_TRACE(name + " " + m.aquifer + " " + m.contaminant);
        expectTheSameOnAnyThreads(model, name);
    }
}

// Monte Carlo runs of every kind with 400 iterations.
TEST(BatchThreads, MonteCarloRunsWriteTheSameFilesOnOneThreadAndOnThree) {
    for (const char* input : {"montecarlo_one.one", "montecarlo_two.two", "montecarlo_three.tri",
                              "montecarlo_unsat_decay.u1d", "montecarlo_var.var"}) {
        const std::string model = withMoreVariants(
            readFileBytes(bm::testkit::sourceDir() / "apps" / "brenmoor-calc" / "tests" / "goldens" / "inputs" / input),
            400);
        SCOPED_TRACE(input);
        expectTheSameOnAnyThreads(model, input);
    }
}
