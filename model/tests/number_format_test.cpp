// The in-place writer of the results' number format against formatNumber,
// which the printf oracle checks (number_text_oracle_test.cpp): the same
// bytes for ten million doubles of every kind and for two million floats,
// and hand-worked texts at the edges of the rows.

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "model/number_format.h"
#include "model/table_text.h"
#include "model/number_text.h"

namespace {

std::string written(double v) {
    char text[bm::kNumberTextRoom];
    return std::string(text, bm::writeNumber(text, v));
}

std::string written(float v) {
    char text[bm::kNumberTextRoom];
    return std::string(text, bm::writeNumber(text, v));
}

std::string hexOf(double v) {
    char text[64];
    std::snprintf(text, sizeof text, "%a", v);
    return text;
}

// Counts the values whose texts differ; reports the first few.
class Mismatches {
public:
    // formatNumber of a double is that of its 15-digit general text: the text's
    // own path (read back, row chosen by the value read, pattern applied) is
    // the independent writer compared with.
    void check(double v) { compare(written(v), bm::formatNumber(std::string_view(bm::generalText(v))), v); }
    void check(float v) { compare(written(v), bm::formatNumber(std::string_view(bm::generalText(v))), v); }
    long long count() const { return count_; }
    long long compared() const { return compared_; }

private:
    void compare(const std::string& got, const std::string& want, double v) {
        ++compared_;
        if (got == want) return;
        if (++count_ <= 20)
            ADD_FAILURE() << "value " << hexOf(v) << ": got \"" << got << "\", formatNumber gives \"" << want << "\"";
    }
    long long count_ = 0, compared_ = 0;
};

// The places at which the rows round, as (decade of the first digit,
// significant digits kept): "0.00####" keeps 4 digits of 0.00xxxx, ...,
// "####.###" 7, and "#.####e+###" 5 anywhere else.
struct RowPlace {
    int decade;
    int kept;
};
constexpr RowPlace kRowPlaces[] = {{-3, 4}, {-2, 4}, {-1, 5}, {0, 5}, {1, 6}, {2, 6}, {3, 7}};

class Doubles {
public:
    explicit Doubles(std::uint64_t seed) : random_(seed) {}

    double anyBits() { return std::bit_cast<double>(random_()); }

    double subnormal() { return sign(std::bit_cast<double>(random_() & 0xfffffffffffffull)); }

    // Concentrations and coordinates: 1e-15 .. 1e7, all 17 digits.
    double resultLike() {
        std::uniform_real_distribution<double> exponent(-15.0, 7.0);
        return sign(std::pow(10.0, exponent(random_)));
    }

    // A row boundary (0.001 .. 100000) or another power of ten, or 9.99995
    // times one, and up to five steps to either side.
    double nearBoundary() {
        const int e = random_() % 2 ? static_cast<int>(random_() % 9) - 3 : static_cast<int>(random_() % 631) - 315;
        double v = std::pow(10.0, e);
        switch (random_() % 4) {
        case 0: v *= 9.99995; break;
        case 1: v *= 9.9999999999999; break;
        default: break;
        }
        const int steps = static_cast<int>(random_() % 11) - 5;
        for (int i = 0; i < std::abs(steps); ++i) v = std::nextafter(v, steps < 0 ? 0.0 : HUGE_VAL);
        return sign(v);
    }

    // A value whose 15 digits end in a 5 at the place its row rounds, at
    // times with nines before it (the rounding carries into the next
    // decade), at times a unit of the 15th digit below or above.
    double tieOfTheRow() {
        int decade, kept;
        if (random_() % 4 == 0) {
            decade = static_cast<int>(random_() % 600) - 300;
            kept = 5;
        } else {
            const RowPlace& place = kRowPlaces[random_() % std::size(kRowPlaces)];
            decade = place.decade;
            kept = place.kept;
        }
        std::string digits;
        const bool nines = random_() % 4 == 0;
        for (int i = 0; i < kept; ++i) digits += nines ? '9' : static_cast<char>('0' + (i == 0 ? 1 + random_() % 9 : random_() % 10));
        digits += '5';
        switch (random_() % 3) {
        case 0: digits += std::string(static_cast<std::size_t>(14 - kept), '0'); break;
        case 1: digits += std::string(static_cast<std::size_t>(13 - kept), '0') + '1'; break;
        default: digits = lessByOneUnit(digits + std::string(static_cast<std::size_t>(14 - kept), '0')); break;
        }
        const std::string text = digits + "e" + std::to_string(decade - static_cast<int>(digits.size()) + 1);
        return sign(std::strtod(text.c_str(), nullptr));
    }

