#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "kernels/kern3d.h"

using namespace bm;

namespace {

// The little-endian bytes of a double, assembled by hand from its bit pattern.
std::string littleEndian(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, 8);
    std::string out;
    for (int i = 0; i < 8; ++i) out.push_back(static_cast<char>((bits >> (8 * i)) & 0xFF));
    return out;
}

std::string bytesAt(const ThreeDimParameters& p, std::size_t offset, std::size_t length) {
    return std::string(reinterpret_cast<const char*>(&p) + offset, length);
}

}  // namespace

TEST(Kern3dRecord, SizeIsEightHundredTwelveBytes) { EXPECT_EQ(sizeof(ThreeDimParameters), 812u); }

TEST(Kern3dRecord, NumbersSitAtTheirOffsetsLittleEndian) {
    ThreeDimParameters p;
    const struct {
        double ThreeDimParameters::*field;
        std::size_t offset;
        double value;
    } cases[] = {
        {&ThreeDimParameters::xMin, 0, 1.5},
        {&ThreeDimParameters::xMax, 8, 100.25},
        {&ThreeDimParameters::xInterval, 16, 2.0},
        {&ThreeDimParameters::yMin, 24, -50.0},
        {&ThreeDimParameters::yMax, 32, 50.0},
        {&ThreeDimParameters::yInterval, 40, 5.0},
        {&ThreeDimParameters::zMin, 48, -3.0},
        {&ThreeDimParameters::zMax, 56, 7.0},
        {&ThreeDimParameters::zInterval, 64, 0.5},
        {&ThreeDimParameters::tMin, 72, 0.0},
        {&ThreeDimParameters::tMax, 80, 3650.0},
        {&ThreeDimParameters::tInterval, 88, 365.0},
        {&ThreeDimParameters::sourceXc, 96, 12.0},
        {&ThreeDimParameters::sourceYc, 104, 13.0},
        {&ThreeDimParameters::sourceZc, 112, 14.0},
        {&ThreeDimParameters::sourceWidth, 120, 20.0},
        {&ThreeDimParameters::sourceHeight, 128, 4.0},
        {&ThreeDimParameters::injectionRate, 136, 0.125},
        {&ThreeDimParameters::porosity, 144, 0.3},
        {&ThreeDimParameters::effectiveVelocity, 160, 0.1},
        {&ThreeDimParameters::effectiveDispersionX, 168, 1.0},
        {&ThreeDimParameters::effectiveDispersionY, 176, 0.1},
        {&ThreeDimParameters::effectiveDispersionZ, 184, 0.01},
        {&ThreeDimParameters::effectiveHalfLife, 192, 1e4},
        {&ThreeDimParameters::netRecharge, 200, 0.001},
        {&ThreeDimParameters::aquiferThickness, 208, 25.0},
    };
    for (const auto& c : cases) p.*c.field = c.value;
    for (const auto& c : cases) EXPECT_EQ(bytesAt(p, c.offset, 8), littleEndian(c.value)) << "offset " << c.offset;
    EXPECT_EQ(bytesAt(p, 152, 8), std::string(8, '\0'));  // reserved, zero
}

TEST(Kern3dRecord, TextsAreBlankPaddedSingleByteFields) {
    ThreeDimParameters p;
    // A fresh record: every text blank, the padding byte zero.
    EXPECT_EQ(bytesAt(p, 216, 15), std::string(15, ' '));
    EXPECT_EQ(bytesAt(p, 231, 15), std::string(15, ' '));
    EXPECT_EQ(bytesAt(p, 246, 15), std::string(15, ' '));
    EXPECT_EQ(bytesAt(p, 261, 20), std::string(20, ' '));
    EXPECT_EQ(bytesAt(p, 301, 480), std::string(480, ' '));
    EXPECT_EQ(bytesAt(p, 811, 1), std::string(1, '\0'));

    setFixedText(p.aquiferCode, "Finite");
    setFixedText(p.contaminantCode, "Finite / Patch");
    EXPECT_EQ(bytesAt(p, 281, 20), "Finite              ");
    EXPECT_EQ(bytesAt(p, 781, 30), "Finite / Patch                ");
    EXPECT_EQ(fixedText(p.aquiferCode), "Finite");
    EXPECT_EQ(fixedText(p.contaminantCode), "Finite / Patch");

    // A text longer than its field is cut, and its neighbours stay untouched.
    setFixedText(p.aquiferCode, "Semi-Infinite Aquifer Extended");
    EXPECT_EQ(bytesAt(p, 281, 20), "Semi-Infinite Aquife");
    EXPECT_EQ(bytesAt(p, 301, 1), " ");
    EXPECT_EQ(bytesAt(p, 261, 20), std::string(20, ' '));
}
