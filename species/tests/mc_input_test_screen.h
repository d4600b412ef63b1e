#pragma once
// MCInputForm's model shown on a decay chain, with a scripted interface and a
// recording host.

#include <utility>

#include "model/app_state.h"
#include "model/data_set.h"
#include "species/form/mc_input_form_model.h"
#include "testing/recording_screen_host.h"
#include "testing/scripted_user_interface.h"

namespace bm::testkit {

struct ChainScreen {
    DataSet data;
    AppState state;
    ScriptedUserInterface ui;
    RecordingHost host;
    MCInputFormModel form{data, state, ui};

    explicit ChainScreen(DataSet model) : data(std::move(model)) {
        host.data = &data;
        form.setHost(&host);
        form.load(true);
    }
};

}  // namespace bm::testkit
