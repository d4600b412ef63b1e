#include "apps/common/screen_fit.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace bm {

namespace {

// Until a window manager has framed a window, room for a title bar and borders.
constexpr QMargins kLikelyFrame(4, 30, 4, 4);

}  // namespace

QRect fittedGeometry(const QRect& wanted, const QMargins& frame, const QRect& available, const QSize& minimum) {
    const QSize room(available.width() - frame.left() - frame.right(), available.height() - frame.top() - frame.bottom());
    const QSize size = wanted.size().boundedTo(room).expandedTo(minimum);
    const int left = available.left() + frame.left(), top = available.top() + frame.top();
    const int right = available.right() - frame.right() - size.width() + 1;
    const int bottom = available.bottom() - frame.bottom() - size.height() + 1;
    const int x = right < left ? left : std::clamp(wanted.x(), left, right);
    const int y = bottom < top ? top : std::clamp(wanted.y(), top, bottom);
    return {QPoint(x, y), size};
}

void fitToScreen(QWidget* window) {
    if (!window || !window->isWindow()) return;
    if (window->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized)) return;
    QScreen* screen = window->screen();
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect frameGeometry = window->frameGeometry(), geometry = window->geometry();
    QMargins frame(geometry.left() - frameGeometry.left(), geometry.top() - frameGeometry.top(),
                   frameGeometry.right() - geometry.right(), frameGeometry.bottom() - geometry.bottom());
    if (frame.isNull() && !window->windowFlags().testFlag(Qt::FramelessWindowHint)) frame = kLikelyFrame;
    const QRect fitted = fittedGeometry(geometry, frame, screen->availableGeometry(), window->minimumSizeHint().expandedTo(window->minimumSize()));
    if (fitted.size() != geometry.size()) window->resize(fitted.size());
    if (fitted.topLeft() != geometry.topLeft()) window->move(fitted.topLeft() - QPoint(frame.left(), frame.top()));
}

void ScreenFit::install(QApplication& app) { app.installEventFilter(new ScreenFit(&app)); }

bool ScreenFit::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* w = static_cast<QWidget*>(watched);
        const Qt::WindowType type = w->windowType();
        if (w->isWindow() && type != Qt::Popup && type != Qt::ToolTip && type != Qt::SplashScreen && type != Qt::Desktop)
            fitToScreen(w);
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace bm
