#include "apps/trazel/widgets/scene_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "apps/trazel/axis_ticks.h"

namespace bm::trazel {

namespace {

QString text(const std::string& s) { return QString::fromStdString(s); }

// Sizes follow the height of the target, within reason, so that a small
// window and a large export both read well.
struct Metrics {
    double base;  // label font size in pixels
    double pad;
    double tick;
    QFont label, title, small;
};

Metrics metricsFor(const QRectF& target, const QFont& font) {
    Metrics m{};
    m.base = std::clamp(target.height() / 52.0, 10.0, 18.0);
    m.pad = m.base * 0.8;
    m.tick = m.base * 0.4;
    m.label = font;
    m.label.setPixelSize(static_cast<int>(std::lround(m.base)));
    m.title = m.label;
    m.title.setPixelSize(static_cast<int>(std::lround(m.base * 1.35)));
    m.title.setBold(true);
    m.small = m.label;
    m.small.setPixelSize(static_cast<int>(std::lround(m.base * 0.9)));
    return m;
}

struct AxisTicks {
    Ticks ticks;
    double labelWidth = 0;
};

// `whole` keeps the step at 1 or more, for counts.
AxisTicks ticksFor(double low, double high, double pixels, double perTick, const QFontMetricsF& fm, bool horizontal,
                   bool whole = false) {
    AxisTicks a;
    int count = std::max(2, static_cast<int>(pixels / perTick));
    for (;;) {
        a.ticks = niceTicks(low, high, count);
        if (whole && a.ticks.step < 1) a.ticks = niceTicks(low, high, std::max(1, static_cast<int>(high - low)));
        a.labelWidth = 0;
        for (double v : a.ticks.values) a.labelWidth = std::max(a.labelWidth, fm.horizontalAdvance(text(tickText(v, a.ticks.step))));
        const double spacing = pixels * a.ticks.step / std::max(1e-300, high - low);
        const double needed = horizontal ? a.labelWidth * 1.4 : fm.height() * 1.6;
        if (spacing >= needed || count <= 2) break;
        --count;
    }
    return a;
}

void drawRotated(QPainter& p, const QPointF& centre, const QString& s) {
    p.save();
    p.translate(centre);
    p.rotate(-90);
    const QFontMetricsF fm(p.font());
    p.drawText(QRectF(-2000, -fm.height() / 2, 4000, fm.height()), Qt::AlignCenter, s);
    p.restore();
}

double wrappedHeight(const QFontMetricsF& fm, double width, const QString& s) {
    if (s.isEmpty()) return 0;
    return fm.boundingRect(QRectF(0, 0, width, 10000), Qt::TextWordWrap | Qt::AlignHCenter, s).height();
}

struct Legend {
    double width = 0;
    int columns = 1;
    int rows = 0;
    double rowHeight = 0;
    double columnWidth = 0;
};

// The curves the legend lists: those with a name.
std::vector<const Curve*> legendEntries(const Scene& s) {
    std::vector<const Curve*> named;
    for (const Curve& c : s.curves)
        if (!c.name.empty()) named.push_back(&c);
    return named;
}

Legend curveLegend(const Scene& s, const Metrics& m, double availableHeight) {
    Legend l;
    if (s.curves.empty()) return l;
    const QFontMetricsF fm(m.label);
    l.rowHeight = fm.height() * 1.25;
    double widest = QFontMetricsF(m.label).horizontalAdvance(text(s.legendTitle));
    for (const Curve& c : s.curves) widest = std::max(widest, fm.horizontalAdvance(text(c.name)));
    l.columnWidth = m.base * 2.6 + widest + m.pad;
    const int fit = std::max(1, static_cast<int>(availableHeight / l.rowHeight) - 1);
    const int n = static_cast<int>(legendEntries(s).size());
    if (n == 0) return l;
    l.columns = (n + fit - 1) / fit;
    l.rows = (n + l.columns - 1) / l.columns;
    l.width = l.columns * l.columnWidth + m.pad;
    return l;
}

QPen curvePen(const Curve& c, double width) {
    QPen pen(curveColour(c.colour), width);
    if (c.colour >= 10) pen.setStyle(c.colour >= 20 ? Qt::DotLine : Qt::DashLine);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

void drawCurve(QPainter& p, const PlotFrame& f, const Curve& c, double width, double markerRadius) {
    if (c.points.empty()) return;
    // A point without a value (a file that ends early) breaks the line.
    QPainterPath path;
    bool drawing = false;
    for (std::size_t i = 0; i < c.points.size(); ++i) {
        const Point& pt = c.points[i];
        if (std::isnan(pt.y)) {
            drawing = false;
            continue;
        }
        if (!drawing) path.moveTo(f.toPixel(pt.x, pt.y));
        else {
            if (c.stepped) path.lineTo(f.toPixel(pt.x, c.points[i - 1].y));
            path.lineTo(f.toPixel(pt.x, pt.y));
        }
        drawing = true;
    }
    if (c.pointsOnly) {
        // Observations: a filled mark with a dark rim stands out on a line of its colour.
        p.setBrush(curveColour(c.colour));
        p.setPen(QPen(QColor(30, 30, 30), width * 0.5));
        for (const Point& pt : c.points)
            if (!std::isnan(pt.y)) p.drawEllipse(f.toPixel(pt.x, pt.y), markerRadius * 1.5, markerRadius * 1.5);
        return;
    }
    p.setPen(curvePen(c, width));
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
    if (c.markers) {
        p.setBrush(curveColour(c.colour));
        p.setPen(QPen(Qt::white, width * 0.4));
        for (const Point& pt : c.points)
            if (!std::isnan(pt.y)) p.drawEllipse(f.toPixel(pt.x, pt.y), markerRadius, markerRadius);
    }
}

void drawContours(QPainter& p, const PlotFrame& f, const ContourMap& map) {
    const int bands = static_cast<int>(map.levels.size()) - 1;
    // Fills without antialiasing: partly covered pixels on shared edges would
    // blend twice and show the cells as faint stripes. The iso-lines drawn
    // over the band edges keep them smooth.
    p.save();
    p.setRenderHint(QPainter::Antialiasing, false);
    for (const BandPolygon& poly : map.polygons) {
        QPolygonF shape;
        for (const Point& pt : poly.points) shape << f.toPixel(pt.x, pt.y);
        const QColor colour = bandColour(poly.band, bands);
        // An outline in the fill colour closes hairline seams between
        // neighbouring polygons in viewers that antialias SVG.
        QPen seam(colour, 1.0);
        seam.setJoinStyle(Qt::MiterJoin);
        p.setPen(seam);
        p.setBrush(colour);
        p.drawPolygon(shape);
    }
    p.restore();
    QPen line(QColor(40, 40, 40, 170), 0.9);
    p.setPen(line);
    for (const IsoSegment& s : map.lines) p.drawLine(f.toPixel(s.a.x, s.a.y), f.toPixel(s.b.x, s.b.y));
}

// Where the other views cut this one.
void drawGuides(QPainter& p, const PlotFrame& f, const std::vector<Guide>& guides, double width) {
    QPen pen(QColor(30, 60, 160), width, Qt::DashLine);
    p.setPen(pen);
    const Window& w = f.window;
    for (const Guide& g : guides) {
        if (g.vertical) p.drawLine(f.toPixel(g.at, w.y0), f.toPixel(g.at, w.y1));
        else p.drawLine(f.toPixel(w.x0, g.at), f.toPixel(w.x1, g.at));
    }
}

void drawBars(QPainter& p, const PlotFrame& f, const std::vector<Bar>& bars) {
    p.setPen(QPen(QColor(31, 82, 140), 1.0));
    p.setBrush(QColor(120, 166, 220));
    for (const Bar& b : bars) p.drawRect(QRectF(f.toPixel(b.from, b.height), f.toPixel(b.to, 0)).normalized());
}

}  // namespace

Window fullWindow(const Scene& scene) {
    return {scene.extent.xMin, scene.extent.xMax, scene.extent.yMin, scene.extent.yMax};
}

QPointF PlotFrame::toPixel(double x, double y) const {
    const double u = (x - window.x0) / (window.x1 - window.x0);
    const double v = (y - window.y0) / (window.y1 - window.y0);
    return {area.left() + u * area.width(), area.bottom() - v * area.height()};
}

QPointF PlotFrame::toData(const QPointF& pixel) const {
    const double u = (pixel.x() - area.left()) / area.width();
    const double v = (area.bottom() - pixel.y()) / area.height();
    return {window.x0 + u * (window.x1 - window.x0), window.y0 + v * (window.y1 - window.y0)};
}

QColor curveColour(int index) {
    static const QColor palette[] = {QColor(31, 119, 180), QColor(255, 127, 14), QColor(44, 160, 44), QColor(214, 39, 40),
                                     QColor(148, 103, 189), QColor(140, 86, 75), QColor(227, 119, 194), QColor(127, 127, 127),
                                     QColor(188, 189, 34), QColor(23, 190, 207)};
    return palette[((index % 10) + 10) % 10];
}

QColor bandColour(int band, int bands) {
    // A sequential scale for a magnitude that starts at zero: clean water
    // near white, the highest concentrations deep red.
    static const double anchors[][3] = {{255, 255, 217}, {255, 237, 160}, {254, 217, 118}, {254, 178, 76}, {253, 141, 60},
                                        {252, 78, 42},   {227, 26, 28},   {189, 0, 38},    {128, 0, 38}};
    constexpr int last = 8;
    const double t = bands <= 1 ? 0.0 : static_cast<double>(band) / (bands - 1);
    const double position = std::clamp(t, 0.0, 1.0) * last;
    const int i = std::min(last - 1, static_cast<int>(position));
    const double w = position - i;
    auto mix = [&](int c) { return static_cast<int>(std::lround(anchors[i][c] * (1 - w) + anchors[i + 1][c] * w)); };
    return QColor(mix(0), mix(1), mix(2));
}

PlotFrame paintScene(QPainter& p, const QRectF& target, const Scene& s, const Window& requested) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    p.fillRect(target, Qt::white);
    const Metrics m = metricsFor(target, p.font());
    const QFontMetricsF fm(m.label), titleFm(m.title);

