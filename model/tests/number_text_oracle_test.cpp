// The number texts against the printf/strtod implementation they replaced
// (number_text_reference.cpp): the same bytes for every double and every
// format pattern the program uses, the same double (to the bit) and the same
// errors for every text. The suite runs BRENMOOR_NUMBER_TEXT_SAMPLES values of
// each kind (100000 by default); set it to 10000000 for the long comparison.

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "model/number_text.h"
#include "model/tests/number_text_reference.h"
#include "shell/base/runtime_error.h"

namespace {

namespace ref = bm::reference;

long long sampleCount() {
    const char* text = std::getenv("BRENMOOR_NUMBER_TEXT_SAMPLES");
    const long long n = text != nullptr ? std::atoll(text) : 0;
    return n > 0 ? n : 100000;
}

// Every pattern the writers and screens format with, and a few more shapes.
const std::vector<std::string> kPatterns = {
    "####.###", "###.###", "##.####", "#.####",   "0.#####", "0.0####", "0.00####", "#.####e+###", "General Number",
    "###,###",  "#.#",     "0.00",    "#,##0.00", "0.000E-00", "00.###e+0"};

std::string hexOf(double v) {
    char text[64];
    std::snprintf(text, sizeof text, "%a", v);
    return text;
}

// The float nearest to v, infinite beyond the floats' range.
float floatOf(double v) {
    if (std::fabs(v) > FLT_MAX) return v < 0 ? -HUGE_VALF : HUGE_VALF;
    return static_cast<float>(v);
}

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// Counts mismatches; reports the first few, naming the conversion and its input.
class Mismatches {
public:
    template <class T, class Input>
    void check(const T& got, const T& want, const char* what, const Input& input) {
        ++compared_;
        if (got == want) return;
        if (++count_ <= 20)
            ADD_FAILURE() << what << " of " << describe(input) << ": got \"" << got << "\", the reference gives \"" << want
                          << "\"";
    }
    template <class Input>
    void checkValue(double got, double want, const char* what, const Input& input) {
        ++compared_;
        if (sameBits(got, want)) return;
        if (++count_ <= 20)
            ADD_FAILURE() << what << " of " << describe(input) << ": got " << hexOf(got) << ", the reference gives "
                          << hexOf(want);
    }
    long long count() const { return count_; }
    long long compared() const { return compared_; }

private:
    static std::string describe(double v) { return "value " + hexOf(v); }
    static std::string describe(long long v) { return std::to_string(v); }
    static std::string describe(const std::string& t) { return "text \"" + t + "\""; }
    long long count_ = 0, compared_ = 0;
};

// Errors of the strict conversion: the value, or the error number as a negative.
double strictOutcome(double (*convert)(std::string_view), const std::string& text) {
    try {
        return convert(text);
    } catch (const bm::RuntimeError& e) {
        return -1000.0 - e.number();
    }
}

void compareReaders(const std::string& text, Mismatches& m) {
    m.checkValue(bm::textValue(text), ref::textValue(text), "textValue", text);
    m.check(bm::isNumeric(text), ref::isNumeric(text), "isNumeric", text);
    m.checkValue(strictOutcome(bm::numericValue, text), strictOutcome(ref::numericValue, text), "numericValue", text);
    m.check(bm::formatNumber(std::string_view(text)), ref::formatNumber(std::string_view(text)), "formatNumber", text);
}

void compareWriters(double v, Mismatches& m) {
    const float f = floatOf(v);
    m.check(bm::generalText(v), ref::generalText(v), "generalText", v);
    m.check(bm::generalText(f), ref::generalText(f), "float generalText", v);
    m.check(bm::signedText(v), ref::signedText(v), "signedText", v);
    m.check(bm::signedText(f), ref::signedText(f), "float signedText", v);
    m.check(bm::printForm(v), ref::printForm(v), "printForm", v);
    m.check(bm::streamText(v), ref::streamText(v), "streamText", v);
    m.check(bm::streamText(f), ref::streamText(f), "float streamText", v);
    m.check(bm::formatNumber(v), ref::formatNumber(v), "formatNumber", v);
    for (const std::string& pattern : kPatterns)
        m.check(bm::formatPattern(v, pattern), ref::formatPattern(v, pattern), pattern.c_str(), v);
    // What the readers meet: the texts the writers wrote.
    compareReaders(ref::generalText(v), m);
    compareReaders(ref::signedText(v), m);
    compareReaders(ref::streamText(f), m);
    compareReaders(ref::formatNumber(v), m);
}

// Doubles of every kind: any bit pattern (all magnitudes, subnormals,
// infinities, NaNs), short decimals (ties of the patterns' half-away
// rounding such as 2.55), exact binary ties of the 15-digit and 7-digit
// roundings (N 2^-k whose decimal digits end in a 5 at the 16th or 8th
// place), and the neighbours of every power of ten.
class Values {
public:
    explicit Values(std::uint64_t seed) : random_(seed) {}

