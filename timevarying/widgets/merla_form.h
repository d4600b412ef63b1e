#pragma once
// merlaform: the screen of the model with time-varying dispersion
// coefficients, bound to MerlaFormModel. Object names are the screen's control
// names: the rows "Text2(i)", their captions "Text2Panel(i)" and units
// "Text2Units(i)", the result LabelResult with its caption Label5, and the
// shared parts of every model screen (menus, captions, notes, HelpPanel,
// pictureDest, stopCB).

#include <memory>
#include <vector>

#include "shell/widgets/model_screen_dialog.h"
#include "timevarying/form/merla_form_model.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QTabWidget;

namespace bm {

class MerlaForm : public ModelScreenDialog {
    Q_OBJECT
public:
    MerlaForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent = nullptr);

    MerlaFormModel& model() { return *model_; }
    void load(bool saveEnabled);

    QLineEdit* rowEntry(int index) const;
    QLabel* rowCaption(int index) const;
    QLabel* rowUnits(int index) const;
    QLabel* resultLabel() const { return resultLabel_; }

    // ScreenHost
    void moveFocus(const FocusRequest& focus) override;

protected:
    void refreshInputs() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addRow(int index, QGridLayout* layout, int line);
    QWidget* buildInputs();

    std::unique_ptr<MerlaFormModel> model_;
    std::vector<InputRowWidgets> rows_;
    QLabel* resultLabel_ = nullptr;
    QLabel* label5_ = nullptr;
    QWidget* mainElastic_ = nullptr;
    QTabWidget* tabs_ = nullptr;
};

// Registers merlaform with the shell's screen registry.
void registerMerlaForm();

}  // namespace bm
