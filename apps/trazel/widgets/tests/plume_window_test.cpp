// The window on a made-up plume whose every value is known: it opens where
// the plume is, shows the sections of a three-dimensional result, reads the
// value under the pointer, flags a partial file, fetches a plane of a large
// grid in full, and reads a file of half a gigabyte with bounded memory while
// it goes on painting.
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QProgressDialog>
#include <QSplitter>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "apps/trazel/tests/plume_file.h"
#include "apps/trazel/widgets/plot_widget.h"
#include "apps/trazel/widgets/trazel_window.h"
#include "testing/qt_test_support.h"
#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

using testing::evenly;
using testing::nodeValue;
using testing::PlumeGrid;

QString written(const testkit::TempDir& dir, const char* name, const PlumeGrid& g) {
    const std::string path = dir.file(name);
    testing::writePlumeFile(path, g);
    return QString::fromStdString(path);
}

PlumeGrid volume() {
    PlumeGrid g;
    g.x = evenly(0, 5, 13);
    g.y = evenly(-10, 2.5, 9);
    g.z = evenly(0, 2.5, 5);
    g.t = {4, 8, 12};
    return g;
}

// A window on the screen with the plume's file open.
struct ShownPlume {
    testkit::TempDir dir;
    PlumeGrid g = volume();
    TrazelWindow w;
    ShownPlume() {
        w.resize(1300, 800);
        w.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&w));
        QString error;
        EXPECT_TRUE(w.openFile(written(dir, "plume.plt", g), &error)) << error.toStdString();
    }
};

bool has(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

// The value the status line gives over a node, painted as the user sees it.
QString readoutOver(PlotWidget* plot, double x, double y) {
    QTest::qWait(20);  // let a view that has just appeared take its place
    plot->repaint();
    return plot->readoutAt(plot->frame().toPixel(x, y));
}

// Peak memory of this process so far, in megabytes.
double peakMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    return -1;
}

TEST(PlumeWindow, AThreeDimensionalPlotOpensAtTheLastTimeInThePlumesPlane) {
    ShownPlume shown;
    TrazelWindow& w = shown.w;
    EXPECT_EQ(w.view().time, 2);
    EXPECT_EQ(w.view().plane, 2);  // z = 5, where the plume is centred; z = 0 holds far less
    EXPECT_EQ(w.findChild<QComboBox*>("timeSelector")->currentText(), "t = 12 day");
    EXPECT_EQ(w.findChild<QComboBox*>("planeSelector")->currentText(), "z = 5 m");
    EXPECT_TRUE(has(w.plot()->scene().subtitle, "z = 5 m")) << w.plot()->scene().subtitle;
    // The sections beside it cut through the largest value: y = 0 and the node nearest x = 34.
    ASSERT_TRUE(w.findChild<QSplitter*>("sections")->isVisible());
    EXPECT_EQ(w.findChild<QComboBox*>("sectionYSelector")->currentText(), "y = 0 m");
    EXPECT_EQ(w.findChild<QComboBox*>("sectionXSelector")->currentText(), "x = 35 m");
    const Scene& xz = w.section(Section::XZ)->scene();
    EXPECT_TRUE(has(xz.title, "Section x")) << xz.title;
    EXPECT_TRUE(has(xz.subtitle, "y = 0 m")) << xz.subtitle;
    EXPECT_FALSE(xz.contours.polygons.empty());
    EXPECT_TRUE(has(w.section(Section::YZ)->scene().subtitle, "x = 35 m"));
    // A chosen section follows the choice.
    w.findChild<QComboBox*>("sectionYSelector")->setCurrentIndex(2);
    EXPECT_TRUE(has(w.section(Section::XZ)->scene().subtitle, "y = -5 m"));
    qtest::saveShot(&w, "trazel-3d-opening");
}

