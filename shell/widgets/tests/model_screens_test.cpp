#include <gtest/gtest.h>

#include <QLabel>

#include "model/data_set.h"
#include "testing/qt_test_support.h"
#include "shell/file_commands.h"
#include "shell/widgets/model_screens.h"
#include "testing/scripted_user_interface.h"

using namespace bm;

namespace {
struct Prompt : FileCommands {
    bool answer = true;
    bool saveDataFilePrompt(DataSet&) override { return answer; }
    bool openModelFile(DataSet&, const std::string&, int) override { return false; }
};
}  // namespace

TEST(ModelScreens, ARegisteredScreenReplacesTheStandIn) {
    EXPECT_FALSE(hasModelScreen(ModelScreen::unsatForm));
    std::vector<bool> opened;
    registerModelScreen(ModelScreen::unsatForm, [&](QWidget*, bool saveEnabled) { opened.push_back(saveEnabled); });
    EXPECT_TRUE(hasModelScreen(ModelScreen::unsatForm));
    openModelScreen(nullptr, ModelScreen::unsatForm, false);
    EXPECT_EQ(opened, std::vector<bool>{false});
    registerModelScreen(ModelScreen::unsatForm, nullptr);  // no opener: the stand-in again
    qtest::Watchdog dog;
    bool standIn = false;
    qtest::onModal("unsatForm", [&](QWidget* w) {
        standIn = true;
        w->close();
    });
    openModelScreen(nullptr, ModelScreen::unsatForm, true);
    EXPECT_TRUE(standIn);
}

TEST(ModelScreens, TheStandInClosesTheModelUnlessTheUserStays) {
    Prompt prompt;
    setFileCommands(&prompt);
    DataSet& d = theDataSet();
    d.modelType = "Two Dimensional";
    d.aquiferType = "Finite";
    d.contaminantType = "Finite / Line";
    d.currentFileName = "/d/a.two";
    PlaceholderModelScreen screen(ModelScreen::inputForm, true);
    EXPECT_EQ(screen.objectName(), "inputForm");
    const QString text = screen.findChild<QLabel*>("modelKindL")->text();
    EXPECT_TRUE(text.contains("Model: Two Dimensional"));
    EXPECT_TRUE(text.contains("Aquifer: Finite"));
    EXPECT_TRUE(text.contains("File: /d/a.two"));
    screen.show();
    prompt.answer = false;
    screen.reject();
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(d.modelType, "Two Dimensional");
    prompt.answer = true;
    screen.reject();
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(d.modelType, "");
    EXPECT_EQ(d.currentFileName, "");
    setFileCommands(nullptr);
}
