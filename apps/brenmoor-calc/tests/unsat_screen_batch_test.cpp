// A run from the unsaturated screen writes the same output file as the batch
// calculator on the file the screen saved (or read), byte for byte: a regular
// run of a decaying and of a constant source, and a simulation of a file that
// holds its samples. A saved file, opened again, shows what was saved.

#include <gtest/gtest.h>

#include <string>

#include "apps/brenmoor-calc/tests/batch_command.h"
#include "testing/test_paths.h"
#include "unsaturated/form/mc_unsat_form_model.h"
#include "unsaturated/tests/unsat_test_screen.h"

namespace bm {
namespace {

using testkit::readFileBytes;
using testkit::TempDir;

int runBatch(const std::string& input, const std::string& output, const TempDir& dir) {
    return testkit::runBatchCommand("", input, output, dir);
}

template <class Form = UnsatFormModel>
struct Bench {
    TempDir dir;
    testkit::UnsatScreen<Form> s;
    explicit Bench(DataSet d) : s(std::move(d)) {
        s.state.temporaryDataPath = dir.path().string();
        s.state.textEditorPath = dir.file("no-editor");
    }
    std::string plotFile() const { return readFileBytes(dir.file("brenmoor.plt")); }
    void expectNoMessageButTheEditors() {
        for (const auto& m : s.ui.messages)
            if (m.title != "Missing Text Editor") ADD_FAILURE() << m.title << ": " << m.text;
    }
};

void expectScreenEqualsBatch(const std::string& source) {
    Bench b(testkit::unsatModel(source));
    b.s.type(unsatrow::X, "0:4:0.25:2");
    ASSERT_TRUE(b.s.form.rowLeft(unsatrow::X));  // the selected point follows the Constant
    b.s.type(unsatrow::Time, "0:100:10:50");
    ASSERT_TRUE(b.s.form.rowLeft(unsatrow::Time));
    b.s.type(unsatrow::Percolation, "0.02");
    const std::string saved = b.dir.file("column.u1d");
    b.s.ui.fileAnswers.push_back(saved);
    b.s.form.menuFileClick(fileItem::SaveAs);
    ASSERT_EQ(b.s.data.currentFileName, saved);
    ASSERT_TRUE(b.s.form.calculate());
    b.s.form.menuResultsClick(resultsItem::View);
    b.expectNoMessageButTheEditors();
    const std::string screen = b.plotFile();
    ASSERT_NE(screen.find("Time:, "), std::string::npos) << screen;

    ASSERT_EQ(runBatch(saved, b.dir.file("batch.out"), b.dir), 0) << readFileBytes(b.dir.file("batch.err"));
    EXPECT_TRUE(screen == readFileBytes(b.dir.file("batch.out"))) << source;
}

TEST(UnsatScreenAndBatch, ADecayingSourceGridIsTheSameBytes) { expectScreenEqualsBatch("Dirichlet/Exp. Decay"); }

TEST(UnsatScreenAndBatch, AConstantSourceGridIsTheSameBytes) { expectScreenEqualsBatch("Dirichlet"); }

TEST(UnsatScreenAndBatch, ASimulationIsTheSameBytes) {
    Bench b(testkit::unsatModel());
    const std::string file = (testkit::sourceDir() / "apps" / "brenmoor-calc" / "tests" / "goldens" / "inputs" /
                              "montecarlo_unsat_decay.u1d")
                                 .string();
    b.s.data.dataState = kDataUnchanged;
    b.s.ui.fileAnswers.push_back(file);
    b.s.form.menuFileClick(fileItem::Open);
    ASSERT_EQ(b.s.data.currentFileName, file);
    ASSERT_TRUE(b.s.form.rowLocked(unsatrow::Percolation));  // the percolation rate varies
    b.s.ui.messages.clear();
    ASSERT_TRUE(b.s.form.calculate());
    EXPECT_EQ(b.s.data.calculationMode, "Monte Carlo");
    EXPECT_EQ(b.s.form.resultCaption, "Monte Carlo Computed at");
    b.s.form.menuMonteCarloClick(monteCarloItem::View);
    for (const auto& m : b.s.ui.messages)  // the note on the varying inflow concentration is expected
        if (m.title != "Missing Text Editor" && m.title != "Information") ADD_FAILURE() << m.title << ": " << m.text;
    const std::string screen = b.plotFile();
    ASSERT_EQ(screen.rfind("Monte Carlo\r\nType: Concentrations\r\n", 0), 0u) << screen;

    ASSERT_EQ(runBatch(file, b.dir.file("batch.out"), b.dir), 0) << readFileBytes(b.dir.file("batch.err"));
    EXPECT_TRUE(screen == readFileBytes(b.dir.file("batch.out")));
}

TEST(UnsatScreenAndBatch, ASavedFileOpensAsItWasSaved) {
    Bench b(testkit::unsatModel("Dirichlet"));
    b.s.form.titleText = "Percolation below a spill";
    b.s.type(unsatrow::Superposition, "2");
    ASSERT_TRUE(b.s.form.rowLeft(unsatrow::Superposition));
    b.s.form.gridEdited(1, 0, "200");
    b.s.form.gridEdited(1, 1, "0.25");
    b.s.type(unsatrow::Distribution, "0.35");
    b.s.form.row(unsatrow::Dispersion).text = "Monte Carlo" + std::string(500, ' ') + "|0.01: 1";
    const std::string saved = b.dir.file("spill.u1d");
    b.s.ui.fileAnswers.push_back(saved);
    b.s.form.menuFileClick(fileItem::SaveAs);
    ASSERT_EQ(b.s.data.currentFileName, saved);

    testkit::UnsatScreen<> again(DataSet{});
    again.data.dataState = kDataUnchanged;
    again.ui.fileAnswers.push_back(saved);
    again.form.menuFileClick(fileItem::Open);
    ASSERT_EQ(again.data.currentFileName, saved);
    for (int r = 0; r < unsatrow::Count; ++r) {
        EXPECT_EQ(again.form.row(r).inUse, b.s.form.row(r).inUse) << r;
        if (b.s.form.row(r).inUse) {
            EXPECT_EQ(again.form.row(r).text, b.s.form.row(r).text) << r;
        }
    }
    ASSERT_EQ(again.form.grid().cells.size(), 2u);
    EXPECT_EQ(again.form.grid().cells[1].time, "200");
    EXPECT_EQ(again.form.grid().cells[1].concentration, "0.25");
    EXPECT_TRUE(again.form.rowLocked(unsatrow::Dispersion));
    EXPECT_EQ(again.form.titleText, "Percolation below a spill");
    EXPECT_EQ(again.form.windowTitle(), "Ground Water Model (Unsaturated) -- FileName: " + saved);
}

// A chain: the chemical picked on the screen is the one asked of the batch calculator.
void expectChainEqualsBatch(int chemical) {
    Bench<MCUnsatFormModel> b(testkit::unsatChainModel());
    b.s.type(unsatrow::X, "0:4:0.5:2");
    ASSERT_TRUE(b.s.form.rowLeft(unsatrow::X));
    b.s.type(unsatrow::Percolation, "0.02");
    const std::string saved = b.dir.file("chain.mcu");
    b.s.ui.fileAnswers.push_back(saved);
    b.s.form.menuFileClick(fileItem::SaveAs);
    ASSERT_EQ(b.s.data.currentFileName, saved);
    ASSERT_TRUE(b.s.form.calculate());
    EXPECT_EQ(b.s.form.resultLabel, "Regular");
    ASSERT_EQ(b.s.form.pointsTable().rows.size(), 2u);
    b.s.host.chemicalPicked = chemical;
    b.s.form.menuResultsClick(resultsItem::View);
    EXPECT_EQ(b.s.host.chemicalPickers, 1);
    b.expectNoMessageButTheEditors();
    const std::string screen = b.plotFile();
    ASSERT_NE(screen.find(" - Chemical " + b.s.data.chemicalName(chemical)), std::string::npos) << screen.substr(0, 300);

    ASSERT_EQ(testkit::runBatchCommand("--chemical " + std::to_string(chemical), saved, b.dir.file("batch.out"), b.dir),
              0) << readFileBytes(b.dir.file("batch.err"));
    EXPECT_TRUE(screen == readFileBytes(b.dir.file("batch.out"))) << chemical;
}

TEST(UnsatScreenAndBatch, AChainsParentIsTheSameBytes) { expectChainEqualsBatch(1); }

TEST(UnsatScreenAndBatch, AChainsDaughterIsTheSameBytes) { expectChainEqualsBatch(2); }

TEST(UnsatScreenAndBatch, AChainsSimulationIsTheSameBytes) {
    Bench<MCUnsatFormModel> b(testkit::unsatChainModel());
    const std::string file =
        (testkit::sourceDir() / "unsaturated" / "tests" / "fixtures" / "unsat_chain_montecarlo.mcu").string();
    b.s.data.dataState = kDataUnchanged;
    b.s.ui.fileAnswers.push_back(file);
    b.s.form.menuFileClick(fileItem::Open);
    ASSERT_EQ(b.s.data.currentFileName, file);
    ASSERT_TRUE(b.s.data.multiChemical);
    ASSERT_TRUE(b.s.form.rowLocked(unsatrow::Percolation));  // the percolation rate varies
    ASSERT_TRUE(b.s.form.calculate());
    EXPECT_EQ(b.s.data.calculationMode, "Monte Carlo");
    EXPECT_EQ(b.s.form.resultLabel, "Monte Carlo");
    b.s.host.chemicalPicked = 2;
    b.s.form.menuMonteCarloClick(monteCarloItem::View);
    EXPECT_EQ(b.s.host.chemicalPickers, 1);
    b.expectNoMessageButTheEditors();
    const std::string screen = b.plotFile();
    ASSERT_EQ(screen.rfind("Monte Carlo\r\nType: Concentrations\r\nNumber of Terms: 3\r\n", 0), 0u) << screen;
    ASSERT_NE(screen.find("Chemical: Daughter\r\n"), std::string::npos);

    ASSERT_EQ(testkit::runBatchCommand("--chemical 2", file, b.dir.file("batch.out"), b.dir), 0)
        << readFileBytes(b.dir.file("batch.err"));
    EXPECT_TRUE(screen == readFileBytes(b.dir.file("batch.out")));
}

TEST(UnsatScreenAndBatch, ASavedChainOpensAsItWasSaved) {
    Bench<MCUnsatFormModel> b(testkit::unsatChainModel());
    b.s.form.chemicalEdited(1, 1, "0.0004");
    b.s.form.row(unsatrow::Saturation).text = "Monte Carlo" + std::string(500, ' ') + "|0.35: 1";
    const std::string saved = b.dir.file("chain.mcu");
    b.s.ui.fileAnswers.push_back(saved);
    b.s.form.menuFileClick(fileItem::SaveAs);
    ASSERT_EQ(b.s.data.currentFileName, saved);

    DataSet blank;
    blank.multiChemical = true;
    testkit::UnsatScreen<MCUnsatFormModel> again(blank);
    again.data.dataState = kDataUnchanged;
    again.ui.fileAnswers.push_back(saved);
    again.form.menuFileClick(fileItem::Open);
    ASSERT_EQ(again.data.currentFileName, saved);
    for (int r = 0; r < unsatrow::Count; ++r) {
        if (b.s.form.row(r).inUse) {
            EXPECT_EQ(again.form.row(r).text, b.s.form.row(r).text) << r;
        }
    }
    ASSERT_EQ(again.form.tables().count(), 2);
    EXPECT_EQ(again.form.tables().chemicals[1].rate, "0.0004");
    EXPECT_EQ(again.form.tables().chemicals[1].yield, "0.5");
    EXPECT_EQ(again.form.grid().cells[0].concentration, "1");
    EXPECT_TRUE(again.form.rowLocked(unsatrow::Saturation));
}

}  // namespace
}  // namespace bm
