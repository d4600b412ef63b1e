#include "apps/trazel/widgets/trazel_window.h"

#include <QActionGroup>
#include <QApplication>
#include <QButtonGroup>
#include <QDir>
#include <QComboBox>
#include <QDockWidget>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include "apps/trazel/cell_number.h"
#include "apps/trazel/csv_export.h"
#include "apps/trazel/histogram.h"
#include "apps/trazel/widgets/picture_export.h"
#include "apps/trazel/widgets/plot_widget.h"
#include "apps/trazel/widgets/read_task.h"

namespace bm::trazel {

namespace {

QString qs(const std::string& s) { return QString::fromStdString(s); }

QString statistics(const std::vector<double>& values) {
    const Summary s = summarise(values);
    return QStringLiteral("Values: %1\nMinimum: %2\nMaximum: %3\nMean: %4\nMedian: %5\nStandard deviation: %6\n")
        .arg(s.count)
        .arg(qs(plainNumber(s.minimum)), qs(plainNumber(s.maximum)), QString::number(s.mean, 'g', 6),
             QString::number(s.median, 'g', 6), QString::number(s.standardDeviation, 'g', 6));
}

QString headerText(const std::vector<HeaderLine>& lines) {
    QString text;
    for (const HeaderLine& h : lines) text += (h.label.empty() ? qs(h.value) : qs(h.label) + ": " + qs(h.value)) + "\n";
    return text;
}

}  // namespace

TrazelWindow::TrazelWindow(QWidget* parent) : QMainWindow(parent) {
    setWindowTitle(tr("Trazel"));
    auto* views = new QSplitter(Qt::Horizontal, this);
    auto* plots = new QSplitter(Qt::Vertical, views);
    plot_ = new PlotWidget(plots);
    plot_->setObjectName("plot");
    residuals_ = new PlotWidget(plots);
    residuals_->setObjectName("residuals");
    residuals_->setMinimumSize(260, 160);
    plots->setStretchFactor(0, 3);
    plots->setStretchFactor(1, 2);
    sections_ = new QSplitter(Qt::Vertical, views);
    sections_->setObjectName("sections");
    sectionXZ_ = new PlotWidget(sections_);
    sectionXZ_->setObjectName("sectionXZ");
    sectionYZ_ = new PlotWidget(sections_);
    sectionYZ_->setObjectName("sectionYZ");
    for (PlotWidget* w : {sectionXZ_, sectionYZ_}) w->setMinimumSize(260, 180);
    views->addWidget(plots);
    views->addWidget(sections_);
    views->setStretchFactor(0, 3);
    views->setStretchFactor(1, 2);
    setCentralWidget(views);
    buildPanel();
    buildMenus();
    for (PlotWidget* w : {plot_, residuals_, sectionXZ_, sectionYZ_})
        connect(w, &PlotWidget::pointerAt, this, [this](const QString& where) {
            if (where.isEmpty()) statusBar()->clearMessage();
            else statusBar()->showMessage(where);
        });
    sliceTask_ = new ReadTask(this);
    connect(sliceTask_, &ReadTask::done, this, &TrazelWindow::planeFetched);
    fetchProgress_ = new QProgressBar(this);
    fetchProgress_->setObjectName("planeProgress");
    fetchProgress_->setRange(0, 100);
    fetchProgress_->setMaximumWidth(180);
    fetchProgress_->setFormat(tr("Full plane %p%"));
    fetchProgress_->hide();
    statusBar()->addPermanentWidget(fetchProgress_);
    auto* ticker = new QTimer(this);
    connect(ticker, &QTimer::timeout, this, [this] {
        if (sliceTask_->running()) fetchProgress_->setValue(static_cast<int>(sliceTask_->fraction() * 100));
    });
    ticker->start(200);
    fillControls();
    resize(1180, 720);
}

void TrazelWindow::buildMenus() {
    QMenu* fileMenu = menuBar()->addMenu(tr("&File"));
    fileMenu->addAction(tr("&Open..."), QKeySequence::Open, this, &TrazelWindow::chooseFile);
    fileActions_ << fileMenu->addAction(tr("&Reload"), QKeySequence::Refresh, this, &TrazelWindow::reload);
    fileMenu->addSeparator();
    fileActions_ << fileMenu->addAction(tr("Export as &PNG..."), this, &TrazelWindow::exportPngAs);
    fileActions_ << fileMenu->addAction(tr("Export as &SVG..."), this, &TrazelWindow::exportSvgAs);
    fileActions_ << fileMenu->addAction(tr("Export as &CSV..."), this, &TrazelWindow::exportCsvAs);
    fileMenu->addSeparator();
    fileActions_ << fileMenu->addAction(tr("&Print..."), QKeySequence::Print, this, &TrazelWindow::print);
    fileMenu->addSeparator();
    fileMenu->addAction(tr("&Quit"), QKeySequence::Quit, qApp, &QApplication::closeAllWindows);

    QMenu* viewMenu = menuBar()->addMenu(tr("&View"));
    fileActions_ << viewMenu->addAction(tr("&Reset Zoom"), QKeySequence(Qt::CTRL | Qt::Key_0), plot_, &PlotWidget::resetZoom);
    viewMenu->addSeparator();
    auto* versus = new QActionGroup(this);
    distanceAction_ = viewMenu->addAction(tr("Concentration against &Distance"), QKeySequence(Qt::CTRL | Qt::Key_1), this,
                                          [this] { overDistance_->click(); });
    timeAction_ = viewMenu->addAction(tr("Concentration against &Time"), QKeySequence(Qt::CTRL | Qt::Key_2), this,
                                      [this] { overTime_->click(); });
    for (QAction* a : {distanceAction_, timeAction_}) {
        a->setCheckable(true);
        versus->addAction(a);
    }
    viewMenu->addSeparator();
    previousAction_ = viewMenu->addAction(tr("&Previous Time"), QKeySequence(Qt::Key_PageUp), this, [this] {
        if (timeCombo_->currentIndex() > 0) timeCombo_->setCurrentIndex(timeCombo_->currentIndex() - 1);
    });
    nextAction_ = viewMenu->addAction(tr("&Next Time"), QKeySequence(Qt::Key_PageDown), this, [this] {
        if (timeCombo_->currentIndex() + 1 < timeCombo_->count()) timeCombo_->setCurrentIndex(timeCombo_->currentIndex() + 1);
    });
    QMenu* helpMenu = menuBar()->addMenu(tr("&Help"));
    helpMenu->addAction(tr("&About Trazel"), this, &TrazelWindow::showAbout);
}

void TrazelWindow::buildPanel() {
    auto* panel = new QWidget;
    auto* layout = new QVBoxLayout(panel);

    versusBox_ = new QGroupBox(tr("Concentration against"));
    auto* versusLayout = new QVBoxLayout(versusBox_);
    overDistance_ = new QRadioButton(tr("Distance (a curve per time)"));
    overDistance_->setObjectName("versusDistance");
    overTime_ = new QRadioButton(tr("Time (a curve per position)"));
    overTime_->setObjectName("versusTime");
    versusLayout->addWidget(overDistance_);
    versusLayout->addWidget(overTime_);
    auto* versusGroup = new QButtonGroup(this);
    versusGroup->addButton(overDistance_);
    versusGroup->addButton(overTime_);
    connect(versusGroup, &QButtonGroup::buttonClicked, this, [this](QAbstractButton* b) {
        if (syncing_) return;
        const Versus v = b == overTime_ ? Versus::Time : Versus::Distance;
        if (v == view_.versus) return;
        view_.versus = v;
        view_.automaticCurves = true;
        view_.shown.clear();
        syncControls();
        refresh(false);
    });
    layout->addWidget(versusBox_);

    curvesBox_ = new QGroupBox(tr("Curves"));
    auto* curvesLayout = new QVBoxLayout(curvesBox_);
    curveList_ = new QListWidget;
    curveList_->setObjectName("curveList");
    curvesLayout->addWidget(curveList_);
    auto* buttons = new QHBoxLayout;
    auto* all = new QPushButton(tr("All"));
    auto* none = new QPushButton(tr("None"));
    auto* automatic = new QPushButton(tr("Spread"));
    automatic->setToolTip(tr("A few curves spread evenly from the first to the last"));
    for (QPushButton* b : {all, none, automatic}) buttons->addWidget(b);
    curvesLayout->addLayout(buttons);
    connect(curveList_, &QListWidget::itemChanged, this, [this] {
        if (syncing_) return;
        view_.automaticCurves = false;
        view_.shown.clear();
        for (int i = 0; i < curveList_->count(); ++i)
            if (curveList_->item(i)->checkState() == Qt::Checked) view_.shown.push_back(i);
        refresh(true);
    });
    auto choose = [this](bool automaticCurves, int count) {
        view_.automaticCurves = automaticCurves;
        view_.shown.clear();
        for (int i = 0; i < count; ++i) view_.shown.push_back(i);
        syncControls();
        refresh(true);
    };
    connect(all, &QPushButton::clicked, this, [this, choose] { choose(false, curveList_->count()); });
    connect(none, &QPushButton::clicked, this, [choose] { choose(false, 0); });
    connect(automatic, &QPushButton::clicked, this, [choose] { choose(true, 0); });
    layout->addWidget(curvesBox_);

    residualBox_ = new QGroupBox(tr("Residuals against"));
    auto* residualLayout = new QVBoxLayout(residualBox_);
    residualsByTime_ = new QRadioButton(tr("Time"));
    residualsByTime_->setObjectName("residualsTime");
    residualsByNumber_ = new QRadioButton(tr("Observation number"));
    residualsByNumber_->setObjectName("residualsNumber");
    residualLayout->addWidget(residualsByTime_);
    residualLayout->addWidget(residualsByNumber_);
    auto* residualGroup = new QButtonGroup(this);
    residualGroup->addButton(residualsByTime_);
    residualGroup->addButton(residualsByNumber_);
    connect(residualGroup, &QButtonGroup::buttonClicked, this, [this](QAbstractButton* b) {
        if (syncing_) return;
        view_.residualsByNumber = b == residualsByNumber_;
        refresh(false);
    });
    layout->addWidget(residualBox_);

    sliceBox_ = new QGroupBox(tr("Show"));
    auto* sliceLayout = new QFormLayout(sliceBox_);
    timeCombo_ = new QComboBox;
    timeCombo_->setObjectName("timeSelector");
    planeCombo_ = new QComboBox;
    planeCombo_->setObjectName("planeSelector");
    sectionYCombo_ = new QComboBox;
    sectionYCombo_->setObjectName("sectionYSelector");
    sectionXCombo_ = new QComboBox;
    sectionXCombo_->setObjectName("sectionXSelector");
    sliceLayout->addRow(tr("Time"), timeCombo_);
    sliceLayout->addRow(tr("Plane"), planeCombo_);
    sliceLayout->addRow(tr("Section x\u2013z at"), sectionYCombo_);
    sliceLayout->addRow(tr("Section y\u2013z at"), sectionXCombo_);
    for (auto [combo, choice] : {std::pair{sectionYCombo_, &ViewState::sectionY}, std::pair{sectionXCombo_, &ViewState::sectionX}})
        connect(combo, &QComboBox::currentIndexChanged, this, [this, choice](int i) {
            if (syncing_ || i < 0) return;
            view_.*choice = i;
            refresh(true);
        });
    connect(timeCombo_, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (syncing_ || i < 0) return;
        view_.time = i;
        refresh(true);
    });
    connect(planeCombo_, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (syncing_ || i < 0) return;
        view_.plane = i;
        refresh(true);
    });
    layout->addWidget(sliceBox_);

    variantBox_ = new QGroupBox(tr("Variant"));
    auto* variantLayout = new QVBoxLayout(variantBox_);
    variantCombo_ = new QComboBox;
    variantCombo_->setObjectName("variantSelector");
    variantLayout->addWidget(variantCombo_);
    connect(variantCombo_, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (syncing_ || i < 0) return;
        view_.variant = i;
        refresh(false);
        updateDetails();
    });
    layout->addWidget(variantBox_);

    binsBox_ = new QGroupBox(tr("Histogram"));
    auto* binsLayout = new QFormLayout(binsBox_);
    binsSpin_ = new QSpinBox;
    binsSpin_->setObjectName("binsSelector");
    binsSpin_->setRange(0, 200);
    binsSpin_->setSpecialValueText(tr("Automatic"));
    binsLayout->addRow(tr("Bins"), binsSpin_);
    connect(binsSpin_, &QSpinBox::valueChanged, this, [this](int n) {
        if (syncing_) return;
        view_.bins = n;
        refresh(false);
    });
    layout->addWidget(binsBox_);

    auto* detailsBox = new QGroupBox(tr("File"));
    auto* detailsLayout = new QVBoxLayout(detailsBox);
    details_ = new QPlainTextEdit;
    details_->setObjectName("details");
    details_->setReadOnly(true);
    details_->setLineWrapMode(QPlainTextEdit::NoWrap);
    detailsLayout->addWidget(details_);
    layout->addWidget(detailsBox, 1);

    auto* dock = new QDockWidget(tr("View"), this);
    dock->setObjectName("viewPanel");
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    dock->setWidget(panel);
    dock->setMinimumWidth(250);
    addDockWidget(Qt::RightDockWidgetArea, dock);
}

