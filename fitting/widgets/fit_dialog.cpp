#include "fitting/widgets/fit_dialog.h"

#include <QApplication>
#include <map>
#include <tuple>
#include <QCheckBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QLineSeries>
#include <QtCharts/QScatterSeries>
#include <QtCharts/QValueAxis>

#include "model/app_state.h"
#include "model/number_text.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "shell/screen/viewers.h"

namespace bm {

namespace {

QString q(const std::string& s) { return QString::fromStdString(s); }

enum Column { VaryColumn, NameColumn, StartColumn, LowerColumn, UpperColumn, LogColumn, ColumnCount };

QCheckBox* checkIn(QTableWidget* table, int row, int column) {
    return table->cellWidget(row, column) ? table->cellWidget(row, column)->findChild<QCheckBox*>() : nullptr;
}

QWidget* centredCheck(const QString& name, bool checked, bool enabled) {
    auto* holder = new QWidget;
    auto* layout = new QHBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* box = new QCheckBox(holder);
    box->setObjectName(name);
    box->setChecked(checked);
    box->setEnabled(enabled);
    layout->addWidget(box, 0, Qt::AlignCenter);
    return holder;
}

// A chart in a view, replacing whatever the page showed.
void showChart(QWidget* page, QChart* chart, const QString& name) {
    delete page->layout();
    for (QWidget* old : page->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) delete old;
    auto* layout = new QVBoxLayout(page);
    auto* view = new QChartView(chart, page);
    view->setObjectName(name);
    view->setRenderHint(QPainter::Antialiasing);
    layout->addWidget(view);
}

QValueAxis* axis(const QString& title) {
    auto* a = new QValueAxis;
    a->setTitleText(title);
    a->setLabelFormat(QStringLiteral("%.3g"));
    return a;
}

}  // namespace

FitDialog::FitDialog(DataSet& model, UserInterface& ui, const AppState* state, QWidget* parent)
    : QDialog(parent), model_(model), ui_(ui), state_(state), form_(model, ui) {
    setObjectName(QStringLiteral("fitForm"));
    setWindowTitle(QStringLiteral("Fit to Observations - ") + q(model.modelType));
    auto* outer = new QVBoxLayout(this);

    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(new QLabel(QStringLiteral("Observations:"), this));
    fileE_ = new QLineEdit(this);
    fileE_->setObjectName(QStringLiteral("observationFileE"));
    fileE_->setReadOnly(true);
    fileRow->addWidget(fileE_, 1);
    chooseB_ = new QPushButton(QStringLiteral("&Choose..."), this);
    chooseB_->setObjectName(QStringLiteral("chooseObservationsB"));
    fileRow->addWidget(chooseB_);
    outer->addLayout(fileRow);
    summaryL_ = new QLabel(this);
    summaryL_->setObjectName(QStringLiteral("observationSummaryL"));
    outer->addWidget(summaryL_);

    inputsTG_ = new QTableWidget(this);
    inputsTG_->setObjectName(QStringLiteral("fitInputsTG"));
    buildInputTable();
    outer->addWidget(inputsTG_);

    auto* runRow = new QHBoxLayout;
    runB_ = new QPushButton(QStringLiteral("&Fit"), this);
    runB_->setObjectName(QStringLiteral("runFitB"));
    stopB_ = new QPushButton(QStringLiteral("&Stop"), this);
    stopB_->setObjectName(QStringLiteral("stopFitB"));
    progress_ = new QProgressBar(this);
    progress_->setObjectName(QStringLiteral("fitProgress"));
    progress_->setRange(0, FitRequest{}.maxIterations);
    statusL_ = new QLabel(this);
    statusL_->setObjectName(QStringLiteral("fitStatusL"));
    runRow->addWidget(runB_);
    runRow->addWidget(stopB_);
    runRow->addWidget(progress_, 1);
    runRow->addWidget(statusL_, 1);
    outer->addLayout(runRow);

    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("fitResultsTabs"));
    reportE_ = new QPlainTextEdit(this);
    reportE_->setObjectName(QStringLiteral("fitReportE"));
    reportE_->setReadOnly(true);
    reportE_->setLineWrapMode(QPlainTextEdit::NoWrap);
    reportE_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    plotPage_ = new QWidget(this);
    plotPage_->setObjectName(QStringLiteral("fitPlotPage"));
    residualPage_ = new QWidget(this);
    residualPage_->setObjectName(QStringLiteral("fitResidualPage"));
    tabs_->addTab(reportE_, QStringLiteral("Report"));
    tabs_->addTab(plotPage_, QStringLiteral("Plot"));
    tabs_->addTab(residualPage_, QStringLiteral("Residuals"));
    outer->addWidget(tabs_, 1);

