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

}  // namespace

QImage renderScene(const Scene& scene, const Window& window, QSize size, qreal pixelRatio) {
    QImage image(size * pixelRatio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixelRatio);
    image.fill(Qt::white);
    QPainter painter(&image);
    paintScene(painter, QRectF(QPointF(0, 0), QSizeF(size)), scene, window);
    painter.end();
    return image;
}

bool writePng(const Scene& scene, const Window& window, const QString& path, QSize size, QString* error, qreal pixelRatio) {
    const QImage image = renderScene(scene, window, size, pixelRatio);
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
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(0, 0), size));
    svg.setTitle(QString::fromStdString(scene.title));
    svg.setDescription(QStringLiteral("Plot drawn by Trazel"));
    QPainter painter;
    if (!painter.begin(&svg)) {
        if (error) *error = QStringLiteral("The SVG drawing could not be started.");
        return false;
    }
    paintScene(painter, QRectF(QPointF(0, 0), QSizeF(size)), scene, window);
    painter.end();
    return saveWhole(bytes, path, error);
}

bool writeText(const std::string& text, const QString& path, QString* error) {
    return saveWhole(QByteArray::fromStdString(text), path, error);
}

void printScene(QPrinter& printer, const Scene& scene, const Window& window) {
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
    paintScene(painter, QRectF(0, 0, width, height), scene, window);
    painter.end();
}

}  // namespace bm::trazel
