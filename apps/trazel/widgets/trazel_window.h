#pragma once
// Trazel's main window: the plot, a side panel with the choices that fit the
// file (curves over distance or time, the time, the z plane, the variant, the
// number of bins) and the file's details, and menus to open, reload, export,
// print and zoom.

#include <QMainWindow>

#include "apps/trazel/plot_file.h"
#include "apps/trazel/plot_scene.h"

class QAction;
class QButtonGroup;
class QComboBox;
class QGroupBox;
class QListWidget;
class QPlainTextEdit;
class QRadioButton;
class QSpinBox;

namespace bm::trazel {

class PlotWidget;

class TrazelWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit TrazelWindow(QWidget* parent = nullptr);

    // Reads and shows a file; on failure keeps what was shown and tells why.
    bool openFile(const QString& path, QString* error);
    // As openFile, with a message box on failure.
    bool openFileOrSay(const QString& path);

    bool hasFile() const { return loaded_; }
    const PlotFile& file() const { return file_; }
    const ViewState& view() const { return view_; }
    void setView(const ViewState& view);
    PlotWidget* plot() const { return plot_; }

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
    void updateDetails();
    void askAndExport(const QString& caption, const QString& filter, const QString& suffix,
                      bool (TrazelWindow::*write)(const QString&, QString*) const);
    QString suggestedName(const QString& suffix) const;

    PlotFile file_;
    ViewState view_;
    QString path_;
    bool loaded_ = false;
    bool syncing_ = false;

    PlotWidget* plot_ = nullptr;
    QGroupBox* versusBox_ = nullptr;
    QRadioButton* overDistance_ = nullptr;
    QRadioButton* overTime_ = nullptr;
    QGroupBox* curvesBox_ = nullptr;
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
