// MCInputForm on the screen: its controls by name in the three layouts, the
// chemicals' tables growing and shrinking with the count row, the refused
// count, the chemical picker before the results are viewed, Stop between
// chemicals, a saved .mc1/.mc2/.mc3 reopened showing what was saved, and
// pictures of the three layouts at two window sizes.

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include "apps/brenmoor-calc/tests/batch_command.h"
#include "files/data_file.h"
#include "montecarlo/monte_marker.h"
#include "saturated/tests/input_form_test_models.h"
#include "shell/widgets/progress_picture.h"
#include "shell/widgets/term_grid_view.h"
#include "species/tests/chain_test_model.h"
#include "species/widgets/chemical_table_view.h"
#include "species/widgets/mc_input_form.h"
#include "testing/model_screen_fixture.h"
#include "testing/points_file.h"
#include "testing/qt_test_support.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using qtest::settle;
using testkit::Chain;
using testkit::chainModel;

const Chain kThree{{0.1, 0.2, 0.3}, {1, 0.8, 0.5}, {1, 0, 0}};

class MCInputFormScreen : public testkit::ModelScreenFixture<MCInputForm> {
protected:
    int dim() { return form->model().dimension(); }
    QLineEdit* entry(int row) { return form->rowEntry(dim(), row); }
    void typeInto(int row, const QString& text) {
        entry(row)->setFocus(Qt::MouseFocusReason);
        entry(row)->selectAll();
        settle();
        QTest::keyClicks(entry(row), text);
    }
    void leaveRow(int row) {
        QTest::keyClick(entry(row), Qt::Key_Tab);
        settle();
    }
};

TEST_F(MCInputFormScreen, EachLayoutCarriesTheControlNames) {
    const struct {
        DataSet model;
        int countRow, halfLifeRow, superpositionRow;
    } layouts[] = {{chainModel(testkit::oneDimScreenModel(), kThree), 11, 2, 5},
                   {chainModel(testkit::twoDimScreenModel(), kThree), 19, 6, 7},
                   {chainModel(testkit::threeDimScreenModel(), kThree), 23, 13, 9}};
    for (const auto& l : layouts) {
        open(l.model);
        const int d = dim();
        EXPECT_EQ(form->objectName(), "MCInputForm");
        for (const QString& name : {QStringLiteral("ChemicalInput%1TG").arg(d), QStringLiteral("Input%1TG").arg(d),
                                    QStringLiteral("grd%1DResults").arg(d), QStringLiteral("LabelResult%1D").arg(d),
                                    QStringLiteral("stopCB"), QStringLiteral("pictureDest")})
            EXPECT_NE(form->findChild<QWidget*>(name), nullptr) << name.toStdString();
        form->tabSet(d)->setCurrentIndex(kBoundaryTab);
        settle();
        QLineEdit* count = form->findChild<QLineEdit*>(QStringLiteral("Text%1(%2)").arg(d).arg(l.countRow));
        ASSERT_NE(count, nullptr);
        EXPECT_TRUE(count->isVisible());
        EXPECT_EQ(count->text(), "3");
        EXPECT_EQ(form->rowCaption(d, l.countRow)->text(), " Number of Chemicals");
        EXPECT_FALSE(form->rowEntry(d, l.superpositionRow)->isVisible());
        form->tabSet(d)->setCurrentIndex(kFieldTab);
        settle();
        EXPECT_FALSE(form->rowEntry(d, l.halfLifeRow)->isVisible());
        ChemicalTableView* chemicals = form->chemicalTable(d);
        ASSERT_EQ(chemicals->rowCount(), 3);
        EXPECT_EQ(chemicals->item(2, 0)->text(), "C3");
        EXPECT_EQ(chemicals->item(1, 2)->text(), "0.8");
        TermGridView* sources = form->grid(d);
        ASSERT_EQ(sources->rowCount(), 3);
        EXPECT_EQ(sources->item(0, 1)->text(), "1");
        EXPECT_EQ(sources->verticalHeaderItem(1)->text(), "C2");
        form.reset();
    }
}

