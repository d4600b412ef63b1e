#pragma once
// The fit to observations of the model on a screen: the observation file, a
// row per input (ticked to vary, bounds, log scale), Fit with its progress
// and Stop, the report, the plot of the observations over the fitted curves
// and of the residuals, Plot, which hands them to the plotting utility, and
// Apply, which writes the estimates into the model.

#include <QDialog>
#include <QElapsedTimer>

#include "fitting/fit_form.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTableWidget;
class QTabWidget;

namespace bm {

struct AppState;

class FitDialog : public QDialog {
    Q_OBJECT
public:
    // `state` names the plotting utility and the folder of its files; without
    // it the dialog cannot plot.
    FitDialog(DataSet& model, UserInterface& ui, const AppState* state = nullptr, QWidget* parent = nullptr);

    FitForm& form() { return form_; }
    // True once Apply wrote the estimates into the model.
    bool applied() const { return applied_; }

    // The actions behind the buttons.
    void chooseObservations();
    void runFit();
    void stopFit() { stopRequested_ = true; }
    void applyFit();
    // Writes the fit's plot file and starts the plotting utility on it.
    void plotFit();

protected:
    // Escape and the window's close do nothing while a fit runs (Stop ends it).
    void reject() override;

private:
    void buildInputTable();
    void holdRows();
    void refresh();
    void showPlots();
    bool keepGoing();

    DataSet& model_;
    UserInterface& ui_;
    const AppState* state_ = nullptr;
    FitForm form_;
    bool applied_ = false;
    bool stopRequested_ = false;
    QElapsedTimer sinceEvents_;

    QLineEdit* fileE_ = nullptr;
    QLabel* summaryL_ = nullptr;
    QTableWidget* inputsTG_ = nullptr;
    QPushButton* runB_ = nullptr;
    QPushButton* stopB_ = nullptr;
    QPushButton* applyB_ = nullptr;
    QPushButton* plotB_ = nullptr;
    QPushButton* closeB_ = nullptr;
    QPushButton* chooseB_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QLabel* statusL_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    QPlainTextEdit* reportE_ = nullptr;
    QWidget* plotPage_ = nullptr;
    QWidget* residualPage_ = nullptr;
};

}  // namespace bm
