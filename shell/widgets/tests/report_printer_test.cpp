#include <gtest/gtest.h>

#include <QFile>
#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <vector>

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

namespace {

struct Word {
    double xMin, yMin, xMax, yMax;
    QString text;
};

struct Page {
    double width = 0, height = 0;
    std::vector<Word> words;
};

// The words of the first page of a PDF with their boxes, in points.
Page firstPage(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), QStringLiteral("-f"), QStringLiteral("1"),
                                          QStringLiteral("-l"), QStringLiteral("1"), pdf, QStringLiteral("-")});
    p.waitForFinished(20000);
    const QString xml = QString::fromUtf8(p.readAllStandardOutput());
    Page page;
    const auto size = QRegularExpression(QStringLiteral("<page width=\"([0-9.]+)\" height=\"([0-9.]+)\"")).match(xml);
    page.width = size.captured(1).toDouble();
    page.height = size.captured(2).toDouble();
    const QRegularExpression word(
        QStringLiteral("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" yMax=\"([0-9.]+)\">([^<]*)</word>"));
    auto it = word.globalMatch(xml);
    while (it.hasNext()) {
        const auto m = it.next();
        page.words.push_back({m.captured(1).toDouble(), m.captured(2).toDouble(), m.captured(3).toDouble(),
                              m.captured(4).toDouble(), m.captured(5)});
    }
    return page;
}

const Word* find(const Page& page, const QString& text) {
    for (const Word& w : page.words)
        if (w.text == text) return &w;
    return nullptr;
}

constexpr double kPointsPerMm = 72.0 / 25.4;

void expectMargins(const Page& page, const char* paper) {
    ASSERT_FALSE(page.words.empty()) << paper;
    for (const Word& w : page.words) {
        EXPECT_GE(w.xMin, 20 * kPointsPerMm - 0.5) << paper << " " << w.text.toStdString();
        EXPECT_GE(w.yMin, 15 * kPointsPerMm - 0.5) << paper << " " << w.text.toStdString();
        EXPECT_LE(w.xMax, page.width - 15 * kPointsPerMm + 0.5) << paper << " " << w.text.toStdString();
        EXPECT_LE(w.yMax, page.height - 15 * kPointsPerMm + 0.5) << paper << " " << w.text.toStdString();
    }
}

PrintedReport aReport() {
    PrintedReport r;
    r.title = QStringLiteral("Ground Water Model (Saturated)");
    r.tabStopsMm = {20, 60};
    r.lines << QStringLiteral("Field and Chemical Properties:") << QStringLiteral("  Velocity:\t0.05\tm/day")
            << QStringLiteral("  A caption much longer than the column allows for:\t0.5\tm2/day")
            << QStringLiteral("  Porosity:\t0.3");
    for (int i = 1; i <= 60; ++i) r.lines << QStringLiteral("row %1\t%2").arg(i).arg(i * 10);
    return r;
}

}  // namespace

TEST(ReportPrinter, ColumnStopsMoveForTheLongestCaptionBeforeThem) {
    PrintedReport r;
    r.lines << QStringLiteral("ab\tc\td") << QStringLiteral("abcdefgh\tc") << QStringLiteral("a\t\tlonger text\te");
    const auto width = [](const QString& s) { return static_cast<int>(s.size()) * 10; };
    // Given stops at 30 and 60: "abcdefgh" (80) pushes the first to 85; "c" then the second to 100;
    // "longer text" (110, starting at 100) the third to 215.
    EXPECT_EQ(alignedStops(r, {0, 30, 60, 90}, 5, width), (QList<int>{0, 85, 100, 215}));
}

TEST(ReportPrinter, APageKeepsItsMarginsOnA4AndLetter) {
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) GTEST_SKIP() << "no pdftotext";
    testkit::TempDir dir;
    for (const auto paper : {PrintedReport::Paper::A4, PrintedReport::Paper::Letter}) {
        PrintedReport r = aReport();
        r.paper = paper;
        const QString pdf = QString::fromStdString(dir.file("margins.pdf"));
        ASSERT_TRUE(printReportToPdf(r, pdf));
        const Page page = firstPage(pdf);
        const char* name = paper == PrintedReport::Paper::A4 ? "A4" : "Letter";
        EXPECT_NEAR(page.width, paper == PrintedReport::Paper::A4 ? 595.3 : 612, 1) << name;
        expectMargins(page, name);
        // The left margin is the one asked for, not more.
        EXPECT_NEAR(find(page, "Ground")->xMin, 20 * kPointsPerMm, 1) << name;
    }
}

TEST(ReportPrinter, APrinterWithoutMarginsGetsThemToo) {
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) GTEST_SKIP() << "no pdftotext";
    testkit::TempDir dir;
    const QString pdf = QString::fromStdString(dir.file("edge.pdf"));
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
    printer.setPageSize(QPageSize(QPageSize::Letter));
    printer.setPageMargins(QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter);
    printer.setFullPage(true);
    ASSERT_TRUE(printLines(aReport(), printer));
    expectMargins(firstPage(pdf), "a printer without margins");
}

TEST(ReportPrinter, ColumnsStayStraightWhateverTheCaptionLength) {
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) GTEST_SKIP() << "no pdftotext";
    testkit::TempDir dir;
    const QString pdf = QString::fromStdString(dir.file("columns.pdf"));
    ASSERT_TRUE(printReportToPdf(aReport(), pdf));
    const Page page = firstPage(pdf);
    const Word *a = find(page, "0.05"), *b = find(page, "0.5"), *c = find(page, "0.3"), *allows = find(page, "for:");
    ASSERT_TRUE(a && b && c && allows);
    EXPECT_NEAR(a->xMin, b->xMin, 0.01);
    EXPECT_NEAR(a->xMin, c->xMin, 0.01);
    EXPECT_GT(a->xMin, allows->xMax + 3);  // behind the longest caption, with a gap
    EXPECT_NEAR(find(page, "m/day")->xMin, find(page, "m2/day")->xMin, 0.01);
}
