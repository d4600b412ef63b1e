// Windows kept within the screen's available area.
#include "apps/common/screen_fit.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace bm {
namespace {

TEST(ScreenFit, ALargeWindowIsCutToTheRoomLeftByItsFrame) {
    // 1600 x 1000 at a scale factor of 1.5 leaves 1066 x 666.
    const QRect fitted = fittedGeometry(QRect(0, 0, 1280, 800), QMargins(4, 30, 4, 4), QRect(0, 0, 1066, 666), QSize(600, 400));
    EXPECT_EQ(fitted, QRect(4, 30, 1058, 632));
}

TEST(ScreenFit, ASmallWindowKeepsItsSizeAndComesBackOnTheScreen) {
    const QRect available(0, 24, 1066, 642);  // a panel at the top
    EXPECT_EQ(fittedGeometry(QRect(900, 500, 400, 300), QMargins(0, 20, 0, 0), available, QSize()), QRect(666, 366, 400, 300));
    EXPECT_EQ(fittedGeometry(QRect(-50, 0, 400, 300), QMargins(0, 20, 0, 0), available, QSize()), QRect(0, 44, 400, 300));
    EXPECT_EQ(fittedGeometry(QRect(100, 200, 400, 300), QMargins(0, 20, 0, 0), available, QSize()), QRect(100, 200, 400, 300));
}

TEST(ScreenFit, AWindowIsNeverMadeSmallerThanItsLayoutAllows) {
    const QRect fitted = fittedGeometry(QRect(0, 0, 2000, 2000), QMargins(), QRect(0, 0, 800, 600), QSize(900, 700));
    EXPECT_EQ(fitted.size(), QSize(900, 700));
    EXPECT_EQ(fitted.topLeft(), QPoint(0, 0));
}

TEST(ScreenFit, EveryWindowShownIsFitted) {
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel(QStringLiteral("A dialog that asks for more room than there is")));
    dialog.resize(3000, 2000);
    dialog.move(500, 400);
    dialog.show();
    const QRect available = dialog.screen()->availableGeometry();
    const QRect frame = dialog.frameGeometry();
    EXPECT_TRUE(available.contains(dialog.geometry())) << dialog.geometry().width() << "x" << dialog.geometry().height();
    EXPECT_LE(frame.width(), available.width());
    EXPECT_LE(frame.height(), available.height());
    EXPECT_GT(dialog.width(), available.width() / 2);  // cut to the screen, not shrunk to nothing
}

}  // namespace
}  // namespace bm

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    bm::ScreenFit::install(app);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