TEST_F(MCInputFormScreen, TheTablesGrowAndShrinkWithTheCount) {
    open(chainModel(testkit::oneDimScreenModel(), kThree));
    form->tabSet(1)->setCurrentIndex(kBoundaryTab);
    settle();
    typeInto(11, QStringLiteral("5"));
    leaveRow(11);
    EXPECT_EQ(data.numChemicals, 5);
    EXPECT_EQ(form->chemicalTable(1)->rowCount(), 5);
    EXPECT_EQ(form->grid(1)->rowCount(), 5);
    EXPECT_EQ(form->chemicalTable(1)->item(4, 0)->text(), "");
    form->chemicalTable(1)->item(3, 0)->setText(QStringLiteral("Ethene"));  // as an edit commits it
    EXPECT_EQ(form->chainModel().tables().chemicals[3].name, "Ethene");
    typeInto(11, QStringLiteral("2"));
    leaveRow(11);
    EXPECT_EQ(form->chemicalTable(1)->rowCount(), 2);
    EXPECT_EQ(form->grid(1)->rowCount(), 2);
    EXPECT_EQ(form->chemicalTable(1)->item(1, 0)->text(), "C2");
    EXPECT_TRUE(ui.messages.empty());

    typeInto(11, QStringLiteral("0"));
    leaveRow(11);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Improper input value");
    EXPECT_EQ(ui.messages[0].text,
              "'0' is not a valid input value.\r\rThe number of chemicals must be greater than or equal to 1.");
    EXPECT_EQ(entry(11)->text(), "2");
    EXPECT_EQ(form->chemicalTable(1)->rowCount(), 2);
}

TEST_F(MCInputFormScreen, AMarkerCellOfTheChemicalsTableIsRedAndReadOnly) {
    DataSet d = chainModel(testkit::oneDimScreenModel(), kThree);
    d.decayRate(2) = chemicalCellMarker("0.2", 1);
    open(d);
    form->tabSet(1)->setCurrentIndex(kBoundaryTab);
    settle();
    ChemicalTableView* chemicals = form->chemicalTable(1);
    EXPECT_EQ(chemicals->item(1, 1)->text(), "Monte Carlo");
    EXPECT_EQ(chemicals->cellStyle(1, 1), "MonteCarloStyle4");
    chemicals->setCurrentCell(1, 1);
    chemicals->editItem(chemicals->item(1, 1));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Read Only");
    EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("MonteCarloElastic"))->text(), "Monte Carlo");
    EXPECT_TRUE(entry(6)->isEnabled());  // the point rows are enabled under Monte Carlo
}

TEST_F(MCInputFormScreen, ViewAsksForTheChemicalWithThePicker) {
    testkit::TempDir dir;
    state.temporaryDataPath = dir.path().string();
    testkit::writeFileBytes(dir.path() / "editor", "#!/bin/sh\n");
    state.textEditorPath = dir.file("editor");
    open(chainModel(testkit::oneDimScreenModel(), kThree));
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    ASSERT_TRUE(ui.messages.empty()) << ui.lastText();
    ASSERT_EQ(form->resultsTable(1)->rowCount(), 3);
    EXPECT_EQ(form->resultsTable(1)->item(2, 0)->text(), "C3");
    EXPECT_EQ(form->resultLabel(1)->text(), "Regular");

    bool listed = false;
    qtest::onModal(QStringLiteral("SelectChemicalForm"), [&](QWidget* picker) {
        auto* list = picker->findChild<QComboBox*>(QStringLiteral("cmbChemicals"));
        listed = list && list->count() == 3 && list->itemText(1) == "C2" && picker->windowTitle() == "Select Chemical";
        list->setCurrentIndex(2);
        picker->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    });
    form->menuItem(QStringLiteral("menuResults(20)"))->trigger();
    settle();
    EXPECT_TRUE(listed);
    EXPECT_EQ(data.selectedChemical, 3);
    ASSERT_EQ(ui.programStarts.size(), 1u);
    const std::string file = testkit::readFileBytes(dir.file("brenmoor.plt"));
    EXPECT_NE(file.find("- Chemical C3"), std::string::npos);

    // Cancel in the picker: nothing is shown.
    qtest::onModal(QStringLiteral("SelectChemicalForm"), [](QWidget* picker) {
        picker->findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
    });
    form->menuItem(QStringLiteral("menuResults(20)"))->trigger();
    settle();
    EXPECT_EQ(data.selectedChemical, 0);
    EXPECT_EQ(ui.programStarts.size(), 1u);
}

TEST_F(MCInputFormScreen, StopEndsTheRunBetweenChemicals) {
    open(chainModel(testkit::oneDimScreenModel(), kThree));
    bool running = false;
    onPoint = [&](const testkit::ScriptedUserInterface::Progress&) {
        if (ui.progress.size() != 66 + 20) return;  // the second chemical's twentieth point
        running = form->stopButton()->isVisible() && form->progressPicture()->isVisible();
        ui.answers.push_back(MessageAnswer::Yes);
        QTest::mouseClick(form->stopButton(), Qt::LeftButton);
    };
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(running);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Stop Calculation");
    // The second chemical's 66 points ran to their end, the third's never began;
    // the first chemical's grid is stored, uncoupled.
    EXPECT_EQ(ui.progress.size(), 2u * 66u);
    EXPECT_TRUE(data.runStopped);
    ASSERT_EQ(data.chemResult1D.ub(0), 3);
    EXPECT_GT(data.chemResult1D(1, 11, 6), 0.0);
    EXPECT_EQ(data.chemResult1D(2, 11, 6), 0.0);
    EXPECT_EQ(data.chemResult1D(3, 11, 6), 0.0);
    EXPECT_FALSE(form->stopButton()->isVisible());
    EXPECT_TRUE(form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled());
}

