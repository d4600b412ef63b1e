#include <gtest/gtest.h>

#include "model/data_set.h"
#include "shell/new_model_forms.h"

using namespace bm;
using Captions = std::vector<std::string>;

TEST(NewFileForm, CaptionsFollowTheDimension) {
    NewFileForm f;
    DataSet d;
    f.load(d);
    EXPECT_EQ(f.modelType.selected, 0);
    EXPECT_EQ(f.aquiferType.captions, (Captions{"Finite", "Semi-Infinite"}));
    EXPECT_EQ(f.contaminant.captions, (Captions{"Dirichlet", "Cauchy"}));
    f.selectModelType(1);
    EXPECT_EQ(f.aquiferType.captions, (Captions{"Finite", "Infinite"}));
    EXPECT_EQ(f.contaminant.captions, (Captions{"Continuous / Point", "Finite / Line", "Gaussian"}));
    f.selectModelType(2);
    EXPECT_EQ(f.aquiferType.captions, (Captions{"Finite", "Infinite"}));
    EXPECT_EQ(f.contaminant.captions, (Captions{"Continuous / Point", "Finite / Patch"}));
}

TEST(NewFileForm, OkReadsTheWordsOfTheDimensionInForce) {
    NewFileForm f;
    DataSet d;
    d.dataState = 2;
    d.monteCarloValueInUse = true;
    d.numChemicalsSelected = 3;
    f.load(d);
    f.aquiferType.selected = 1;  // "Semi-Infinite" in one dimension
    f.contaminant.selected = 1;  // "Cauchy"
    f.selectModelType(1);        // the same buttons now read "Infinite" and "Finite / Line"
    f.chemicals.selected = 1;
    f.ok(d);
    EXPECT_EQ(d.modelType, "Two Dimensional");
    EXPECT_EQ(d.aquiferType, "Infinite");
    EXPECT_EQ(d.contaminantType, "Finite / Line");
    EXPECT_TRUE(d.multiChemical);
    EXPECT_TRUE(d.newModelConfirmed);
    EXPECT_TRUE(d.needsDisplayRefresh);
    EXPECT_EQ(d.dataState, 0);
    EXPECT_FALSE(d.monteCarloValueInUse);
    EXPECT_EQ(d.numChemicalsSelected, 0);
}

TEST(NewFileForm, AThirdOptionNotOfferedGivesWayToTheFirst) {
    NewFileForm f;
    f.selectModelType(1);
    f.contaminant.selected = 2;  // "Gaussian"
    f.selectModelType(2);
    DataSet d;
    f.ok(d);
    EXPECT_EQ(d.modelType, "Three Dimensional");
    EXPECT_EQ(d.contaminantType, "Continuous / Point");
    EXPECT_FALSE(d.multiChemical);
}

TEST(NewFileForm, LoadShowsThePresentModel) {
    DataSet d;
    d.modelType = "Three Dimensional";
    d.aquiferType = "Infinite";
    d.contaminantType = "Finite / Patch";
    d.multiChemical = true;
    NewFileForm f;
    f.load(d);
    EXPECT_EQ(f.modelType.selectedCaption(), "Three Dimensional");
    EXPECT_EQ(f.aquiferType.selectedCaption(), "Infinite");
    EXPECT_EQ(f.contaminant.selectedCaption(), "Finite / Patch");
    EXPECT_EQ(f.chemicals.selectedCaption(), "Multiple Chemicals");
}

TEST(UnsaturatedNewFileForm, OkWritesTheUnsaturatedWord) {
    UnsaturatedNewFileForm f;
    DataSet d;
    d.modelType = "Unsaturated One Dimensional";
    f.load(d);
    EXPECT_EQ(f.aquiferType.captions, (Captions{"Semi-Infinite", "Infinite"}));
    EXPECT_EQ(f.contaminant.captions, (Captions{"Dirichlet/Exp. Decay", "Dirichlet"}));
    f.contaminant.selected = 1;
    f.chemicals.selected = 1;
    f.ok(d);
    EXPECT_EQ(d.modelType, "Unsaturated One Dimensional");
    EXPECT_EQ(d.aquiferType, "Semi-Infinite");
    EXPECT_EQ(d.contaminantType, "Dirichlet");
    EXPECT_TRUE(d.multiChemical);
    EXPECT_TRUE(d.newModelConfirmed);
}

TEST(TimeVaryingNewForm, OkBuildsTheSourceWords) {
    TimeVaryingNewForm f;
    DataSet d;
    d.modelType = "Time Varying";
    d.multiChemical = true;
    f.load(d);
    f.ok(d);
    EXPECT_EQ(d.contaminantType, "Point (instantaneous)");
    EXPECT_EQ(d.aquiferType, "Constant");
    EXPECT_FALSE(d.multiChemical);
    f.contaminantSource.selected = 1;
    f.sourceType.selected = 2;
    f.dispersionFunction.selected = 3;
    f.ok(d);
    EXPECT_EQ(d.contaminantType, "Line (with initial distribution)");
    EXPECT_EQ(d.aquiferType, "Exponential");
    EXPECT_EQ(d.modelType, "Time Varying");
}

TEST(TimeVaryingNewForm, ASecondVisitShowsTheEarlierChoice) {
    DataSet d;
    d.contaminantType = "Line (continuous)";
    d.aquiferType = "Asymptotic";
    TimeVaryingNewForm f;
    f.load(d);
    EXPECT_EQ(f.contaminantSource.selectedCaption(), "Line");
    EXPECT_EQ(f.sourceType.selectedCaption(), "Continuous");
    EXPECT_EQ(f.dispersionFunction.selectedCaption(), "Asymptotic");
    d.contaminantType = "Point (with initial distribution)";
    d.aquiferType = "linear";
    f.load(d);
    EXPECT_EQ(f.contaminantSource.selectedCaption(), "Point");
    EXPECT_EQ(f.sourceType.selectedCaption(), "With Initial Distribution");
    EXPECT_EQ(f.dispersionFunction.selectedCaption(), "Linear");
}
