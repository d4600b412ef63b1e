#pragma once
// Measures of a rendered picture: how much of it is not background, and which colours it holds.

#include <QColor>
#include <QImage>
#include <QRect>
#include <QSet>
#include <algorithm>

namespace bm::trazel::testing {

inline double inkShare(const QImage& image, const QRect& part) {
    const QImage img = image.convertToFormat(QImage::Format_RGB32);
    long long ink = 0, all = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x) {
            ++all;
            if (img.pixel(x, y) != qRgb(255, 255, 255)) ++ink;
        }
    return all ? static_cast<double>(ink) / static_cast<double>(all) : 0;
}

inline double inkShare(const QImage& image) { return inkShare(image, image.rect()); }

// Share of coloured pixels: neither white nor a grey of axes, grid and text.
inline double colourShare(const QImage& image) {
    const QImage img = image.convertToFormat(QImage::Format_RGB32);
    long long coloured = 0;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x) {
            const QRgb p = img.pixel(x, y);
            const int hi = std::max({qRed(p), qGreen(p), qBlue(p)}), lo = std::min({qRed(p), qGreen(p), qBlue(p)});
            coloured += hi - lo > 30;
        }
    return static_cast<double>(coloured) / (static_cast<double>(img.width()) * img.height());
}

// Pixels of exactly this colour.
inline long long pixelsOf(const QImage& image, const QColor& colour) {
    const QImage img = image.convertToFormat(QImage::Format_RGB32);
    const QRgb wanted = colour.rgb();
    long long n = 0;
    for (int y = 0; y < img.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(img.constScanLine(y));
        for (int x = 0; x < img.width(); ++x) n += (line[x] | 0xff000000u) == (wanted | 0xff000000u);
    }
    return n;
}

}  // namespace bm::trazel::testing
