// The saturated model screen as a form model: display and hold, source
// captions and disabled rows, the edit checks, the read-only lock, the note
// pad, the status line, the menus and the unit commands.

#include <gtest/gtest.h>

#include "input_form_test_models.h"
#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "saturated/form/input_form_model.h"
#include "saturated/source_captions.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::Screen;

std::vector<std::string> unitCaptions(const InputFormModel& f) {
    std::vector<std::string> out;
    for (const FormRow& r : f.rows(f.dimension())) out.push_back(r.unitCaption);
    return out;
}

std::vector<std::string> texts(const InputFormModel& f) {
    std::vector<std::string> out;
    for (const FormRow& r : f.rows(f.dimension())) out.push_back(r.text);
    return out;
}

// ================================================================ display

TEST(InputFormDisplay, OneDimensionalRowsCaptionsUnitsAndGrid) {
    DataSet d = testkit::oneDimScreenModel("Finite", "Cauchy");
    d.currentFileName = "/data/plume.one";
    d.title = "Plume";
    d.author = "A. Hydro";
    d.comments = "Test site";
    d.needsDisplayRefresh = true;
    Screen s(d);
    EXPECT_EQ(s.form.dimension(), 1);
    EXPECT_FALSE(s.data.needsDisplayRefresh);
    EXPECT_EQ(s.form.windowTitle(), "Ground Water Model (Saturated) -- FileName: /data/plume.one");
    EXPECT_EQ(s.form.modelCaption, "Model: One Dimensional");
    EXPECT_EQ(s.form.aquiferCaption, "Aquifer: Finite");
    EXPECT_EQ(s.form.contaminantCaption, "Contaminant: Cauchy");
    EXPECT_EQ(s.form.titleText, "Plume");
    EXPECT_EQ(s.form.authorText, "A. Hydro");
    EXPECT_EQ(s.form.commentsText, "Test site");
    const std::vector<std::string> expectedTexts = {"0.3", "0.5", "10", "0:10:1", "0:5:1", "1", "10", "5", "0.3", "", "1"};
    EXPECT_EQ(texts(s.form), expectedTexts);
    EXPECT_EQ(s.form.row(0).caption, " Ground Water Darcy Velocity (V)");
    EXPECT_EQ(s.form.row(1).caption, " Longitudinal Dispersion Coefficient (D)");
    EXPECT_EQ(s.form.row(2).caption, " Contaminant Half-Life");
    EXPECT_EQ(s.form.row(8).caption, " Aquifer Porosity (n)");
    EXPECT_EQ(s.form.row(10).caption, " Retardation Coefficient (R)");
    const std::vector<std::string> units = {"(m/day)", "(m\u00b2/day)", "(day)", "(m)", "(day)", "", "(m)", "(day)", "", "", ""};
    EXPECT_EQ(unitCaptions(s.form), units);
    EXPECT_FALSE(s.form.row(9).enabled);  // the concentration caption has no entry
    EXPECT_FALSE(s.form.row(6).enabled);  // no variable varies: the point rows are off
    EXPECT_EQ(s.form.grid().name, "Input1TG");
    EXPECT_EQ(s.form.grid().timeHeading, "Time (day)");
    EXPECT_EQ(s.form.grid().concentrationHeading, "Contaminant Conc. at Inflow Boundary (mg/l)");
    ASSERT_EQ(s.form.grid().cells.size(), 1u);
    EXPECT_EQ(s.form.grid().cells[0], (Term{"0", "1"}));
    EXPECT_EQ(s.form.row(0).tab, kFieldTab);
    EXPECT_EQ(s.form.row(3).tab, kCoordinatesTab);
    EXPECT_EQ(s.form.row(5).tab, kBoundaryTab);
}

TEST(InputFormDisplay, EmptyUnitsStartInMetresDaysAndMgPerLitre) {
    DataSet d = testkit::oneDimScreenModel();
    d.lengthUnit.clear();
    d.timeUnit.clear();
    d.concentrationUnit.clear();
    Screen s(d);
    EXPECT_EQ(s.form.lengthUnit, "m");
    EXPECT_EQ(s.form.timeUnit, "day");
    EXPECT_EQ(s.form.concentrationUnit, "mg/l");
}