TEST_F(MCInputFormScreen, ASavedFileReopenedShowsWhatWasSaved) {
    testkit::TempDir dir;
    const struct {
        DataSet model;
        std::string extension;
    } cases[] = {{chainModel(testkit::oneDimScreenModel(), kThree), ".mc1"},
                 {chainModel(testkit::twoDimScreenModel(), kThree), ".mc2"},
                 {chainModel(testkit::threeDimScreenModel(), kThree), ".mc3"}};
    for (const auto& c : cases) {
        open(c.model);
        const int d = dim();
        const int countRow = MCInputFormModel::chemicalCountRow(d);
        form->tabSet(d)->setCurrentIndex(kBoundaryTab);
        settle();
        typeInto(countRow, QStringLiteral("4"));
        leaveRow(countRow);
        ChemicalTableView* chemicals = form->chemicalTable(d);
        chemicals->item(3, 0)->setText(QStringLiteral("Ethene"));
        chemicals->item(3, 1)->setText(QStringLiteral("0.05"));
        chemicals->item(3, 2)->setText(QStringLiteral("0"));
        form->grid(d)->item(3, 0)->setText(QStringLiteral("2"));
        form->grid(d)->item(3, 1)->setText(QStringLiteral("0.25"));
        const std::string path = dir.file("saved" + c.extension);
        ui.fileAnswers.push_back(path);
        form->menuItem(QStringLiteral("menuFile(40)"))->trigger();
        settle();
        ASSERT_EQ(data.currentFileName, path);
        form.reset();

        DataSet reread;
        ASSERT_TRUE(readDataFile(reread, path));
        ASSERT_TRUE(reread.multiChemical);
        open(reread);
        ASSERT_EQ(dim(), d);
        EXPECT_EQ(entry(countRow)->text(), "4");
        chemicals = form->chemicalTable(d);
        ASSERT_EQ(chemicals->rowCount(), 4);
        const char* expected[4][5] = {{"C1", "0.1", "1", "0", "1"},
                                      {"C2", "0.2", "0.8", "0", "0"},
                                      {"C3", "0.3", "0.5", "0", "0"},
                                      {"Ethene", "0.05", "0", "2", "0.25"}};
        for (int r = 0; r < 4; ++r) {
            for (int col = 0; col < 3; ++col) EXPECT_EQ(chemicals->item(r, col)->text(), expected[r][col]) << r << col;
            EXPECT_EQ(form->grid(d)->item(r, 0)->text(), expected[r][3]) << r;
            EXPECT_EQ(form->grid(d)->item(r, 1)->text(), expected[r][4]) << r;
        }
        form.reset();
    }
}

TEST_F(MCInputFormScreen, PicturesOfEachLayout) {
    testkit::PointsFileScope points;  // the two- and three-dimensional solvers read it
    const std::vector<std::pair<QString, DataSet>> models = {
        {QStringLiteral("one"), chainModel(testkit::oneDimScreenModel(), kThree)},
        {QStringLiteral("two"), chainModel(testkit::twoDimScreenModel("Infinite", "Continuous / Point"), kThree)},
        {QStringLiteral("three"), chainModel(testkit::threeDimScreenModel(), kThree)},
    };
    for (const QSize size : {QSize(1600, 1000), QSize(1024, 700)}) {
        for (const auto& [name, model] : models) {
            DataSet d = model;
            d.title = "Solvent chain at the old dry cleaner";
            d.currentFileName = "/home/user/models/cleaner." + name.toStdString();
            d.chemicalName(1) = "Tetrachloroethene";
            d.chemicalName(2) = "Trichloroethene";
            d.chemicalName(3) = "cis-1,2-Dichloroethene";
            // The selected point inside the plume, where every chemical has arrived.
            d.xRange = d.modelType == "One Dimensional" ? "0:10:1:3" : "0:100:10:10";
            d.yRange = "-20:20:10:0";
            d.zRange = "0:10:5:5";
            // The smaller window shows a rate under Monte Carlo control, the larger a regular run's results.
            if (size.width() < 1600) d.decayRate(2) = chemicalCellMarker("0.2", 1);
            open(d);
            form->resize(size);
            form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
            settle();
            const int dimension = dim();
            for (int t = 0; t < 3; ++t) {
                form->tabSet(dimension)->setCurrentIndex(t);
                settle();
                qtest::saveShot(form.get(),
                                QStringLiteral("MCInputForm-%1-%2x%3-tab%4").arg(name).arg(size.width()).arg(size.height()).arg(t));
                // Nothing of a row is cut off, and the tables have room for their rows.
                for (int i = 0; i < static_cast<int>(form->model().rows(dimension).size()); ++i) {
                    if (QLineEdit* e = form->rowEntry(dimension, i); e && e->isVisible()) {
                        EXPECT_GE(e->width(), 200) << i;
                    }
                }
            }
            EXPECT_TRUE(ui.messages.empty()) << ui.lastTitle() << ": " << ui.lastText();
            EXPECT_EQ(form->resultsTable(dimension)->item(0, 0)->text(), "Tetrachloroethene");
            form->tabSet(dimension)->setCurrentIndex(kBoundaryTab);
            settle();
            EXPECT_GE(form->chemicalTable(dimension)->height(), 100);
            EXPECT_GE(form->grid(dimension)->height(), 100);
            form.reset();
        }
    }
}

