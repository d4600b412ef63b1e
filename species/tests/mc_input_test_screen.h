#pragma once
// MCInputForm's model shown on a decay chain, with a scripted interface and a
// recording host.

#include "saturated/tests/input_form_test_models.h"
#include "species/form/mc_input_form_model.h"

namespace bm::testkit {

using ChainScreen = ScreenOf<MCInputFormModel>;

}  // namespace bm::testkit
