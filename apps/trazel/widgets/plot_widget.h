#pragma once
// The plot on screen: paints the scene, zooms to a rectangle dragged with the
// left button, and goes back to the whole picture on a right click, a double
// click or Reset Zoom. Reports the data coordinates under the pointer and, on
// a contour plot, the value there, read from the smooth field between the
// grid's nodes.

#include <QWidget>

#include "apps/trazel/widgets/scene_painter.h"

class QRubberBand;

namespace bm::trazel {

class PlotWidget : public QWidget {
    Q_OBJECT
public:
    explicit PlotWidget(QWidget* parent = nullptr);

    // A new scene; `keepZoom` keeps the zoomed window (another time of the same grid).
    void setScene(Scene scene, bool keepZoom);
    const Scene& scene() const { return scene_; }
    const Window& window() const { return window_; }
    bool zoomed() const { return zoomed_; }
    void zoomTo(const Window& window);
    void resetZoom();
    // The data shown at a point of the widget, as the last paint laid it out.
    const PlotFrame& frame() const { return frame_; }
    // What the status line says for the pointer at a point of the widget; empty outside the plot.
    QString readoutAt(const QPointF& pixel) const;

    QSize sizeHint() const override { return {900, 620}; }

signals:
    void pointerAt(const QString& where);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    Scene scene_;
    Window window_;
    PlotFrame frame_;
    bool zoomed_ = false;
    QRubberBand* band_ = nullptr;
    QPoint origin_;
    bool dragging_ = false;
};

}  // namespace bm::trazel
