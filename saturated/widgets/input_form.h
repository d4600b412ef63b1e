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

#include <QDialog>
#include <QString>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "saturated/input_form_model.h"

class QAction;
class QGridLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;
class QStackedWidget;
class QTabWidget;

namespace bm {

class ProgressPicture;
class TermGridView;

class InputForm : public QDialog, public InputFormHost {
    Q_OBJECT
public:
    InputForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent = nullptr);
    ~InputForm() override;

    InputFormModel& model() { return *model_; }
    // The screen's load.
    void load(bool saveEnabled);

    QAction* menuItem(const QString& name) const;
    QLineEdit* rowEntry(int dimension, int index) const;
    QLabel* rowCaption(int dimension, int index) const;
    QLabel* rowUnits(int dimension, int index) const;
    TermGridView* grid(int dimension) const;
    QTabWidget* tabSet(int dimension) const;
    ProgressPicture* progressPicture() const { return pictureDest_; }
    QPushButton* stopButton() const { return stopCB_; }
    QLabel* resultLabel(int dimension) const;
    QLabel* helpPanel() const { return helpPanel_; }

    // The progress of a run (the user interface's progress sink of this screen).
    void showProgress(double total, double done);
    // Print into this PDF file instead of through the print dialog (unattended runs, tests).
    void setPdfOutput(const QString& path) { pdfOutput_ = path; }
    // True when the screen closed because the model now open needs another screen.
    bool wantsOtherScreen() const { return otherScreen_; }

    // InputFormHost
    void formChanged() override;
    void moveFocus(const FocusRequest& focus) override;
    void showNotes(NotesPad& pad) override;
    bool showNewModelDialog() override;
    bool printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) override;
    void printerSetup() override;
    void showHelp() override;
    bool monteCarloScreenAvailable() override;
    void showMonteCarloScreen() override;
    void openScreenForModel() override;
    void closeScreen() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct RowWidgets {
        QLabel* panel = nullptr;
        QLineEdit* entry = nullptr;
        QLabel* units = nullptr;
    };
    void buildMenus(QMenuBar* bar);
    QAction* addItem(QMenu* menu, const QString& name, const QString& caption, std::function<void()> action);
    QWidget* buildTabSet(int dimension);
    void addRow(int dimension, int index, QGridLayout* layout, int line);
    void refresh();
    void refreshMenus();
    int rowOf(QObject* widget, int& dimension) const;

    std::unique_ptr<InputFormModel> model_;
    std::array<std::vector<RowWidgets>, 4> rows_;
    std::array<TermGridView*, 4> grids_{};
    std::array<QTabWidget*, 4> tabs_{};
    std::array<QLabel*, 4> resultLabels_{};
    std::array<QLabel*, 4> label5_{};
    QWidget* mainElastic_ = nullptr;
    QStackedWidget* tabElastic_ = nullptr;
    QLabel *modelE_ = nullptr, *aquiferE_ = nullptr, *contaminantE_ = nullptr;
    QLabel *titleE_ = nullptr, *authorE_ = nullptr, *commentsE_ = nullptr;
    QLineEdit *titleTB_ = nullptr, *authorTB_ = nullptr, *commentsTB_ = nullptr;
    QLabel* monteCarloElastic_ = nullptr;
    QLabel* helpPanel_ = nullptr;
    ProgressPicture* pictureDest_ = nullptr;
    QPushButton* stopCB_ = nullptr;
    std::map<QString, QAction*> actions_;
    std::map<int, QMenu*> topMenus_;
    QAction* calculateAction_ = nullptr;
    QString pdfOutput_;
    bool otherScreen_ = false;
    bool closing_ = false;
    bool closePathDone_ = false;
};

// The Monte Carlo set-up screen, when one is part of the build: shown modally
// by Generate... of the model screens.
void setMonteCarloScreenOpener(std::function<void(QWidget* parent)> opener);
bool hasMonteCarloScreenOpener();

// Registers inputForm with the shell's model-screen registry (the single-
// chemical one-, two- and three-dimensional saturated models).
void registerInputForm();

}  // namespace bm
