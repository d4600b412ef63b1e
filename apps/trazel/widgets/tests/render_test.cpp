// Each kind of plot rendered offscreen: not blank, and drawn in the colours
// its data calls for.
#include <QImage>
#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

#include "apps/trazel/widgets/picture_export.h"
#include "apps/trazel/widgets/tests/picture_check.h"
#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

using testing::colourShare;
using testing::inkShare;
using testing::pixelsOf;

PlotFile fixture(const std::string& name) {
    ReadResult r = readPlotFile(testkit::fixturePath("apps/trazel", name).string());
    EXPECT_TRUE(r.ok) << r.error;
    return r.file;
}

QImage render(const PlotFile& f, const ViewState& view = {}, QSize size = QSize(900, 600)) {
    const Scene s = buildScene(f, view);
    return renderScene(s, fullWindow(s), size);
}

TEST(Render, ProfileDrawsEachCurveInItsColour) {
    const QImage image = render(fixture("profile_1d.plt"));
    ASSERT_EQ(image.size(), QSize(900, 600));
    EXPECT_GT(inkShare(image), 0.08);
    EXPECT_GT(colourShare(image), 0.01);
    for (int k = 0; k < 4; ++k) EXPECT_GT(pixelsOf(image, curveColour(k)), 150) << "curve " << k;
    EXPECT_LT(pixelsOf(image, curveColour(4)), 20);  // there is no fifth time
}

TEST(Render, ProfileOverTime) {
    ViewState view;
    view.versus = Versus::Time;
    const QImage image = render(fixture("profile_1d.plt"), view);
    EXPECT_GT(colourShare(image), 0.015);
    EXPECT_GT(pixelsOf(image, curveColour(9)), 100);  // x = 90 m, the ninth shown curve
}

TEST(Render, ContoursFillThePlotWithSeveralBands) {
    const PlotFile f = fixture("plane_2d.plt");
    const Scene s = buildScene(f, {});
    const QImage image = renderScene(s, fullWindow(s), QSize(900, 600));
    EXPECT_GT(inkShare(image), 0.6);
    EXPECT_GT(colourShare(image), 0.6);
    const int bands = static_cast<int>(s.contours.levels.size()) - 1;
    int present = 0;
    for (int k = 0; k < bands; ++k) present += pixelsOf(image, bandColour(k, bands)) > 200;
    EXPECT_GE(present, 8) << "bands drawn: " << present << " of " << bands;
}

TEST(Render, ThreeDimensionalPlane) {
    ViewState view;
    view.plane = 1;
    view.time = 1;
    const PlotFile f = fixture("volume_3d.plt");
    const Scene s = buildScene(f, view);
    const QImage image = renderScene(s, fullWindow(s), QSize(900, 600));
    EXPECT_GT(inkShare(image), 0.5);
    const int bands = static_cast<int>(s.contours.levels.size()) - 1;
    int present = 0;
    for (int k = 0; k < bands; ++k) present += pixelsOf(image, bandColour(k, bands)) > 200;
    EXPECT_GE(present, 4);
}

TEST(Render, HistogramBarsAndCumulativeCurve) {
    for (const char* name : {"monte_carlo_1d.plt", "generated.plt"}) {
        const QImage image = render(fixture(name));
        EXPECT_GT(inkShare(image), 0.25) << name;
        EXPECT_GT(colourShare(image), 0.2) << name;
        EXPECT_GT(pixelsOf(image, QColor(120, 166, 220)), 900 * 600 / 8) << name;  // bar fill
        EXPECT_GT(pixelsOf(image, curveColour(1)), 300) << name;                   // the cumulative curve
    }
}

TEST(Render, TimeVaryingSources) {
    EXPECT_GT(colourShare(render(fixture("time_varying_line.plt"))), 0.01);
    EXPECT_GT(colourShare(render(fixture("time_varying_point.plt"))), 0.5);
}

TEST(Render, AnEmptySceneIsMostlyBackground) {
    Scene empty;
    empty.note = "Nothing";
    const QImage image = renderScene(empty, fullWindow(empty), QSize(900, 600));
    EXPECT_LT(inkShare(image), 0.01);  // the checks above can fail
    EXPECT_LT(colourShare(image), 0.001);
}

TEST(Render, ZoomShowsLessOfTheData) {
    const PlotFile f = fixture("profile_1d.plt");
    const Scene s = buildScene(f, {});
    Window w = fullWindow(s);
    w.x0 = 60;  // only the tails beyond 60 m: the curve of t = 10 day lies on 0 there
    w.y0 = 0.2;
    const QImage image = renderScene(s, w, QSize(900, 600));
    const QImage plotPart = image.copy(0, 0, 650, 600);  // left of the legend
    EXPECT_LT(pixelsOf(plotPart, curveColour(0)), 5);
    EXPECT_GT(pixelsOf(plotPart, curveColour(3)), 150);
}

TEST(Render, PrintsOnAnyResolution) {
    // A small and a large picture of the same scene: both carry the curves.
    const PlotFile f = fixture("profile_1d.plt");
    EXPECT_GT(pixelsOf(render(f, {}, QSize(400, 300)), curveColour(3)), 40);
    EXPECT_GT(pixelsOf(render(f, {}, QSize(2400, 1600)), curveColour(3)), 600);
}

TEST(Render, PrintsThePlotOnAPage) {
    const PlotFile f = fixture("monte_carlo_1d.plt");
    const Scene s = buildScene(f, {});
    testkit::TempDir dir;
    const QString pdf = QString::fromStdString(dir.file("plot.pdf"));
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
    printer.setPageOrientation(QPageLayout::Landscape);
    printScene(printer, s, fullWindow(s));
    const QString tool = QStandardPaths::findExecutable("pdftotext");
    ASSERT_FALSE(tool.isEmpty()) << "pdftotext (poppler-utils) is needed to read the PDF back";
    QProcess p;
    p.start(tool, {pdf, "-"});
    ASSERT_TRUE(p.waitForFinished(20000));
    const QString text = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_TRUE(text.contains("Monte Carlo Simulation")) << text.toStdString();
    EXPECT_TRUE(text.contains("Number of iterations"));
    EXPECT_TRUE(text.contains("Cumulative fraction"));
}

}  // namespace
}  // namespace bm::trazel