// ================================================================ the screen and the batch calculator

// The screen's output file for a chemical picked in SelectChemicalForm, and
// brenmoor-calc's for the same chemical of the file the screen saved or read.
class ScreenAndBatch : public MCInputFormScreen {
protected:
    testkit::TempDir dir;
    void SetUp() override {
        state.temporaryDataPath = dir.path().string();
        state.textEditorPath = dir.file("no-editor");
    }
    void pickInTheList(int position) {
        qtest::onModal(QStringLiteral("SelectChemicalForm"), [position](QWidget* picker) {
            picker->findChild<QComboBox*>(QStringLiteral("cmbChemicals"))->setCurrentIndex(position);
            picker->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
        });
    }
    void expectTheSameBytes(const std::string& file, int chemical) {
        for (const auto& m : ui.messages)
            if (m.title != "Missing Text Editor" && m.title != "Information") ADD_FAILURE() << m.title << ": " << m.text;
        const std::string screen = testkit::readFileBytes(dir.file("brenmoor.plt"));
        ASSERT_EQ(testkit::runBatchCommand("--chemical " + std::to_string(chemical), file, dir.file("batch.out"), dir), 0)
            << testkit::readFileBytes(dir.file("batch.err"));
        EXPECT_TRUE(screen == testkit::readFileBytes(dir.file("batch.out"))) << screen.substr(0, 300);
    }
};

TEST_F(ScreenAndBatch, ARegularRunIsTheSameBytes) {
    open(chainModel(testkit::oneDimScreenModel(), kThree));
    const std::string saved = dir.file("chain.mc1");
    ui.fileAnswers.push_back(saved);
    form->menuItem(QStringLiteral("menuFile(40)"))->trigger();
    settle();
    ASSERT_EQ(data.currentFileName, saved);
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    pickInTheList(1);
    form->menuItem(QStringLiteral("menuResults(20)"))->trigger();
    settle();
    ASSERT_EQ(data.selectedChemical, 2);
    expectTheSameBytes(saved, 2);
}

TEST_F(ScreenAndBatch, ASimulationIsTheSameBytes) {
    open(chainModel(testkit::oneDimScreenModel(), kThree));
    data.dataState = kDataUnchanged;
    const std::string file =
        (testkit::sourceDir() / "apps" / "brenmoor-calc" / "tests" / "goldens" / "inputs" / "montecarlo_chain.mc1")
            .string();
    ui.fileAnswers.push_back(file);
    form->menuItem(QStringLiteral("menuFile(20)"))->trigger();
    settle();
    ASSERT_EQ(data.currentFileName, file);
    EXPECT_EQ(form->chemicalTable(1)->item(1, 1)->text(), "Monte Carlo");
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_EQ(form->resultLabel(1)->text(), "Monte Carlo");
    EXPECT_EQ(form->resultsTable(1)->item(2, 1)->text(), "Monte Carlo");
    pickInTheList(2);
    form->menuItem(QStringLiteral("menuMonteCarlo(30)"))->trigger();
    settle();
    ASSERT_EQ(data.selectedChemical, 3);
    expectTheSameBytes(file, 3);
}

TEST(MCInputFormRegistry, RegisteredForTheMultiChemicalSaturatedKinds) {
    registerMCInputForm();
    EXPECT_TRUE(hasModelScreen(ModelScreen::MCInputForm));
    EXPECT_EQ(modelScreenFor("Three Dimensional", true), ModelScreen::MCInputForm);
}

}  // namespace
}  // namespace bm
