#pragma once
// Paints a scene with QPainter, so that the screen, PNG, SVG and the printer
// share one drawing: title and subtitle on top, axes with ticks and labels,
// the legend or colour bar at the right, the data clipped to the plot area.

#include <QColor>
#include <QPointF>
#include <QRectF>

#include "apps/trazel/plot_scene.h"

class QPainter;

namespace bm::trazel {

// The part of the data the plot area shows (zoom).
struct Window {
    double x0 = 0, x1 = 1, y0 = 0, y1 = 1;
};

Window fullWindow(const Scene& scene);

// Where a paint put the plot area, to map mouse positions back to data.
struct PlotFrame {
    QRectF area;
    Window window;
    QPointF toPixel(double x, double y) const;
    QPointF toData(const QPointF& pixel) const;
};

PlotFrame paintScene(QPainter& painter, const QRectF& target, const Scene& scene, const Window& window);

QColor curveColour(int index);
// Colours of the contour bands, from near white for the lowest to deep red for the highest.
QColor bandColour(int band, int bands);

}  // namespace bm::trazel
