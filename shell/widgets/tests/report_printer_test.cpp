#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include "testing/qt_test_support.h"
#include "shell/widgets/report_printer.h"
#include "testing/test_paths.h"

using namespace bm;

namespace {
QString pdfText(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    if (!p.waitForFinished(20000)) return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}
}  // namespace

TEST(ReportPrinter, TabStopsAreColumnsFromTheMargin) {
    PrintedReport r;
    EXPECT_EQ(tabStopPixels(r, 10.0, 3), (QList<int>{0, 300, 600}));  // every 30 mm by default
    r.tabStopsMm = {50, 80};
    EXPECT_EQ(tabStopPixels(r, 10.0, 4), (QList<int>{0, 500, 800, 1100}));
}

TEST(ReportPrinter, APdfHoldsTheLinesInTheirColumnsOnNumberedPages) {
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) GTEST_SKIP() << "no pdftotext";
    testkit::TempDir dir;
    const QString pdf = QString::fromStdString(dir.file("report.pdf"));
    PrintedReport r;
    r.title = QStringLiteral("Saturated Ground Water Model");
    r.tabStopsMm = {60, 100};
    r.lines << QStringLiteral("Properties:") << QStringLiteral("Velocity\t0.05\tm/day")
            << QStringLiteral("Dispersion_X\t0.5\tm2/day");
    for (int i = 1; i <= 150; ++i) r.lines << QStringLiteral("row %1\t%2").arg(i).arg(i * 10);
    ASSERT_TRUE(printReportToPdf(r, pdf));
    ASSERT_TRUE(QFile::exists(pdf));
    const QString text = pdfText(pdf);
    ASSERT_FALSE(text.isEmpty());
    EXPECT_TRUE(text.contains("Saturated Ground Water Model"));
    // The cells of a line stand on one text line, in column order, apart.
    const QStringList lines = text.split(u'\n');
    bool found = false;
    for (const QString& l : lines)
        if (l.contains("Velocity")) {
            found = true;
            const auto a = l.indexOf("Velocity"), b = l.indexOf("0.05"), c = l.indexOf("m/day");
            EXPECT_LT(a, b);
            EXPECT_LT(b, c);
            EXPECT_GT(b - a, 12);  // the column stop, not a blank after the word
        }
    EXPECT_TRUE(found);
    EXPECT_TRUE(text.contains("row 150"));
    EXPECT_TRUE(text.contains("Page 1 of"));
    EXPECT_TRUE(text.contains("Page 2 of"));
}

TEST(ReportPrinter, AnUnwritablePdfFails) {
    PrintedReport r;
    r.lines << QStringLiteral("x");
    EXPECT_FALSE(printReportToPdf(r, QStringLiteral("/no/such/folder/report.pdf")));
}
