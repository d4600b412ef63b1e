#pragma once
// unsatForm without its widgets: the screen of the unsaturated model as data.
// What every model screen shares (notes, status line, menus, Calculate! and
// Stop, the results, the close path) is the ScreenModel's; this adds the rows
// of Text1 with their captions and units, the inflow terms' grid Input1TG, the
// read-only superposition index of a decaying source, the lock of a row under
// Monte Carlo control, the edit checks, the checks before a run and the
// printed report. The multi-chemical screen (MCUnsatForm) derives from it.

#include <string>
#include <vector>

#include "model/term_grid.h"
#include "shell/screen/screen_model.h"
#include "unsaturated/unsat_rows.h"

namespace bm {

inline constexpr const char* kUnsatTitle = "Ground Water Model (Unsaturated)";
inline constexpr const char* kUnsatFileTitlePrefix = "Ground Water Model (Unsaturated) -- FileName: ";

class UnsatFormModel : public ScreenModel {
public:
    UnsatFormModel(DataSet& data, AppState& state, UserInterface& ui, ModelScreen screen = ModelScreen::unsatForm);

    // ---- Display
    bool setDisplay() override;
    bool holdDataSet() override;
    void SendGWDataToTGData();  // terms -> Input1TG
    void SendTGDataToGWData();  // Input1TG -> terms

    bool multiChemical() const { return screen_ == ModelScreen::MCUnsatForm; }
    std::vector<UnsatRow>& rows() { return rows_; }
    const std::vector<UnsatRow>& rows() const { return rows_; }
    // A row; run-time error 340 for one the screen does not have.
    UnsatRow& row(int index);
    const UnsatRow& row(int index) const;
    // Input1TG: the terms, or a chain's inputs table (a source per chemical).
    virtual TermGrid& grid() { return grid_; }
    virtual const TermGrid& grid() const { return grid_; }

    // ---- Editing (the locked rows' key and click checks are the ScreenModel's)
    void rowEdited(int index, const std::string& text);
    // Focus in: the row's hint; on the read-only superposition index its
    // message, and the focus goes on.
    void rowEntered(int index);
    // Focus out: the edit checks. False when the focus is to stay on the row.
    virtual bool rowLeft(int index);
    // A row under Monte Carlo control, or the superposition index of a decaying source.
    bool rowLocked(int index) const override;
    virtual bool gridBeforeEdit(int row, int column);
    virtual void gridEdited(int row, int column, const std::string& text);
    void gridEntered();
    // The named style of a cell: the grid's style for a marker, else empty.
    virtual std::string cellStyle(int row, int column) const;

    // ---- Units
    std::vector<std::string*> unitLabels() override;

    // ---- Calculation and results
    bool validate() override;
    void refreshSelectedPoint() override;
    void printReport() override;

protected:
    std::string windowTitlePrefix() const override;
    std::string modelWords() const override { return "Unsaturated Model"; }
    std::vector<std::string> rangeTexts() const override;
    bool inputsHoldMarker() const override;
    void unitsChanged() override;
    std::string rowCaptionText(int index) const override { return row(index).caption; }
    std::string readOnlyText(int index) const override;
    std::string calculationErrorContext() const override;

    // What the multi-chemical screen adds: its tables into and out of the
    // DataSet, their markers, and their checks.
    virtual void showTables() {}
    virtual void holdTables() {}
    virtual bool tablesHoldMarker() const { return false; }
    virtual UnsatChecks checks();

private:
    void setMonteCarloCaption();
    void rewritePointRows();
    void resizeGrid(int count);

    std::vector<UnsatRow> rows_;
    std::vector<bool> dirty_;  // rows typed into since they were last checked
    TermGrid grid_;
};

}  // namespace bm
