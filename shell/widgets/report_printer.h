#pragma once
// Printing of text reports: lines whose tab characters jump to column stops,
// paged onto a printer chosen in the platform's print dialog, or into a PDF file.

#include <QList>
#include <QString>
#include <QStringList>

class QPrinter;
class QWidget;

namespace bm {

struct PrintedReport {
    QString title;             // the document name and the running head
    QStringList lines;         // "\t" moves to the next column stop
    QList<double> tabStopsMm;  // column stops from the left margin; empty: every 30 mm
    double fontPoints = 10.0;
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

// The column stops (in device pixels) that a line's tab-separated cells start at.
QList<int> tabStopPixels(const PrintedReport& report, double dotsPerMm, int cellCount);

}  // namespace bm