    if (s.title.empty() && s.curves.empty() && s.bars.empty() && s.contours.polygons.empty()) {
        // Nothing to plot yet: the word alone, without empty axes.
        QFont word = m.label;
        word.setPixelSize(static_cast<int>(std::lround(m.base * 1.2)));
        p.setFont(word);
        p.setPen(QColor(120, 120, 120));
        p.drawText(target, Qt::AlignCenter | Qt::TextWordWrap, text(s.note));
        p.restore();
        return {target, requested};
    }

    Window w = requested;
    if (!(w.x1 > w.x0)) w.x1 = w.x0 + 1;
    if (!(w.y1 > w.y0)) w.y1 = w.y0 + 1;

    // --- top: title, subtitle, and the histogram's legend row
    double top = target.top() + m.pad;
    const double innerWidth = target.width() - 2 * m.pad;
    const QString title = text(s.title), subtitle = text(s.subtitle);
    const double titleHeight = wrappedHeight(titleFm, innerWidth, title);
    const double subtitleHeight = wrappedHeight(fm, innerWidth, subtitle);
    const QRectF titleRect(target.left() + m.pad, top, innerWidth, titleHeight);
    top += titleHeight + (titleHeight > 0 ? m.pad * 0.3 : 0);
    const QRectF subtitleRect(target.left() + m.pad, top, innerWidth, subtitleHeight);
    top += subtitleHeight + m.pad;
    const bool histogram = s.kind == SceneKind::Histogram;
    double legendRowTop = top;
    if (histogram) top += fm.height() * 1.4;