bool TrazelWindow::openFile(const QString& path, QString* error) {
    // The read runs on its own thread; this loop keeps the window painting,
    // and the progress dialog (shown when a read takes a while) can cancel it.
    auto result = std::make_shared<ReadResult>();
    const std::string name = QFile::encodeName(path).toStdString();
    ReadTask task;
    QEventLoop loop;
    connect(&task, &ReadTask::done, &loop, &QEventLoop::quit);
    QProgressDialog progress(tr("Reading %1 ...").arg(QFileInfo(path).fileName()), tr("Cancel"), 0, 1000, this);
    progress.setObjectName("readProgress");
    progress.setWindowTitle(tr("Trazel"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(400);
    progress.setAutoReset(false);
    progress.setAutoClose(false);
    connect(&progress, &QProgressDialog::canceled, &task, &ReadTask::cancel);
    QTimer ticker;
    connect(&ticker, &QTimer::timeout, &progress, [&] {
        if (progress.wasCanceled()) task.cancel();
        else progress.setValue(static_cast<int>(task.fraction() * 1000));
    });
    ticker.start(100);
    progress.setValue(0);
    task.start([result, name, limits = limits_](const ReadProgress& report) { *result = readPlotFile(name, limits, report); });
    loop.exec();
    ticker.stop();
    progress.hide();
    readCancelled_ = result->cancelled;
    if (!result->ok) {
        if (error) *error = qs(result->error);
        return false;
    }
    ReadResult& r = *result;
    const bool sameFile = loaded_ && QFileInfo(path) == QFileInfo(path_) && r.file.kind == file_.kind;
    sliceTask_->cancel();
    fetchTime_ = fetchPlane_ = -1;
    file_ = std::move(r.file);
    path_ = path;
    loaded_ = true;
    if (!sameFile) view_ = ViewState{};  // a reload keeps the choices that still fit
    view_ = clampedView(file_, view_);
    updateTitle();
    fillControls();
    refresh(sameFile);
    updateDetails();
    if (!file_.warnings.empty()) statusBar()->showMessage(qs(file_.warnings.front()), 10000);
    return true;
}

void TrazelWindow::updateTitle() {
    const QString name = QFileInfo(path_).fileName();
    setWindowTitle(file_.incomplete.empty() ? tr("%1 \u2013 Trazel").arg(name)
                                            : tr("%1 (incomplete: %2) \u2013 Trazel").arg(name, qs(file_.incomplete)));
}

bool TrazelWindow::fetchingPlane() const { return sliceTask_->running(); }

void TrazelWindow::fetchShownPlane() {
    if (!loaded_ || planeInFull(file_, view_)) return;
    if (sliceTask_->running() && fetchTime_ == view_.time && fetchPlane_ == view_.plane) return;
    // What a second read needs of the file: its layout, not its values.
    PlotFile basis;
    basis.kind = file_.kind;
    basis.timeVarying = file_.timeVarying;
    basis.axes = file_.axes;
    basis.blockStarts = file_.blockStarts;
    fetchTime_ = view_.time;
    fetchPlane_ = view_.plane;
    auto result = std::make_shared<SliceResult>();
    fetched_ = result;
    fetchProgress_->setValue(0);
    fetchProgress_->show();
    sliceTask_->start([result, basis = std::move(basis), name = QFile::encodeName(path_).toStdString(), time = fetchTime_,
                       plane = fetchPlane_, limits = limits_](const ReadProgress& report) {
        *result = readSlice(name, basis, time, plane, limits, report);
    });
}

void TrazelWindow::planeFetched() {
    fetchProgress_->hide();
    const std::shared_ptr<SliceResult> result = std::move(fetched_);
    if (!result || !result->slice) {
        if (result && !result->cancelled && !result->error.empty())
            statusBar()->showMessage(tr("The plane could not be read in full: %1").arg(qs(result->error)), 10000);
        return;
    }
    if (result->slice->time != view_.time || result->slice->plane != view_.plane) {
        fetchShownPlane();  // the view moved on meanwhile
        return;
    }
    file_.focus = result->slice;
    refresh(true);
}

bool TrazelWindow::openFileOrSay(const QString& path) {
    QString error;
    if (openFile(path, &error)) return true;
    if (readCancelled_) return false;  // the user knows why
    QMessageBox box(QMessageBox::Warning, tr("Trazel"), tr("Trazel cannot plot the file\n%1").arg(QDir::toNativeSeparators(path)),
                    QMessageBox::Ok, this);
    box.setObjectName("cannotPlotBox");
    box.setInformativeText(error);
    box.exec();
    return false;
}

void TrazelWindow::setView(const ViewState& view) {
    view_ = clampedView(file_, view);
    syncControls();
    refresh(false);
    updateDetails();
}

void TrazelWindow::fillControls() {
    syncing_ = true;
    const bool profile = loaded_ && file_.kind == PlotKind::Profile;
    const bool contours = loaded_ && (file_.kind == PlotKind::Plane || file_.kind == PlotKind::Volume);
    const bool histogram = loaded_ && (file_.kind == PlotKind::Simulation || file_.kind == PlotKind::Generated);
    const bool fit = loaded_ && file_.kind == PlotKind::Fit;
    versusBox_->setVisible(profile);
    curvesBox_->setVisible(profile || fit);
    curvesBox_->setTitle(fit ? tr("Places") : tr("Curves"));
    residualBox_->setVisible(fit);
    residuals_->setVisible(fit);
    sliceBox_->setVisible(contours);
    variantBox_->setVisible(loaded_ && file_.kind == PlotKind::Generated);
    binsBox_->setVisible(histogram);
    distanceAction_->setEnabled(profile);
    timeAction_->setEnabled(profile);
    previousAction_->setEnabled(contours);
    nextAction_->setEnabled(contours);
    for (QAction* a : fileActions_) a->setEnabled(loaded_);

    const bool volume = loaded_ && file_.kind == PlotKind::Volume;
    sections_->setVisible(volume);
    timeCombo_->clear();
    planeCombo_->clear();
    sectionYCombo_->clear();
    sectionXCombo_->clear();
    variantCombo_->clear();
    if (contours) {
        for (const std::string& n : timeNames(file_)) timeCombo_->addItem(qs(n));
        for (const std::string& n : planeNames(file_)) planeCombo_->addItem(qs(n));
    }
    if (volume) {
        const std::string unit = file_.lengthUnit.empty() ? "" : " " + file_.lengthUnit;
        for (double y : file_.axes.y) sectionYCombo_->addItem(qs("y = " + plainNumber(y) + unit));
        for (double x : file_.axes.x) sectionXCombo_->addItem(qs("x = " + plainNumber(x) + unit));
    }
    auto* form = static_cast<QFormLayout*>(sliceBox_->layout());
    form->setRowVisible(planeCombo_, volume);
    form->setRowVisible(sectionYCombo_, volume);
    form->setRowVisible(sectionXCombo_, volume);
    if (loaded_)
        for (const Variant& v : file_.variants) variantCombo_->addItem(qs(v.name));
    syncing_ = false;
    syncControls();
}

void TrazelWindow::syncControls() {
    syncing_ = true;
    overDistance_->setChecked(view_.versus == Versus::Distance);
    overTime_->setChecked(view_.versus == Versus::Time);
    distanceAction_->setChecked(view_.versus == Versus::Distance);
    timeAction_->setChecked(view_.versus == Versus::Time);
    curveList_->clear();
    residualsByTime_->setChecked(!view_.residualsByNumber);
    residualsByNumber_->setChecked(view_.residualsByNumber);
    if (loaded_ && (file_.kind == PlotKind::Profile || file_.kind == PlotKind::Fit)) {
        const auto names = curveNames(file_, view_.versus);
        const auto shown = view_.automaticCurves ? automaticSelection(static_cast<int>(names.size())) : view_.shown;
        for (std::size_t i = 0; i < names.size(); ++i) {
            auto* item = new QListWidgetItem(qs(names[i]), curveList_);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
            const bool on = std::find(shown.begin(), shown.end(), static_cast<int>(i)) != shown.end();
            item->setCheckState(on ? Qt::Checked : Qt::Unchecked);
        }
    }
    timeCombo_->setCurrentIndex(view_.time);
    planeCombo_->setCurrentIndex(view_.plane);
    sectionYCombo_->setCurrentIndex(view_.sectionY);
    sectionXCombo_->setCurrentIndex(view_.sectionX);
    variantCombo_->setCurrentIndex(view_.variant);
    binsSpin_->setValue(view_.bins);
    syncing_ = false;
}

void TrazelWindow::refresh(bool keepZoom) {
    if (!loaded_) {
        Scene empty;
        empty.note = "Open a plot file with File > Open.";
        plot_->setScene(empty, false);
        return;
    }
    view_ = clampedView(file_, view_);
    plot_->setScene(buildScene(file_, view_), keepZoom);
    if (file_.kind == PlotKind::Fit) residuals_->setScene(buildResidualScene(file_, view_), keepZoom);
    if (file_.kind == PlotKind::Volume) {
        sectionXZ_->setScene(buildSectionScene(file_, view_, Section::XZ), keepZoom);
        sectionYZ_->setScene(buildSectionScene(file_, view_, Section::YZ), keepZoom);
    }
    fetchShownPlane();
}

void TrazelWindow::updateDetails() {
    if (!loaded_) {
        details_->clear();
        return;
    }
    QString text;
    if (!file_.incomplete.empty()) text += tr("Incomplete: %1.\n").arg(qs(file_.incomplete));
    for (const std::string& w : file_.warnings) text += tr("Note: %1\n").arg(qs(w));
    if (file_.reduced)
        text += tr("Note: a large grid; the overview keeps %1 \u00d7 %2 of its %3 \u00d7 %4 nodes, the plane shown has all.\n")
                    .arg(file_.grid.nx())
                    .arg(file_.grid.ny())
                    .arg(file_.axes.x.size())
                    .arg(file_.axes.y.size());
    if (!text.isEmpty()) text += "\n";
    if (file_.kind == PlotKind::Simulation) {
        text += statistics(file_.samples) + "\n" + headerText(file_.header);
    } else if (file_.kind == PlotKind::Generated) {
        const Variant& v = file_.variants[static_cast<std::size_t>(view_.variant)];
        text += tr("Variant: %1\n\nInput data\n").arg(qs(v.name)) + headerText(v.inputs) + tr("\nOutput data\n") +
                headerText(v.outputs) + tr("\nSamples\n") + statistics(v.samples);
    } else {
        text += headerText(file_.header);
    }
    text += tr("\nFile: %1\n").arg(QDir::toNativeSeparators(path_));
    details_->setPlainText(text);
}

void TrazelWindow::chooseFile() {
    const QString start = path_.isEmpty() ? QString() : QFileInfo(path_).absolutePath();
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Plot File"), start,
                                                      tr("Plot Files (*.plt);;Output (*.out);;All Files (*)"));
    if (!path.isEmpty()) openFileOrSay(path);
}

void TrazelWindow::reload() {
    if (loaded_) openFileOrSay(path_);
}

Panels TrazelWindow::shownPanels() const {
    Panels panels{Panel{&plot_->scene(), plot_->window(), static_cast<double>(std::max(1, plot_->height()))}};
    if (loaded_ && file_.kind == PlotKind::Fit)
        panels.push_back(Panel{&residuals_->scene(), residuals_->window(), static_cast<double>(std::max(1, residuals_->height()))});
    return panels;
}

QSize TrazelWindow::exportSize() const {
    QSize size = plot_->size();
    if (loaded_ && file_.kind == PlotKind::Fit) size.rheight() += residuals_->height();
    return size.expandedTo(QSize(800, 560));
}

bool TrazelWindow::exportPng(const QString& path, QString* error) const {
    // The picture as on screen, at twice the pixels for a crisp result.
    return writePng(shownPanels(), path, exportSize(), error, 2);
}

bool TrazelWindow::exportSvg(const QString& path, QString* error) const {
    return writeSvg(shownPanels(), path, exportSize(), error);
}

bool TrazelWindow::exportCsv(const QString& path, QString* error) const { return writeText(csvText(file_, view_), path, error); }

QString TrazelWindow::suggestedName(const QString& suffix) const {
    const QFileInfo info(path_);
    return info.absolutePath() + "/" + info.completeBaseName() + "." + suffix;
}

void TrazelWindow::askAndExport(const QString& caption, const QString& filter, const QString& suffix,
                                bool (TrazelWindow::*write)(const QString&, QString*) const) {
    QString path = QFileDialog::getSaveFileName(this, caption, suggestedName(suffix), filter);
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().isEmpty()) path += "." + suffix;
    QString error;
    if ((this->*write)(path, &error)) statusBar()->showMessage(tr("Written: %1").arg(QDir::toNativeSeparators(path)), 5000);
    else QMessageBox::warning(this, tr("Trazel"), error);
}

