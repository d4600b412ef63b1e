#pragma once
// Every window of the suite's programs stays on the screen: when a window is
// shown, its size is cut to the screen's available area (whatever the scale
// factor makes of it) and it is moved inside that area, leaving room for the
// window manager's frame. A window is never made smaller than its layout
// allows; a maximised or full-screen window is left to the window manager.

#include <QMargins>
#include <QObject>
#include <QRect>
#include <QSize>

class QApplication;
class QWidget;

namespace bm {

// The client-area geometry of a window that wanted `wanted`, with `frame`
// around it, inside `available`; never smaller than `minimum`.
QRect fittedGeometry(const QRect& wanted, const QMargins& frame, const QRect& available, const QSize& minimum);

// Fits one window now.
void fitToScreen(QWidget* window);

// Fits every window of the program as it is shown.
class ScreenFit : public QObject {
public:
    using QObject::QObject;
    static void install(QApplication& app);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace bm
