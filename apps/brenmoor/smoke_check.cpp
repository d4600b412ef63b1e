// Checks that a screenshot is a real picture of a window: big enough, and not
// one flat colour.
// Usage: brenmoor_smoke_check IMAGE.png

#include <QGuiApplication>
#include <QImage>
#include <QSet>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const QImage image(QString::fromLocal8Bit(argv[1]));
    if (image.isNull()) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 1;
    }
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2) colours.insert(image.pixel(x, y));
    std::printf("%dx%d, %lld colours\n", image.width(), image.height(), static_cast<long long>(colours.size()));
    if (image.width() < 300 || image.height() < 200) return 1;
    return colours.size() >= 50 ? 0 : 1;
}
