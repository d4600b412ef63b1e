#pragma once
// inputForm without its widgets: the screen of the saturated single-chemical
// model as data. What every model screen shares (notes, status line, menus,
// Calculate! and Stop, the results, the close path) is the ScreenModel's; this
// adds inputForm's own inputs and rules: the three layouts of rows (Text1,
// Text2, Text3) with their captions, unit labels and enabled state, the three
// inflow grids (Input1TG, Input2TG, Input3TG), the tab brought forward in
// each, and the edit checks, the validation, setDisplay and holdDataSet of
// those rows.

#include <array>
#include <string>
#include <vector>

#include "saturated/input_sheet.h"
#include "shell/screen/screen_model.h"

namespace bm {

inline constexpr const char* kWindowTitlePrefix = "Ground Water Model (Saturated) -- FileName: ";

class InputFormModel : public ScreenModel {
public:
    InputFormModel(DataSet& data, AppState& state, UserInterface& ui);

    // ---- Display
    // DataSet -> screen: the layout of modelType, "Error in setDisplay()" for
    // a model the screen does not know.
    bool setDisplay() override;
    // Screen -> DataSet, and the parse step of the coordinates.
    bool holdDataSet() override;
    virtual void SendGWDataToTGData();  // terms -> grid of the layout
    virtual void SendTGDataToGWData();  // grid of the layout -> terms

    // The dimension of the layout shown (0 before setDisplay found one).
    int dimension() const { return dimension_; }
    std::vector<FormRow>& rows(int dimension);
    const std::vector<FormRow>& rows(int dimension) const;
    // A row of a list; run-time error 340 for a row the list does not have.
    FormRow& row(int dimension, int index);
    const FormRow& row(int dimension, int index) const;
    FormRow& row(int index) { return row(dimension_, index); }
    const FormRow& row(int index) const { return row(dimension_, index); }
    // The inflow grid of a layout (Input1TG ...).
    virtual TermGrid& grid(int dimension);
    TermGrid& grid() { return grid(dimension_); }
    virtual const TermGrid& grid() const;

    std::array<int, 4> currentTab{};  // the tab brought forward, by dimension

    // The result label's control name by dimension.
    static const char* resultLabelName(int dimension);
    static const char* tabSetName(int dimension);

    // ---- Editing
    // The row's text as typed (the change event).
    void rowEdited(int index, const std::string& text);
    // Focus in: the row's hint.
    void rowEntered(int index);
    // Focus out: the edit checks. False when the focus is to stay on the row.
    virtual bool rowLeft(int index);
    bool rowLocked(int index) const override;
    // A grid cell is about to be edited: false (and the message) when it holds a marker.
    virtual bool gridBeforeEdit(int row, int column);
    virtual void gridEdited(int row, int column, const std::string& text);
    void gridEntered();
    // The named style of a cell: the grid's style for a marker, else empty.
    virtual std::string cellStyle(int row, int column) const;

    // ---- Units
    void ChangeTDBGridUnits();
    void SetTGConcentrationUnit();
    // Every unit label of the layout at hand, for relabelUnits.
    std::vector<std::string*> unitLabels() override;

    // inputForm_validate: the rules of the layout on its rows and grid, the
    // focus sent to the failing input. Run-time errors go to the handler.
    bool validate() override;
    // The selected point and the result label from the DataSet.
    void refreshSelectedPoint() override;
    // The printed report of the inputs.
    void printReport() override;
    void requestFocus(const FocusRequest& focus) override;

protected:
    // The screen of another model kind built on these layouts (MCInputForm).
    InputFormModel(DataSet& data, AppState& state, UserInterface& ui, ModelScreen screen);
    // The rows of a layout as this screen has them, shaped from the saturated
    // model's rows (none changed here).
    virtual void shapeRows(int /*dimension*/, std::vector<FormRow>& /*rows*/) const {}
    // The layout's rule checks on a sheet of the screen's rows, with the focus
    // sent to the failing input. Run-time errors propagate.
    bool validateSheet(InputSheet& sheet);
    // Where a run-time error in holdDataSet struck, as the error report says it.
    const char* holdErrorText = "Error in holddataset()";
    // Sends the user to an input of the layout shown.
    void focusOn(const InputPlace& place);

    std::string windowTitlePrefix() const override { return kWindowTitlePrefix; }
    std::string modelWords() const override { return "Saturated Model"; }
    std::vector<std::string> rangeTexts() const override;
    bool inputsHoldMarker() const override;
    void unitsChanged() override { ChangeTDBGridUnits(); }
    void resetTabs() override { currentTab.fill(kCoordinatesTab); }
    int layoutShown() const override { return dimension_; }
    std::string rowCaptionText(int index) const override { return row(index).caption; }

private:
    void buildRows(int dimension);
    void rewritePointRows();
    void setMonteCarloCaption();
    void resizeGrid(int count);

    int dimension_ = 0;
    std::array<InputSheet, 4> layouts_;  // by dimension; 0 stands for no layout
    std::vector<bool> dirty_;            // rows of the layout typed into since they were last checked
};

inline bool inputForm_validate(InputFormModel& form) { return form.validate(); }

// The text of a row for the messages: the row's caption as it stands.
std::string rowCaption(const InputFormModel& form, int index);

}  // namespace bm