    // --- bottom: tick labels and the x label
    const double bottom = target.bottom() - m.pad - fm.height() - m.pad * 0.5 - fm.height() - m.tick;

    // --- right: legend, colour bar, or the cumulative axis
    const double plotHeight = std::max(10.0, bottom - top);
    Legend legend;
    double rightSpace = m.pad;
    AxisTicks secondTicks;
    if (s.kind == SceneKind::Curves) {
        legend = curveLegend(s, m, plotHeight);
        rightSpace += legend.width;
    } else if (s.kind == SceneKind::Contours) {
        double widest = fm.horizontalAdvance(text(s.legendTitle)) - m.base * 1.6;
        for (double v : s.contours.levels) widest = std::max(widest, fm.horizontalAdvance(text(tickText(v, s.contours.levels.size() > 1 ? s.contours.levels[1] - s.contours.levels[0] : 1))));
        rightSpace += m.pad * 2 + m.base * 1.6 + m.tick + 3 + widest + m.pad;
    } else {
        secondTicks = ticksFor(w.y0 / s.secondAxisScale, w.y1 / s.secondAxisScale, plotHeight, m.base * 3.5, fm, false);
        rightSpace += m.tick + m.pad * 0.4 + secondTicks.labelWidth + m.pad * 0.6 + fm.height();
    }

    // --- left: tick labels and the rotated y label
    const AxisTicks yTicks = ticksFor(w.y0, w.y1, plotHeight, m.base * 3.5, fm, false, histogram);
    const double left = target.left() + m.pad + fm.height() + m.pad * 0.6 + yTicks.labelWidth + m.pad * 0.4 + m.tick;
    const double right = target.right() - rightSpace;