    auto* buttons = new QHBoxLayout;
    plotB_ = new QPushButton(QStringLiteral("&Plot in Trazel"), this);
    plotB_->setObjectName(QStringLiteral("plotFitB"));
    plotB_->setToolTip(QStringLiteral("The observations over the fitted curves and the residuals, in the plotting utility"));
    buttons->addWidget(plotB_);
    buttons->addStretch(1);
    applyB_ = new QPushButton(QStringLiteral("&Apply"), this);
    applyB_->setObjectName(QStringLiteral("applyFitB"));
    closeB_ = new QPushButton(QStringLiteral("Close"), this);
    closeB_->setObjectName(QStringLiteral("closeFitB"));
    buttons->addWidget(applyB_);
    buttons->addWidget(closeB_);
    outer->addLayout(buttons);

    connect(chooseB_, &QPushButton::clicked, this, [this] { chooseObservations(); });
    connect(runB_, &QPushButton::clicked, this, [this] { runFit(); });
    connect(stopB_, &QPushButton::clicked, this, [this] { stopFit(); });
    connect(applyB_, &QPushButton::clicked, this, [this] { applyFit(); });
    connect(plotB_, &QPushButton::clicked, this, [this] { plotFit(); });
    connect(closeB_, &QPushButton::clicked, this, &QDialog::reject);
    resize(900, 720);
    refresh();
}

void FitDialog::buildInputTable() {
    inputsTG_->setColumnCount(ColumnCount);
    inputsTG_->setHorizontalHeaderLabels({QStringLiteral("Vary"), QStringLiteral("Input"), QStringLiteral("Model value"),
                                          QStringLiteral("Lower bound"), QStringLiteral("Upper bound"),
                                          QStringLiteral("Log scale")});
    inputsTG_->setRowCount(static_cast<int>(form_.rows.size()));
    inputsTG_->verticalHeader()->setVisible(false);
    for (int r = 0; r < inputsTG_->rowCount(); ++r) {
        const FitInputRow& row = form_.rows[static_cast<std::size_t>(r)];
        inputsTG_->setCellWidget(r, VaryColumn, centredCheck(QStringLiteral("vary%1").arg(r), row.vary, row.enabled));
        auto* name = new QTableWidgetItem(q(row.name));
        name->setFlags(Qt::ItemIsEnabled);
        if (!row.enabled) name->setToolTip(QStringLiteral("Under Monte Carlo: this row cannot vary."));
        inputsTG_->setItem(r, NameColumn, name);
        auto* start = new QTableWidgetItem(q(row.start));
        start->setFlags(Qt::ItemIsEnabled);
        inputsTG_->setItem(r, StartColumn, start);
        for (const int c : {LowerColumn, UpperColumn}) {
            auto* bound = new QTableWidgetItem(q(c == LowerColumn ? row.lower : row.upper));
            bound->setFlags(row.enabled ? Qt::ItemIsEnabled | Qt::ItemIsEditable | Qt::ItemIsSelectable : Qt::NoItemFlags);
            inputsTG_->setItem(r, c, bound);
        }
        inputsTG_->setCellWidget(r, LogColumn, centredCheck(QStringLiteral("log%1").arg(r), row.logScale, row.enabled));
    }
    inputsTG_->horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    inputsTG_->resizeColumnsToContents();
    inputsTG_->setMinimumHeight(inputsTG_->verticalHeader()->length() + inputsTG_->horizontalHeader()->height() + 6);
}

