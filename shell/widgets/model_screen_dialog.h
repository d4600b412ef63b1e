#pragma once
// The widgets every model screen shares, bound to its ScreenModel: the menu
// bar (File, Calculate!, Results, Units, Monte Carlo, Help), the model's
// captions (ModelE, AquiferE, ContaminantE), the Monte Carlo panel
// (MonteCarloElastic), the notes (TitleTB, AuthorTB, CommentsTB and their
// labels), the status line (HelpPanel), the progress picture (pictureDest)
// and Stop (stopCB); and the services a screen asks of its host: the note
// pad, the new-model dialog, printing, help, the other screens of the screen
// registry, and the close path. A model screen derives from it and puts its
// own inputs between the captions and the status line.

#include <QDialog>
#include <QString>
#include <functional>
#include <map>
#include <memory>

#include "model/app_state.h"
#include "model/data_set.h"
#include "shell/screen/screen_model.h"
#include "shell/widgets/model_screens.h"

class QAction;
class QGridLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace bm {

class ProgressPicture;

class ModelScreenDialog : public QDialog, public ScreenHost {
    Q_OBJECT
public:
    explicit ModelScreenDialog(QWidget* parent = nullptr);
    ~ModelScreenDialog() override;

    QAction* menuItem(const QString& name) const;
    ProgressPicture* progressPicture() const { return pictureDest_; }
    QPushButton* stopButton() const { return stopCB_; }
    QLabel* helpPanel() const { return helpPanel_; }

    // The progress of a run (the user interface's progress sink of this screen).
    void showProgress(double total, double done);
    // Print into this PDF file instead of through the print dialog (unattended runs, tests).
    void setPdfOutput(const QString& path) { pdfOutput_ = path; }
    // True when the screen closed because the model now open needs another screen.
    bool wantsOtherScreen() const { return otherScreen_; }

    // ScreenHost
    void formChanged() override { refresh(); }
    void showNotes(NotesPad& pad) override;
    bool showNewModelDialog() override;
    void showChemicalPicker(DataSet& model) override;
    bool showFitDialog(DataSet& model) override;
    bool printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) override;
    void printerSetup() override;
    void showHelp() override;
    bool screenAvailable(ModelScreen screen) override;
    void openScreen(ModelScreen screen) override;
    void openScreenForModel() override;
    void closeScreen() override;

protected:
    // Binds the screen to its model and lays out the menu bar; the layout the
    // screen's parts go into, top to bottom.
    QVBoxLayout* attach(ScreenModel& model, ProgressOwner owner);
    // The captions, the Monte Carlo panel and the notes.
    void addCaptions(QVBoxLayout* layout);
    // The status line, the progress picture and Stop.
    void addStatusLine(QVBoxLayout* layout);

    // Shows the model again: the shared parts, then the screen's own.
    void refresh();
    virtual void refreshInputs() {}
    // The shared parts' events (hints, note labels, the Monte Carlo panel);
    // true when the event was taken.
    bool sharedEvent(QObject* watched, QEvent* event);
    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;
    void keyPressEvent(QKeyEvent* event) override;
    // While the close path runs: the inputs' focus-out checks hold back.
    bool closing() const { return closing_; }

    // The events of an input row (its entry, caption and unit), as every model
    // screen handles them: Return moves on ("{TAB}"), typing into a locked row
    // and clicking on it are refused (keyPress, clicked: false), the focus
    // coming in shows the row's hint, leaving it runs its checks. True when the
    // event was taken.
    struct RowEvents {
        std::function<bool()> keyPress, clicked, left;
        std::function<void()> entered;
    };
    bool rowEvent(QObject* watched, QEvent* event, QObject* entry, const RowEvents& on);
    // The focus requests every screen answers alike: Stop during a run, and the
    // next control ("{TAB}"). True when the request was one of them.
    bool sharedFocus(const FocusRequest& focus);

