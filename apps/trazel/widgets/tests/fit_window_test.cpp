// A fit's plot file in the Trazel window: the observations drawn as marks on
// their places' curves, the residuals in the panel under the plot, the choice
// of places and of the residuals' axis; a file it cannot read leaves the
// window as it was.
#include <QImage>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

#include "apps/trazel/widgets/plot_widget.h"
#include "apps/trazel/widgets/tests/picture_check.h"
#include "apps/trazel/widgets/trazel_window.h"
#include "testing/qt_test_support.h"
#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

QString fitFixture(const char* name) { return QString::fromStdString(testkit::fixturePath("fitting", name).string()); }

// The colour at the middle of a mark drawn at (x, y) of a widget's data.
QColor colourAt(PlotWidget* widget, double x, double y) {
    const QImage image = widget->grab().toImage();
    const QPointF at = widget->frame().toPixel(x, y) * image.devicePixelRatio();
    return image.pixelColor(at.toPoint());
}

bool near(const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) <= 12 && std::abs(a.green() - b.green()) <= 12 && std::abs(a.blue() - b.blue()) <= 12;
}

struct Mark {
    int place;
    double x, y;
};

TEST(FitWindow, ObservationsSitOnTheirCurvesAndTheResidualsBelow) {
    TrazelWindow w;
    QString error;
    ASSERT_TRUE(w.openFile(fitFixture("fit_plot_several_places.plt"), &error)) << error.toStdString();
    w.resize(1100, 800);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    ASSERT_TRUE(w.residuals()->isVisible());
    EXPECT_FALSE(w.section(Section::XZ)->isVisible());
    auto* places = w.findChild<QListWidget*>("curveList");
    ASSERT_EQ(places->count(), 3);
    EXPECT_EQ(places->item(1)->text(), "x = 100 ft, y = 20 ft");

    // One mark per observation, in its place's colour, where the file puts it.
    const Mark observed[] = {{0, 1, 2.5}, {0, 3, 7.75}, {1, 2, 1.25}, {2, 2, 1.5}, {2, 3, 4}};
    std::size_t marks = 0;
    for (const Curve& c : w.plot()->scene().curves)
        if (c.pointsOnly) marks += c.points.size();
    EXPECT_EQ(marks, std::size(observed));
    w.plot()->repaint();
    for (const Mark& m : observed)
        EXPECT_TRUE(near(colourAt(w.plot(), m.x, m.y), curveColour(m.place)))
            << "place " << m.place << " at t = " << m.x << ": " << colourAt(w.plot(), m.x, m.y).name().toStdString();
    // The residuals: observed - fitted at each observation's time.
    const Mark residuals[] = {{0, 1, 0.5}, {0, 3, -0.25}, {1, 2, -0.25}, {2, 2, 0.5}, {2, 3, 0}};
    w.residuals()->repaint();
    for (const Mark& m : residuals)
        EXPECT_TRUE(near(colourAt(w.residuals(), m.x, m.y), curveColour(m.place))) << "residual of place " << m.place;
    qtest::saveShot(&w, "trazel_fit");

    // Against the observations' numbers; the last place alone.
    w.findChild<QRadioButton*>("residualsNumber")->click();
    EXPECT_TRUE(w.view().residualsByNumber);
    EXPECT_EQ(w.residuals()->scene().xLabel, "Observation number");
    places->item(0)->setCheckState(Qt::Unchecked);
    places->item(1)->setCheckState(Qt::Unchecked);
    const Scene& shown = w.residuals()->scene();
    ASSERT_EQ(shown.curves.size(), 1u);
    EXPECT_EQ(shown.curves[0].name, "x = 200 ft, y = 0 ft");
    w.residuals()->repaint();
    EXPECT_TRUE(near(colourAt(w.residuals(), 4, 0.5), curveColour(2)));
    EXPECT_TRUE(near(colourAt(w.residuals(), 5, 0), curveColour(2)));
}

TEST(FitWindow, AMalformedFitFileIsRefusedAndTheWindowKeepsWhatItShowed) {
    TrazelWindow w;
    ASSERT_TRUE(w.openFile(fitFixture("fit_plot_one_place.plt"), nullptr));
    QString error;
    EXPECT_FALSE(w.openFile(fitFixture("fit_plot_bad_number.plt"), &error));
    EXPECT_EQ(error, "Line 27: \"2, 5, 0.52x, 0.5, 0.02\" is not a row of numbers: \"0.52x\" is not a number.");
    EXPECT_EQ(w.file().kind, PlotKind::Fit);
    EXPECT_EQ(w.file().fit.places.size(), 1u);
    EXPECT_FALSE(w.openFile(fitFixture("fit_plot_no_dimension.plt"), &error));
    EXPECT_EQ(error, "Line 18: the header lacks the line \"Dimension: \" before the first place.");
    // A regular file after a fit: the residual panel goes.
    ASSERT_TRUE(w.openFile(QString::fromStdString(testkit::fixturePath("apps/trazel", "profile_1d.plt").string()), nullptr));
    EXPECT_TRUE(w.residuals()->isHidden());
}

}  // namespace
}  // namespace bm::trazel