TEST(InputFormDisplay, TwoDimensionalSourceCaptionsByCase) {
    struct Case {
        std::string aquifer, contaminant, caption, value, unit;
        bool xcEnabled;
        std::string heading;
    };
    const std::vector<Case> cases = {
        {"Finite", "Finite / Line", kWidthCaption, "20", "(m)", false, "Contaminant Conc. at Inflow Boundary (mg/l)"},
        {"Finite", "Gaussian", kWidthCaption, "20", "(m)", false, "Contaminant Conc. at Inflow Boundary (mg/l)"},
        {"Finite", "Continuous / Point", kWidthCaption, "20", "(m)", false,
         "Contaminant Conc. at Inflow Boundary (mg/l)"},
        {"Infinite", "Finite / Line", kWidthCaption, "20", "(m)", false, "Contaminant Conc. at Inflow Boundary (mg/l)"},
        {"Infinite", "Finite Line", kWidthCaption, "20", "(m)", false, "Contaminant Conc. at Inflow Boundary (mg/l)"},
        {"Infinite", "Gaussian", kStdDevCaption, "5", "(m)", false, "Contaminant Conc. at Inflow Boundary (mg/l)"},
        {"Infinite", "Continuous / Point", kInjectionPerThicknessCaption, "2", "(m\u00b2/day)", true,
         "Contaminant Conc. in the Injection Field (mg/l)"},
        {"Infinite", "Continuous Point", kInjectionPerThicknessCaption, "2", "(m\u00b2/day)", true,
         "Contaminant Conc. in the Injection Field (mg/l)"},
    };
    for (const Case& c : cases) {
        Screen s(testkit::twoDimScreenModel(c.aquifer, c.contaminant));
        SCOPED_TRACE(c.aquifer + " / " + c.contaminant);
        EXPECT_EQ(s.form.row(2).caption, c.caption);
        EXPECT_EQ(s.form.row(2).text, c.value);
        EXPECT_EQ(s.form.row(2).unitCaption, c.unit);
        EXPECT_EQ(s.form.row(10).enabled, c.xcEnabled);
        EXPECT_TRUE(s.form.row(11).enabled);
        EXPECT_EQ(s.form.grid().concentrationHeading, c.heading);
        EXPECT_EQ(s.form.grid().name, "Input2TG");
        EXPECT_TRUE(s.ui.messages.empty());
    }
}

TEST(InputFormDisplay, ThreeDimensionalSourceCaptionsByCase) {
    Screen patch(testkit::threeDimScreenModel("Infinite", "Finite / Patch"));
    EXPECT_EQ(patch.form.row(4).caption, kWidthCaption);
    EXPECT_EQ(patch.form.row(7).caption, kHeightCaption);
    EXPECT_EQ(patch.form.row(4).text, "10");
    EXPECT_EQ(patch.form.row(7).text, "4");
    EXPECT_EQ(patch.form.row(7).unitCaption, "(m)");
    Screen point(testkit::threeDimScreenModel("Infinite", "Continuous / Point"));
    EXPECT_EQ(point.form.row(4).caption, " Center of Contaminant Source in X Direction (Xc)");
    EXPECT_EQ(point.form.row(7).caption, " Contaminant Injection Rate (Q)");
    EXPECT_EQ(point.form.row(4).text, "0");
    EXPECT_EQ(point.form.row(7).text, "3");
    EXPECT_EQ(point.form.row(7).unitCaption, "(m\u00b3/day)");
    EXPECT_EQ(point.form.grid().concentrationHeading, "Contaminant Conc. in the Injection Field (mg/l)");
    Screen finitePoint(testkit::threeDimScreenModel("Finite", "Continuous / Point"));
    EXPECT_EQ(finitePoint.form.grid().concentrationHeading, "Contaminant Conc. at Inflow Boundary (mg/l)");
}

TEST(InputFormDisplay, UnknownCombinationShowsTheSetDisplayError) {
    for (DataSet d : {testkit::twoDimScreenModel("Infinite", "Plume"), testkit::threeDimScreenModel("Infinite", "Gaussian"),
                      testkit::oneDimScreenModel()}) {
        if (d.modelType == "One Dimensional") d.modelType = "Time Varying";
        Screen s(d);
        ASSERT_EQ(s.ui.messages.size(), 1u);
        EXPECT_EQ(s.ui.messages[0].text, "Error in setDisplay()");
    }
}

TEST(InputFormDisplay, SuperpositionZeroShowsOneTerm) {
    DataSet d = testkit::oneDimScreenModel();
    d.superpositionIndex = 0;
    Screen s(d);
    EXPECT_EQ(s.form.row(5).text, "1");
    EXPECT_EQ(s.data.superpositionIndex, 1);
    EXPECT_EQ(s.form.grid().cells.size(), 1u);
}