    PlotFrame frame;
    frame.area = QRectF(QPointF(left, top), QPointF(std::max(left + 10, right), std::max(top + 10, bottom)));
    frame.window = w;
    const QRectF& area = frame.area;
    const AxisTicks xTicks = ticksFor(w.x0, w.x1, area.width(), m.base * 6, fm, true);

    // --- texts on top
    p.setPen(Qt::black);
    p.setFont(m.title);
    p.drawText(titleRect, Qt::TextWordWrap | Qt::AlignHCenter | Qt::AlignTop, title);
    p.setFont(m.label);
    p.setPen(QColor(60, 60, 60));
    p.drawText(subtitleRect, Qt::TextWordWrap | Qt::AlignHCenter | Qt::AlignTop, subtitle);

    // --- grid
    QPen gridPen(QColor(225, 225, 225), 1);
    p.setPen(gridPen);
    if (s.kind != SceneKind::Contours) {
        for (double v : xTicks.ticks.values) p.drawLine(frame.toPixel(v, w.y0), frame.toPixel(v, w.y1));
        for (double v : yTicks.ticks.values) p.drawLine(frame.toPixel(w.x0, v), frame.toPixel(w.x1, v));
    }

    // --- data
    p.save();
    p.setClipRect(area);
    const double lineWidth = std::max(1.5, m.base / 7.0);
    if (s.kind == SceneKind::Contours) drawContours(p, frame, s.contours);
    drawGuides(p, frame, s.guides, std::max(1.2, m.base / 9.0));
    if (histogram) drawBars(p, frame, s.bars);
    for (const Curve& c : s.curves) drawCurve(p, frame, c, lineWidth, lineWidth * 1.6);
    p.restore();
    if (!s.note.empty()) {
        p.setPen(QColor(120, 120, 120));
        p.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, text(s.note));
    }

    // --- frame, ticks and their labels
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(area);
    for (double v : xTicks.ticks.values) {
        const QPointF at = frame.toPixel(v, w.y0);
        p.drawLine(at, at + QPointF(0, m.tick));
        p.drawText(QRectF(at.x() - 200, area.bottom() + m.tick + 2, 400, fm.height()), Qt::AlignHCenter | Qt::AlignTop,
                   text(tickText(v, xTicks.ticks.step)));
    }
    for (double v : yTicks.ticks.values) {
        const QPointF at = frame.toPixel(w.x0, v);
        p.drawLine(at, at - QPointF(m.tick, 0));
        p.drawText(QRectF(area.left() - m.tick - m.pad * 0.4 - 400, at.y() - fm.height() / 2, 400, fm.height()),
                   Qt::AlignRight | Qt::AlignVCenter, text(tickText(v, yTicks.ticks.step)));
    }
    p.drawText(QRectF(area.left(), area.bottom() + m.tick + fm.height() + m.pad * 0.5, area.width(), fm.height()),
               Qt::AlignHCenter | Qt::AlignTop, text(s.xLabel));
    drawRotated(p, QPointF(target.left() + m.pad + fm.height() / 2, area.center().y()), text(s.yLabel));