    double next() {
        switch (kind_++ % 6) {
        case 0: return std::bit_cast<double>(random_());
        case 1: return shortDecimal();
        case 2: return binaryTie(16, 22);
        case 3: return binaryTie(8, 10);
        case 4: return nearPowerOfTen();
        default: return resultLike();
        }
    }

private:
    double sign(double v) { return (random_() & 1) ? -v : v; }

    double shortDecimal() {
        const int digits = 1 + static_cast<int>(random_() % 17);
        std::uint64_t n = random_() % 100000000000000000ull;
        std::uint64_t limit = 1;
        for (int i = 0; i < digits; ++i) limit *= 10;
        n %= limit;
        const int exponent = static_cast<int>(random_() % 61) - 30 - digits;
        const std::string text = std::to_string(n) + "e" + std::to_string(exponent);
        return sign(std::strtod(text.c_str(), nullptr));
    }

    double binaryTie(int digits, int mostK) {
        // D = N 5^k with `digits` digits, N odd: N 2^-k has the decimal digits of D.
        double low = 1, high = 10;
        for (int i = 1; i < digits; ++i) {
            low *= 10;
            high *= 10;
        }
        const int k = static_cast<int>(random_() % static_cast<std::uint64_t>(mostK + 1));
        const double five = std::pow(5.0, k);
        auto lo = static_cast<std::uint64_t>(std::ceil(low / five)), hi = static_cast<std::uint64_t>((high - 1) / five);
        if (hi < lo) return 0.5;
        std::uint64_t n = lo + random_() % (hi - lo + 1);
        if (k == 0) n = n / 10 * 10 + 5;  // a whole number ending in 5
        else n |= 1;
        if (n > (1ull << 53)) n = (1ull << 53) - 1;
        return sign(std::ldexp(static_cast<double>(n), -k));
    }

    double nearPowerOfTen() {
        const int e = static_cast<int>(random_() % 631) - 315;
        double v = std::pow(10.0, e);
        if (random_() % 3 == 0) v *= 9.99995;  // rounds up to the next power in several patterns
        const int steps = static_cast<int>(random_() % 7) - 3;
        for (int i = 0; i < std::abs(steps); ++i) v = std::nextafter(v, steps < 0 ? 0.0 : HUGE_VAL);
        return sign(v);
    }

    double resultLike() {
        // Concentrations and coordinates: 1e-12 .. 1e6, all 17 digits.
        std::uniform_real_distribution<double> exponent(-12.0, 6.0);
        return sign(std::pow(10.0, exponent(random_)));
    }

    std::mt19937_64 random_;
    unsigned kind_ = 0;
};

// Texts a user or a damaged file may give: numbers with blanks anywhere,
// long digit strings, D exponents, out-of-range exponents, "&H" and "&O"
// constants, and noise.
class Texts {
public:
    explicit Texts(std::uint64_t seed) : random_(seed) {}

    std::string next() {
        const unsigned kind = static_cast<unsigned>(random_() % 8);
        std::string t = kind < 2 ? noise() : kind < 4 ? nearHalfway() : number();
        // Blanks, tabs and line feeds at random places.
        const int blanks = static_cast<int>(random_() % 4);
        for (int i = 0; i < blanks && random_() % 2 == 0; ++i) {
            const char* kinds = "  \t\n";
            t.insert(t.begin() + static_cast<long>(random_() % (t.size() + 1)), kinds[random_() % 4]);
        }
        return t;
    }

private:
    char pick(const char* set) { return set[random_() % std::strlen(set)]; }