    // A short decimal: 1 to 17 digits, anywhere from 1e-30 to 1e30.
    double shortDecimal() {
        const int count = 1 + static_cast<int>(random_() % 17);
        std::string digits;
        for (int i = 0; i < count; ++i) digits += static_cast<char>('0' + random_() % 10);
        const std::string text = digits + "e" + std::to_string(static_cast<int>(random_() % 61) - 30 - count);
        return sign(std::strtod(text.c_str(), nullptr));
    }

private:
    double sign(double v) { return (random_() & 1) ? -v : v; }

    static std::string lessByOneUnit(std::string digits) {
        std::size_t i = digits.size();
        while (i > 0 && digits[i - 1] == '0') digits[--i] = '9';
        if (i > 0) --digits[i - 1];
        return digits;
    }

    std::mt19937_64 random_;
};

template <class Next>
void compareMany(long long count, Next next) {
    Mismatches m;
    for (long long i = 0; i < count && m.count() < 20; ++i) m.check(next());
    EXPECT_EQ(m.count(), 0) << "of " << m.compared() << " values";
}

// Ten million doubles in all, in five runs.
TEST(NumberFormat, AnyBitPatternGivesTheTextOfFormatNumber) {
    Doubles values(11);
    compareMany(2000000, [&] { return values.anyBits(); });
}

TEST(NumberFormat, SubnormalsAndResultsGiveTheTextOfFormatNumber) {
    Doubles values(12);
    long long i = 0;
    compareMany(2000000, [&] { return ++i % 4 == 0 ? values.subnormal() : values.resultLike(); });
}

TEST(NumberFormat, RowBoundariesAndTheirNeighboursGiveTheTextOfFormatNumber) {
    Doubles values(13);
    compareMany(2000000, [&] { return values.nearBoundary(); });
}

TEST(NumberFormat, TiesAtEachRowsRoundingPlaceGiveTheTextOfFormatNumber) {
    Doubles values(14);
    compareMany(2000000, [&] { return values.tieOfTheRow(); });
}

TEST(NumberFormat, ShortDecimalsGiveTheTextOfFormatNumber) {
    Doubles values(15);
    compareMany(2000000, [&] { return values.shortDecimal(); });
}

TEST(NumberFormat, FloatsGiveTheTextOfTheirGeneralTextFormatted) {
    std::mt19937_64 random(16);
    std::uniform_real_distribution<double> exponent(-40.0, 38.0);
    long long i = 0;
    compareMany(2000000, [&] {
        if (++i % 2 == 0) return std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        const float v = static_cast<float>(std::pow(10.0, exponent(random)));
        return random() & 1 ? -v : v;
    });
}

TEST(NumberFormat, FixedValuesGiveTheTextOfFormatNumber) {
    Mismatches m;
    for (double v : {0.0, -0.0, HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN(), DBL_MAX, -DBL_MAX,
                     1.79769313486231e308, 1.797693134862315e308, DBL_MIN, std::nextafter(DBL_MIN, 0.0),
                     std::numeric_limits<double>::denorm_min(), 1e15, 999999999999999.0, 1e16, 99999.5, 9.99995,
                     0.00999995, 2.55, 1000000000000005.0, 0.1 + 0.2})
        m.check(v);
    for (float v : {0.0f, -0.0f, HUGE_VALF, -HUGE_VALF, FLT_MAX, FLT_MIN, std::numeric_limits<float>::denorm_min(),
                    0.1f, 1e7f, 9.99995f, 99999.5f})
        m.check(v);
    EXPECT_EQ(m.count(), 0);
}

// Texts worked out by hand from the rows: whole numbers plain below 100000,
// each decade from 0.001 to 10000 in its own pattern, scientific beyond.
TEST(NumberFormat, TextsAtTheEdgesOfTheRows) {
    EXPECT_EQ(written(0.0), "0");
    EXPECT_EQ(written(-0.0), "0");
    EXPECT_EQ(written(7.0), "7");
    EXPECT_EQ(written(-99999.0), "-99999");
    EXPECT_EQ(written(100000.0), "1.e+5");
    EXPECT_EQ(written(99999.5), "1.e+5");           // five digits carry into the next power
    EXPECT_EQ(written(12345.5), "1.2346e+4");       // a fraction at 10^4 is scientific
    EXPECT_EQ(written(9999.9996), "10000.");        // "####.###" carries to a fifth digit
    EXPECT_EQ(written(1234.5675), "1234.568");
    EXPECT_EQ(written(100.0625), "100.063");        // an exact binary tie, away from zero
    EXPECT_EQ(written(-100.0625), "-100.063");
    EXPECT_EQ(written(9.99995), "10.");             // "#.####": the first dropped digit is 5
    EXPECT_EQ(written(1.00001), "1.");
    EXPECT_EQ(written(0.999999), "1.");             // "0.#####" carries out of the fraction
    EXPECT_EQ(written(0.5), "0.5");
    EXPECT_EQ(written(0.0999996), "0.1");           // "0.0####" keeps its one required place
    EXPECT_EQ(written(0.01), "0.01");
    EXPECT_EQ(written(0.00999999), "0.01");         // "0.00####" keeps two
    EXPECT_EQ(written(0.001), "0.001");
    EXPECT_EQ(written(0.0012345678), "0.001235");
    EXPECT_EQ(written(0.000999999), "1.e-3");       // below 0.001 the 15 digits go scientific
    EXPECT_EQ(written(-1.5e-10), "-1.5e-10");
    EXPECT_EQ(written(4.9406564584124654e-324), "4.9407e-324");
    EXPECT_EQ(written(1e300), "1.e+300");
    EXPECT_EQ(written(DBL_MAX), "1.79769313486232E+308");  // keeps its general text
    EXPECT_EQ(written(-HUGE_VAL), "-Infinity");
    EXPECT_EQ(written(std::numeric_limits<double>::quiet_NaN()), "NaN");
    EXPECT_EQ(written(0.1f), "0.1");                // the float's 7 digits, not its 17
    EXPECT_EQ(written(1.0f / 3.0f), "0.33333");
    EXPECT_EQ(written(1234567.0f), "1.2346e+6");
}

TEST(NumberFormat, FieldsAppendAfterTheText) {
    std::string row;
    {
        bm::TableText table(row);
        table.text("x");
        table.field(0.25);
        table.field(2.5f);
        table.number(3.0);
    }
    EXPECT_EQ(row, "x, 0.25, 2.53");
}

TEST(NumberFormat, ATableThatRepeatsValuesWritesEachAsOnItsOwn) {
    // Long enough that the table keeps the texts it wrote: values drawn from
    // a small pool (repeats, as a mirrored grid has them), with values whose
    // bits differ but whose texts may not (+0 and -0, neighbours), and
    // values that collide in the store; every field as formatNumber gives it.
    std::mt19937_64 random(53);
    std::vector<double> pool = {0.0, -0.0, 1.0, std::nextafter(1.0, 2.0), 1e-300, 4.9e-324, 123456.789, -2.5e-7};
    std::uniform_real_distribution<double> logSpread(-300.0, 300.0);
    for (int i = 0; i < 3000; ++i) pool.push_back(std::pow(10.0, logSpread(random)) * (i % 2 ? 1.0 : -1.0));
    std::uniform_int_distribution<std::size_t> pick(0, pool.size() - 1);
    std::string written, expected;
    {
        bm::TableText table(written);
        for (int i = 0; i < 40000; ++i) {
            const double value = pool[pick(random)];
            if (i % 10 == 0) {
                table.number(value);
                expected += bm::formatNumber(value);
            } else {
                table.field(value);
                expected += ", " + bm::formatNumber(value);
            }
        }
    }
    EXPECT_EQ(written, expected);
}

}  // namespace
