// The reader: the golden files give back their models, and each edge case of
// the format has a fixture of its own.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "file_test_support.h"
#include "files/data_file.h"
#include "model/model_kinds.h"
#include "sample_models.h"
#include "testing/test_paths.h"

namespace bm {
namespace {


using filetests::goldenName;

using testkit::fixturePath;

std::string fixture(const std::string& name) { return fixturePath("files", name).string(); }

int readError(const std::string& name) {
    DataSet d;
    return raisedError([&] { readDataFile(d, fixture(name)); });
}

// The model as a reader gives it back: what the writer settles, and the
// Monte Carlo working set equal to the model's store.
DataSet expectedAfterReading(const samples::Golden& golden) {
    DataSet d = golden.build();
    composeDataFile(d);  // settles retardation, the index, the working set
    return d;
}

void expectSameTexts(const DataSet& e, const DataSet& a) {
#define BM_SAME(field) EXPECT_EQ(e.field, a.field) << #field
    BM_SAME(author); BM_SAME(title); BM_SAME(comments); BM_SAME(modelType); BM_SAME(aquiferType);
    BM_SAME(contaminantType); BM_SAME(calculationMode); BM_SAME(multiChemical); BM_SAME(lengthUnit);
    BM_SAME(timeUnit); BM_SAME(concentrationUnit); BM_SAME(xRange); BM_SAME(yRange); BM_SAME(zRange);
    BM_SAME(timeRange); BM_SAME(sourceXc); BM_SAME(sourceYc); BM_SAME(sourceZc); BM_SAME(sourceWidth);
    BM_SAME(sourceHeight); BM_SAME(sourceStdDev); BM_SAME(mcAtX); BM_SAME(mcAtY); BM_SAME(mcAtZ); BM_SAME(mcAtT);
    BM_SAME(velocity); BM_SAME(halfLife); BM_SAME(porosity); BM_SAME(dispersionX); BM_SAME(dispersionY);
    BM_SAME(dispersionZ); BM_SAME(injectionRate); BM_SAME(netRecharge); BM_SAME(aquiferThickness);
    BM_SAME(retardation); BM_SAME(sourceMagnitude); BM_SAME(velocityX); BM_SAME(velocityY);
    BM_SAME(sourceDecayRate); BM_SAME(dispersionRatio); BM_SAME(bulkDensity); BM_SAME(saturation);
    BM_SAME(distributionCoefficient);
    if (!e.multiChemical && e.modelType != "Time Varying") {
        BM_SAME(superpositionIndex);
        BM_SAME(terms);
    }
    if (e.multiChemical) {
        BM_SAME(numChemicals); BM_SAME(chemicalName); BM_SAME(decayRate); BM_SAME(yieldFactor);
        BM_SAME(suppositionTime); BM_SAME(suppositionConcentration); BM_SAME(resultsInPoint);
        BM_SAME(chemicalSuperpositionIndex);
    }
#undef BM_SAME
}

void expectSameResults(const DataSet& e, const DataSet& a) {
    if (e.calculationMode == "Monte Carlo") {  // the grid is not in the file then
        EXPECT_EQ(e.mcResult1D, a.mcResult1D);
        EXPECT_EQ(e.mcResult2D, a.mcResult2D);
        EXPECT_EQ(e.mcResult3D, a.mcResult3D);
        EXPECT_EQ(e.mcResultUnsat, a.mcResultUnsat);
        EXPECT_EQ(e.mcResultVar, a.mcResultVar);
        EXPECT_EQ(e.chemMcResult1D, a.chemMcResult1D);
        return;
    }
    EXPECT_EQ(e.xValues, a.xValues);
    EXPECT_EQ(e.tValues, a.tValues);
    if (e.modelType == "Time Varying") {
        EXPECT_EQ(e.varTValues, a.varTValues);
        EXPECT_EQ(e.varXValues, a.varXValues);
        EXPECT_EQ(e.varYValues, a.varYValues);
        EXPECT_EQ(e.resultVar, a.resultVar);
        return;
    }
    EXPECT_EQ(e.result1D, a.result1D);
    EXPECT_EQ(e.result2D, a.result2D);
    EXPECT_EQ(e.result3D, a.result3D);
    EXPECT_EQ(e.resultUnsat, a.resultUnsat);
    EXPECT_EQ(e.chemResult1D, a.chemResult1D);
    EXPECT_EQ(e.chemResult2D, a.chemResult2D);
    EXPECT_EQ(e.chemResult3D, a.chemResult3D);
    EXPECT_EQ(e.chemResultUnsat, a.chemResultUnsat);
}

void expectSameMonteCarlo(const DataSet& e, const DataSet& a) {
    EXPECT_EQ(e.monteRowCount, a.monteRowCount);
    EXPECT_EQ(e.monteResultRowCount, a.monteResultRowCount);
    EXPECT_EQ(e.monteIterations, a.monteIterations);
    for (int r = 1; r <= e.monteRowCount; ++r) EXPECT_EQ(e.InputTGData(r, 1), a.InputTGData(r, 1));
    for (int r = 1; r <= e.monteResultRowCount; ++r) {
        EXPECT_EQ(e.ResultTGData(r, 1), a.ResultTGData(r, 1));
        for (int i = 1; i <= e.monteIterations - 1; ++i) EXPECT_EQ(e.MonteSamples(r, i, 1), a.MonteSamples(r, i, 1));
    }
    // The working set went into the store of the model that was read.
    const auto kind = modelKindOf(a.modelType, a.multiChemical);
    ASSERT_TRUE(kind.has_value());
    const MonteBlock& store = a.monteStore(*kind);
    EXPECT_EQ(store.monteRowCount, a.monteRowCount);
    EXPECT_EQ(store.monteIterations, a.monteIterations);
    EXPECT_EQ(store.InputTGData, a.InputTGData);
    EXPECT_EQ(store.MonteSamples, a.MonteSamples);
}

class GoldenReader : public ::testing::TestWithParam<samples::Golden> {};

TEST_P(GoldenReader, GivesBackTheModel) {
    const DataSet expected = expectedAfterReading(GetParam());
    DataSet d;
    EXPECT_TRUE(readDataFile(d, fixture(GetParam().fixture)));
    EXPECT_EQ(d.currentFileName, fixture(GetParam().fixture));
    DataSet e = expected;
    if (e.multiChemical) e.halfLife.clear();  // multi-chemical files have no half-life
    if (e.contaminantType == "Dirichlet" && e.modelType == "Unsaturated One Dimensional") e.sourceDecayRate.clear();
    if (e.xValues.ub() < 0 && e.modelType == "One Dimensional") {  // never calculated: dimensioned 0 to 0 on reading
        e.xValues.redim(0);
        e.tValues.redim(0);
        e.result1D.redim({0, 0});
    }
    expectSameTexts(e, d);
    expectSameResults(e, d);
    expectSameMonteCarlo(e, d);
}

INSTANTIATE_TEST_SUITE_P(AllKinds, GoldenReader, ::testing::ValuesIn(samples::goldenFiles()), goldenName);

TEST(DataFileReader, NeverCalculatedModelReadsCountsOfZero) {
    DataSet d;
    readDataFile(d, fixture("one_never_calculated.one"));
    EXPECT_EQ(d.numXTerms, 0);
    EXPECT_EQ(d.numTTerms, 0);
    EXPECT_EQ(d.xValues.ub(), 0);  // dimensioned 0 to 0
    EXPECT_EQ(d.tValues.ub(), 0);
    EXPECT_EQ(d.result1D.ub(0), 0);
    EXPECT_EQ(d.monteIterations, 1);
}

TEST(DataFileReader, CountsOfTheGridAreStored) {
    DataSet d;
    readDataFile(d, fixture("three_regular.tri"));
    EXPECT_EQ(d.numXTerms, 2);
    EXPECT_EQ(d.numYTerms, 1);
    EXPECT_EQ(d.numZTerms, 2);
    EXPECT_EQ(d.numTTerms, 2);
}

TEST(DataFileReader, MonteCarloMarkerIsPaddedBackAndFlagged) {
    DataSet d;
    d.monteCarloValueInUse = false;
    readDataFile(d, fixture("one_montecarlo.one"));
    EXPECT_TRUE(d.monteCarloValueInUse);
    EXPECT_EQ(d.terms(1).concentration, std::string(30, ' ') + "Monte Carlo" + std::string(30, ' ') + "|100: 2");

    DataSet d2;
    d2.monteCarloValueInUse = true;
    readDataFile(d2, fixture("two_montecarlo.two"));
    EXPECT_TRUE(d2.monteCarloValueInUse);
    EXPECT_EQ(d2.terms(1).concentration.substr(0, 31), std::string(20, ' ') + "Monte Carlo");

    DataSet d3;
    d3.monteCarloValueInUse = true;
    readDataFile(d3, fixture("two_regular.two"));
    EXPECT_FALSE(d3.monteCarloValueInUse);  // cleared when there is no marker
}

TEST(DataFileReader, UnsaturatedModeTextGivesTheCurrentConcentration) {
    DataSet d;
    readDataFile(d, fixture("unsat_regular.u1d"));
    EXPECT_EQ(d.calculationMode, "0.4321");
    EXPECT_DOUBLE_EQ(d.currentConcentration, 0.4321);
}

TEST(DataFileReader, MultiChemicalMarkerKeepsItsLeadingBlanks) {
    DataSet d;
    readDataFile(d, fixture("multi_montecarlo.mc1"));
    EXPECT_EQ(d.decayRate(1), std::string(15, ' ') + "Monte Carlo" + std::string(50, ' ') + "|0.1: 1");
    EXPECT_TRUE(d.multiChemical);
}

TEST(DataFileReader, TitleAndCommentsOverSeveralLinesAreJoinedWithBlanks) {
    DataSet d;
    readDataFile(d, fixture("title_two_lines.one"));
    EXPECT_EQ(d.title, "First line second line");
    EXPECT_EQ(d.comments, "One two three");
    EXPECT_EQ(d.modelType, "One Dimensional");  // the rest of the file stays in step
    EXPECT_EQ(d.retardation, "2");
    EXPECT_EQ(d.result1D(2, 1), 0.25);
}

TEST(DataFileReader, VersionAloneOnTheFirstLinePassesTheGate) {
    DataSet d;
    readDataFile(d, fixture("version_alone.one"));
    EXPECT_EQ(d.modelType, "One Dimensional");
    EXPECT_EQ(d.xRange, "0:10:10");
    EXPECT_EQ(d.monteRowCount, 1);
}

TEST(DataFileReader, LoneLineFeedsReadLikeCrLf) {
    DataSet lf, crlf;
    readDataFile(lf, fixture("lf_only.one"));
    readDataFile(crlf, fixture("version_alone.one"));
    expectSameTexts(crlf, lf);
    expectSameResults(crlf, lf);
    EXPECT_EQ(lf.ResultTGData, crlf.ResultTGData);
    EXPECT_EQ(lf.MonteSamples, crlf.MonteSamples);
}

TEST(DataFileReader, OneDimensionWithoutPorosityAndRetardationRows) {
    DataSet d;
    d.porosity = "0.42";  // the field stays
    readDataFile(d, fixture("earlier_one_no_porosity.one"));
    EXPECT_EQ(d.porosity, "0.42");
    EXPECT_EQ(d.retardation, "1");
    EXPECT_EQ(d.dispersionX, "1.5");
    EXPECT_EQ(d.superpositionIndex, 1);
    EXPECT_EQ(d.terms(1).concentration, "100");
    EXPECT_EQ(d.result1D(1, 1), 0.5);
}

TEST(DataFileReader, OneDimensionWithPorosityButNoRetardationRow) {
    DataSet d;
    readDataFile(d, fixture("earlier_one_no_retardation.one"));
    EXPECT_EQ(d.porosity, "0.25");
    EXPECT_EQ(d.retardation, "1");
    EXPECT_EQ(d.terms(1).time, "0");
    EXPECT_EQ(d.monteIterations, 3);
}

TEST(DataFileReader, TwoDimensionsWithoutNetRecharge) {
    DataSet d;
    d.netRecharge = "old";
    readDataFile(d, fixture("earlier_two_no_recharge.two"));
    EXPECT_EQ(d.netRecharge, "old");
    EXPECT_EQ(d.sourceWidth, "");
    EXPECT_EQ(d.sourceStdDev, "5");
    EXPECT_EQ(d.injectionRate, "");
    EXPECT_EQ(d.retardation, "3");
    EXPECT_EQ(d.terms(1).concentration, "1");
}

TEST(DataFileReader, TimeVaryingWithoutPorosityRow) {
    DataSet d;
    readDataFile(d, fixture("earlier_var_no_porosity.var"));
    EXPECT_EQ(d.porosity, "1");
    EXPECT_EQ(d.distributionCoefficient, "50");
    EXPECT_EQ(d.calculationMode, "Regular");
    EXPECT_EQ(d.varTValues.ub(), 0);
    EXPECT_EQ(d.monteIterations, 1);
}

TEST(DataFileReader, MultiChemicalLabelsAreOnlyReadWhenTheyMatch) {
    DataSet d;
    d.numChemicals = 2;  // the count stays when its line has another label
    d.chemicalSuperpositionIndex.redim(1);
    d.chemicalSuperpositionIndex(1) = 7;
    readDataFile(d, fixture("earlier_multi_labels.mc1"));
    EXPECT_EQ(d.numChemicals, 2);
    EXPECT_EQ(d.chemicalName(2), "TCE");
    EXPECT_EQ(d.chemicalSuperpositionIndex(1), 7);
    EXPECT_EQ(d.suppositionConcentration(1), "1");
    EXPECT_TRUE(d.multiChemical);
}

TEST(DataFileReader, CodePageCharactersBecomeUtf8) {
    DataSet d;
    readDataFile(d, fixture("code_page.one"));
    EXPECT_EQ(d.author, "Ren\xC3\xA9 M\xC3\xBCller \xE2\x82\xAC");
    EXPECT_EQ(d.title, "odd \xC2\x81 byte");  // the unassigned byte keeps its own character
}

TEST(DataFileReader, TheFileNamesOwnExtensionIgnoresFullStopsInFolders) {
    EXPECT_EQ(fileNameExtension("./v2.0/a.b.mc1"), "mc1");
    EXPECT_EQ(fileNameExtension("data.v2/model"), "");
    EXPECT_EQ(fileNameExtension("a.one"), "one");
    EXPECT_EQ(fileNameExtension("./sample1.mc1"), "mc1");
    const auto own = ExtensionRule::FileNameOwn;
    EXPECT_TRUE(extensionSelectsMultiChemical("./sample1.mc1", "One Dimensional", own));
    EXPECT_TRUE(extensionSelectsMultiChemical("dir.v2/a.MC1", "One Dimensional", own));
    EXPECT_FALSE(extensionSelectsMultiChemical("dir.mc1/a.one", "One Dimensional", own));
    EXPECT_FALSE(extensionSelectsMultiChemical("./sample1.mc1", "One Dimensional"));  // the workbench's rule

    testkit::TempDir dir;
    std::filesystem::create_directory(dir.path() / "data.v2");
    const auto path = dir.path() / "data.v2" / "a.mc1";
    std::filesystem::copy_file(fixture("multi_regular.mc1"), path);
    DataSet d;
    readDataFile(d, path.string(), own);
    EXPECT_TRUE(d.multiChemical);
    EXPECT_GE(d.numChemicals, 1);
}

TEST(DataFileReader, FullStopInAFolderNameMakesAMultiChemicalFileReadAsSingle) {
    EXPECT_FALSE(extensionSelectsMultiChemical("C:\\data.v2\\a.mc1", "One Dimensional"));
    EXPECT_TRUE(extensionSelectsMultiChemical("C:\\data\\a.mc1", "One Dimensional"));
    EXPECT_TRUE(extensionSelectsMultiChemical("/home/u/a.MC1", "One Dimensional"));
    EXPECT_FALSE(extensionSelectsMultiChemical("/home/u/a.mc1", "Two Dimensional"));
    EXPECT_TRUE(extensionSelectsMultiChemical("/home/u/a.Mcu", "Unsaturated One Dimensional"));

    testkit::TempDir dir;
    std::filesystem::create_directory(dir.path() / "data.v2");
    const auto path = dir.path() / "data.v2" / "a.mc1";
    std::filesystem::copy_file(fixture("multi_regular.mc1"), path);
    DataSet d;
    EXPECT_NE(raisedError([&] { readDataFile(d, path.string()); }), 0);
    EXPECT_FALSE(d.multiChemical);
    EXPECT_EQ(d.numChemicals, 0);  // read as a single-chemical file
}

TEST(DataFileReader, CommaInAMonteCarloRecordBreaksTheBlock) {
    const int error = readError("comma_in_monte_record.one");
    EXPECT_TRUE(error == 13 || error == 62) << error;
}

TEST(DataFileReader, MarkersThatDoNotMatchAreError62) {
    EXPECT_EQ(readError("marker_begin_mismatch.one"), 62);
    EXPECT_EQ(readError("marker_end_mismatch.one"), 62);
    EXPECT_EQ(readError("marker_chemical_mismatch.one"), 62);
}

TEST(DataFileReader, ReadingPastTheEndIsError62) {
    EXPECT_EQ(readError("truncated.one"), 62);
    EXPECT_EQ(readError("missing_end_file.one"), 62);
    EXPECT_EQ(readError("empty.one"), 62);
    EXPECT_EQ(readError("old_format_no_description.dat"), 62);
}

TEST(DataFileReader, CountsPast16BitsAreOverflow) {
    EXPECT_EQ(readError("count_overflow.one"), 6);
    EXPECT_EQ(readError("superposition_overflow.one"), 6);
}

TEST(DataFileReader, HugeCountsWithoutTheirValuesFailBeforeAllocating) {
    EXPECT_EQ(readError("huge_counts.one"), 62);
    EXPECT_EQ(readError("huge_iterations.one"), 7);
}

TEST(DataFileReader, MoreResultRowsThanInputRowsFailOnTheBounds) {
    EXPECT_EQ(readError("more_results_than_rows.one"), 9);
}

TEST(DataFileReader, NonNumericValueIsTypeMismatch) { EXPECT_EQ(readError("not_a_number.one"), 13); }

TEST(DataFileReader, MissingFileIsError53) {
    DataSet d;
    EXPECT_EQ(raisedError([&] { readDataFile(d, "/no/such/folder/model.one"); }), 53);
    EXPECT_EQ(raisedError([&] { readDataFile(d, ""); }), 53);
}

TEST(DataFileReader, AFolderOrADeviceIsNoDataFile) {
    DataSet d;
    testkit::TempDir dir;
    try {
        readDataFile(d, dir.path().string());
        ADD_FAILURE() << "a folder was read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 75);
        EXPECT_EQ(e.description(), "Path/File access error: " + dir.path().string() + " is a folder, not a data file");
    }
    try {
        readDataFile(d, "/dev/zero");  // would never end if it were read
        ADD_FAILURE() << "a device was read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 75);
        EXPECT_EQ(e.description(), "Path/File access error: /dev/zero is a device or a pipe, not a data file");
    }
}

TEST(DataFileReader, DataSetKeepsWhatWasReadBeforeAnError) {
    DataSet d;
    EXPECT_EQ(raisedError([&] { readDataFile(d, fixture("marker_end_mismatch.one")); }), 62);
    EXPECT_EQ(d.modelType, "One Dimensional");
    EXPECT_EQ(d.result1D(2, 1), 0.25);
    EXPECT_EQ(d.currentFileName, "");  // not a successful read
}

// ---- the old format -------------------------------------------------------------------

TEST(OldFormatReader, OneDimensional) {
    DataSet d;
    d.comments = "stale";
    EXPECT_TRUE(readDataFile(d, fixture("old_format_one.dat")));
    EXPECT_EQ(d.modelType, "One Dimensional");
    EXPECT_EQ(d.aquiferType, "Semi-Infinite");
    EXPECT_EQ(d.contaminantType, "Dirichlet");
    EXPECT_EQ(d.description, "Benzene plume");
    // Each line goes in front of the ones before it.
    EXPECT_EQ(d.title, "Second title line First title line ");
    EXPECT_EQ(d.lengthUnit, "m");
    EXPECT_EQ(d.timeUnit, "d");
    EXPECT_EQ(d.concentrationUnit, "mg/L");
    EXPECT_EQ(d.xRange, "0:100:10");
    EXPECT_EQ(d.timeRange, "5:50:5");
    EXPECT_EQ(d.superpositionIndex, 1);
    EXPECT_EQ(d.terms.ub(), 1);
    EXPECT_EQ(d.terms(1).time, "5");
    EXPECT_EQ(d.terms(1).concentration, "100");
    EXPECT_EQ(d.velocity, "0.5");
    EXPECT_EQ(d.halfLife, "365");
    EXPECT_EQ(d.dispersionX, "2.5");
    EXPECT_EQ(d.comments, "note twonote one\r\n\r\n");
    EXPECT_EQ(d.currentFileName, fixture("old_format_one.dat"));
}

TEST(OldFormatReader, TwoDimensionalContinuousPoint) {
    DataSet d;
    readDataFile(d, fixture("old_format_two.dat"));
    EXPECT_EQ(d.title, "");
    EXPECT_EQ(d.xRange, "0:500:50");
    EXPECT_EQ(d.yRange, "-100:100:20");
    EXPECT_EQ(d.timeRange, "1:10:1");
    EXPECT_EQ(d.terms(1).time, "1");
    EXPECT_EQ(d.sourceXc, "0");
    EXPECT_EQ(d.sourceYc, "0");
    EXPECT_EQ(d.terms(1).concentration, "50");
    EXPECT_EQ(d.dispersionY, "1");
    EXPECT_EQ(d.injectionRate, "2");
    EXPECT_EQ(d.porosity, "0.3");
    EXPECT_EQ(d.comments, "");
}

TEST(OldFormatReader, ThreeDimensionalFiniteSource) {
    DataSet d;
    readDataFile(d, fixture("old_format_three.dat"));
    EXPECT_EQ(d.title, "Title A ");
    EXPECT_EQ(d.zRange, "0:5:1");
    EXPECT_EQ(d.sourceYc, "0");
    EXPECT_EQ(d.sourceZc, "2");
    EXPECT_EQ(d.sourceWidth, "10");
    EXPECT_EQ(d.sourceHeight, "4");
    EXPECT_EQ(d.terms(1).concentration, "1");
    EXPECT_EQ(d.dispersionZ, "0.01");
    EXPECT_EQ(d.injectionRate, "");  // a finite source has none
    EXPECT_EQ(d.comments, "only note\r\n");
}

TEST(OldFormatReader, RangeWithMissingFieldIsError5) { EXPECT_EQ(readError("old_format_short_range.dat"), 5); }

}  // namespace
}  // namespace bm
