#pragma once
// A scene as a PNG picture, an SVG drawing, on paper, and a view's numbers as
// CSV. Files are written whole or not at all: a failed export leaves any
// earlier file of that name as it was.

#include <QImage>
#include <QSize>
#include <QString>
#include <string>
#include <vector>

#include "apps/trazel/widgets/scene_painter.h"

class QPrinter;

namespace bm::trazel {

// Scenes one above the other (a fit's curves over its residuals), each with
// its share of the height.
struct Panel {
    const Scene* scene = nullptr;
    Window window;
    double share = 1;
};
using Panels = std::vector<Panel>;

QImage renderScene(const Scene& scene, const Window& window, QSize size, qreal pixelRatio = 1);
bool writePng(const Scene& scene, const Window& window, const QString& path, QSize size, QString* error, qreal pixelRatio = 1);
bool writePng(const Panels& panels, const QString& path, QSize size, QString* error, qreal pixelRatio = 1);
bool writeSvg(const Scene& scene, const Window& window, const QString& path, QSize size, QString* error);
bool writeSvg(const Panels& panels, const QString& path, QSize size, QString* error);
bool writeText(const std::string& text, const QString& path, QString* error);
void printScene(QPrinter& printer, const Scene& scene, const Window& window);
void printScene(QPrinter& printer, const Panels& panels);

}  // namespace bm::trazel
