#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "kernels/kern2d.h"

using namespace bm;

namespace {

// The bytes of a record as the library sees them.
std::string bytesOf(const TwoDimParameters& p) { return std::string(reinterpret_cast<const char*>(&p), sizeof p); }

double doubleAt(const std::string& bytes, std::size_t offset) {
    double v;
    std::memcpy(&v, bytes.data() + offset, sizeof v);
    return v;
}

}  // namespace

TEST(Kern2dRecord, SizeAndCopyability) {
    EXPECT_EQ(sizeof(TwoDimParameters), 308u);
    EXPECT_EQ(alignof(TwoDimParameters), 1u);
    EXPECT_TRUE(std::is_trivially_copyable_v<TwoDimParameters>);
    EXPECT_TRUE(std::is_standard_layout_v<TwoDimParameters>);
}

TEST(Kern2dRecord, NumbersSitAtTheirOffsets) {
    TwoDimParameters p;
    const std::pair<double TwoDimParameters::*, std::size_t> fields[] = {
        {&TwoDimParameters::xMin, 0},
        {&TwoDimParameters::xMax, 8},
        {&TwoDimParameters::xInterval, 16},
        {&TwoDimParameters::yMin, 24},
        {&TwoDimParameters::yMax, 32},
        {&TwoDimParameters::yInterval, 40},
        {&TwoDimParameters::tMin, 48},
        {&TwoDimParameters::tMax, 56},
        {&TwoDimParameters::tInterval, 64},
        {&TwoDimParameters::sourceXc, 80},
        {&TwoDimParameters::sourceYc, 88},
        {&TwoDimParameters::sourceWidth, 96},
        {&TwoDimParameters::sourceStdDev, 104},
        {&TwoDimParameters::injectionRate, 112},
        {&TwoDimParameters::porosity, 120},
        {&TwoDimParameters::effectiveVelocity, 136},
        {&TwoDimParameters::effectiveDispersionX, 144},
        {&TwoDimParameters::effectiveDispersionY, 152},
        {&TwoDimParameters::effectiveHalfLife, 160},
        {&TwoDimParameters::netRecharge, 168},
        {&TwoDimParameters::aquiferThickness, 176},
    };
    double value = 1.5;
    for (const auto& [member, offset] : fields) p.*member = value++;
    const std::string bytes = bytesOf(p);
    value = 1.5;
    for (const auto& [member, offset] : fields) EXPECT_EQ(doubleAt(bytes, offset), value++) << "offset " << offset;
    // Little-endian: 1.5 is 0x3FF8000000000000, its last byte first.
    EXPECT_EQ(static_cast<unsigned char>(bytes[7]), 0x3Fu);
    EXPECT_EQ(static_cast<unsigned char>(bytes[6]), 0xF8u);
}

TEST(Kern2dRecord, FreshRecordIsZeroWithBlankTexts) {
    const TwoDimParameters p;
    const std::string bytes = bytesOf(p);
    for (std::size_t i = 0; i < 184; ++i) EXPECT_EQ(bytes[i], '\0') << i;
    for (std::size_t i = 184; i < 269; ++i) EXPECT_EQ(bytes[i], ' ') << i;
    for (std::size_t i = 269; i < 276; ++i) EXPECT_EQ(bytes[i], '\0') << i;
    for (std::size_t i = 276; i < 306; ++i) EXPECT_EQ(bytes[i], ' ') << i;
    EXPECT_EQ(bytes[306], '\0');
    EXPECT_EQ(bytes[307], '\0');
}

TEST(Kern2dRecord, TextsAreBlankPaddedAndCut) {
    TwoDimParameters p;
    setFixedText(p.aquiferCode, "Finite");
    setFixedText(p.contaminantCode, "Finite / Line");
    p.reserved272 = 0x01020304;
    const std::string bytes = bytesOf(p);
    EXPECT_EQ(bytes.substr(249, 20), "Finite              ");
    EXPECT_EQ(bytes.substr(276, 30), "Finite / Line                 ");
    EXPECT_EQ(bytes.substr(272, 4), std::string("\x04\x03\x02\x01", 4));
    EXPECT_EQ(fixedText(p.aquiferCode), "Finite              ");
    setFixedText(p.aquiferCode, "An aquifer word much longer than twenty");
    EXPECT_EQ(fixedText(p.aquiferCode), "An aquifer word much");
    EXPECT_EQ(bytesOf(p)[269], '\0');  // the cut text does not run into the padding
}