TEST(InputFormDisplay, ResultLabelFromTheCalculationMode) {
    DataSet d = testkit::oneDimScreenModel();
    d.calculationMode = "0.123456789";
    Screen s(d);
    EXPECT_EQ(s.form.resultLabel, "0.12346");  // "0.#####" below 1
    EXPECT_EQ(s.form.resultCaption, "Computed at");
    d.calculationMode = "Monte Carlo";
    Screen m(d);
    EXPECT_EQ(m.form.resultLabel, "Monte Carlo");
    EXPECT_EQ(m.form.resultCaption, "Monte Carlo Computed at");
    EXPECT_EQ(InputFormModel::resultLabelName(2), std::string("LabelResult2D"));
}

// ================================================================ hold

TEST(InputFormHold, RowsGoBackToTheirFields) {
    Screen s(testkit::threeDimScreenModel("Infinite", "Continuous / Point"));
    s.form.row(4).text = "7";   // Xc
    s.form.row(7).text = "9";   // injection rate
    s.form.row(12).text = "0.02";
    s.form.grid().cells = {{"0", "3"}};
    s.form.titleText = "New title";
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.sourceXc, "7");
    EXPECT_EQ(s.data.injectionRate, "9");
    EXPECT_EQ(s.data.sourceWidth, "10");  // untouched
    EXPECT_EQ(s.data.dispersionZ, "0.02");
    EXPECT_EQ(s.data.terms(1).concentration, "3");
    EXPECT_EQ(s.data.title, "New title");
    EXPECT_EQ(s.data.modelType, "Three Dimensional");
    EXPECT_EQ(s.data.aquiferType, "Infinite");
    EXPECT_EQ(s.data.contaminantType, "Continuous / Point");
    EXPECT_EQ(s.data.numXTerms, 11);
    EXPECT_EQ(s.data.numYTerms, 5);
    EXPECT_EQ(s.data.numZTerms, 3);
    EXPECT_EQ(s.data.numTTerms, 11);
    EXPECT_EQ(s.data.zConstant, 10);
    EXPECT_EQ(s.data.currentConcentration, 0);
}

TEST(InputFormHold, PatchRowsHoldWidthAndHeight) {
    Screen s(testkit::threeDimScreenModel("Infinite", "Finite / Patch"));
    s.form.row(4).text = "12";
    s.form.row(7).text = "6";
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.sourceWidth, "12");
    EXPECT_EQ(s.data.sourceHeight, "6");
    EXPECT_EQ(s.data.sourceXc, "0");
}

TEST(InputFormHold, TwoDimensionalSourceRowIsWhatItsCaptionSays) {
    Screen s(testkit::twoDimScreenModel("Infinite", "Gaussian"));
    s.form.row(2).text = "7";
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.sourceStdDev, "7");
    // a caption with neither "WIDTH" nor "STAND" makes it an injection rate
    s.form.row(2).caption = " Source Strength (Q)";
    s.form.row(2).text = "8";
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.injectionRate, "8");
    EXPECT_EQ(s.data.sourceStdDev, "7");
    s.form.row(2).caption = " width of it";
    s.form.row(2).text = "9";
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.sourceWidth, "9");
}

TEST(InputFormHold, SuperpositionBelowOneIsOneTerm) {
    Screen s(testkit::oneDimScreenModel());
    s.form.row(5).text = "0";
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.superpositionIndex, 1);
    EXPECT_EQ(s.data.terms.ub(), 1);
}

TEST(InputFormHold, RangeOverflowIsReported) {
    Screen s(testkit::oneDimScreenModel());
    s.form.row(3).text = "0:1:0.00001";
    EXPECT_FALSE(s.form.holdDataSet());
    ASSERT_EQ(s.ui.messages.size(), 2u);
    EXPECT_EQ(s.ui.messages[0].title, "Overflow");
    EXPECT_EQ(s.ui.messages[1].title, "brenmoor");
    EXPECT_EQ(s.ui.messages[1].text, "Error in holddataset()");
}

// ================================================================ edit checks

TEST(InputFormEdit, RangeRowInBadFormatKeepsTheFocus) {
    Screen s(testkit::twoDimScreenModel());
    s.form.rowEdited(1, "0:20");
    EXPECT_FALSE(s.form.rowLeft(1));
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Input Error");
    EXPECT_EQ(s.ui.messages[0].text,
              "The input data give for  Y Coordinate Range (y) = 0:20 is not in the proper format.\r\rPlease use the "
              "following two formats: \r    Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant.");
    ASSERT_FALSE(s.host.focus.empty());
    EXPECT_EQ(s.host.focus.back().row, 1);
    EXPECT_EQ(s.host.focus.back().tab, kCoordinatesTab);
}

