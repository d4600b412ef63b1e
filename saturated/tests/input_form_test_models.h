#pragma once
// Complete saturated models of each dimension as a data file would give them,
// and inputForm's model shown on one of them.

#include <string>
#include <vector>

#include "model/app_state.h"
#include "model/data_set.h"
#include "saturated/form/input_form_model.h"
#include "testing/recording_screen_host.h"
#include "testing/screen_of.h"
#include "testing/scripted_user_interface.h"

namespace bm::testkit {

inline void oneTerm(DataSet& d, const std::string& time, const std::string& concentration) {
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1).time = time;
    d.terms(1).concentration = concentration;
}

// x 0:10:1, t 0:5:1, one inflow term (0, 1).
inline DataSet oneDimScreenModel(const std::string& aquifer = "Semi-Infinite", const std::string& contaminant = "Dirichlet") {
    DataSet d;
    d.modelType = "One Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    d.velocity = "0.3";
    d.dispersionX = "0.5";
    d.halfLife = "10";
    d.xRange = "0:10:1";
    d.timeRange = "0:5:1";
    d.mcAtX = "10";
    d.mcAtT = "5";
    d.porosity = "0.3";
    d.retardation = "1";
    oneTerm(d, "0", "1");
    return d;
}

// x 0:100:10, y -50:50:10, t 0:10:1; a finite line source 20 wide at y 0.
inline DataSet twoDimScreenModel(const std::string& aquifer = "Infinite", const std::string& contaminant = "Finite / Line") {
    DataSet d;
    d.modelType = "Two Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    d.xRange = "0:100:10";
    d.yRange = "-50:50:10";
    d.timeRange = "0:10:1";
    d.sourceWidth = "20";
    d.sourceStdDev = "5";
    d.injectionRate = "2";
    d.velocity = "0.3";
    d.dispersionX = "1";
    d.dispersionY = "0.1";
    d.halfLife = "100";
    d.porosity = "0.3";
    d.sourceXc = "0";
    d.sourceYc = "0";
    d.mcAtX = "100";
    d.mcAtY = "50";
    d.mcAtT = "10";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.retardation = "1";
    oneTerm(d, "0", "1");
    return d;
}

// x 0:100:10, y -20:20:10, z 0:10:5, t 0:10:1; a patch 10 wide and 4 high.
inline DataSet threeDimScreenModel(const std::string& aquifer = "Infinite", const std::string& contaminant = "Finite / Patch") {
    DataSet d;
    d.modelType = "Three Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    d.xRange = "0:100:10";
    d.yRange = "-20:20:10";
    d.zRange = "0:10:5";
    d.timeRange = "0:10:1";
    d.sourceWidth = "10";
    d.sourceHeight = "4";
    d.sourceXc = "0";
    d.injectionRate = "3";
    d.sourceYc = "0";
    d.sourceZc = "5";
    d.velocity = "0.3";
    d.dispersionX = "1";
    d.dispersionY = "0.1";
    d.dispersionZ = "0.01";
    d.halfLife = "100";
    d.porosity = "0.3";
    d.mcAtX = "100";
    d.mcAtY = "20";
    d.mcAtZ = "10";
    d.mcAtT = "10";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.retardation = "1";
    oneTerm(d, "0", "1");
    return d;
}

using Screen = ScreenOf<InputFormModel>;

}  // namespace bm::testkit
