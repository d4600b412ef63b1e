// The writer against golden files written by hand from the format: every model
// kind, Regular and Monte Carlo, byte for byte.

#include <gtest/gtest.h>

#include "file_test_support.h"
#include "files/data_file.h"
#include "files/data_file_blocks.h"
#include "sample_models.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using filetests::goldenName;

using testkit::fixturePath;
using testkit::readFileBytes;

std::string golden(const std::string& name) { return readFileBytes(fixturePath("files", name)); }

class GoldenWriter : public ::testing::TestWithParam<samples::Golden> {};

TEST_P(GoldenWriter, ComposesTheGoldenFileByteForByte) {
    DataSet d = GetParam().build();
    EXPECT_EQ(composeDataFile(d), golden(GetParam().fixture));
}

TEST_P(GoldenWriter, SavesTheGoldenFileByteForByte) {
    testkit::TempDir dir;
    DataSet d = GetParam().build();
    const std::string path = dir.file(GetParam().fixture);
    writeDataFile(d, path);
    EXPECT_EQ(readFileBytes(path), golden(GetParam().fixture));
}

INSTANTIATE_TEST_SUITE_P(AllKinds, GoldenWriter, ::testing::ValuesIn(samples::goldenFiles()), goldenName);

TEST(DataFileWriter, EmptyRetardationIsSavedAsOneAndStoredBack) {
    DataSet d = samples::oneRegular();
    ASSERT_EQ(d.retardation, "");
    const std::string text = composeDataFile(d);
    EXPECT_NE(text.find("\r\nRetardation Coefficient (R): 1\r\n"), std::string::npos);
    EXPECT_EQ(d.retardation, "1");
}

TEST(DataFileWriter, BlankRetardationCountsAsEmpty) {
    DataSet d = samples::twoRegular();
    d.retardation = "   ";
    composeDataFile(d);
    EXPECT_EQ(d.retardation, "1");
}

TEST(DataFileWriter, SuperpositionIndexZeroGivesOneTermAndIsStoredBack) {
    DataSet d = samples::oneNeverCalculated();
    ASSERT_EQ(d.superpositionIndex, 0);
    const std::string text = composeDataFile(d);
    EXPECT_NE(text.find("Superposition Index: 1\r\n\r\nT 1: \r\nConcentration: \r\n\r\n[End Input Data]"),
              std::string::npos);
    EXPECT_EQ(d.superpositionIndex, 1);
    EXPECT_EQ(d.terms.ub(), 1);
}

TEST(DataFileWriter, RegularModelCarriesMonteCarloBlockWithOneIterationKept) {
    DataSet d = samples::twoRegular();
    ASSERT_EQ(d.monteStore(ModelKind::TwoDimensional).monteIterations, 0);
    const std::string text = composeDataFile(d);
    EXPECT_NE(text.find("[Begin Monte Carlo Data]\r\n 0 \r\n 0 \r\n 1 \r\n[Begin Chemical  1 ]\r\n"), std::string::npos);
    EXPECT_EQ(d.monteIterations, 1);  // the working set keeps the 1
}

TEST(DataFileWriter, StoreOfTheModelIsCopiedIntoTheWorkingSet) {
    DataSet d = samples::oneRegular();
    d.monteRowCount = 7;  // a stale working set is replaced by the store
    composeDataFile(d);
    const MonteBlock& store = d.monteStore(ModelKind::OneDimensional);
    EXPECT_EQ(d.monteRowCount, store.monteRowCount);
    EXPECT_EQ(d.monteIterations, 3);
    EXPECT_EQ(d.InputTGData, store.InputTGData);
    EXPECT_EQ(d.MonteSamples, store.MonteSamples);
}

TEST(DataFileWriter, MultiChemicalModelUsesItsOwnStore) {
    DataSet d = samples::multiMonteCarlo1D();
    d.monteStore(ModelKind::OneDimensional).monteIterations = 55;  // the single-chemical store is not the one
    const std::string text = composeDataFile(d);
    EXPECT_NE(text.find("Number of Monte Carlo Iterations:  3\r\n"), std::string::npos);
    EXPECT_EQ(d.monteIterations, 3);
}

TEST(DataFileWriter, LastOneDimensionalRowSharesItsLineWithTheEndMarker) {
    DataSet d = samples::oneRegular();
    EXPECT_NE(composeDataFile(d).find(" 10,  0.125 ,  0.0625 [End Output Data]\r\n\r\n[Begin Monte Carlo Data]"),
              std::string::npos);
}

TEST(DataFileWriter, DirichletUnsaturatedModelHasNoDecayRow) {
    DataSet d = samples::unsatMonteCarlo();
    const std::string text = composeDataFile(d);
    EXPECT_EQ(text.find("Source Concentration Decay Rate"), std::string::npos);
    EXPECT_NE(text.find("Saturation: 0.35\r\n\r\nSuperposition Index: 1"), std::string::npos);
}

TEST(DataFileWriter, ResultCellsTheArrayDoesNotHoldAreWrittenAsZero) {
    DataSet d = samples::oneRegular();
    d.result1D.redim({1, 2});  // a run stopped before the second row
    const std::string text = composeDataFile(d);
    EXPECT_NE(text.find(" 10,  0 ,  0 [End Output Data]"), std::string::npos);
}

TEST(DataFileWriter, MonteCarloValuesBeyondTheListAreWrittenAsZero) {
    DataSet d = samples::oneMonteCarlo();
    d.mcResult1D.redim(0);  // samples generated but never run
    EXPECT_NE(composeDataFile(d).find("Number of Monte Carlo Iterations:  3\r\n 0  0 [End Output Data]"),
              std::string::npos);
}

TEST(DataFileWriter, CountPast16BitsIsOverflow) {
    DataSet d = samples::oneRegular();
    d.xValues.redim(40000);
    try {
        composeDataFile(d);
        FAIL() << "no error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 6);
    }
}

TEST(DataFileWriter, UnsaturatedTwoDimensionalHasNoModelBlock) {
    DataSet d = samples::unsatRegular();
    d.modelType = "Unsaturated Two Dimensional";
    const std::string text = composeDataFile(d);
    EXPECT_NE(text.find("Concentration: mg/L\r\n\r\n[Begin Monte Carlo Data]"), std::string::npos);
}

TEST(DataFileWriter, CharactersOutsideTheCodePageBecomeQuestionMarks) {
    DataSet d = samples::oneRegular();
    d.author = "Ren\xC3\xA9 \xE2\x82\xAC \xCE\xA9";  // "René € Ω"
    testkit::TempDir dir;
    writeDataFile(d, dir.file("a.one"));
    const std::string bytes = readFileBytes(dir.file("a.one"));
    EXPECT_NE(bytes.find("Author: Ren\xE9 \x80 ?\r\n"), std::string::npos);
}

}  // namespace
}  // namespace bm