TEST(PlumeWindow, TheReadoutGivesTheValueAtANode) {
    ShownPlume shown;
    TrazelWindow& w = shown.w;
    const PlumeGrid& g = shown.g;
    // x = 30, y = 2.5 in the plane z = 5 at t = 12: the value as the file prints it.
    const double value = nodeValue(g, 30, 2.5, 5, 2);
    const QString text = readoutOver(w.plot(), 30, 2.5);
    EXPECT_TRUE(text.contains(QStringLiteral("C/Co = %1").arg(QString::number(value, 'g', 5)))) << text.toStdString() << " " << value;
    EXPECT_TRUE(text.startsWith("x (m) = 30")) << text.toStdString();
    // Between nodes the value lies within those around it.
    const QString between = readoutOver(w.plot(), 32.5, 1.25);
    const double read = between.section(QStringLiteral("C/Co = "), 1).toDouble();
    const double around[] = {nodeValue(g, 30, 0, 5, 2), nodeValue(g, 35, 0, 5, 2), nodeValue(g, 30, 2.5, 5, 2), nodeValue(g, 35, 2.5, 5, 2)};
    EXPECT_GE(read, *std::min_element(around, around + 4) * (1 - 1e-4)) << between.toStdString();
    EXPECT_LE(read, *std::max_element(around, around + 4) * (1 + 1e-4)) << between.toStdString();
    // The sections read their own values.
    PlotWidget* yz = w.section(Section::YZ);
    const QString onSection = readoutOver(yz, 0, 7.5);  // y = 0, z = 7.5 at x = 35
    EXPECT_TRUE(onSection.contains(QStringLiteral("C/Co = %1").arg(QString::number(nodeValue(g, 35, 0, 7.5, 2), 'g', 5))))
        << onSection.toStdString();
}

TEST(PlumeWindow, ATwoDimensionalPlotOpensAtTheLastTime) {
    testkit::TempDir dir;
    PlumeGrid g;
    g.x = evenly(0, 2, 31);
    g.y = evenly(-10, 1, 21);
    g.t = {5, 10, 20};
    TrazelWindow w;
    ASSERT_TRUE(w.openFile(written(dir, "plane.plt", g), nullptr));
    EXPECT_EQ(w.view().time, 2);
    EXPECT_TRUE(has(w.plot()->scene().subtitle, "t = 20 day")) << w.plot()->scene().subtitle;
    EXPECT_FALSE(w.findChild<QSplitter*>("sections")->isVisibleTo(&w));
}

TEST(PlumeWindow, APartialFileSaysSoInItsTitles) {
    TrazelWindow w;
    ASSERT_TRUE(w.openFile(QString::fromStdString(testkit::fixturePath("apps/trazel", "truncated_2d.plt").string()), nullptr));
    EXPECT_TRUE(w.windowTitle().contains("incomplete")) << w.windowTitle().toStdString();
    EXPECT_TRUE(has(w.plot()->scene().title, "incomplete: the file ends early")) << w.plot()->scene().title;
    testkit::TempDir dir;
    PlumeGrid g = volume();
    g.stopped = true;
    g.lastTimeWithValues = 0;
    ASSERT_TRUE(w.openFile(written(dir, "stopped.plt", g), nullptr));
    EXPECT_TRUE(has(w.plot()->scene().title, "incomplete: the run was stopped")) << w.plot()->scene().title;
    EXPECT_EQ(w.view().time, 0);  // the last time the run reached
}

TEST(PlumeWindow, AnotherTimeOfALargeGridIsFetchedInFull) {
    testkit::TempDir dir;
    PlumeGrid g;
    g.x = evenly(0, 1, 60);
    g.y = evenly(-20, 1, 41);
    g.t = {5, 10, 15};
    ReadLimits limits;
    limits.axisNodes = 10;
    limits.displayValues = 300;
    TrazelWindow w;
    w.setReadLimits(limits);
    ASSERT_TRUE(w.openFile(written(dir, "large.plt", g), nullptr));
    ASSERT_TRUE(w.file().reduced);
    EXPECT_TRUE(planeInFull(w.file(), w.view()));  // the last time came in full as it passed
    EXPECT_EQ(w.plot()->scene().field->x.size(), 60u);
    w.findChild<QComboBox*>("timeSelector")->setCurrentIndex(0);
    EXPECT_LE(w.plot()->scene().field->x.size(), 10u);  // the overview at once
    ASSERT_TRUE(qtest::waitFor([&] { return !w.fetchingPlane() && planeInFull(w.file(), w.view()); }, 10000));
    const std::shared_ptr<const Field> field = w.plot()->scene().field;
    ASSERT_EQ(field->x.size(), 60u);
    ASSERT_EQ(field->y.size(), 41u);
    EXPECT_TRUE(testing::asPrinted(field->at(17, 20), nodeValue(g, 17, 0, 0, 0)));
}

