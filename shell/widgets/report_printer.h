#pragma once
// Printing of text reports: lines whose tab characters jump to column stops,
// paged onto a printer chosen in the platform's print dialog, or into a PDF file.
// A page keeps margins of at least 20 mm on the left and 15 mm elsewhere,
// whatever the printer offers, on A4 and Letter alike. A column stop moves
// right, for every line, as far as its longest preceding cell needs, so the
// columns stay straight whatever the length of a caption.

#include <QList>
#include <functional>
#include <QString>
#include <QStringList>
#include <string>
#include <vector>

class QPrinter;
class QWidget;

namespace bm {

struct PrintedReport {
    QString title;             // the document name and the running head
    QStringList lines;         // "\t" moves to the next column stop
    QList<double> tabStopsMm;  // column stops from the left margin; empty: every 30 mm
    double fontPoints = 10.0;
    enum class Paper { A4, Letter };
    Paper paper = Paper::A4;  // for a PDF file; a printer keeps its own
};

// The printer that Print and Printer Setup share during a session.
QPrinter& sharedPrinter();

// Paints the report on a printer that is set up already; false when the
// printer cannot be started.
bool printLines(const PrintedReport& report, QPrinter& printer);
// The platform's print dialog (printing to a PDF file is one of its choices), then printing.
// False when cancelled or failed.
bool printReportWithDialog(const PrintedReport& report, QWidget* parent);
// Writes the report to a PDF file without a dialog.
bool printReportToPdf(const PrintedReport& report, const QString& pdfPath);

// A report of a screen whose tab columns count characters (as Tab(n) does):
// each column as wide as a figure of the report's font at the screen's
// resolution, so that a label never reaches the column of its value. Printed
// through the print dialog, or into `pdfPath` when it is not empty.
bool printColumnReport(const QString& title, const std::vector<std::string>& lines,
                       const std::vector<int>& tabColumns, QWidget* screen, const QString& pdfPath);

// The column stops (in device pixels) that a line's tab-separated cells start at.
QList<int> tabStopPixels(const PrintedReport& report, double dotsPerMm, int cellCount);
// The stops moved right where a cell before them would reach them: `width`
// gives a cell's width and `gap` is kept after it. Every line's cell k starts
// at the k-th returned stop.
QList<int> alignedStops(const PrintedReport& report, const QList<int>& stops, int gap,
                        const std::function<int(const QString&)>& width);

}  // namespace bm
