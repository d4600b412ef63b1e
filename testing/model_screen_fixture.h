#pragma once
// The fixture of a model screen's widget tests: the screen over its own
// DataSet, driven by a scripted user interface whose progress reports reach
// the screen's progress display (and any per-point hook of the test), shown
// and active before the test begins.

#include <QApplication>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include "model/app_state.h"
#include "model/data_set.h"
#include "testing/qt_test_support.h"
#include "testing/scripted_user_interface.h"

namespace bm::testkit {

template <class Screen>
class ModelScreenFixture : public ::testing::Test {
protected:
    DataSet data;
    AppState state;
    ScriptedUserInterface ui;
    std::unique_ptr<Screen> form;
    std::function<void(const ScriptedUserInterface::Progress&)> onPoint;

    void open(DataSet model) {
        data = std::move(model);
        form = std::make_unique<Screen>(data, state, ui);
        ui.onProgress = [this](const ScriptedUserInterface::Progress& p) {
            form->showProgress(p.total, p.done);
            if (onPoint) onPoint(p);
            QApplication::processEvents();
        };
        ui.onProcessEvents = [] { QApplication::processEvents(); };
        form->load(true);
        form->show();
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        qtest::settle();
    }
    void TearDown() override {
        if (form) form->hide();
        form.reset();
    }
};

}  // namespace bm::testkit