TEST(PlumeWindow, HalfAGigabyteIsReadWithBoundedMemoryWhileTheWindowPaints) {
    testkit::TempDir dir;
    PlumeGrid g;
    g.x = evenly(0, 0.05, 2000);
    g.y = evenly(-24, 0.02, 2401);
    g.t = evenly(2, 2, 20);
    QElapsedTimer clock;
    clock.start();
    const QString path = written(dir, "half_a_gigabyte.plt", g);
    const double writeSeconds = clock.elapsed() / 1000.0;
    const auto bytes = std::filesystem::file_size(path.toStdString());
    ASSERT_GT(bytes, 500'000'000u);

    TrazelWindow w;
    w.resize(1100, 700);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    // The event loop keeps running: a timer of 20 ms fires throughout the read.
    QElapsedTimer sinceTick;
    qint64 longestGap = 0;
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&] {
        longestGap = std::max(longestGap, sinceTick.restart());
        ++ticks;
    });
    bool progressShown = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (auto* p = w.findChild<QProgressDialog*>("readProgress"); p && p->isVisible()) progressShown = true;
    });
    clock.restart();
    sinceTick.start();
    ticker.start(20);
    watch.start(50);
    QString error;
    ASSERT_TRUE(w.openFile(path, &error)) << error.toStdString();
    ticker.stop();
    watch.stop();
    const double readSeconds = clock.elapsed() / 1000.0;
    const double peak = peakMegabytes();
    std::cout << "[ measured ] " << bytes / 1e6 << " MB written in " << writeSeconds << " s, read in " << readSeconds
              << " s; peak memory " << peak << " MB; " << ticks << " ticks, longest gap " << longestGap << " ms\n";
    EXPECT_GT(peak, 0);
    EXPECT_LT(peak, 400);
    EXPECT_LT(longestGap, 1000);
    EXPECT_GT(ticks, readSeconds * 10);
    EXPECT_TRUE(progressShown || readSeconds < 0.5);
    EXPECT_TRUE(w.file().reduced);
    EXPECT_EQ(w.view().time, 19);
    // The plane shown has every node, with its value.
    ASSERT_TRUE(planeInFull(w.file(), w.view()));
    const std::shared_ptr<const Field> field = w.plot()->scene().field;
    ASSERT_EQ(field->x.size(), 2000u);
    ASSERT_EQ(field->y.size(), 2401u);
    for (const auto& [ix, iy] : {std::pair{1000u, 1200u}, std::pair{1100u, 1250u}, std::pair{1999u, 2400u}})
        EXPECT_TRUE(testing::asPrinted(field->at(ix, iy), nodeValue(g, g.x[ix], g.y[iy], 0, 19))) << ix << " " << iy;

    // Cancel ends a read at once and keeps what was shown.
    QTimer::singleShot(300, [&] {
        if (auto* p = w.findChild<QProgressDialog*>("readProgress")) p->cancel();
    });
    clock.restart();
    EXPECT_FALSE(w.openFile(path, &error));
    EXPECT_TRUE(w.readCancelled());
    EXPECT_LT(clock.elapsed(), 3000);
    EXPECT_EQ(w.view().time, 19);
    EXPECT_EQ(w.plot()->scene().field->x.size(), 2000u);
}

}  // namespace
}  // namespace bm::trazel
