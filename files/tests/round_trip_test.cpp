// Read, then write: the same bytes. Write, then read: the same model.

#include <gtest/gtest.h>

#include <random>

#include "file_test_support.h"
#include "model/model_kinds.h"
#include "files/code_page.h"
#include "files/data_file.h"
#include "sample_models.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using filetests::goldenName;

using testkit::fixturePath;
using testkit::readFileBytes;

std::string fixture(const std::string& name) { return fixturePath("files", name).string(); }

std::string rewritten(const std::string& path) {
    DataSet d;
    readDataFile(d, path);
    return utf8ToWindows1252(composeDataFile(d));
}

class GoldenRoundTrip : public ::testing::TestWithParam<samples::Golden> {};

TEST_P(GoldenRoundTrip, ReadThenWriteGivesTheSameBytes) {
    EXPECT_EQ(rewritten(fixture(GetParam().fixture)), readFileBytes(fixture(GetParam().fixture)));
}

INSTANTIATE_TEST_SUITE_P(AllKinds, GoldenRoundTrip, ::testing::ValuesIn(samples::goldenFiles()), goldenName);

TEST(RoundTrip, JoinedTitleIsStableFromTheFirstRewriteOn) {
    const std::string once = rewritten(fixture("title_two_lines.one"));
    EXPECT_NE(once.find("Title: First line second line\r\n[End Title]"), std::string::npos);
    testkit::TempDir dir;
    testkit::writeFileBytes(dir.file("copy.one"), once);
    EXPECT_EQ(rewritten(dir.file("copy.one")), once);
}

TEST(RoundTrip, CodePageSurvivesByteForByte) {
    // The unassigned byte 0x81 included.
    EXPECT_EQ(rewritten(fixture("code_page.one")), readFileBytes(fixture("code_page.one")));
}

TEST(RoundTrip, LoneLineFeedFileIsWrittenBackWithCrLf) {
    std::string expected;
    for (char c : readFileBytes(fixture("lf_only.one"))) {
        if (c == '\n') expected += '\r';
        expected += c;
    }
    EXPECT_EQ(rewritten(fixture("lf_only.one")), expected);
}

TEST(RoundTrip, EarlierVersionsAreWrittenInTheCurrentForm) {
    const std::string text = rewritten(fixture("earlier_one_no_retardation.one"));
    EXPECT_NE(text.find("Dispersion_X: 1.5\r\nAquifer Porosity: 0.25\r\nRetardation Coefficient (R): 1\r\n\r\n"),
              std::string::npos);
    const std::string tv = rewritten(fixture("earlier_var_no_porosity.var"));
    EXPECT_NE(tv.find("Mean Travel Time: 50\r\nAquifer Porosity: 1\r\n[End Input Data]\r\n"), std::string::npos);
}

// ---- randomised models -------------------------------------------------------------

class RandomModels {
public:
    explicit RandomModels(unsigned seed) : rng_(seed) {}

    int pick(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }

    // Printable text in the code page, no blanks at the ends, no comma (the Monte
    // Carlo records cannot hold one), no "[" (the title and comment markers).
    std::string text() {
        static const std::vector<std::string> pieces = {"a", "Z", "0", "9", ":", ".", "-", "+", "(", ")", "/", "|",
                                                        " ", "e", "E", "\xC3\xA9", "\xC2\xB5", "\xC2\xB0", "_", "%"};
        std::string s;
        const int n = pick(0, 12);
        for (int i = 0; i < n; ++i) s += pieces[static_cast<std::size_t>(pick(0, static_cast<int>(pieces.size()) - 1))];
        while (!s.empty() && s.front() == ' ') s.erase(s.begin());
        while (!s.empty() && s.back() == ' ') s.pop_back();
        return s;
    }

    double value(bool nonNegative) {
        const double mantissa = std::uniform_real_distribution<double>(nonNegative ? 0.0 : -1.0, 1.0)(rng_);
        switch (pick(0, 4)) {
        case 0: return 0.0;
        case 1: return mantissa;
        case 2: return mantissa * 1e-25;
        case 3: return mantissa * 1e20;
        default: return std::round(mantissa * 1000.0);
        }
    }

    void list(List<double>& l, int n) {
        l.redim(n);
        for (int i = 1; i <= n; ++i) l(i) = value(false);
    }