TEST(InputFormEdit, RangeChangeRewritesThePointRows) {
    Screen s(testkit::twoDimScreenModel());
    s.form.rowEdited(0, "0:50:5:25");
    EXPECT_TRUE(s.form.rowLeft(0));
    EXPECT_EQ(s.form.row(13).text, "25");
    EXPECT_EQ(s.form.row(12).text, "50");
    EXPECT_EQ(s.form.row(14).text, "10");
    // a scalar is a valid range while editing
    s.form.rowEdited(0, "30");
    EXPECT_TRUE(s.form.rowLeft(0));
    EXPECT_EQ(s.form.row(13).text, "30");
}

TEST(InputFormEdit, SuperpositionIndexMustBeAtLeastOne) {
    Screen s(testkit::oneDimScreenModel());
    for (const std::string bad : {"abc", "0", "-2"}) {
        s.ui.messages.clear();
        s.form.rowEdited(5, bad);
        EXPECT_FALSE(s.form.rowLeft(5));
        ASSERT_EQ(s.ui.messages.size(), 1u);
        EXPECT_EQ(s.ui.messages[0].title, "Improper input value");
        EXPECT_EQ(s.ui.messages[0].text, "'" + bad +
                                             "' is not a valid input value.\r\rThe value of Superposition Index must "
                                             "be greater than or equal to 1.");
        EXPECT_EQ(s.host.focus.back().row, 5);
        EXPECT_EQ(s.form.grid().cells.size(), 1u);
    }
}

TEST(InputFormEdit, LoweringTheIndexKeepsEarlierTermsRaisingLeavesEmptyRows) {
    Screen s(testkit::oneDimScreenModel());
    s.form.rowEdited(5, "3");
    ASSERT_TRUE(s.form.rowLeft(5));
    ASSERT_EQ(s.form.grid().cells.size(), 3u);
    EXPECT_EQ(s.form.grid().cells[0], (Term{"0", "1"}));
    s.form.gridEdited(1, 0, "2");
    s.form.gridEdited(1, 1, "0.5");
    s.form.gridEdited(2, 0, "4");
    s.form.gridEdited(2, 1, "0.1");
    s.form.rowEdited(5, "2");
    ASSERT_TRUE(s.form.rowLeft(5));
    ASSERT_EQ(s.form.grid().cells.size(), 2u);
    EXPECT_EQ(s.form.grid().cells[1], (Term{"2", "0.5"}));
    s.form.rowEdited(5, "4");
    ASSERT_TRUE(s.form.rowLeft(5));
    ASSERT_EQ(s.form.grid().cells.size(), 4u);
    EXPECT_EQ(s.form.grid().cells[1], (Term{"2", "0.5"}));
    EXPECT_EQ(s.form.grid().cells[2], (Term{}));  // the third term went with the lowering
    EXPECT_EQ(s.data.superpositionIndex, 4);
    // the empty rows are refused by validation
    s.ui.messages.clear();
    EXPECT_FALSE(s.form.calculate());
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].text,
              "Not all values have been given for Time (day).\r\rPlease give a proper value in row number 3.");
}

TEST(InputFormEdit, HugeSuperpositionIndexIsAnOverflowAndTheScreenGoesOn) {
    Screen s(testkit::oneDimScreenModel());
    s.form.rowEdited(5, "40000");
    EXPECT_FALSE(s.form.rowLeft(5));
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Overflow");
    EXPECT_EQ(s.form.grid().cells.size(), 1u);
    s.form.rowEdited(5, "2");
    EXPECT_TRUE(s.form.rowLeft(5));
    EXPECT_EQ(s.form.grid().cells.size(), 2u);
}

TEST(InputFormEdit, AChangeMarksTheFileAndTheDimensionStale) {
    Screen s(testkit::twoDimScreenModel());
    s.data.dataState = kNeedsSaving;
    s.form.rowEdited(4, "0.3");  // the same text: no change
    EXPECT_EQ(s.data.dataState, kNeedsSaving);
    EXPECT_FALSE(s.data.mcPointChanged[static_cast<int>(ModelKind::TwoDimensional)]);
    s.form.rowEdited(4, "0.4");
    EXPECT_EQ(s.data.dataState, kParametersChanged);
    EXPECT_TRUE(s.data.mcPointChanged[static_cast<int>(ModelKind::TwoDimensional)]);
    EXPECT_EQ(s.data.velocity, "0.3");  // the DataSet takes it at holdDataSet
    s.data.dataState = kDataUnchanged;
    s.form.gridEdited(0, 1, "2");
    EXPECT_EQ(s.data.dataState, kParametersChanged);
}

