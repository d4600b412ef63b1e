#pragma once
// merlaform's model shown on a complete time-varying model, with a scripted
// user and a recording host.

#include <string>

#include "model/app_state.h"
#include "model/data_set.h"
#include "testing/recording_screen_host.h"
#include "testing/screen_of.h"
#include "testing/scripted_user_interface.h"
#include "timevarying/form/merla_form_model.h"

namespace bm::testkit {

// x 10:30:10, y 1:5:2, t 20:40:20; every constant within its bounds.
inline DataSet merlaModel(const std::string& source = "Point (instantaneous)", const std::string& function = "Asymptotic") {
    DataSet d;
    d.modelType = "Time Varying";
    d.aquiferType = function;
    d.contaminantType = source;
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    d.xRange = "10:30:10";
    d.yRange = "1:5:2";
    d.timeRange = "20:40:20";
    d.velocityX = "0.3";
    d.velocityY = "0.09";
    d.porosity = "0.3";
    d.saturation = "0.01";
    d.retardation = "2";
    d.dispersionRatio = "0.2";
    d.bulkDensity = "5";
    d.sourceDecayRate = "0.001";
    d.distributionCoefficient = "20";
    d.sourceMagnitude = "1000";
    d.mcAtX = "20";
    d.mcAtY = "3";
    d.mcAtT = "30";
    return d;
}

using MerlaScreen = ScreenOf<MerlaFormModel>;

}  // namespace bm::testkit