    DataSet model() {
        DataSet d;
        static const char* const types[] = {"One Dimensional", "Two Dimensional", "Three Dimensional",
                                            "Unsaturated One Dimensional", "Time Varying"};
        d.modelType = types[pick(0, 4)];
        d.multiChemical = d.modelType != "Time Varying" && pick(0, 1) == 1;
        d.calculationMode = pick(0, 1) ? "Monte Carlo" : "Regular";
        d.contaminantType = pick(0, 1) ? "Dirichlet" : text();
        for (std::string* s : {&d.author, &d.title, &d.comments, &d.aquiferType, &d.lengthUnit, &d.timeUnit,
                               &d.concentrationUnit, &d.xRange, &d.yRange, &d.zRange, &d.timeRange, &d.sourceXc,
                               &d.sourceYc, &d.sourceZc, &d.sourceWidth, &d.sourceHeight, &d.sourceStdDev, &d.mcAtX,
                               &d.mcAtY, &d.mcAtZ, &d.mcAtT, &d.velocity, &d.halfLife, &d.porosity, &d.dispersionX,
                               &d.dispersionY, &d.dispersionZ, &d.injectionRate, &d.netRecharge,
                               &d.aquiferThickness, &d.retardation, &d.sourceMagnitude, &d.velocityX, &d.velocityY,
                               &d.sourceDecayRate, &d.dispersionRatio, &d.bulkDensity, &d.saturation,
                               &d.distributionCoefficient})
            *s = text();
        d.superpositionIndex = static_cast<std::int16_t>(pick(0, 4));
        d.terms.redim(d.superpositionIndex);
        for (int i = 1; i <= d.superpositionIndex; ++i) d.terms(i) = {text(), text()};
        if (d.multiChemical) {
            const int m = pick(0, 3);
            d.numChemicals = static_cast<std::int16_t>(m);
            for (List<std::string>* l : {&d.chemicalName, &d.decayRate, &d.yieldFactor, &d.suppositionTime,
                                         &d.suppositionConcentration, &d.resultsInPoint}) {
                l->redim(std::max(m, 1));
                for (int i = 1; i <= m; ++i) (*l)(i) = pick(0, 3) ? text() : "   " + text() + "  ";
            }
            d.chemicalSuperpositionIndex.redim(std::max(m, 1));
            for (int i = 1; i <= std::max(m, 1); ++i) d.chemicalSuperpositionIndex(i) = 3;
        }
        const int nx = pick(0, 3), ny = pick(0, 3), nz = pick(0, 2), nt = pick(0, 3);
        const int m = std::max<int>(d.numChemicals, 0);
        list(d.xValues, nx);
        list(d.yValues, ny);
        list(d.zValues, nz);
        list(d.tValues, nt);
        d.result1D.redim({nx, nt});
        d.resultUnsat.redim({nx, nt});
        d.chemResult1D.redim({m, nx, nt});
        d.chemResultUnsat.redim({m, nx, nt});
        for (int x = 1; x <= nx; ++x)
            for (int t = 1; t <= nt; ++t) {
                d.result1D(x, t) = value(false);
                d.resultUnsat(x, t) = value(false);
                for (int c = 1; c <= m; ++c) {
                    d.chemResult1D(c, x, t) = value(false);
                    d.chemResultUnsat(c, x, t) = value(false);
                }
            }
        // Two-dimensional values stand side by side with only the sign's blank
        // between them; concentrations there are never negative.
        d.result2D.redim({nx, ny, nt});
        d.chemResult2D.redim({m, nx, ny, nt});
        for (int x = 1; x <= nx; ++x)
            for (int y = 1; y <= ny; ++y)
                for (int t = 1; t <= nt; ++t) {
                    d.result2D(x, y, t) = value(true);
                    for (int c = 1; c <= m; ++c) d.chemResult2D(c, x, y, t) = value(true);
                }
        d.result3D.redim({nx, ny, nz, nt});
        d.chemResult3D.redim({m, nx, ny, nz, nt});
        for (int x = 1; x <= nx; ++x)
            for (int y = 1; y <= ny; ++y)
                for (int z = 1; z <= nz; ++z)
                    for (int t = 1; t <= nt; ++t) {
                        d.result3D(x, y, z, t) = value(false);
                        for (int c = 1; c <= m; ++c) d.chemResult3D(c, x, y, z, t) = value(false);
                    }
        auto floats = [&](List<float>& l, int n) {
            l.redim(n);
            for (int i = 1; i <= n; ++i) l(i) = static_cast<float>(value(false) / 1e10);
        };
        floats(d.varXValues, nx);
        floats(d.varYValues, ny);
        floats(d.varTValues, nt);
        floats(d.resultVar, nx * ny * nt);

        const auto kind = modelKindOf(d.modelType, d.multiChemical);
        MonteBlock& store = d.monteStore(*kind);
        store.monteRowCount = static_cast<std::int16_t>(pick(0, 3));
        store.monteResultRowCount = static_cast<std::int16_t>(pick(0, store.monteRowCount));
        // A simulation's mode comes with samples; a count of 0 there is a case of its own.
        store.monteIterations = pick(d.calculationMode == "Monte Carlo" ? 1 : 0, 5);
        store.InputTGData.redim({store.monteRowCount, 1});
        store.ResultTGData.redim({store.monteRowCount, 1});
        store.MonteSamples.redim({store.monteResultRowCount, store.monteIterations, 1});
        for (int r = 1; r <= store.monteRowCount; ++r) {
            store.InputTGData(r, 1) = {text(), text(), text(), text(), text(), text(), text(), pick(0, 1) == 1};
            store.ResultTGData(r, 1) = {text(), text(), text(), text(), text(), text(), text(), pick(0, 1) == 1, text()};
        }
        for (int r = 1; r <= store.monteResultRowCount; ++r)
            for (int i = 1; i <= store.monteIterations; ++i) store.MonteSamples(r, i, 1) = value(false);
        const int iterations = std::max(store.monteIterations - 1, 0);
        list(d.mcResult1D, iterations);
        list(d.mcResult2D, iterations);
        list(d.mcResult3D, iterations);
        list(d.mcResultUnsat, iterations);
        floats(d.mcResultVar, iterations);
        for (Array<double, 2>* a : {&d.chemMcResult1D, &d.chemMcResult2D, &d.chemMcResult3D, &d.chemMcResultUnsat}) {
            a->redim({m, iterations});
            for (int c = 1; c <= m; ++c)
                for (int i = 1; i <= iterations; ++i) (*a)(c, i) = value(false);
        }
        return d;
    }

private:
    std::mt19937 rng_;
};

