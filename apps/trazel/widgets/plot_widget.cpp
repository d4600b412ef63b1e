#include "apps/trazel/widgets/plot_widget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QRubberBand>

#include "apps/trazel/axis_ticks.h"

namespace bm::trazel {

PlotWidget::PlotWidget(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(360, 260);
    setCursor(Qt::CrossCursor);
    setToolTip(tr("Drag a rectangle to zoom; right-click or double-click to see the whole plot."));
}

void PlotWidget::setScene(Scene scene, bool keepZoom) {
    scene_ = std::move(scene);
    if (!keepZoom || !zoomed_) {
        window_ = fullWindow(scene_);
        zoomed_ = false;
    }
    update();
}

void PlotWidget::zoomTo(const Window& window) {
    window_ = window;
    zoomed_ = true;
    update();
}

void PlotWidget::resetZoom() {
    window_ = fullWindow(scene_);
    zoomed_ = false;
    update();
}

void PlotWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    frame_ = paintScene(painter, QRectF(rect()), scene_, window_);
}

void PlotWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) {
        resetZoom();
        return;
    }
    if (event->button() != Qt::LeftButton || !frame_.area.contains(event->position())) return;
    origin_ = event->position().toPoint();
    if (!band_) band_ = new QRubberBand(QRubberBand::Rectangle, this);
    band_->setGeometry(QRect(origin_, QSize()));
    band_->show();
    dragging_ = true;
}

void PlotWidget::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_) {
        const QRect area = frame_.area.toAlignedRect();
        QPoint end = event->position().toPoint();
        end.setX(std::clamp(end.x(), area.left(), area.right()));
        end.setY(std::clamp(end.y(), area.top(), area.bottom()));
        band_->setGeometry(QRect(origin_, end).normalized());
    }
    emit pointerAt(readoutAt(event->position()));
}

QString PlotWidget::readoutAt(const QPointF& pixel) const {
    if (!frame_.area.contains(pixel)) return {};
    const QPointF d = frame_.toData(pixel);
    const double xStep = (frame_.window.x1 - frame_.window.x0) / 1000, yStep = (frame_.window.y1 - frame_.window.y0) / 1000;
    QString text = QStringLiteral("%1 = %2    %3 = %4")
                       .arg(QString::fromStdString(scene_.xLabel), QString::fromStdString(tickText(d.x(), xStep)),
                            QString::fromStdString(scene_.yLabel), QString::fromStdString(tickText(d.y(), yStep)));
    if (scene_.field) {
        const QString name = QString::fromStdString(scene_.legendTitle);
        const auto value = fieldValue(*scene_.field, d.x(), d.y());
        text += value ? QStringLiteral("    %1 = %2").arg(name, QString::number(*value, 'g', 5))
                      : QStringLiteral("    %1: no value here").arg(name);
    }
    return text;
}

void PlotWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (!dragging_ || event->button() != Qt::LeftButton) return;
    dragging_ = false;
    const QRect r = band_->geometry();
    band_->hide();
    if (r.width() < 5 || r.height() < 5) return;  // a click, not a drag
    const QPointF a = frame_.toData(r.topLeft()), b = frame_.toData(r.bottomRight());
    zoomTo({std::min(a.x(), b.x()), std::max(a.x(), b.x()), std::min(a.y(), b.y()), std::max(a.y(), b.y())});
}

void PlotWidget::mouseDoubleClickEvent(QMouseEvent*) { resetZoom(); }

void PlotWidget::leaveEvent(QEvent*) { emit pointerAt(QString()); }

}  // namespace bm::trazel