TEST(InputFormEdit, RangeRowHintOnFocus) {
    Screen s(testkit::oneDimScreenModel());
    s.form.rowEntered(3);
    EXPECT_EQ(s.form.helpPanel,
              " You can input data by 2 formats: Minimum:Maximum:Interval:Constant, Minimum:Maximum:Interval.");
    s.form.rowEntered(5);
    EXPECT_EQ(s.form.helpPanel,
              " Choosing superposition index > 1 allows superposing new concentration at given instances.");
}

// ================================================================ read-only lock

TEST(InputFormReadOnly, MarkedRowRefusesTypingClicksOnCaptionAndUnit) {
    DataSet d = testkit::oneDimScreenModel();
    d.velocity = formFieldMarker("0.3", 1);
    Screen s(d);
    EXPECT_TRUE(s.form.rowLocked(0));
    EXPECT_EQ(s.form.monteCarloCaption, "Monte Carlo");
    EXPECT_TRUE(s.form.row(6).enabled);  // the point rows come on with the panel
    const std::string text =
        "Monte Carlo selected values for  Ground Water Darcy Velocity (V) are read only.\r\rTo unselect a monte carlo "
        "option please use Generate from the Monte Carlo menu.";
    EXPECT_FALSE(s.form.rowKeyPress(0));
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Read Only");
    EXPECT_EQ(s.ui.messages[0].text, text);
    EXPECT_TRUE(s.host.focus.back().next);  // typing moves on
    EXPECT_FALSE(s.form.rowClicked(0));     // the entry, its caption or its unit
    EXPECT_EQ(s.ui.messages.size(), 2u);
    EXPECT_EQ(s.ui.messages[1].text, text);
    EXPECT_TRUE(s.form.rowKeyPress(1));     // others take keys
    EXPECT_TRUE(s.form.rowClicked(1));
    EXPECT_EQ(s.ui.messages.size(), 2u);
}

TEST(InputFormReadOnly, MarkedGridCellRefusesTheEditAndHasTheStyle) {
    DataSet d = testkit::twoDimScreenModel();
    d.terms(1).concentration = boundaryCellMarker("1", 4, kNarrowCellMarkerPadding);
    Screen s(d);
    EXPECT_FALSE(s.form.gridBeforeEdit(0, 1));
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Read Only");
    EXPECT_EQ(s.ui.messages[0].text,
              "Monte Carlo selected values for Contaminant Conc. at Inflow Boundary are read only.\r\rTo unselect a "
              "monte carlo option please use Generate from the Monte Carlo menu.");
    EXPECT_TRUE(s.form.gridBeforeEdit(0, 0));
    EXPECT_EQ(s.form.cellStyle(0, 1), "MonteCarloStyle2");
    EXPECT_EQ(s.form.cellStyle(0, 0), "");
    s.form.gridEdited(0, 1, "5");  // an edit cannot reach the marker
    EXPECT_TRUE(holdsMonteMarker(s.form.grid().cells[0].concentration));
}

// ================================================================ units on the screen

TEST(InputFormUnits, MetresToFeetRelabelsEveryLabelAndNoValue) {
    Screen s(testkit::twoDimScreenModel());
    const std::vector<std::string> before = texts(s.form);
    const std::vector<Term> cells = s.form.grid().cells;
    s.data.dataState = kDataUnchanged;
    s.form.menuUnitsClick(UnitMenu::Length, 10);
    EXPECT_EQ(s.form.lengthUnit, "ft");
    for (const std::string& label : unitCaptions(s.form)) EXPECT_EQ(label.find("(m"), std::string::npos) << label;
    EXPECT_EQ(s.form.row(0).unitCaption, "(ft)");
    EXPECT_EQ(s.form.row(4).unitCaption, "(ft/day)");
    EXPECT_EQ(s.form.row(5).unitCaption, "(ft\u00b2/day)");
    EXPECT_EQ(texts(s.form), before);
    EXPECT_EQ(s.form.grid().cells, cells);
    EXPECT_EQ(s.data.dataState, kNeedsSaving);
    s.form.menuUnitsClick(UnitMenu::Time, 40);
    EXPECT_EQ(s.form.row(4).unitCaption, "(ft/sec)");
    EXPECT_EQ(s.form.grid().timeHeading, "Time (sec)");
    s.form.menuUnitsClick(UnitMenu::Concentration, 30);
    EXPECT_EQ(s.form.grid().concentrationHeading, "Contaminant Conc. at Inflow Boundary (ppm)");
    // check marks follow the words
    const auto length = s.form.unitMenu(UnitMenu::Length);
    EXPECT_TRUE(length[0].checked);
    EXPECT_FALSE(length[2].checked);
    EXPECT_TRUE(length[2].separatorBefore);
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.lengthUnit, "ft");
    EXPECT_EQ(s.data.timeUnit, "sec");
    EXPECT_EQ(s.data.concentrationUnit, "ppm");
    EXPECT_EQ(s.data.velocity, "0.3");
}