    // A row of an input control array laid into `line` of a grid: its caption
    // "<array>Panel(i)" in column 0, its entry "<array>(i)" in column 1 (keys
    // filtered, typing passed to `edited`; none when `edited` is empty) and
    // its unit "<array>Units(i)" in column 2. Each carries the row's index as
    // `property` and has this screen's event filter (the entry's comes before
    // the key filter).
    struct InputRowWidgets {
        QLabel* panel = nullptr;
        QLineEdit* entry = nullptr;
        QLabel* units = nullptr;
    };
    InputRowWidgets addInputRow(QGridLayout* layout, int line, const QString& array, int index, const char* property,
                                std::function<void(const std::string&)> edited);
    // Puts the focus into an entry with its text selected (a focus request's row).
    static void focusEntry(QLineEdit* entry);
    // Puts the focus into a focus request's cell of a table, editing it when asked.
    static void focusCell(QTableWidget* table, const FocusRequest& focus);
    // A filled page of inputs in a frameless scroll area that resizes it
    // (the page's layout must be in place before it goes in).
    static QWidget* inScrollArea(QWidget* page);
    // A titled group of input rows on `page`, its caption column stretching.
    static QGridLayout* inputGroup(QWidget* page, const QString& title);
    // The bold "Computed at" heading above the selected point's rows.
    static QLabel* computedAtLabel(QWidget* parent);

private:
    QAction* addItem(QMenu* menu, const QString& name, const QString& caption, std::function<void()> action);
    void buildMenus(QMenuBar* bar);
    void refreshMenus();

    ScreenModel* model_ = nullptr;
    ProgressOwner owner_ = ProgressOwner::InputForm;
    QLabel *modelE_ = nullptr, *aquiferE_ = nullptr, *contaminantE_ = nullptr;
    QLabel *titleE_ = nullptr, *authorE_ = nullptr, *commentsE_ = nullptr;
    QLineEdit *titleTB_ = nullptr, *authorTB_ = nullptr, *commentsTB_ = nullptr;
    QLabel* monteCarloElastic_ = nullptr;
    QLabel* helpPanel_ = nullptr;
    ProgressPicture* pictureDest_ = nullptr;
    QPushButton* stopCB_ = nullptr;
    std::map<QString, QAction*> actions_;
    QString pdfOutput_;
    bool otherScreen_ = false;
    bool closing_ = false;
    bool closePathDone_ = false;
};

// Makes a screen and loads it (saveEnabled is false after New).
using ModelScreenFactory = std::function<std::unique_ptr<ModelScreenDialog>(QWidget* parent, bool saveEnabled)>;
// The opener a screen registers: the screen made, shown modally; when it
// closed because the model now open needs another screen, that one is opened.
std::function<void(QWidget* parent, bool saveEnabled)> modelScreenOpener(ModelScreen self, ModelScreenFactory make);

// Registers a model screen whose widget class is made from the process-wide
// DataSet, state and user interface, and loaded before it is shown.
template <class Form>
void registerScreenForm(ModelScreen screen) {
    registerModelScreen(screen, modelScreenOpener(screen, [](QWidget* parent, bool saveEnabled) {
                            auto form = std::make_unique<Form>(theDataSet(), theAppState(), ui(), parent);
                            form->load(saveEnabled);
                            return std::unique_ptr<ModelScreenDialog>(std::move(form));
                        }));
}

// An input row shown: its caption, its unit, and its entry (when it has one)
// with the text, the enabled state and the red read-only look of a locked row.
void showInputRow(QLabel* panel, QLineEdit* entry, QLabel* units, const std::string& caption,
                  const std::string& unitCaption, const std::string& text, bool enabled, bool locked);

// "Name(index)", the object name of a control of an indexed array.
QString indexedName(const QString& name, int index);
// A sunken panel label (the captions, the status line, a result label).
QLabel* panelLabel(const QString& name, QWidget* parent);

}  // namespace bm
