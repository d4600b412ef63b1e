#pragma once
// MonteCarloForm: the simulation screen, bound to MonteCarloFormModel. The
// variant grid InputTG (its variant and distribution columns drop down
// variantLB and distributionCombo), the result grid ResultTG (a double click
// selects what the model takes), the panel with the model's words, the hints,
// and the menus: File (Print, View, Graph, Exit) and Generate (F7). Closing
// the window is File > Exit: the tables go back into the model's block.

#include <QDialog>
#include <QString>
#include <memory>

#include "model/app_state.h"
#include "montecarlo/monte_carlo_form_model.h"

class QAction;
class QLabel;
class QTableWidget;

namespace bm {

class MonteCarloForm : public QDialog, public MonteCarloFormHost {
    Q_OBJECT
public:
    MonteCarloForm(DataSet& data, AppState& state, UserInterface& ui, MonteCarloSetup setup,
                   QWidget* parent = nullptr);
    ~MonteCarloForm() override;

    MonteCarloFormModel& model() { return *model_; }
    // The screen's load and activation.
    void load();

    QTableWidget* inputGrid() const { return inputTG_; }
    QTableWidget* resultGrid() const { return resultTG_; }
    QLabel* panel() const { return panel_; }
    QLabel* helpPanel() const { return helpPanel_; }
    QAction* action(const QString& name) const;
    // Print into this PDF file instead of through the print dialog (unattended runs, tests).
    void setPdfOutput(const QString& path) { pdfOutput_ = path; }

    // MonteCarloFormHost
    void formChanged() override { refresh(); }
    bool printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) override;
    void showFile(const std::string& path, const std::string& kind) override;
    void closeForm() override;

protected:
    void done(int result) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refresh();
    void inputCellChanged(int row, int column);
    void generate();

    std::unique_ptr<MonteCarloFormModel> model_;
    AppState& state_;
    UserInterface& ui_;
    QTableWidget* inputTG_ = nullptr;
    QTableWidget* resultTG_ = nullptr;
    QLabel* panel_ = nullptr;
    QLabel* helpPanel_ = nullptr;
    QString pdfOutput_;
    bool refreshing_ = false;
    bool exited_ = false;
};

// Registers the simulation screen with the screen registry: every model
// screen's Monte Carlo > Generate... opens it over itself on the open model.
void registerMonteCarloForm();

}  // namespace bm