void FitDialog::holdRows() {
    for (int r = 0; r < inputsTG_->rowCount(); ++r) {
        FitInputRow& row = form_.rows[static_cast<std::size_t>(r)];
        if (QCheckBox* box = checkIn(inputsTG_, r, VaryColumn)) row.vary = box->isChecked();
        if (QCheckBox* box = checkIn(inputsTG_, r, LogColumn)) row.logScale = box->isChecked();
        row.lower = inputsTG_->item(r, LowerColumn)->text().toStdString();
        row.upper = inputsTG_->item(r, UpperColumn)->text().toStdString();
    }
}

void FitDialog::refresh() {
    const bool running = form_.running();
    fileE_->setText(q(form_.observationFile()));
    summaryL_->setText(q(form_.observationSummary()));
    chooseB_->setEnabled(!running);
    runB_->setEnabled(!running);
    stopB_->setEnabled(running);
    applyB_->setEnabled(!running && form_.canApply());
    plotB_->setEnabled(!running && state_ != nullptr && form_.canPlot());
    closeB_->setEnabled(!running);
    inputsTG_->setEnabled(!running);
    reportE_->setPlainText(q(form_.reportText()));
}

void FitDialog::chooseObservations() {
    FileDialogRequest request;
    request.kind = FileDialogRequest::Kind::Open;
    request.title = "Observed Concentrations";
    request.filter = "Observations (*.csv;*.txt;*.dat)|*.csv;*.txt;*.dat|All Files (*.*)|*.*";
    // Where the model's file is, or where the last observations were.
    const std::string near = form_.observationFile().empty() ? model_.currentFileName : form_.observationFile();
    if (const auto slash = near.find_last_of('/'); slash != std::string::npos) request.initialDirectory = near.substr(0, slash);
    const std::optional<std::string> path = ui_.askFile(request);
    if (!path || path->empty()) return;
    form_.chooseObservations(*path);
    refresh();
}

bool FitDialog::keepGoing() {
    // Let a Stop click in now and then; every model run would be too often.
    if (!sinceEvents_.isValid() || sinceEvents_.elapsed() >= 30) {
        QApplication::processEvents();
        sinceEvents_.restart();
    }
    return !stopRequested_;
}

void FitDialog::runFit() {
    holdRows();
    stopRequested_ = false;
    progress_->setValue(0);
    statusL_->setText(QStringLiteral("Fitting..."));
    const auto progress = [this](int iteration, double sum) {
        progress_->setValue(std::min(iteration, progress_->maximum()));
        statusL_->setText(QStringLiteral("Iteration %1, sum of squares %2").arg(iteration).arg(sum, 0, 'g', 6));
    };
    setCursor(Qt::BusyCursor);
    for (QWidget* w : std::initializer_list<QWidget*>{runB_, chooseB_, applyB_, plotB_, closeB_, inputsTG_}) w->setEnabled(false);
    stopB_->setEnabled(true);
    const bool reported = form_.run(progress, [this] { return keepGoing(); });
    unsetCursor();
    statusL_->setText(reported && form_.report() ? q(form_.report()->stopReason.substr(0, form_.report()->stopReason.find(':')))
                                                 : QString());
    if (reported && form_.report() && form_.report()->ending == FitEnding::Converged) progress_->setValue(progress_->maximum());
    refresh();
    showPlots();
}

