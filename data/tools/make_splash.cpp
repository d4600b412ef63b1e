// Draws the workbench's splash picture, a cross-section of an aquifer with a
// contaminant plume below a leaking tank, and writes it as a 24-bit BMP.
// Usage: make_splash OUTPUT.bmp

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

constexpr int W = 480, H = 300;

struct Rgb {
    double r, g, b;
};

Rgb mix(Rgb a, Rgb b, double t) {
    t = std::clamp(t, 0.0, 1.0);
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

// Relative concentration of a continuous point source in uniform flow along x
// (the steady two-dimensional Gaussian plume), for the picture only.
double plume(double x, double z) {
    if (x <= 0) return 0;
    const double alphaT = 0.9;  // transverse spread per unit travel, in pixels
    const double sigma = std::sqrt(2.0 * alphaT * x) + 2.0;
    return std::exp(-z * z / (2 * sigma * sigma)) * 14.0 / sigma * std::exp(-x / 900.0);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_splash OUTPUT.bmp\n");
        return 2;
    }
    const int ground = 92, waterTable = 150, bedrock = 270;
    const Rgb skyTop{110, 160, 215}, skyLow{200, 225, 245}, soil{196, 164, 112}, soilDark{160, 128, 84},
        water{70, 120, 175}, waterDeep{40, 80, 140}, rock{95, 90, 85}, grass{80, 140, 60}, red{230, 60, 30},
        yellow{250, 210, 60}, tank{150, 150, 160}, well{40, 40, 40};

    std::vector<Rgb> px(static_cast<std::size_t>(W * H));
    auto at = [&](int x, int y) -> Rgb& { return px[static_cast<std::size_t>(y * W + x)]; };

    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const int surface = ground + static_cast<int>(4 * std::sin(x / 45.0));
            Rgb c;
            if (y < surface)
                c = mix(skyTop, skyLow, y / static_cast<double>(ground));
            else if (y < surface + 5)
                c = grass;
            else if (y < waterTable)
                c = ((x / 7 + y / 5) % 5 == 0) ? soilDark : soil;  // unsaturated sand
            else if (y < bedrock)
                c = mix(water, waterDeep, (y - waterTable) / static_cast<double>(bedrock - waterTable));
            else
                c = ((x / 11 + y / 6) % 3 == 0) ? Rgb{80, 75, 70} : rock;
            // The plume: from the tank down to the water table, then along the flow.
            const double sourceX = 110;
            if (y >= surface + 5 && y < waterTable && std::abs(x - sourceX) < 8 + (y - ground) * 0.08) {
                c = mix(c, red, 0.55);
            } else if (y >= waterTable && y < bedrock) {
                const double conc = plume(x - sourceX, y - (waterTable + 22));
                if (conc > 0.02) c = mix(c, mix(yellow, red, std::min(1.0, conc * 1.4)), std::min(0.85, conc * 2.5));
            }
            at(x, y) = c;
        }
    // The water table line.
    for (int x = 0; x < W; ++x)
        if ((x / 6) % 2 == 0) at(x, waterTable) = {20, 40, 110};
    // The tank on the surface.
    for (int y = ground - 30; y < ground + 2; ++y)
        for (int x = 90; x < 130; ++x) at(x, y) = (y == ground - 30 || x == 90 || x == 129) ? Rgb{90, 90, 100} : tank;
    // A monitoring well down to the aquifer, with its screen.
    for (int y = ground - 14; y < bedrock - 20; ++y)
        for (int x = 380; x < 386; ++x)
            at(x, y) = (y > waterTable + 10 && (y / 4) % 2 == 0) ? Rgb{200, 200, 200} : well;
    // Flow arrows in the aquifer.
    for (int k = 0; k < 4; ++k) {
        const int y0 = waterTable + 85 + (k % 2) * 12, x0 = 60 + k * 100;
        for (int x = x0; x < x0 + 40; ++x) at(x, y0) = {235, 240, 250};
        for (int d = 1; d < 6; ++d) {
            at(x0 + 40 - d, y0 - d) = {235, 240, 250};
            at(x0 + 40 - d, y0 + d) = {235, 240, 250};
        }
    }
    // A frame.
    for (int x = 0; x < W; ++x) at(x, 0) = at(x, H - 1) = {20, 20, 30};
    for (int y = 0; y < H; ++y) at(0, y) = at(W - 1, y) = {20, 20, 30};

    // 24-bit BMP, rows bottom-up, each padded to four bytes.
    const int rowBytes = (W * 3 + 3) & ~3;
    const std::uint32_t imageBytes = static_cast<std::uint32_t>(rowBytes * H), fileBytes = 54 + imageBytes;
    std::vector<std::uint8_t> out(fileBytes, 0);
    auto put32 = [&](std::size_t o, std::uint32_t v) {
        for (int i = 0; i < 4; ++i) out[o + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(v >> (8 * i));
    };
    out[0] = 'B';
    out[1] = 'M';
    put32(2, fileBytes);
    put32(10, 54);
    put32(14, 40);
    put32(18, W);
    put32(22, H);
    out[26] = 1;
    out[28] = 24;
    put32(34, imageBytes);
    put32(38, 2835);
    put32(42, 2835);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const Rgb& c = at(x, H - 1 - y);
            const std::size_t o = 54 + static_cast<std::size_t>(y * rowBytes + x * 3);
            out[o] = static_cast<std::uint8_t>(std::lround(c.b));
            out[o + 1] = static_cast<std::uint8_t>(std::lround(c.g));
            out[o + 2] = static_cast<std::uint8_t>(std::lround(c.r));
        }
    std::FILE* f = std::fopen(argv[1], "wb");
    if (!f) {
        std::perror(argv[1]);
        return 1;
    }
    const bool ok = std::fwrite(out.data(), 1, out.size(), f) == out.size();
    return (std::fclose(f) == 0 && ok) ? 0 : 1;
}
