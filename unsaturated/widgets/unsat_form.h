#pragma once
// unsatForm: the screen of the unsaturated model with one chemical, bound to
// UnsatFormModel. Object names are the screen's control names: the rows
// "Text1(i)", their captions "Text1Panel(i)" and units "Text1Units(i)", the
// terms' grid Input1TG, the result LabelResult1D with its caption Label5, and
// the shared parts of every model screen (menus, captions, notes, HelpPanel,
// pictureDest, stopCB). MCUnsatForm derives from it.

#include <memory>
#include <vector>

#include "shell/widgets/model_screen_dialog.h"
#include "unsaturated/form/unsat_form_model.h"

class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QTabWidget;
class QVBoxLayout;

namespace bm {

class TermGridView;

class UnsatForm : public ModelScreenDialog {
    Q_OBJECT
public:
    UnsatForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent = nullptr);

    UnsatFormModel& model() { return *model_; }
    void load(bool saveEnabled);

    QLineEdit* rowEntry(int index) const;
    QLabel* rowCaption(int index) const;
    QLabel* rowUnits(int index) const;
    QLabel* resultLabel() const { return resultLabel_; }
    TermGridView* grid() const { return grid_; }

    // ScreenHost
    void moveFocus(const FocusRequest& focus) override;

protected:
    // The multi-chemical screen's model and object name; it builds the screen
    // (build) once it can add its own inputs.
    UnsatForm(std::unique_ptr<UnsatFormModel> model, const QString& name, QWidget* parent);
    void build(ProgressOwner owner);
    void refreshInputs() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    // The screen's own inputs below the constants (the chemicals' tables).
    virtual void addOwnInputs(QVBoxLayout*) {}
    virtual void refreshOwnInputs() {}

private:
    void addRow(int index, QGridLayout* layout, int line);
    QWidget* buildInputs();

    std::unique_ptr<UnsatFormModel> model_;
    std::vector<InputRowWidgets> rows_;
    TermGridView* grid_ = nullptr;
    QGroupBox* boundary_ = nullptr;
    QLabel* resultLabel_ = nullptr;
    QLabel* label5_ = nullptr;
    QWidget* mainElastic_ = nullptr;
    QTabWidget* tabs_ = nullptr;
};

// Registers unsatForm with the shell's screen registry.
void registerUnsatForm();

}  // namespace bm