TEST(InputFormUnits, SameUnitLeavesDataState) {
    Screen s(testkit::oneDimScreenModel());
    s.data.dataState = kDataUnchanged;
    s.form.menuUnitsClick(UnitMenu::Length, 30);
    EXPECT_EQ(s.data.dataState, kDataUnchanged);
}

// ================================================================ notes

TEST(InputFormNotes, OkTakesTheTypedTextCancelAndEmptyKeepTheEntry) {
    Screen s(testkit::oneDimScreenModel());
    s.form.authorText = "Old";
    s.data.dataState = kDataUnchanged;
    s.host.notesOk = true;
    s.host.notesTyped = "New author";
    s.form.noteLabelClicked(NoteField::Author);
    EXPECT_EQ(s.host.notesCaptions.back(), "AUTHOR");
    EXPECT_EQ(s.form.authorText, "New author");
    EXPECT_EQ(s.data.dataState, kNeedsSaving);

    s.host.notesOk = false;  // Cancel
    s.form.noteLabelClicked(NoteField::Author);
    EXPECT_EQ(s.form.authorText, "New author");

    s.host.notesOk = true;  // OK on a cell emptied by the user
    s.host.notesTyped = "";
    s.form.noteLabelClicked(NoteField::Comments);
    EXPECT_EQ(s.host.notesCaptions.back(), "COMMENTS");
    EXPECT_EQ(s.form.commentsText, "");
    s.form.commentsText = "Kept";
    s.form.noteLabelClicked(NoteField::Comments);
    EXPECT_EQ(s.form.commentsText, "Kept");
}

TEST(InputFormNotes, PadStoresOnlyADifferentText) {
    AppState state;
    state.notesField = "TITLE";
    state.notesText = "Same";
    NotesPad pad(state);
    EXPECT_EQ(pad.caption(), "TITLE");
    EXPECT_EQ(pad.text, "Same");
    pad.ok();
    EXPECT_FALSE(pad.changed);
    EXPECT_EQ(state.notesText, "Same");
    EXPECT_TRUE(pad.text.empty());
    NotesPad second(state);
    second.text = "Other";
    second.ok();
    EXPECT_TRUE(second.changed);
    EXPECT_EQ(state.notesText, "Other");
    NotesPad third(state);
    third.cancel();
    EXPECT_EQ(state.notesText, "");
}

TEST(InputFormNotes, NoteEditRaisesDataStateOnlyFromZero) {
    Screen s(testkit::oneDimScreenModel());
    s.data.dataState = kParametersChanged;
    s.form.noteEdited(NoteField::Title, "T");
    EXPECT_EQ(s.data.dataState, kParametersChanged);
}

// ================================================================ status line

TEST(InputFormHints, EveryPlace) {
    Screen s(testkit::oneDimScreenModel());
    const std::vector<std::pair<HintPlace, std::string>> hints = {
        {HintPlace::mainElastic, " Please press Calculate before viewing the Results."},
        {HintPlace::TabElastic, " Please press Calculate before viewing the Results."},
        {HintPlace::AquiferE, " Type of the Aquifer."},
        {HintPlace::ContaminantE, " Contaminant Source type."},
        {HintPlace::ModelE, " This can be changed by selecting New from the File Menu."},
        {HintPlace::authorE, " Click to see the author details."},
        {HintPlace::CommentsE, " Click to see complete comment."},
        {HintPlace::Grid, " Choosing superposition index > 1 allows superposing new concentration at given instances."},
        {HintPlace::MonteCarloElastic,
         " No variable is using values from the Monte Carlo simulation. Click to run Monte Carlo simulation."},
    };
    for (const auto& [place, text] : hints) {
        s.form.hover(place);
        EXPECT_EQ(s.form.helpPanel, text);
    }
    s.data.calculationMode = "Monte Carlo";
    s.form.hover(HintPlace::MonteCarloElastic);
    EXPECT_EQ(s.form.helpPanel, " Atleast one of the variables is using values from the Monte Carlo simulation.");
    s.data.calculationMode = "Regular";
    s.form.row(2).text = formFieldMarker("10", 2);
    s.form.hover(HintPlace::MonteCarloElastic);
    EXPECT_EQ(s.form.helpPanel, " Atleast one of the variables is using values from the Monte Carlo simulation.");
}

// ================================================================ menus

