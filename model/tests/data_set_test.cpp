#include <gtest/gtest.h>

#include "model/data_set.h"
#include "model/model_kinds.h"

using namespace bm;

TEST(DataSet, ClearKeepsTheModelIdentity) {
    DataSet d;
    d.modelType = "One Dimensional";
    d.aquiferType = "Finite";
    d.contaminantType = "Dirichlet";
    d.calculationMode = "Regular";
    d.currentFileName = "/tmp/a.one";
    d.velocity = "1";
    d.superpositionIndex = 3;
    d.terms.redim(3);
    d.numXTerms = 5;
    d.mcPointChanged[0] = true;
    d.numChemicals = 2;
    clearDataSet(d);
    EXPECT_EQ(d.modelType, "One Dimensional");
    EXPECT_EQ(d.aquiferType, "Finite");
    EXPECT_EQ(d.contaminantType, "Dirichlet");
    EXPECT_EQ(d.calculationMode, "");
    EXPECT_EQ(d.currentFileName, "");
    EXPECT_EQ(d.velocity, "");
    EXPECT_EQ(d.superpositionIndex, 0);
    EXPECT_EQ(d.terms.ub(), 1);
    EXPECT_EQ(d.numXTerms, 0);
    EXPECT_FALSE(d.mcPointChanged[0]);
    EXPECT_EQ(d.numChemicals, 0);
    EXPECT_EQ(d.chemicalName.ub(), 1);
}

TEST(DataSet, CompleteCloseKeepsModelTypeAfterUnsaturatedStart) {
    DataSet d;
    d.modelType = "Unsaturated One Dimensional";
    d.aquiferType = "Semi-Infinite";
    closeModel(d, "Complete");
    EXPECT_EQ(d.modelType, "Unsaturated One Dimensional");
    EXPECT_EQ(d.aquiferType, "");
    d.modelType = "Time Varying";
    closeModel(d, "Complete");
    EXPECT_EQ(d.modelType, "Time Varying");
    d.modelType = "Two Dimensional";
    d.contaminantType = "Gaussian";
    closeModel(d, "Complete");
    EXPECT_EQ(d.modelType, "");
    EXPECT_EQ(d.contaminantType, "");
}

TEST(DataSet, PartialCloseKeepsIdentityAndOtherWordsDoNothing) {
    DataSet d;
    d.modelType = "Two Dimensional";
    d.aquiferType = "Infinite";
    d.velocity = "3";
    closeModel(d, "Nothing");
    EXPECT_EQ(d.velocity, "3");
    closeModel(d, "Partial");
    EXPECT_EQ(d.velocity, "");
    EXPECT_EQ(d.modelType, "Two Dimensional");
    EXPECT_EQ(d.aquiferType, "Infinite");
}

TEST(DataSet, MonteCarloCountersClearTheKindChosenByTheFlagThenTheFlag) {
    DataSet d;
    d.multiChemical = true;
    d.monteStore(ModelKind::MultiTwoDimensional).monteRowCount = 4;
    d.monteStore(ModelKind::TwoDimensional).monteRowCount = 5;
    clearMonteCarloCounters(d, "Two Dimensional");
    EXPECT_EQ(d.monteStore(ModelKind::MultiTwoDimensional).monteRowCount, 0);
    EXPECT_EQ(d.monteStore(ModelKind::TwoDimensional).monteRowCount, 5);
    EXPECT_FALSE(d.multiChemical);
}

TEST(DataSet, StoreCopiesBothWays) {
    DataSet d;
    d.modelType = "One Dimensional";
    d.monteRowCount = 2;
    d.monteIterations = 11;
    d.InputTGData.redim({2, 1});
    d.InputTGData(1, 1).variant = "Aquifer Porosity (n)";
    copyMonteCarloStore(d, false);
    EXPECT_EQ(d.monteStore(ModelKind::OneDimensional).monteIterations, 11);
    d.monteIterations = 0;
    d.InputTGData.clear();
    copyMonteCarloStore(d, true);
    EXPECT_EQ(d.monteIterations, 11);
    EXPECT_EQ(d.InputTGData(1, 1).variant, "Aquifer Porosity (n)");
}

TEST(DataSet, ZeroTermsCountAsOne) {
    DataSet d;
    d.superpositionIndex = 0;
    EXPECT_EQ(settleSuperpositionIndex(d), 1);
    EXPECT_EQ(d.superpositionIndex, 1);
    EXPECT_EQ(d.terms.ub(), 1);
}

TEST(DataSet, ModelKinds) {
    EXPECT_EQ(modelKindOf("Unsaturated", true), ModelKind::MultiUnsaturated);
    EXPECT_EQ(modelKindOf("Time Varying", true), ModelKind::TimeVarying);
    EXPECT_EQ(modelKindOf("Three Dimensional", false), ModelKind::ThreeDimensional);
    EXPECT_FALSE(modelKindOf("", false).has_value());
    EXPECT_TRUE(isUnsaturatedType("unsaturated") == false);
}
