// The Trazel window: its choices change the plot, zoom works with the mouse,
// and a file it cannot plot is refused with a message box.
#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "apps/trazel/widgets/plot_widget.h"
#include "apps/trazel/widgets/trazel_window.h"
#include "testing/qt_test_support.h"
#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

QString fixture(const char* name) { return QString::fromStdString(testkit::fixturePath("apps/trazel", name).string()); }

bool has(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

TEST(Window, TimeAndPlaneSelectorsChangeTheContours) {
    TrazelWindow w;
    QString error;
    ASSERT_TRUE(w.openFile(fixture("volume_3d.plt"), &error)) << error.toStdString();
    auto* times = w.findChild<QComboBox*>("timeSelector");
    auto* planes = w.findChild<QComboBox*>("planeSelector");
    ASSERT_TRUE(times && planes);
    EXPECT_EQ(times->count(), 2);
    EXPECT_EQ(planes->count(), 3);
    EXPECT_EQ(planes->itemText(1), "z = 2.5 m");
    planes->setCurrentIndex(1);
    times->setCurrentIndex(1);
    EXPECT_EQ(w.view().plane, 1);
    EXPECT_EQ(w.view().time, 1);
    EXPECT_TRUE(has(w.plot()->scene().subtitle, "z = 2.5 m")) << w.plot()->scene().subtitle;
    EXPECT_TRUE(has(w.plot()->scene().subtitle, "t = 100 day"));
}

TEST(Window, CurvesAgainstTimeAndTheirChoice) {
    TrazelWindow w;
    ASSERT_TRUE(w.openFile(fixture("profile_1d.plt"), nullptr));
    EXPECT_EQ(w.plot()->scene().curves.size(), 4u);
    w.findChild<QRadioButton*>("versusTime")->click();
    EXPECT_EQ(w.view().versus, Versus::Time);
    auto* list = w.findChild<QListWidget*>("curveList");
    ASSERT_EQ(list->count(), 11);
    EXPECT_EQ(w.plot()->scene().curves.size(), 8u);
    list->item(2)->setCheckState(Qt::Checked);  // x = 20 m was not among the spread ones
    EXPECT_EQ(w.plot()->scene().curves.size(), 9u);
    list->item(0)->setCheckState(Qt::Unchecked);
    ASSERT_EQ(w.plot()->scene().curves.size(), 8u);
    EXPECT_EQ(w.plot()->scene().curves[0].name, "x = 10 m");

    auto button = [&](const char* text) {
        for (QPushButton* b : w.findChildren<QPushButton*>())
            if (b->text() == text) return b;
        return static_cast<QPushButton*>(nullptr);
    };
    button("All")->click();
    EXPECT_EQ(w.plot()->scene().curves.size(), 11u);
    button("None")->click();
    EXPECT_TRUE(w.plot()->scene().curves.empty());
    EXPECT_EQ(w.plot()->scene().note, "No curve is selected.");
    button("Spread")->click();
    EXPECT_EQ(w.plot()->scene().curves.size(), 8u);
    EXPECT_EQ(list->item(0)->checkState(), Qt::Checked);
}

TEST(Window, RubberBandZoomsAndRightClickResets) {
    TrazelWindow w;
    ASSERT_TRUE(w.openFile(fixture("profile_1d.plt"), nullptr));
    w.resize(1100, 700);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    PlotWidget* plot = w.plot();
    plot->repaint();
    const QRectF area = plot->frame().area;
    ASSERT_GT(area.width(), 100);
    const QPoint from = area.center().toPoint() - QPoint(100, 80), to = area.center().toPoint() + QPoint(60, 40);
    QTest::mousePress(plot, Qt::LeftButton, {}, from);
    QTest::mouseMove(plot, to);
    QTest::mouseRelease(plot, Qt::LeftButton, {}, to);
    ASSERT_TRUE(plot->zoomed());
    const Window zoomed = plot->window();
    EXPECT_LT(zoomed.x1 - zoomed.x0, 100.0 / 2);
    EXPECT_GT(zoomed.x0, 0.0);
    QTest::mouseClick(plot, Qt::RightButton, {}, area.center().toPoint());
    EXPECT_FALSE(plot->zoomed());
    EXPECT_EQ(plot->window().x0, 0);
    EXPECT_EQ(plot->window().x1, 100);
}

TEST(Window, HistogramBinsAndVariants) {
    TrazelWindow w;
    ASSERT_TRUE(w.openFile(fixture("generated.plt"), nullptr));
    auto* variants = w.findChild<QComboBox*>("variantSelector");
    ASSERT_EQ(variants->count(), 2);
    variants->setCurrentIndex(1);
    EXPECT_TRUE(has(w.plot()->scene().title, "Longitudinal Dispersion Coefficient"));
    w.findChild<QSpinBox*>("binsSelector")->setValue(3);
    EXPECT_EQ(w.plot()->scene().bars.size(), 3u);
}

TEST(Window, AFileThatCannotBePlottedKeepsTheOldPlot) {
    TrazelWindow w;
    ASSERT_TRUE(w.openFile(fixture("profile_1d.plt"), nullptr));
    QString error;
    EXPECT_FALSE(w.openFile(fixture("ragged_row_1d.plt"), &error));
    EXPECT_TRUE(error.contains("Line 27")) << error.toStdString();
    EXPECT_EQ(w.file().kind, PlotKind::Profile);
    EXPECT_EQ(w.plot()->scene().curves.size(), 4u);
}

TEST(Window, SaysWhyAFileCannotBePlotted) {
    TrazelWindow w;
    QString shown, detail;
    qtest::onModal("cannotPlotBox", [&](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        shown = box->text();
        detail = box->informativeText();
        box->accept();
    });
    EXPECT_FALSE(w.openFileOrSay(fixture("bad_block_3d.plt")));
    EXPECT_TRUE(shown.contains("bad_block_3d.plt")) << shown.toStdString();
    EXPECT_TRUE(detail.contains("lacks its line \"Z Coordinate =>\"")) << detail.toStdString();
}

TEST(Window, ExportsTheViewAsCsv) {
    TrazelWindow w;
    ASSERT_TRUE(w.openFile(fixture("plane_2d.plt"), nullptr));
    w.findChild<QComboBox*>("timeSelector")->setCurrentIndex(2);
    testkit::TempDir dir;
    const QString path = QString::fromStdString(dir.file("view.csv"));
    QString error;
    ASSERT_TRUE(w.exportCsv(path, &error)) << error.toStdString();
    const std::string text = testkit::readFileBytes(dir.file("view.csv"));
    EXPECT_TRUE(has(text, "x (m),y (m),C/Co at t = 400 day\n"));
    EXPECT_TRUE(has(text, "\n10,-10,0.47439\n"));
}

}  // namespace
}  // namespace bm::trazel