TEST(InputFormMenus, IndicesCaptionsAndStates) {
    Screen s(testkit::oneDimScreenModel());
    std::vector<int> tops;
    for (const MenuItem& m : s.form.topMenus()) tops.push_back(m.index);
    EXPECT_EQ(tops, (std::vector<int>{10, 20, 30, 35, 40, 50}));
    std::vector<int> file;
    for (const MenuItem& m : s.form.fileMenu()) file.push_back(m.index);
    EXPECT_EQ(file, (std::vector<int>{10, 20, 30, 40, 45, 50, 60, 70}));
    EXPECT_EQ(s.form.resultsMenu()[0].index, 10);
    EXPECT_EQ(s.form.resultsMenu()[1].index, 20);
    EXPECT_EQ(s.form.monteCarloMenu()[0].caption, "&Generate...");
    EXPECT_TRUE(s.form.fileMenu()[2].enabled);  // opened with Save enabled

    Screen fresh(testkit::oneDimScreenModel());
    fresh.form.load(false);  // after New there is nothing to save
    EXPECT_FALSE(fresh.form.fileMenu()[2].enabled);
    EXPECT_FALSE(fresh.form.fileMenu()[3].enabled);
    fresh.form.rowEdited(0, "1");
    EXPECT_TRUE(fresh.form.fileMenu()[2].enabled);

    s.data.dataState = kParametersChanged;
    s.form.updateResultsMenuState();
    EXPECT_FALSE(s.form.topMenus()[2].enabled);
    s.data.dataState = kNeedsSaving;
    s.form.updateResultsMenuState();
    EXPECT_TRUE(s.form.topMenus()[2].enabled);
}

TEST(InputFormMenus, HelpAndPrinterSetupGoToTheHost) {
    Screen s(testkit::oneDimScreenModel());
    s.form.mnuFileClick(topMenu::Help);
    s.form.menuFileClick(fileItem::PrinterSetup);
    EXPECT_EQ(s.host.helps, 1);
    EXPECT_EQ(s.host.printerSetups, 1);
}

TEST(InputFormMenus, MonteCarloGenerateWithoutItsScreen) {
    DataSet d = testkit::oneDimScreenModel();
    d.velocity = formFieldMarker("0.3", 1);
    Screen s(d);
    s.form.menuMonteCarloClick(monteCarloItem::Generate);
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].text, "The Monte Carlo simulation screen is not part of this build.");
    EXPECT_TRUE(s.form.rowLocked(0));  // nothing was changed
}

TEST(InputFormMenus, MonteCarloGeneratePutsMarkersBackToTheirNumbers) {
    DataSet d = testkit::oneDimScreenModel();
    d.velocity = formFieldMarker("0.45", 1);
    Screen s(d);
    s.host.monteCarloAvailable = true;
    s.form.menuMonteCarloClick(monteCarloItem::Generate);
    EXPECT_EQ(s.host.monteCarloScreens, 1);
    EXPECT_EQ(s.data.velocity, "0.45");
    EXPECT_EQ(s.form.row(0).text, "0.45");
    EXPECT_EQ(s.form.resultCaption, "Computed at");
}

TEST(InputFormMenus, MonteCarloViewsNeedASimulation) {
    Screen s(testkit::oneDimScreenModel());
    s.data.calculationMode = "Regular";
    s.form.menuMonteCarloClick(monteCarloItem::Graph);
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "No Monte Carlo Simulation");
    EXPECT_EQ(s.ui.messages[0].text,
              "No Monte Carlo Output Data! \r  Analytical computations have not been performed using the Monte Carlo "
              "simulations. Please select Calculate from the menu before choosing this option.");
}

TEST(InputFormMenus, ExitGoesByTheSaveOfferAndClosesTheModel) {
    Screen s(testkit::oneDimScreenModel());
    s.data.dataState = kDataUnchanged;
    s.form.menuFileClick(fileItem::Exit);
    EXPECT_EQ(s.host.closes, 1);
    EXPECT_EQ(s.data.modelType, "");
    EXPECT_TRUE(s.ui.messages.empty());
}

TEST(InputFormMenus, ExitAskedToCalculateFirstStays) {
    Screen s(testkit::oneDimScreenModel());
    s.data.dataState = kParametersChanged;
    s.ui.answers.push_back(MessageAnswer::Yes);  // "Would you like to select Calculate first?"
    s.form.menuFileClick(fileItem::Exit);
    EXPECT_EQ(s.host.closes, 0);
    EXPECT_EQ(s.data.modelType, "One Dimensional");
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Data Changed");
}