void TrazelWindow::exportPngAs() { askAndExport(tr("Export as PNG"), tr("PNG Pictures (*.png)"), "png", &TrazelWindow::exportPng); }
void TrazelWindow::exportSvgAs() { askAndExport(tr("Export as SVG"), tr("SVG Drawings (*.svg)"), "svg", &TrazelWindow::exportSvg); }
void TrazelWindow::exportCsvAs() {
    askAndExport(tr("Export as CSV"), tr("Comma-Separated Values (*.csv)"), "csv", &TrazelWindow::exportCsv);
}

void TrazelWindow::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(QFileInfo(path_).fileName());
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) printScene(printer, shownPanels());
}

void TrazelWindow::showAbout() {
    QMessageBox::about(this, tr("About Trazel"),
                       tr("<b>Trazel</b><p>The plotting utility of the ORVA suite: concentration profiles, "
                          "contour maps of C/Co, Monte Carlo histograms, and fits to observations with their residuals "
                          "from the workbench's plot files.</p>"
                          "<p>A contour plot opens at the last time and, in three dimensions, in the plane of the "
                          "largest concentration, with the x\u2013z and y\u2013z sections beside it. The status line "
                          "gives the coordinates and the value under the pointer.</p>"
                          "<p>Drag a rectangle to zoom; right-click or double-click to see the whole plot.</p>"));
}

}  // namespace bm::trazel
