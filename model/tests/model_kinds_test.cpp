// The model-kind table: each word and chemical flag, what the table says of it,
// and the Monte Carlo result lists it hands out.

#include <gtest/gtest.h>

#include <set>

#include "model/data_set.h"
#include "model/model_kinds.h"
#include "shell/base/help_topics.h"

namespace bm {
namespace {

TEST(ModelKinds, EveryKindHasARowAndTheFirstRowWritesItsWord) {
    std::set<ModelKind> kinds;
    for (const ModelKindInfo& row : modelKindTable()) kinds.insert(row.kind);
    EXPECT_EQ(static_cast<int>(kinds.size()), kModelKindCount);
    EXPECT_EQ(modelTypeOf(ModelKind::OneDimensional), "One Dimensional");
    EXPECT_EQ(modelTypeOf(ModelKind::MultiThreeDimensional), "Three Dimensional");
    EXPECT_EQ(modelTypeOf(ModelKind::Unsaturated), "Unsaturated One Dimensional");
    EXPECT_EQ(modelTypeOf(ModelKind::TimeVarying), "Time Varying");
}

TEST(ModelKinds, WordsAndChemicalFlagGiveTheKind) {
    EXPECT_EQ(modelKindOf("Two Dimensional", false), ModelKind::TwoDimensional);
    EXPECT_EQ(modelKindOf("Two Dimensional", true), ModelKind::MultiTwoDimensional);
    EXPECT_EQ(modelKindOf("Unsaturated", true), ModelKind::MultiUnsaturated);  // the short word
    EXPECT_EQ(modelKindOf("Time Varying", true), ModelKind::TimeVarying);      // one chemical whatever the flag
    EXPECT_EQ(modelKindOf("Unsaturated Three Dimensional", true), ModelKind::UnsaturatedThreeDimensional);
    EXPECT_FALSE(modelKindOf("two dimensional", false).has_value());  // compared exactly
    EXPECT_FALSE(modelKindOf("", false).has_value());
    ASSERT_NE(modelKindInfoIgnoringCase(" two dimensional ", false), nullptr);
    EXPECT_EQ(modelKindInfoIgnoringCase(" two dimensional ", false)->kind, ModelKind::TwoDimensional);
}

TEST(ModelKinds, TheFamilyRules) {
    EXPECT_EQ(saturatedDimension("One Dimensional"), 1);
    EXPECT_EQ(saturatedDimension("Three Dimensional"), 3);
    EXPECT_EQ(saturatedDimension("Unsaturated Two Dimensional"), 0);
    EXPECT_EQ(saturatedDimension("Time Varying"), 0);
    for (const char* word : {"Unsaturated", "Unsaturated One Dimensional", "Unsaturated Two Dimensional",
                             "Unsaturated Three Dimensional"})
        EXPECT_TRUE(isUnsaturatedType(word)) << word;
    EXPECT_FALSE(isUnsaturatedType("One Dimensional"));
    EXPECT_FALSE(isUnsaturatedType("unsaturated"));
}

TEST(ModelKinds, FilesAndMarkers) {
    EXPECT_EQ(modelKindInfo("Three Dimensional", false)->extension, ".tri");
    EXPECT_EQ(modelKindInfo("Three Dimensional", true)->extension, ".mc3");
    EXPECT_EQ(modelKindInfo("Unsaturated Two Dimensional", true)->extension, ".MCU");
    EXPECT_FALSE(modelKindInfo("Time Varying", true)->extensionMarksChemicals);
    EXPECT_EQ(blockLayoutOf("Unsaturated"), BlockLayout::Unsaturated);
    EXPECT_EQ(blockLayoutOf("Unsaturated Two Dimensional"), BlockLayout::None);
    EXPECT_EQ(blockLayoutOf("Nonsense"), BlockLayout::None);
    EXPECT_EQ(boundaryMarkerPadding("Two Dimensional"), 20);
    EXPECT_EQ(boundaryMarkerPadding("three dimensional"), 20);
    EXPECT_EQ(boundaryMarkerPadding("One Dimensional"), 30);
    EXPECT_EQ(boundaryMarkerPadding("Unsaturated One Dimensional"), 30);
    EXPECT_EQ(boundaryMarkerPadding(""), 30);
}

TEST(ModelKinds, ScreensDialogsHelpAndProgress) {
    EXPECT_EQ(modelScreenFor("Time Varying", true), ModelScreen::merlaform);
    EXPECT_EQ(modelScreenFor("Unsaturated Two Dimensional", true), ModelScreen::MCUnsatForm);
    EXPECT_EQ(modelScreenFor("", true), ModelScreen::MCInputForm);
    EXPECT_EQ(modelScreenFor("", false), ModelScreen::inputForm);
    EXPECT_STREQ(modelScreenName(ModelScreen::MonteCarloForm), "MonteCarloForm");
    EXPECT_EQ(newModelDialogFor("Unsaturated"), NewModelDialog::unsaturatedNewFile);
    EXPECT_EQ(newModelDialogFor("Time Varying"), NewModelDialog::timeVaryingNewForm);
    EXPECT_EQ(newModelDialogFor("Three Dimensional"), NewModelDialog::NewFile);
    EXPECT_EQ(modelKindInfo("Unsaturated One Dimensional", false)->helpContext, help::Unsaturated);
    EXPECT_EQ(modelKindInfo("Unsaturated", false)->helpContext, help::OneDimensional);  // only the full word has the topic
    EXPECT_EQ(progressOwnerOf(ModelFamily::Saturated, true), ProgressOwner::MultiChemicalForm);
    EXPECT_EQ(progressOwnerOf(ModelFamily::Unsaturated, false), ProgressOwner::UnsaturatedForm);
    EXPECT_EQ(progressOwnerOf(ModelFamily::TimeVarying, false), ProgressOwner::TimeVaryingForm);
}

TEST(ModelKinds, MonteCarloResultsOfAChemical) {
    DataSet d;
    d.modelType = "Two Dimensional";
    IterationResults single = *monteCarloResultsOf(d);
    single.redim(3);
    single.set(2, 0.25);
    EXPECT_EQ(d.mcResult2D.ub(), 3);
    EXPECT_EQ(d.mcResult2D(2), 0.25);
    EXPECT_EQ(single.valueOr0(7), 0.0);

    // Several chemicals: each its row of the (chemical, iteration) table.
    d.multiChemical = true;
    monteCarloResultsOf(d, 1)->redim(4, 3);
    EXPECT_EQ(d.chemMcResult2D.ub(0), 3);
    EXPECT_EQ(d.chemMcResult2D.ub(1), 4);
    monteCarloResultsOf(d, 3)->set(4, 0.5);
    EXPECT_EQ(d.chemMcResult2D(3, 4), 0.5);
    EXPECT_EQ(monteCarloResultsOf(d, 3)->upper(), 4);
    EXPECT_EQ(monteCarloResultsOf(d, 9)->valueOr0(1), 0.0);  // no such chemical

    // The time-varying list keeps single precision.
    d.modelType = "Time Varying";
    IterationResults single32 = *monteCarloResultsOf(d);
    EXPECT_TRUE(single32.singlePrecision());
    single32.redim(1);
    single32.set(1, 0.1);
    EXPECT_EQ(d.mcResultVar(1), 0.1f);
    EXPECT_EQ(single32(1), static_cast<double>(0.1f));

    d.modelType = "Unsaturated Three Dimensional";  // no lists
    EXPECT_FALSE(monteCarloResultsOf(d).has_value());
}

}  // namespace
}  // namespace bm