    // --- right-hand side
    if (s.kind == SceneKind::Curves && legend.rows > 0) {
        const double x0 = area.right() + m.pad;
        double y = area.top();
        QFont bold = m.label;
        bold.setBold(true);
        p.setFont(bold);
        p.setPen(Qt::black);
        p.drawText(QRectF(x0, y, legend.width, legend.rowHeight), Qt::AlignLeft | Qt::AlignVCenter, text(s.legendTitle));
        p.setFont(m.label);
        y += legend.rowHeight;
        const std::vector<const Curve*> entries = legendEntries(s);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const Curve& c = *entries[i];
            const int column = static_cast<int>(i) / legend.rows, row = static_cast<int>(i) % legend.rows;
            const double cx = x0 + column * legend.columnWidth, cy = y + row * legend.rowHeight + legend.rowHeight / 2;
            if (c.pointsOnly) {
                p.setBrush(curveColour(c.colour));
                p.setPen(QPen(QColor(30, 30, 30), lineWidth * 0.5));
                p.drawEllipse(QPointF(cx + m.base, cy), lineWidth * 2.4, lineWidth * 2.4);
                p.setBrush(Qt::NoBrush);
            } else {
                p.setPen(curvePen(c, lineWidth));
                p.drawLine(QPointF(cx, cy), QPointF(cx + m.base * 2, cy));
            }
            if (c.markers && !c.pointsOnly) {
                p.setBrush(curveColour(c.colour));
                p.setPen(QPen(Qt::white, lineWidth * 0.4));
                p.drawEllipse(QPointF(cx + m.base, cy), lineWidth * 1.6, lineWidth * 1.6);
                p.setBrush(Qt::NoBrush);
            }
            p.setPen(Qt::black);
            p.drawText(QRectF(cx + m.base * 2.6, cy - legend.rowHeight / 2, legend.columnWidth, legend.rowHeight),
                       Qt::AlignLeft | Qt::AlignVCenter, text(c.name));
        }
    } else if (s.kind == SceneKind::Contours && s.contours.levels.size() >= 2) {
        const auto& levels = s.contours.levels;
        const int bands = static_cast<int>(levels.size()) - 1;
        const double barLeft = area.right() + m.pad * 2, barWidth = m.base * 1.6;
        const double barTop = area.top() + fm.height() * 1.5, barBottom = area.bottom();
        p.setPen(Qt::black);
        p.drawText(QRectF(barLeft - m.pad, area.top(), target.right() - barLeft, fm.height()), Qt::AlignLeft | Qt::AlignVCenter,
                   text(s.legendTitle));
        const double bandHeight = (barBottom - barTop) / bands;
        for (int k = 0; k < bands; ++k) {
            const QRectF r(barLeft, barBottom - (k + 1) * bandHeight, barWidth, bandHeight);
            p.fillRect(r, bandColour(k, bands));
        }
        p.setPen(QPen(Qt::black, 1));
        p.drawRect(QRectF(barLeft, barTop, barWidth, barBottom - barTop));
        const int every = std::max(1, static_cast<int>(std::ceil(fm.height() * 1.1 / bandHeight)));
        const double step = levels[1] - levels[0];
        for (int k = 0; k <= bands; k += every) {
            const double y = barBottom - k * bandHeight;
            p.drawLine(QPointF(barLeft + barWidth, y), QPointF(barLeft + barWidth + m.tick, y));
            p.drawText(QRectF(barLeft + barWidth + m.tick + 3, y - fm.height() / 2, 400, fm.height()),
                       Qt::AlignLeft | Qt::AlignVCenter, text(tickText(levels[static_cast<std::size_t>(k)], step)));
        }
    } else if (histogram) {
        for (double v : secondTicks.ticks.values) {
            const QPointF at = frame.toPixel(w.x1, v * s.secondAxisScale);
            if (at.y() < area.top() - 0.5 || at.y() > area.bottom() + 0.5) continue;
            p.drawLine(at, at + QPointF(m.tick, 0));
            p.drawText(QRectF(at.x() + m.tick + m.pad * 0.4, at.y() - fm.height() / 2, 400, fm.height()),
                       Qt::AlignLeft | Qt::AlignVCenter, text(tickText(v, secondTicks.ticks.step)));
        }
        drawRotated(p, QPointF(target.right() - m.pad - fm.height() / 2, area.center().y()), text(s.secondAxisLabel));
        // The legend row above the plot area.
        const QString barName = text(s.yLabel), curveName = text(s.secondAxisLabel);
        const double swatch = m.base * 1.8, gap = m.pad;
        const double total = swatch + gap * 0.5 + fm.horizontalAdvance(barName) + gap * 2 + swatch + gap * 0.5 + fm.horizontalAdvance(curveName);
        double x = area.center().x() - total / 2;
        const double cy = legendRowTop + fm.height() * 0.6;
        p.setPen(QPen(QColor(31, 82, 140), 1.0));
        p.setBrush(QColor(120, 166, 220));
        p.drawRect(QRectF(x, cy - fm.height() * 0.35, swatch, fm.height() * 0.7));
        x += swatch + gap * 0.5;
        p.setPen(Qt::black);
        p.drawText(QRectF(x, cy - fm.height() / 2, fm.horizontalAdvance(barName) + 2, fm.height()), Qt::AlignLeft | Qt::AlignVCenter, barName);
        x += fm.horizontalAdvance(barName) + gap * 2;
        if (!s.curves.empty()) {
            p.setPen(curvePen(s.curves.front(), lineWidth));
            p.drawLine(QPointF(x, cy), QPointF(x + swatch, cy));
        }
        x += swatch + gap * 0.5;
        p.setPen(Qt::black);
        p.drawText(QRectF(x, cy - fm.height() / 2, fm.horizontalAdvance(curveName) + 2, fm.height()), Qt::AlignLeft | Qt::AlignVCenter, curveName);
    }
    p.restore();
    return frame;
}

}  // namespace bm::trazel