    std::string digits(int most) {
        std::string d;
        const int n = static_cast<int>(random_() % static_cast<std::uint64_t>(most + 1));
        for (int i = 0; i < n; ++i) d += pick("0123456789");
        return d;
    }

    std::string number() {
        if (random_() % 20 == 0) return std::string("&") + pick("HhOo") + digits(12) + (random_() % 2 ? "" : "FfA");
        std::string t;
        if (random_() % 3 == 0) t += pick("+-");
        t += digits(random_() % 5 == 0 ? 40 : 18);
        if (random_() % 2) t += "." + digits(random_() % 5 == 0 ? 40 : 12);
        if (random_() % 2) {
            t += pick("eEdD");
            if (random_() % 2) t += pick("+-");
            t += digits(random_() % 6 == 0 ? 4 : 3);
        }
        if (random_() % 4 == 0) t += pick(":,x.e ");
        return t;
    }

    std::string noise() {
        std::string t;
        const int n = static_cast<int>(random_() % 12);
        for (int i = 0; i < n; ++i) t += pick("0123456789.+-eEdD&HhOo :,xAF\t\x80\xb9\xba\xff/");
        return t;
    }

    // The decimal text of a point halfway between two neighbouring doubles
    // (exact in a 64-bit long double), or just beside it, to 15 to 40
    // significant digits, in the shapes the writers and users give: the
    // readers' hardest cases, where the last bits decide the rounding.
    std::string nearHalfway() {
        double x;
        switch (random_() % 4) {
        case 0: x = std::ldexp(static_cast<double>(random_() >> 11), static_cast<int>(random_() % 2200) - 1140); break;
        case 1: x = std::pow(10.0, static_cast<int>(random_() % 600) - 300); break;
        default: x = std::bit_cast<double>(random_() & 0x7fffffffffffffffull); break;
        }
        if (!std::isfinite(x) || x >= DBL_MAX) x = 1.0;
        const long double half = (static_cast<long double>(x) + std::nextafter(x, HUGE_VAL)) / 2;
        const int digits = 15 + static_cast<int>(random_() % 26);
        char text[128];
        std::snprintf(text, sizeof text, "%.*Le", digits - 1, half);
        std::string t = text;
        const auto e = t.find('e');
        std::string mantissa = t.substr(0, e), exponent = t.substr(e + 1);
        switch (random_() % 4) {
        case 0: {  // the mantissa's last digit one up or down
            char& last = mantissa.back();
            if (last > '0' && last < '9') last = static_cast<char>(last + ((random_() & 1) ? 1 : -1));
            break;
        }
        case 1: {  // the point moved, the exponent moved back
            const int shift = static_cast<int>(random_() % 24);
            mantissa.erase(1, 1);
            while (static_cast<int>(mantissa.size()) < shift + 1) mantissa += '0';
            mantissa.insert(static_cast<std::size_t>(shift + 1), ".");
            exponent = std::to_string(std::stoi(exponent) - shift);
            break;
        }
        case 2: mantissa += std::string(random_() % 30, '0'); break;  // trailing zeros
        default: break;
        }
        t = mantissa + pick("eEdD") + exponent;
        if (random_() % 4 == 0) t = "-" + t;
        if (random_() % 8 == 0) t = " " + t + "  ";
        return t;
    }

