#pragma once
// unsatForm's model shown on a complete unsaturated model, with a scripted
// user and a recording host.

#include <gtest/gtest.h>

#include <string>

#include "model/app_state.h"
#include "model/data_set.h"
#include "testing/recording_screen_host.h"
#include "testing/screen_of.h"
#include "testing/scripted_user_interface.h"
#include "unsaturated/form/unsat_form_model.h"

namespace bm::testkit {

// A decaying source over a 10 m column, depths 0:10:0.5:5, times
// 0:730:73:365; every constant within its bounds (saturation 0.35 below
// porosity 0.6) and the square root's argument positive.
inline DataSet unsatModel(const std::string& source = "Dirichlet/Exp. Decay") {
    DataSet d;
    d.modelType = "Unsaturated One Dimensional";
    d.aquiferType = "Semi-Infinite";
    d.contaminantType = source;
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    d.xRange = "0:10:0.5:5";
    d.timeRange = "0:730:73:365";
    d.mcAtX = "5";
    d.mcAtT = "365";
    d.velocity = "0.001";
    d.dispersionX = "0.01";
    d.halfLife = "365";
    d.bulkDensity = "1.6";
    d.distributionCoefficient = "0.1";
    d.porosity = "0.6";
    d.saturation = "0.35";
    d.sourceDecayRate = "0.0005";
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1) = Term{"0", "1"};
    return d;
}

// The same column under a chain: a parent degrading at 0.002 per day into a
// daughter at 0.001 per day, half of it; the parent's source from time 0.
inline DataSet unsatChainModel() {
    DataSet d = unsatModel();
    d.multiChemical = true;
    d.halfLife.clear();
    d.superpositionIndex = 0;
    d.terms.redim(0);
    d.numChemicals = 2;
    for (List<std::string>* list : {&d.chemicalName, &d.decayRate, &d.yieldFactor, &d.suppositionTime,
                                    &d.suppositionConcentration, &d.resultsInPoint})
        list->redim(2);
    d.chemicalName(1) = "Parent";
    d.chemicalName(2) = "Daughter";
    d.decayRate(1) = "0.002";
    d.decayRate(2) = "0.001";
    d.yieldFactor(1) = "0";
    d.yieldFactor(2) = "0.5";
    d.suppositionTime(1) = "0";
    d.suppositionTime(2) = "0";
    d.suppositionConcentration(1) = "1";
    d.suppositionConcentration(2) = "0";
    return d;
}

template <class Form = UnsatFormModel>
using UnsatScreen = ScreenOf<Form>;

// Calculate!'s checks on a screen: false, and one box with these words.
template <class Screen>
void expectRefused(Screen& s, const std::string& title, const std::string& text) {
    s.ui.messages.clear();
    EXPECT_FALSE(s.form.validate());
    ASSERT_EQ(s.ui.messages.size(), 1u) << text;
    EXPECT_EQ(s.ui.messages[0].title, title);
    EXPECT_EQ(s.ui.messages[0].text, text);
}

// Calculate!'s checks pass without a word.
template <class Screen>
void expectAccepted(Screen& s) {
    s.ui.messages.clear();
    EXPECT_TRUE(s.form.validate()) << (s.ui.messages.empty() ? "" : s.ui.messages[0].text);
    EXPECT_TRUE(s.ui.messages.empty());
}

}  // namespace bm::testkit