TEST(InputFormMenus, CloseKeepsTheModelKindAndEmptiesTheRows) {
    DataSet d = testkit::oneDimScreenModel();
    d.currentFileName = "/x/y.one";
    Screen s(d);
    s.data.dataState = kDataUnchanged;
    s.form.menuFileClick(fileItem::Close);
    EXPECT_EQ(s.data.modelType, "One Dimensional");
    EXPECT_EQ(s.form.row(0).text, "");
    EXPECT_EQ(s.form.row(3).text, "");
    EXPECT_FALSE(s.form.saveEnabled);
    EXPECT_EQ(s.form.windowTitle(), "Ground Water Model (Saturated) -- FileName: ");
}

TEST(InputFormMenus, NewShowsTheChosenLayoutWithTheOtherInputsKeptOrAnotherScreen) {
    Screen s(testkit::oneDimScreenModel());
    s.data.dataState = kDataUnchanged;
    s.data.title = "Column test";
    ASSERT_EQ(s.data.velocity, "0.3");
    s.host.newModelOk = true;
    s.host.newModelChoice = [](DataSet& d) {
        d.modelType = "Two Dimensional";
        d.aquiferType = "Infinite";
        d.contaminantType = "Gaussian";
        d.multiChemical = false;
    };
    s.form.menuFileClick(fileItem::New);
    EXPECT_EQ(s.form.dimension(), 2);
    EXPECT_EQ(s.form.row(2).caption, kStdDevCaption);
    EXPECT_EQ(s.form.row(4).text, "0.3");  // the velocity, now in the row of the two-dimensional layout
    EXPECT_EQ(s.data.velocity, "0.3");
    EXPECT_EQ(s.data.title, "Column test");
    EXPECT_EQ(s.data.aquiferType, "Infinite");
    EXPECT_FALSE(s.form.saveEnabled);
    s.host.newModelChoice = [](DataSet& d) {
        d.modelType = "Two Dimensional";
        d.multiChemical = true;
    };
    s.form.menuFileClick(fileItem::New);
    EXPECT_EQ(s.host.otherScreens, 1);
    EXPECT_TRUE(s.data.multiChemical);
}

TEST(InputFormMenus, NewCancelledChangesNothing) {
    Screen s(testkit::oneDimScreenModel());
    s.data.dataState = kDataUnchanged;
    s.form.menuFileClick(fileItem::New);
    EXPECT_EQ(s.form.row(0).text, "0.3");
    EXPECT_EQ(s.data.velocity, "0.3");
}

}  // namespace
}  // namespace bm

namespace bm {
namespace {

TEST(InputFormFiles, SaveAsThenOpenGivesTheSameScreen) {
    testkit::TempDir dir;
    Screen s(testkit::twoDimScreenModel("Infinite", "Continuous / Point"));
    s.form.rowEdited(4, "0.45");
    s.form.titleText = "Saved model";
    const std::string path = dir.file("saved.two");
    s.ui.fileAnswers.push_back(path);
    s.form.menuFileClick(fileItem::SaveAs);
    for (const auto& m : s.ui.messages) ADD_FAILURE() << m.title << ": " << m.text;
    ASSERT_EQ(s.ui.fileDialogs.size(), 1u);
    EXPECT_EQ(s.ui.fileDialogs[0].title, "Save Data File As");
    EXPECT_EQ(s.data.dataState, kDataUnchanged);
    EXPECT_EQ(s.data.currentFileName, path);
    EXPECT_EQ(s.form.windowTitle(), "Ground Water Model (Saturated) -- FileName: " + path);
    EXPECT_FALSE(testkit::readFileBytes(path).empty());

    Screen other(testkit::oneDimScreenModel());
    other.data.dataState = kDataUnchanged;
    other.ui.fileAnswers.push_back(path);
    other.form.menuFileClick(fileItem::Open);
    EXPECT_EQ(other.form.dimension(), 2);
    EXPECT_EQ(other.form.row(4).text, "0.45");
    EXPECT_EQ(other.form.row(2).caption, kInjectionPerThicknessCaption);
    EXPECT_EQ(other.form.titleText, "Saved model");
    EXPECT_TRUE(other.form.saveEnabled);
    EXPECT_EQ(other.form.windowTitle(), "Ground Water Model (Saturated) -- FileName: " + path);
}

TEST(InputFormFiles, OpenCancelledKeepsTheScreen) {
    Screen s(testkit::oneDimScreenModel());
    s.data.dataState = kDataUnchanged;
    s.form.menuFileClick(fileItem::Open);  // the dialog is cancelled
    EXPECT_EQ(s.form.row(0).text, "0.3");
    EXPECT_EQ(s.data.velocity, "0.3");
}

}  // namespace
}  // namespace bm