    std::mt19937_64 random_;
};

TEST(NumberTextOracle, EveryWriterGivesTheBytesOfTheReference) {
    const long long n = sampleCount();
    Mismatches m;
    Values values(20240611);
    const double fixed[] = {0.0,
                            -0.0,
                            HUGE_VAL,
                            -HUGE_VAL,
                            std::numeric_limits<double>::quiet_NaN(),
                            DBL_MAX,
                            -DBL_MAX,
                            1.79769313486231e308,
                            1.797693134862315e308,
                            DBL_MIN,
                            std::nextafter(DBL_MIN, 0.0),
                            std::numeric_limits<double>::denorm_min(),
                            1e15,
                            999999999999999.0,
                            1e16,
                            99999.5,
                            9.99995,
                            0.00999995,
                            2.55,
                            1000000000000005.0,
                            0.1 + 0.2};
    for (double v : fixed) compareWriters(v, m);
    for (long long i = 0; i < n && m.count() < 20; ++i) compareWriters(values.next(), m);
    EXPECT_EQ(m.count(), 0) << "of " << m.compared() << " comparisons";
    std::printf("%lld values, %lld comparisons with the reference\n", n, m.compared());
}

TEST(NumberTextOracle, EveryReaderGivesTheValueOfTheReference) {
    const long long n = sampleCount();
    Mismatches m;
    Texts texts(777);
    for (const char* t : {"", " ", "+", "-", ".", "-.", "1e", "1e+", "&", "&H", "&O8", "&HFFFF", "&H7FFFFFFF",
                          "&HFFFFFFFF", "&H100000000", "1e999", "-1e999", "1e-999", "4.9e-324", "2.4703282292062327e-324",
                          "2.4703282292062328e-324", "1.7976931348623158e308", "1.7976931348623159e308", "-0", "+.5",
                          "1d5", " 2 45 7", "\t3\n4", "1:50", "0x10", "1E-0000005", "1e+0000000000000000308",
                          "1e1000000000", "0e99999999", "-0e-99999999", "1.5E-05x", "1.5E-055", "1.5E-0", "1.5E+123",
                          ".1234567890123456789", "1.2345678901234567", "1.23456789012345678", "123456789012345.6",
                          "0.00000000000000000000000000000000001", "12345678901234567890123456789", "1 e 5", "1e 5",
                          "- 5", "1. 5", "9007199254740993", "9007199254740992.5", "1e23", "8.98846567431158e307",
                          "1.7976931348623157e308 ", " 2.2250738585072011e-308", "2.2250738585072014e-308"})
        compareReaders(t, m);
    for (long long i = 0; i < n && m.count() < 20; ++i) compareReaders(texts.next(), m);
    EXPECT_EQ(m.count(), 0) << "of " << m.compared() << " comparisons";
    std::printf("%lld texts, %lld comparisons with the reference\n", n, m.compared());
}

// The readers take a fraction's digits sixteen bytes at a time, a shorter
// run as the sixteen bytes that end with it, and the last few eight at a
// time: every place of the point in texts of 1 to 60 bytes, every length of
// fraction, with and without what may follow the digits.
TEST(NumberTextOracle, EveryPlaceOfThePointAndEveryLengthOfFraction) {
    Mismatches m;
    std::mt19937_64 random(99);
    const char* const endings[] = {"", "E-05", "d+3", "e-300", " ", "\t  ", "x", ".", "e"};
    for (int whole = 0; whole <= 20; ++whole)
        for (int fraction = 0; fraction <= 40; ++fraction)
            for (const char* ending : endings) {
                std::string t = (random() % 3 == 0) ? "-" : "";
                for (int i = 0; i < whole; ++i) t += static_cast<char>('0' + random() % 10);
                t += '.';
                for (int i = 0; i < fraction; ++i) t += static_cast<char>('0' + random() % 10);
                t += ending;
                compareReaders(t, m);
                compareReaders(" " + t, m);
            }
    EXPECT_EQ(m.count(), 0) << "of " << m.compared() << " comparisons";
}

TEST(NumberTextOracle, IntegerPrintForms) {
    Mismatches m;
    std::mt19937_64 random(5);
    for (long long v : {0LL, -1LL, 1LL, std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()}) {
        m.check(bm::signedText(v), ref::signedText(v), "signedText", v);
        m.check(bm::printForm(v), ref::printForm(v), "printForm", v);
    }
    for (int i = 0; i < 100000; ++i) {
        const auto v = static_cast<long long>(random()) >> (random() % 64);
        m.check(bm::signedText(v), ref::signedText(v), "signedText", v);
        m.check(bm::printForm(v), ref::printForm(v), "printForm", v);
    }
    EXPECT_EQ(m.count(), 0);
}

}  // namespace
