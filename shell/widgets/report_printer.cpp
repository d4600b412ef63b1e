#include "shell/widgets/report_printer.h"

#include <QFont>
#include <QFontMetrics>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrintDialog>
#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <QWidget>

#include "shell/widgets/page_margins.h"

namespace bm {

QPrinter& sharedPrinter() {
    static QPrinter printer(QPrinter::HighResolution);
    return printer;
}

QList<int> tabStopPixels(const PrintedReport& report, double dotsPerMm, int cellCount) {
    // Cell 0 starts at the margin, cell i at stop i-1; past the given stops, every 30 mm.
    const auto& given = report.tabStopsMm;
    QList<int> stops;
    for (int i = 0; i < cellCount; ++i) {
        double mm = 0;
        if (i > 0 && i - 1 < given.size())
            mm = given.at(i - 1);
        else if (i > 0)
            mm = (given.isEmpty() ? 0.0 : given.constLast()) + 30.0 * (i - given.size());
        stops << static_cast<int>(mm * dotsPerMm + 0.5);
    }
    return stops;
}

QList<int> alignedStops(const PrintedReport& report, const QList<int>& stops, int gap,
                        const std::function<int(const QString&)>& width) {
    QList<int> aligned = stops;
    for (int k = 1; k < aligned.size(); ++k) {
        aligned[k] = std::max(aligned[k], aligned[k - 1]);
        for (const QString& line : report.lines) {
            const QStringList cells = line.split(u'\t');
            if (k >= cells.size() || cells.at(k).isEmpty()) continue;
            // The cell that stands before this one on the line.
            for (int j = k - 1; j >= 0; --j)
                if (!cells.at(j).isEmpty()) {
                    aligned[k] = std::max(aligned[k], aligned[j] + width(cells.at(j)) + gap);
                    break;
                }
        }
    }
    return aligned;
}

bool printLines(const PrintedReport& report, QPrinter& printer) {
    printer.setDocName(report.title);
    keepLeastMargins(printer);
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(report.fontPoints);
    painter.setFont(font);
    const QFontMetrics metrics(font, painter.device());
    const QRect page = painter.viewport();
    const double dotsPerMm = printer.resolution() / 25.4;
    const int lineHeight = metrics.lineSpacing();
    const int headHeight = report.title.isEmpty() ? 0 : 2 * lineHeight;
    const int footHeight = 2 * lineHeight;
    const int usable = page.height() - headHeight - footHeight;
    const int linesPerPage = usable > lineHeight ? usable / lineHeight : 1;
    const int pageCount = static_cast<int>((report.lines.size() + linesPerPage - 1) / linesPerPage);
    int cells = 1;
    for (const QString& line : report.lines) cells = std::max(cells, static_cast<int>(line.count(u'\t')) + 1);
    const QList<int> stops = alignedStops(report, tabStopPixels(report, dotsPerMm, cells), metrics.horizontalAdvance(QStringLiteral("  ")),
                                          [&](const QString& cell) { return metrics.horizontalAdvance(cell); });

    for (int p = 0; p < std::max(pageCount, 1); ++p) {
        if (p > 0 && !printer.newPage()) break;
        int y = metrics.ascent();
        if (!report.title.isEmpty()) {
            painter.drawText(0, y, report.title);
            y += headHeight;
        }
        for (int i = p * linesPerPage; i < std::min<int>(report.lines.size(), (p + 1) * linesPerPage); ++i) {
            const QStringList lineCells = report.lines.at(i).split(u'\t');
            for (int c = 0; c < lineCells.size(); ++c) painter.drawText(stops.at(c), y, lineCells.at(c));
            y += lineHeight;
        }
        const QString foot = QStringLiteral("Page %1 of %2").arg(p + 1).arg(std::max(pageCount, 1));
        painter.drawText(page.width() - metrics.horizontalAdvance(foot), page.height() - metrics.descent(), foot);
    }
    return painter.end();
}

bool printReportWithDialog(const PrintedReport& report, QWidget* parent) {
    QPrinter& printer = sharedPrinter();
    QPrintDialog dialog(&printer, parent);
    dialog.setObjectName(QStringLiteral("CMDialog1"));
    dialog.setWindowTitle(QStringLiteral("Print"));
    if (dialog.exec() != QDialog::Accepted) return false;
    return printLines(report, printer);
}

bool printReportToPdf(const PrintedReport& report, const QString& pdfPath) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdfPath);
    printer.setPageSize(QPageSize(report.paper == PrintedReport::Paper::Letter ? QPageSize::Letter : QPageSize::A4));
    return printLines(report, printer);
}

bool printColumnReport(const QString& title, const std::vector<std::string>& lines,
                       const std::vector<int>& tabColumns, QWidget* screen, const QString& pdfPath) {
    PrintedReport report;
    report.title = title;
    for (const std::string& l : lines) report.lines << QString::fromStdString(l);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(report.fontPoints);
    const QFontMetricsF metrics(font);
    const double mmPerColumn = metrics.horizontalAdvance(QLatin1Char('0')) / screen->logicalDpiX() * 25.4;
    for (int column : tabColumns) report.tabStopsMm << (column - 1) * mmPerColumn;
    if (!pdfPath.isEmpty()) return printReportToPdf(report, pdfPath);
    return printReportWithDialog(report, screen);
}

}  // namespace bm
