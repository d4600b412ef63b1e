// A run from the decay chain's screen writes the same output file as the
// batch calculator on the file the screen saved (or read), byte for byte, for
// the chemical picked: regular runs in one, two and three dimensions, and a
// simulation of a file that holds its samples.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <sys/wait.h>

#include "apps/brenmoor-calc/tests/batch_command.h"
#include "saturated/tests/input_form_test_models.h"
#include "species/tests/chain_test_model.h"
#include "species/tests/mc_input_test_screen.h"
#include "testing/points_file.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::readFileBytes;
using testkit::TempDir;

int runBatch(const std::string& input, int chemical, const std::string& output, const TempDir& dir) {
    return testkit::runBatchCommand("--chemical " + std::to_string(chemical), input, output, dir);
}

struct Bench {
    TempDir dir;
    testkit::ChainScreen s;
    explicit Bench(DataSet d) : s(std::move(d)) {
        s.state.temporaryDataPath = dir.path().string();
        s.state.textEditorPath = dir.file("no-editor");
    }
    std::string plotFile() const { return readFileBytes(dir.file("brenmoor.plt")); }
    void expectNoMessageButTheEditor() const {
        for (const auto& m : s.ui.messages)
            if (m.title != "Missing Text Editor") ADD_FAILURE() << m.title << ": " << m.text;
    }
};

void expectScreenEqualsBatch(DataSet model, const std::string& extension, int chemical) {
    testkit::PointsFileScope points;  // the two- and three-dimensional solvers read it
    Bench b(testkit::chainModel(std::move(model), {{0.1, 0.03, 0.2}, {1, 0.8, 0.6}, {1, 0.2, 0}}));
    const std::string saved = b.dir.file("plume" + extension);
    b.s.ui.fileAnswers.push_back(saved);
    b.s.form.menuFileClick(fileItem::SaveAs);
    ASSERT_EQ(b.s.data.currentFileName, saved);
    b.s.form.calculate();
    b.s.host.chemicalPicked = chemical;
    b.s.form.menuResultsClick(resultsItem::View);
    b.expectNoMessageButTheEditor();
    const std::string screen = b.plotFile();
    ASSERT_NE(screen.find("- Chemical C" + std::to_string(chemical)), std::string::npos) << screen.substr(0, 300);

    ASSERT_EQ(runBatch(saved, chemical, b.dir.file("batch.out"), b.dir), 0) << readFileBytes(b.dir.file("batch.err"));
    EXPECT_TRUE(screen == readFileBytes(b.dir.file("batch.out"))) << extension;
}

TEST(ChainScreenAndBatch, OneDimensionalGridIsTheSameBytes) {
    expectScreenEqualsBatch(testkit::oneDimScreenModel(), ".mc1", 2);
}

TEST(ChainScreenAndBatch, TwoDimensionalGridIsTheSameBytes) {
    DataSet d = testkit::twoDimScreenModel();
    d.xRange = "0:100:20";
    d.yRange = "-20:20:10";
    d.timeRange = "0:10:5";
    d.mcAtX = "100";
    d.mcAtY = "20";
    expectScreenEqualsBatch(d, ".mc2", 3);
}

TEST(ChainScreenAndBatch, ThreeDimensionalGridIsTheSameBytes) {
    DataSet d = testkit::threeDimScreenModel();
    d.xRange = "0:100:50";
    d.yRange = "-20:20:20";
    d.zRange = "0:10:10";
    d.timeRange = "0:10:10";
    d.mcAtY = "20";
    expectScreenEqualsBatch(d, ".mc3", 1);
}

TEST(ChainScreenAndBatch, ASimulationIsTheSameBytes) {
    Bench b(testkit::chainModel(testkit::oneDimScreenModel(), {{0.1, 0.2}, {1, 1}, {1, 0}}));
    const std::string file =
        (testkit::sourceDir() / "apps" / "brenmoor-calc" / "tests" / "goldens" / "inputs" / "montecarlo_chain.mc1")
            .string();
    b.s.data.dataState = kDataUnchanged;
    b.s.ui.fileAnswers.push_back(file);
    b.s.form.menuFileClick(fileItem::Open);
    ASSERT_EQ(b.s.data.currentFileName, file);
    ASSERT_TRUE(b.s.data.multiChemical);
    ASSERT_EQ(b.s.form.tables().count(), 3);
    EXPECT_EQ(b.s.form.chemicalStyle(1, 1), "MonteCarloStyle4");  // DCE's rate varies
    EXPECT_EQ(b.s.form.cellStyle(0, 1), "MonteCarloStyle1");       // and TCE's source
    b.s.form.calculate();
    EXPECT_EQ(b.s.data.calculationMode, "Monte Carlo");
    EXPECT_EQ(b.s.form.resultLabel, "Monte Carlo");
    EXPECT_EQ(b.s.form.resultCaption, "Monte Carlo Computed at");
    ASSERT_EQ(b.s.form.pointsTable().rows.size(), 3u);
    EXPECT_EQ(b.s.form.pointsTable().rows[1].second, "Monte Carlo");
    b.s.host.chemicalPicked = 2;
    b.s.form.menuMonteCarloClick(monteCarloItem::View);
    EXPECT_EQ(b.s.host.chemicalPickers, 1);
    b.expectNoMessageButTheEditor();
    const std::string screen = b.plotFile();
    ASSERT_EQ(screen.rfind("Monte Carlo\r\n", 0), 0u) << screen.substr(0, 200);

    ASSERT_EQ(runBatch(file, 2, b.dir.file("batch.out"), b.dir), 0) << readFileBytes(b.dir.file("batch.err"));
    EXPECT_TRUE(screen == readFileBytes(b.dir.file("batch.out")));
}

}  // namespace
}  // namespace bm
