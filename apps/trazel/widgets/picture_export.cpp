#include "apps/trazel/widgets/picture_export.h"

#include <QBuffer>
#include <QPainter>
#include <QPrinter>
#include <QSaveFile>
#include <QSvgGenerator>

#include "shell/widgets/page_margins.h"

namespace bm::trazel {

namespace {

bool saveWhole(const QByteArray& bytes, const QString& path, QString* error) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        if (error) *error = QStringLiteral("Cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

// Each panel in its band of the target, top to bottom.
void paintPanels(QPainter& painter, const QRectF& target, const Panels& panels) {
    double total = 0;
    for (const Panel& p : panels) total += p.share;
    double top = target.top();
    for (const Panel& p : panels) {
        const double height = total > 0 ? target.height() * p.share / total : 0;
        paintScene(painter, QRectF(target.left(), top, target.width(), height), *p.scene, p.window);
        top += height;
    }
}

QImage renderPanels(const Panels& panels, QSize size, qreal pixelRatio) {
    QImage image(size * pixelRatio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixelRatio);
    image.fill(Qt::white);
    QPainter painter(&image);
    paintPanels(painter, QRectF(QPointF(0, 0), QSizeF(size)), panels);
    painter.end();
    return image;
}

}  // namespace

QImage renderScene(const Scene& scene, const Window& window, QSize size, qreal pixelRatio) {
    return renderPanels({Panel{&scene, window, 1}}, size, pixelRatio);
}

bool writePng(const Scene& scene, const Window& window, const QString& path, QSize size, QString* error, qreal pixelRatio) {
    return writePng({Panel{&scene, window, 1}}, path, size, error, pixelRatio);
}

bool writePng(const Panels& panels, const QString& path, QSize size, QString* error, qreal pixelRatio) {
    const QImage image = renderPanels(panels, size, pixelRatio);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        if (error) *error = QStringLiteral("The picture could not be encoded as PNG.");
        return false;
    }
    return saveWhole(bytes, path, error);
}

bool writeSvg(const Scene& scene, const Window& window, const QString& path, QSize size, QString* error) {
    return writeSvg({Panel{&scene, window, 1}}, path, size, error);
}

bool writeSvg(const Panels& panels, const QString& path, QSize size, QString* error) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(0, 0), size));
    svg.setTitle(panels.empty() ? QString() : QString::fromStdString(panels.front().scene->title));
    svg.setDescription(QStringLiteral("Plot drawn by Trazel"));
    QPainter painter;
    if (!painter.begin(&svg)) {
        if (error) *error = QStringLiteral("The SVG drawing could not be started.");
        return false;
    }
    paintPanels(painter, QRectF(QPointF(0, 0), QSizeF(size)), panels);
    painter.end();
    return saveWhole(bytes, path, error);
}

bool writeText(const std::string& text, const QString& path, QString* error) {
    return saveWhole(QByteArray::fromStdString(text), path, error);
}

void printScene(QPrinter& printer, const Scene& scene, const Window& window) {
    printScene(printer, {Panel{&scene, window, 1}});
}

void printScene(QPrinter& printer, const Panels& panels) {
    keepLeastMargins(printer);
    QPainter painter;
    if (!painter.begin(&printer)) return;
    // Lay the page out in screen-sized units so that fonts and lines keep
    // their proportions at any printer resolution.
    const QRect page = printer.pageLayout().paintRectPixels(printer.resolution()).translated(
        -printer.pageLayout().paintRectPixels(printer.resolution()).topLeft());
    const double width = 1000, height = width * page.height() / std::max(1, page.width());
    painter.setViewport(page);
    painter.setWindow(QRect(0, 0, static_cast<int>(width), static_cast<int>(height)));
    paintPanels(painter, QRectF(0, 0, width, height), panels);
    painter.end();
}

}  // namespace bm::trazel