std::string extensionOf(const DataSet& d) {
    if (d.modelType == "Time Varying") return ".var";
    if (d.modelType == "Unsaturated One Dimensional") return d.multiChemical ? ".mcu" : ".u1d";
    const char digit = d.modelType[0] == 'O' ? '1' : d.modelType[0] == 'T' && d.modelType[1] == 'w' ? '2' : '3';
    if (d.multiChemical) return std::string(".mc") + digit;
    return digit == '1' ? ".one" : digit == '2' ? ".two" : ".tri";
}

TEST(RoundTrip, RandomModelsReadBackAndWriteTheSameBytesAgain) {
    RandomModels random(20240611u);
    testkit::TempDir dir;
    for (int n = 0; n < 1000; ++n) {
        DataSet d = random.model();
        SCOPED_TRACE("model " + std::to_string(n) + " " + d.modelType + (d.multiChemical ? " multi" : ""));
        const std::string path = dir.file("model" + extensionOf(d));
        std::string bytes;
        if (n % 50 == 0) {  // through the disk now and then; in memory otherwise
            writeDataFile(d, path);
            bytes = readFileBytes(path);
        } else {
            bytes = utf8ToWindows1252(composeDataFile(d));
        }
        DataSet back;
        try {
            parseDataFile(back, windows1252ToUtf8(bytes), path);
        } catch (const RuntimeError& e) {
            ADD_FAILURE() << "error " << e.number() << " reading:\n" << bytes;
            continue;
        }
        EXPECT_EQ(back.author, d.author);
        EXPECT_EQ(back.title, d.title);
        EXPECT_EQ(back.comments, d.comments);
        EXPECT_EQ(back.xRange, d.xRange);
        if (d.modelType != "Unsaturated One Dimensional") {
            EXPECT_EQ(back.retardation, d.retardation);
        }
        EXPECT_EQ(back.porosity, d.porosity);
        EXPECT_EQ(back.multiChemical, d.multiChemical);
        EXPECT_EQ(back.monteRowCount, d.monteRowCount);
        EXPECT_EQ(back.InputTGData, d.InputTGData);
        if (d.multiChemical) {
            EXPECT_EQ(back.chemicalName, d.chemicalName);
            EXPECT_EQ(back.decayRate, d.decayRate);
        }
        // Written again, the model gives the very same file.
        EXPECT_EQ(utf8ToWindows1252(composeDataFile(back)), bytes);
    }
}

TEST(RoundTrip, SimulationModeWithNoIterationsSettlesOnOneAfterTheFirstSave) {
    // The output section prints the store's count before the Monte Carlo block
    // sets a count of 0 to 1; reading takes the block's 1 into the store.
    DataSet d = samples::oneMonteCarlo();
    d.monteStore(ModelKind::OneDimensional) = MonteBlock{};
    const std::string first = composeDataFile(d);
    EXPECT_NE(first.find("Number of Monte Carlo Iterations:  0\r\n[End Output Data]"), std::string::npos);
    DataSet back;
    parseDataFile(back, first, "a.one");
    EXPECT_EQ(back.monteStore(ModelKind::OneDimensional).monteIterations, 1);
    const std::string second = composeDataFile(back);
    EXPECT_NE(second.find("Number of Monte Carlo Iterations:  1\r\n[End Output Data]"), std::string::npos);
    DataSet again;
    parseDataFile(again, second, "a.one");
    EXPECT_EQ(composeDataFile(again), second);
}

}  // namespace
}  // namespace bm
