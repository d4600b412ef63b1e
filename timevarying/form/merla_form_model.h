#pragma once
// merlaform without its widgets: the screen of the model with time-varying
// dispersion coefficients as data. What every model screen shares (notes,
// status line, menus, Calculate! and Stop, the results, the close path) is the
// ScreenModel's; this adds the rows of Text2 with their captions and units by
// source kind, the "Not Used" y rows of a line source, the compound units of
// the mass and result rows, the read-only lock of a row under Monte Carlo
// control, the checks before a run, the Results menu of this model and its
// report.

#include <string>
#include <vector>

#include "shell/screen/screen_model.h"
#include "timevarying/var_rows.h"

namespace bm {

inline constexpr const char* kMerlaTitle = "Ground Water Model with Time Dependent Dispersion Coefficients";
inline constexpr const char* kMerlaFileTitlePrefix = "Ground Water Model  -- FileName: ";
inline constexpr const char* kSinglePointText = " Only single value is computed! ";
// The Results menu's words of this model, with single line breaks.
inline constexpr const char* kMerlaStaleResultsText =
    "Input data has been changed. The results shown would be from a previous computation.\rIn order to update the "
    "results please press calculate from the menu.\rDo you want to continue ?";
inline constexpr const char* kMerlaNotCorrectText =
    "Output Data are not correct!   Please select calculate before choosing this option.";
// The Results menu's text view of the report.
inline constexpr int kReportItem = 30;

class MerlaFormModel : public ScreenModel {
public:
    MerlaFormModel(DataSet& data, AppState& state, UserInterface& ui);

    // ---- Display
    bool setDisplay() override;
    bool holdDataSet() override;

    std::vector<VarRow>& rows() { return rows_; }
    const std::vector<VarRow>& rows() const { return rows_; }
    // A row; run-time error 340 for one the screen does not have.
    VarRow& row(int index);
    const VarRow& row(int index) const;
    bool lineSource() const;

    // ---- Editing (the locked rows' key and click checks are the ScreenModel's)
    void rowEdited(int index, const std::string& text);
    // Focus in: the row's hint.
    void rowEntered(int index);
    // Focus out of a range row: its format checked, the selected point's rows
    // set from the Constants once it was typed in. False when the focus is to stay.
    bool rowLeft(int index);
    bool rowLocked(int index) const override;

    // ---- Units: Length and Time only; the compound units are relabelled behind their "mg".
    bool offersUnitMenu(UnitMenu menu) const override { return menu != UnitMenu::Concentration; }
    std::vector<std::string*> unitLabels() override;

    // ---- Calculation and results
    bool validate() override;
    // After a regular run the selected point's rows show where the value was computed.
    void refreshSelectedPoint() override;
    // The value at the selected point, or what the mode says when none was computed here.
    void refreshResultLabel() override;
    std::vector<MenuItem> resultsMenu() const override;
    void menuResultsClick(int index) override;
    // The report to the printer, and as text in the text viewer.
    void printReport() override;
    void viewReport();
    // Where the text view of the report is written: beside the plot file.
    std::string reportFileName() const;

protected:
    std::string windowTitlePrefix() const override;
    std::string modelWords() const override { return "Time Varying Model"; }
    std::vector<std::string> rangeTexts() const override;
    std::vector<int> rangeCounts(const std::vector<std::string>& ranges) const override;
    bool inputsHoldMarker() const override;
    void unitsChanged() override;
    std::string rowCaptionText(int index) const override { return row(index).caption; }

private:
    void setMonteCarloCaption();
    void rewritePointRows();

    std::vector<VarRow> rows_;
    std::vector<bool> dirty_;              // rows typed into since they were last checked
    std::string shownLength_, shownTime_;  // the words the compound units show
};

}  // namespace bm
