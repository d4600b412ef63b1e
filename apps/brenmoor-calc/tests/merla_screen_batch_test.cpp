// A run from the time-varying screen writes the same output file as the batch
// calculator on the file the screen saved (or read), byte for byte: a regular
// run of a point and of a line source, and a simulation of a file that holds
// its samples.

#include <gtest/gtest.h>

#include <string>

#include "apps/brenmoor-calc/tests/batch_command.h"
#include "testing/test_paths.h"
#include "timevarying/tests/merla_test_screen.h"

namespace bm {
namespace {

using testkit::readFileBytes;
using testkit::TempDir;

int runBatch(const std::string& input, const std::string& output, const TempDir& dir) {
    return testkit::runBatchCommand("", input, output, dir);
}

struct Bench {
    TempDir dir;
    testkit::MerlaScreen s;
    explicit Bench(DataSet d) : s(std::move(d)) {
        s.state.temporaryDataPath = dir.path().string();
        s.state.textEditorPath = dir.file("no-editor");
    }
    std::string plotFile() const { return readFileBytes(dir.file("brenmoor.plt")); }
};

void expectScreenEqualsBatch(const std::string& source, const std::string& function) {
    Bench b(testkit::merlaModel(source, function));
    b.s.type(varrow::X, "5:60:5:25");
    b.s.type(varrow::Time, "10:50:10:30");
    const std::string saved = b.dir.file("plume.var");
    b.s.ui.fileAnswers.push_back(saved);
    b.s.form.menuFileClick(fileItem::SaveAs);
    ASSERT_EQ(b.s.data.currentFileName, saved);
    b.s.form.calculate();
    b.s.form.menuResultsClick(resultsItem::View);
    for (const auto& m : b.s.ui.messages)
        if (m.title != "Missing Text Editor") ADD_FAILURE() << m.title << ": " << m.text;
    const std::string screen = b.plotFile();
    ASSERT_NE(screen.find("Time:, "), std::string::npos) << screen;

    ASSERT_EQ(runBatch(saved, b.dir.file("batch.out"), b.dir), 0) << readFileBytes(b.dir.file("batch.err"));
    EXPECT_TRUE(screen == readFileBytes(b.dir.file("batch.out"))) << source << ", " << function;
}

TEST(MerlaScreenAndBatch, APointSourceGridIsTheSameBytes) { expectScreenEqualsBatch("Point (continuous)", "Exponential"); }

TEST(MerlaScreenAndBatch, ALineSourceGridIsTheSameBytes) { expectScreenEqualsBatch("Line (instantaneous)", "Linear"); }

TEST(MerlaScreenAndBatch, ASimulationIsTheSameBytes) {
    Bench b(testkit::merlaModel());
    const std::string file =
        (testkit::sourceDir() / "apps" / "brenmoor-calc" / "tests" / "goldens" / "inputs" / "montecarlo_var.var").string();
    b.s.data.dataState = kDataUnchanged;
    b.s.ui.fileAnswers.push_back(file);
    b.s.form.menuFileClick(fileItem::Open);
    ASSERT_EQ(b.s.data.currentFileName, file);
    ASSERT_TRUE(b.s.form.rowLocked(varrow::VelocityX));  // the velocity varies
    b.s.form.calculate();
    EXPECT_EQ(b.s.data.calculationMode, "Monte Carlo");
    EXPECT_EQ(b.s.form.resultCaption, "Monte Carlo Computed at");
    b.s.form.menuMonteCarloClick(monteCarloItem::View);
    for (const auto& m : b.s.ui.messages)
        if (m.title != "Missing Text Editor") ADD_FAILURE() << m.title << ": " << m.text;
    const std::string screen = b.plotFile();
    ASSERT_EQ(screen.rfind("Monte Carlo\r\nType: Concentrations\r\n", 0), 0u) << screen;

    ASSERT_EQ(runBatch(file, b.dir.file("batch.out"), b.dir), 0) << readFileBytes(b.dir.file("batch.err"));
    EXPECT_TRUE(screen == readFileBytes(b.dir.file("batch.out")));
}

}  // namespace
}  // namespace bm
