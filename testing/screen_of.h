#pragma once
// A screen's form model over a model, shown (load) with a scripted interface
// and a recording host: what every screen's model tests start from.

#include <string>
#include <utility>

#include "model/app_state.h"
#include "model/data_set.h"
#include "testing/recording_screen_host.h"
#include "testing/scripted_user_interface.h"

namespace bm::testkit {

template <class Form>
struct ScreenOf {
    DataSet data;
    AppState state;
    ScriptedUserInterface ui;
    RecordingHost host;
    Form form{data, state, ui};

    explicit ScreenOf(DataSet model) : data(std::move(model)) {
        host.data = &data;
        form.setHost(&host);
        form.load(true);
    }
    // Typing into a row of the screen's control array.
    void type(int row, const std::string& text) { form.rowEdited(row, text); }
};

}  // namespace bm::testkit
