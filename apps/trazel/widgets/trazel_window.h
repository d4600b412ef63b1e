#pragma once
// Trazel's main window: the plot (beside it the x-z and y-z sections of a
// three-dimensional result; under it the residuals of a fit), a side panel with the choices that fit the file
// (curves over distance or time, the places of a fit and its residuals over
// time or number, the time, the z plane, the sections, the variant, the
// number of bins) and the file's details, and menus to open,
// reload, export, print and zoom.
//
// A file is read on a thread of its own under a progress dialog with Cancel,
// so the window keeps painting; a large grid shows its overview at once and
// fetches the plane shown in full in the background.

#include <QMainWindow>
#include <memory>

#include "apps/trazel/plot_file.h"
#include "apps/trazel/plot_scene.h"
#include "apps/trazel/widgets/picture_export.h"

class QAction;
class QButtonGroup;
class QComboBox;
class QGroupBox;
class QListWidget;
class QPlainTextEdit;
class QProgressBar;
class QRadioButton;
class QSpinBox;
class QSplitter;

namespace bm::trazel {

class PlotWidget;
class ReadTask;

class TrazelWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit TrazelWindow(QWidget* parent = nullptr);

    // Reads and shows a file; on failure or Cancel keeps what was shown and tells why.
    bool openFile(const QString& path, QString* error);
    // As openFile, with a message box on failure.
    bool openFileOrSay(const QString& path);
    // The last open ended by Cancel.
    bool readCancelled() const { return readCancelled_; }

    bool hasFile() const { return loaded_; }
    const PlotFile& file() const { return file_; }
    const ViewState& view() const { return view_; }
    void setView(const ViewState& view);
    PlotWidget* plot() const { return plot_; }
    PlotWidget* section(Section which) const { return which == Section::XZ ? sectionXZ_ : sectionYZ_; }
    PlotWidget* residuals() const { return residuals_; }
    // How much of a large file is kept (tests use small limits).
    void setReadLimits(const ReadLimits& limits) { limits_ = limits; }
    // A plane being fetched in full in the background.
    bool fetchingPlane() const;

    bool exportPng(const QString& path, QString* error) const;
    bool exportSvg(const QString& path, QString* error) const;
    bool exportCsv(const QString& path, QString* error) const;

public slots:
    void chooseFile();
    void reload();
    void exportPngAs();
    void exportSvgAs();
    void exportCsvAs();
    void print();
    void showAbout();

private:
    void buildMenus();
    void buildPanel();
    void fillControls();
    void syncControls();
    void refresh(bool keepZoom);
    void fetchShownPlane();
    void planeFetched();
    void updateDetails();
    void updateTitle();
    void askAndExport(const QString& caption, const QString& filter, const QString& suffix,
                      bool (TrazelWindow::*write)(const QString&, QString*) const);
    QString suggestedName(const QString& suffix) const;
    // What an export or a print shows: the plot, and under it a fit's residuals.
    Panels shownPanels() const;
    QSize exportSize() const;

    PlotFile file_;
    ViewState view_;
    QString path_;
    bool loaded_ = false;
    bool readCancelled_ = false;
    bool syncing_ = false;

    ReadLimits limits_;
    ReadTask* sliceTask_ = nullptr;
    std::shared_ptr<SliceResult> fetched_;
    int fetchTime_ = -1, fetchPlane_ = -1;

    PlotWidget* plot_ = nullptr;
    PlotWidget* residuals_ = nullptr;
    QSplitter* sections_ = nullptr;
    PlotWidget* sectionXZ_ = nullptr;
    PlotWidget* sectionYZ_ = nullptr;
    QComboBox* sectionYCombo_ = nullptr;
    QComboBox* sectionXCombo_ = nullptr;
    QProgressBar* fetchProgress_ = nullptr;
    QGroupBox* versusBox_ = nullptr;
    QRadioButton* overDistance_ = nullptr;
    QRadioButton* overTime_ = nullptr;
    QGroupBox* curvesBox_ = nullptr;
    QGroupBox* residualBox_ = nullptr;
    QRadioButton* residualsByTime_ = nullptr;
    QRadioButton* residualsByNumber_ = nullptr;
    QListWidget* curveList_ = nullptr;
    QGroupBox* sliceBox_ = nullptr;
    QComboBox* timeCombo_ = nullptr;
    QComboBox* planeCombo_ = nullptr;
    QGroupBox* variantBox_ = nullptr;
    QComboBox* variantCombo_ = nullptr;
    QGroupBox* binsBox_ = nullptr;
    QSpinBox* binsSpin_ = nullptr;
    QPlainTextEdit* details_ = nullptr;
    QList<QAction*> fileActions_;
    QAction* distanceAction_ = nullptr;
    QAction* timeAction_ = nullptr;
    QAction* previousAction_ = nullptr;
    QAction* nextAction_ = nullptr;
};

}  // namespace bm::trazel