void FitDialog::showPlots() {
    const std::vector<FitCurve> curves = form_.curves();
    if (curves.empty() || !form_.report()) return;
    const bool relative = form_.report()->relative;
    const QString unit = relative ? QStringLiteral("C/Co") : QStringLiteral("C (") + q(model_.concentrationUnit) + ")";
    const QString time = QStringLiteral("Time (") + q(model_.timeUnit) + ")";

    auto* chart = new QChart;
    chart->setTitle(QStringLiteral("Observations over the fitted breakthrough curves"));
    QValueAxis* x = axis(time);
    QValueAxis* y = axis(unit);
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    for (const FitCurve& curve : curves) {
        auto* line = new QLineSeries;
        line->setName(q(curve.place));
        for (std::size_t k = 0; k < curve.times.size(); ++k) line->append(curve.times[k], curve.values[k]);
        auto* points = new QScatterSeries;
        points->setName(q(curve.place) + QStringLiteral(" observed"));
        points->setMarkerSize(7);
        for (std::size_t k = 0; k < curve.observedTimes.size(); ++k)
            points->append(curve.observedTimes[k], curve.observedValues[k]);
        chart->addSeries(line);
        chart->addSeries(points);
        points->setColor(line->color());
        for (QAbstractSeries* s : {static_cast<QAbstractSeries*>(line), static_cast<QAbstractSeries*>(points)}) {
            s->attachAxis(x);
            s->attachAxis(y);
        }
    }
    x->applyNiceNumbers();
    y->applyNiceNumbers();
    showChart(plotPage_, chart, QStringLiteral("fitChartV"));

    const FitReport& report = *form_.report();
    auto* residualChart = new QChart;
    residualChart->setTitle(QStringLiteral("Residuals (observed - model)"));
    residualChart->legend()->hide();
    QValueAxis* rx = axis(time);
    QValueAxis* ry = axis(unit);
    residualChart->addAxis(rx, Qt::AlignBottom);
    residualChart->addAxis(ry, Qt::AlignLeft);
    // The residuals of each place in the colour of its curve.
    const QList<QAbstractSeries*> drawn = chart->series();
    std::map<std::tuple<double, double, double>, QScatterSeries*> byPlace;
    double largest = 0, lastTime = 0;
    for (std::size_t i = 0; i < report.residuals.size(); ++i) {
        const Observation& o = report.observed.points[i];
        const auto key = std::make_tuple(o.x, o.y, o.z);
        QScatterSeries*& series = byPlace[key];
        if (series == nullptr) {
            series = new QScatterSeries;
            series->setMarkerSize(7);
        }
        series->append(o.t, report.residuals[i]);
        largest = std::max(largest, std::fabs(report.residuals[i]));
        lastTime = std::max(lastTime, o.t);
    }
    auto* zero = new QLineSeries;
    zero->setColor(Qt::gray);
    zero->append(0, 0);
    zero->append(lastTime, 0);
    residualChart->addSeries(zero);
    zero->attachAxis(rx);
    zero->attachAxis(ry);
    int place = 0;
    for (const auto& [key, series] : byPlace) {  // in the curves' order
        const int at = 2 * place++ + 1;
        if (at < drawn.size()) series->setColor(static_cast<QScatterSeries*>(drawn[at])->color());
        residualChart->addSeries(series);
        series->attachAxis(rx);
        series->attachAxis(ry);
    }
    if (largest == 0) largest = 1;
    ry->setRange(-1.1 * largest, 1.1 * largest);
    rx->applyNiceNumbers();
    showChart(residualPage_, residualChart, QStringLiteral("residualChartV"));
}

void FitDialog::reject() {
    if (!form_.running()) QDialog::reject();
}

void FitDialog::plotFit() {
    if (state_ == nullptr || !form_.canPlot() || form_.running()) return;
    const std::string path = fitPlotFileName(*state_);
    try {
        setCursor(Qt::BusyCursor);  // the curves are a model run per observed place
        const bool written = form_.writePlot(path);
        unsetCursor();
        if (written) viewGraph(path, *state_, ui_);
    } catch (const RuntimeError& error) {
        unsetCursor();
        handleError(error, "plotFit", path, ui_);
    }
}

void FitDialog::applyFit() {
    if (!form_.canApply()) return;
    form_.apply(model_);
    applied_ = true;
    accept();
}

}  // namespace bm
