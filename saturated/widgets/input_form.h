#pragma once
// inputForm: the screen of the saturated single-chemical model in its three
// layouts, bound to InputFormModel. Object names are the screen's control
// names: the rows "Text1(3)", their captions "Text1Panel(3)" and units
// "Text1Units(3)"; the grids Input1TG..Input3TG; the tab sets OneDimTab,
// TwoDimTab, ThreeDimTab; mainElastic, TabElastic, MonteCarloElastic,
// HelpPanel, pictureDest, stopCB, LabelResult1D..3D, Label5, TitleTB, AuthorTB,
// CommentsTB, ModelE, AquiferE, ContaminantE; the menus "mnuFile(10)"...,
// their items "menuFile(30)", "menuResults(10)", "menuLength(20)",
// "menuMonteCarlo(10)".

#include <QString>
#include <array>
#include <memory>
#include <vector>

#include "saturated/form/input_form_model.h"
#include "shell/widgets/model_screen_dialog.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QTabWidget;

namespace bm {

class TermGridView;

class InputForm : public ModelScreenDialog {
    Q_OBJECT
public:
    InputForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent = nullptr);

    InputFormModel& model() { return *model_; }
    // The screen's load.
    void load(bool saveEnabled);

    QLineEdit* rowEntry(int dimension, int index) const;
    QLabel* rowCaption(int dimension, int index) const;
    QLabel* rowUnits(int dimension, int index) const;
    TermGridView* grid(int dimension) const;
    QTabWidget* tabSet(int dimension) const;
    QLabel* resultLabel(int dimension) const;

    // ScreenHost
    void moveFocus(const FocusRequest& focus) override;

protected:
    // A screen of another model kind on these layouts (MCInputForm), with its
    // own model, progress owner and object name.
    InputForm(std::unique_ptr<InputFormModel> model, ProgressOwner owner, const QString& name, QWidget* parent);
    // The grid layout of a tab page of a layout (its rows, then what the screen adds).
    QGridLayout* tabLayout(int dimension, int tab) const;
    void refreshInputs() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct RowWidgets {
        QLabel* panel = nullptr;
        QLineEdit* entry = nullptr;
        QLabel* units = nullptr;
    };
    QWidget* buildTabSet(int dimension);
    void addRow(int dimension, int index, QGridLayout* layout, int line);
    int rowOf(QObject* widget, int& dimension) const;

    std::unique_ptr<InputFormModel> model_;
    std::array<std::vector<RowWidgets>, 4> rows_;
    std::array<TermGridView*, 4> grids_{};
    std::array<QTabWidget*, 4> tabs_{};
    std::array<std::array<QGridLayout*, 3>, 4> pages_{};
    std::array<QLabel*, 4> resultLabels_{};
    std::array<QLabel*, 4> label5_{};
    QWidget* mainElastic_ = nullptr;
    QStackedWidget* tabElastic_ = nullptr;
};

// Registers inputForm with the shell's screen registry (the single-chemical
// one-, two- and three-dimensional saturated models).
void registerInputForm();

}  // namespace bm
