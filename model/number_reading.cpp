#include "model/number_reading.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <emmintrin.h>
#include <string>
#include <system_error>

#include "model/powers_of_ten.h"
#include "shell/base/runtime_error.h"

namespace bm::digits {

namespace {

bool isDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n'; }

[[gnu::always_inline]] inline std::uint64_t eightBytes(const char* p) {
    std::uint64_t word;
    std::memcpy(&word, p, sizeof word);
    return word;
}

// The bytes of a word that are not decimal digits, each marked by its top
// bit. A byte above '9' sets its top bit when 0x46 is added to it, a byte
// below '0' when 0x30 is taken from it; a digit neither carries nor borrows,
// so the lowest marked byte is the first that is not a digit, whatever its
// carry or borrow does to the marks above it.
[[gnu::always_inline]] inline std::uint64_t notDigits(std::uint64_t word) {
    return ((word + 0x4646464646464646ull) | (word - 0x3030303030303030ull)) & 0x8080808080808080ull;
}

// The value of eight decimal digits taken as one little-endian word, the
// first digit in the lowest byte: pairs, then fours, then all eight, each
// step one multiplication and a shift.
[[gnu::always_inline]] inline std::uint32_t eightDigits(std::uint64_t word) {
    word = (word & 0x0f0f0f0f0f0f0f0full) * 2561 >> 8;
    word = (word & 0x00ff00ff00ff00ffull) * 6553601 >> 16;
    return static_cast<std::uint32_t>((word & 0x0000ffff0000ffffull) * 42949672960001ull >> 32);
}

// The run of digits from p on, appended to m (which wraps past 19 digits;
// the caller counts them); `first` is the start of the whole text. Returns
// the end of the run. Eight bytes at a time, the run's end found by the
// lowest marked byte instead of a test per digit: the tail of a text is
// taken as the last eight bytes of the text shifted down, zeros (no digits)
// coming in above them.
[[gnu::always_inline]] inline const char* gatherDigits(const char* first, const char* p, const char* last,
                                                       std::uint64_t& m) {
    for (;;) {
        const auto left = last - p;
        std::uint64_t word;
        if (left >= 8) {
            word = eightBytes(p);
        } else if (left == 0) {
            return p;
        } else if (last - first >= 8) {
            word = eightBytes(last - 8) >> (8 * (8 - left));
        } else {
            for (; p < last && isDigit(*p); ++p) m = m * 10 + static_cast<unsigned>(*p - '0');
            return p;
        }
        const std::uint64_t marks = notDigits(word);
        if (marks == 0) {
            m = m * 100000000 + eightDigits(word);
            p += 8;
            continue;
        }
        const int count = std::countr_zero(marks) >> 3;  // digits before the first other byte
        if (count > 0) {
            // The digits moved to the top bytes, '0's below them.
            word = (word << (8 * (8 - count))) | (0x3030303030303030ull >> (8 * count));
            m = m * kTenTo[count] + eightDigits(word);
        }
        return p + count;
    }
}

// Sixteen zero bytes, then sixteen ones: the sixteen bytes from offset k
// keep the last k bytes of a vector.
alignas(16) constexpr unsigned char kKeepLast[32] = {0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,
                                                     0,    0,    0,    0,    0,    0xff, 0xff, 0xff, 0xff, 0xff, 0xff,
                                                     0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff};

// The number of sixteen digit values (0 to 9, the first in the lowest
// byte): pairs by a multiply and add of 16-bit lanes, fours and eights by
// multiply-adds of neighbouring lanes.
[[gnu::always_inline]] inline std::uint64_t sixteenDigits(__m128i digits) {
    const __m128i first = _mm_and_si128(digits, _mm_set1_epi16(0x00ff));
    const __m128i second = _mm_srli_epi16(digits, 8);
    const __m128i pairs = _mm_add_epi16(_mm_mullo_epi16(first, _mm_set1_epi16(10)), second);
    const __m128i fours = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00010064));   // 100 and 1
    const __m128i packed = _mm_packs_epi32(fours, fours);                       // each below 10000
    const __m128i eights = _mm_madd_epi16(packed, _mm_set1_epi32(0x00012710));  // 10000 and 1
    const auto both = static_cast<std::uint64_t>(_mm_cvtsi128_si64(eights));  // one move out for both halves
    return (both & 0xffffffffu) * 100000000ull + (both >> 32);
}

// The fraction's digits where sixteen bytes stand from p on: their count
// from one comparison of all sixteen; a run shorter than sixteen taken as
// the sixteen bytes that end with it (when the text reaches back that far)
// with the bytes before the run cleared. False, p at the digits left, when
// the run goes on where fewer than sixteen bytes remain or it cannot reach back.
[[gnu::always_inline]] inline bool gatherSixteen(const char* first, const char*& p, const char* last,
                                                 std::uint64_t& m) {
    while (last - p >= 16) {
        const __m128i digits =
            _mm_sub_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)), _mm_set1_epi8('0'));
        const __m128i digitBytes = _mm_cmpeq_epi8(_mm_subs_epu8(digits, _mm_set1_epi8(9)), _mm_setzero_si128());
        const int count = std::countr_one(static_cast<unsigned>(_mm_movemask_epi8(digitBytes)));
        if (count == 16) {
            m = m * kTenTo[16] + sixteenDigits(digits);
            p += 16;
            continue;
        }
        if ((p - first) + count < 16) return false;
        const __m128i ending =
            _mm_sub_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + count - 16)), _mm_set1_epi8('0'));
        const __m128i run = _mm_and_si128(ending, _mm_loadu_si128(reinterpret_cast<const __m128i*>(kKeepLast + count)));
        m = m * kTenTo[count] + sixteenDigits(run);
        p += count;
        return true;
    }
    return false;
}

bool anyNonzero(const char* p, const char* last) {
    for (; p < last; ++p)
        if (*p != '0') return true;
    return false;
}

// The longest prefix of a text in the strict grammar, and its value as
// mantissa * 10^scale.
struct NumberScan {
    const char* end = nullptr;      // past the number; nullptr when there is none
    const char* reached = nullptr;  // the first character the scan did not take
    std::uint64_t mantissa = 0;     // the first 19 significant digits
    int scale = 0;
    bool negative = false;
    bool truncated = false;   // nonzero digits beyond the 19th: the value lies below (mantissa + 1) * 10^scale
    bool outOfReach = false;  // an exponent or scale too large to work with here
    bool found() const { return end != nullptr; }
};

struct Nineteen {
    std::uint64_t mantissa = 0;
    long long scale = 0;
    bool truncated = false;
};

// Past 19 digits: leading zeros set aside, the first 19 significant digits
// and whether any digit dropped after them is not a zero.
[[gnu::noinline]] Nineteen keepNineteen(const char* integer, const char* integerEnd, const char* fraction,
                                        const char* fractionEnd, long long exponent) {
    Nineteen n;
    const char* q = integer;
    while (q < integerEnd && *q == '0') ++q;
    const char* f = fraction;
    if (q == integerEnd)
        while (f < fractionEnd && *f == '0') ++f;
    int kept = 0;
    for (; q < integerEnd && kept < 19; ++q, ++kept) n.mantissa = n.mantissa * 10 + static_cast<unsigned>(*q - '0');
    n.scale = exponent;
    if (q < integerEnd) {
        n.scale += integerEnd - q;
        n.truncated = anyNonzero(q, integerEnd) || anyNonzero(fraction, fractionEnd);
    } else {
        for (; f < fractionEnd && kept < 19; ++f, ++kept) n.mantissa = n.mantissa * 10 + static_cast<unsigned>(*f - '0');
        n.scale -= f - fraction;
        n.truncated = anyNonzero(f, fractionEnd);
    }
    return n;
}

// An exponent of more than six digits (leading zeros or not) is left to the
// slow reading.
constexpr long kMostExponentDigits = 6;

// The general text's exponent, four bytes at p: "E-05", or any of e, E, d,
// D, a sign and two digits. Tested all at once, without a branch per byte.
[[gnu::always_inline]] inline bool generalExponent(const char* p, long& exponent) {
    const unsigned marker = static_cast<unsigned char>(p[0] | 0x20) - static_cast<unsigned>('d');  // 0 or 1
    const unsigned sign = static_cast<unsigned char>(p[1]) - static_cast<unsigned>('+');          // 0 or 2
    const unsigned tens = static_cast<unsigned char>(p[2]) - static_cast<unsigned>('0');
    const unsigned units = static_cast<unsigned char>(p[3]) - static_cast<unsigned>('0');
    if (!((marker <= 1) & ((sign & ~2u) == 0) & (tens <= 9) & (units <= 9))) return false;
    const long e = static_cast<long>(tens * 10 + units);
    exponent = sign == 0 ? e : -e;
    return true;
}

[[gnu::always_inline]] inline NumberScan scanNumber(const char* first, const char* last) {
    // Locals, the scan put together only at its end: kept in registers.
    const char* p = first;
    bool negative = false, outOfReach = false;
    if (p < last && (*p == '+' || *p == '-')) negative = *p++ == '-';
    std::uint64_t m = 0;
    const char* const integer = p;
    // Most integer parts are short: one digit before the point in the general
    // text's "1.2345E-05", a few in "10"; a digit at a time unless eight
    // digits stand there.
    if (last - p >= 2 && p[1] == '.' && isDigit(p[0])) m = static_cast<unsigned>(*p++ - '0');
    else if (last - p >= 8 && notDigits(eightBytes(p)) == 0) p = gatherDigits(first, p, last, m);
    else
        for (; p < last; ++p) {
            const unsigned digit = static_cast<unsigned char>(*p) - static_cast<unsigned>('0');
            if (digit > 9) break;
            m = m * 10 + digit;
        }
    const char* const integerEnd = p;
    const char* fraction = p;
    const char* fractionEnd = p;
    if (p < last && *p == '.') {
        fraction = ++p;
        if (!gatherSixteen(first, p, last, m)) p = gatherDigits(first, p, last, m);
        fractionEnd = p;
    }
    const auto count = (integerEnd - integer) + (fractionEnd - fraction);
    if (count == 0) return NumberScan{.reached = p};
    const char* end = p;
    long exponent = 0;
    if (last - p == 4 && generalExponent(p, exponent)) {
        end = p = last;
    } else if (p < last && ((*p | 0x20) == 'e' || (*p | 0x20) == 'd')) {  // e, E, d or D
        const char* q = p + 1;
        bool negativeExponent = false;
        if (q < last && (*q == '+' || *q == '-')) negativeExponent = *q++ == '-';
        const char* const digits = q;
        std::uint32_t e = 0;  // wraps harmlessly past kMostExponentDigits
        // The general text's exponent has two digits: both at once.
        const bool two = last - q >= 2 && isDigit(q[0]) && isDigit(q[1]) && (last - q == 2 || !isDigit(q[2]));
        if (two) {
            e = static_cast<unsigned>(q[0] - '0') * 10 + static_cast<unsigned>(q[1] - '0');
            q += 2;
        } else {
            for (; q < last; ++q) {
                const unsigned digit = static_cast<unsigned char>(*q) - static_cast<unsigned>('0');
                if (digit > 9) break;
                e = e * 10 + digit;
            }
            if (q - digits > kMostExponentDigits) outOfReach = true;
        }
        if (q > digits) {  // "1e" and "1e+" end before their marker
            end = q;
            exponent = negativeExponent ? -static_cast<long>(e) : static_cast<long>(e);
        }
        p = q;
    }
    if (count <= 19) [[likely]]
        return NumberScan{end, p, m, static_cast<int>(exponent - (fractionEnd - fraction)), negative, false, outOfReach};
    const Nineteen n = keepNineteen(integer, integerEnd, fraction, fractionEnd, exponent);
    const bool far = n.scale < -10000000 || n.scale > 10000000;
    return NumberScan{end, p, n.mantissa, far ? 0 : static_cast<int>(n.scale), negative, n.truncated, outOfReach || far};
}

// Exactly representable powers of ten.
constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// m * 10^scale correctly rounded, 0 < m < 2^64, -350 <= scale <= 350, or
// false. Clinger's fast path where both factors are exact doubles (one
// rounding). Otherwise m, its top bit moved to bit 63, times the 64-bit F of
// 10^scale = F 2^B: the product is within 2^63 of the exact one (F within
// half a unit), so in the top word of the 128-bit product, whose leading bit
// is bit 63 or 62, the 53 bits from the leading one rounded are the double
// unless the 11 or 10 bits below them lie within 2 or 1 units (2^65 or 2^64
// of the product) of a halfway point: about one product in 250. Those, and
// the numbers below the normal doubles, give false.
[[gnu::always_inline]] inline bool nearest(std::uint64_t m, int scale, double& value) {
    if (m <= (1ull << 53) && scale >= -22 && scale <= 22) {
        const auto whole = static_cast<double>(m);
        value = scale >= 0 ? whole * kExactPowers[scale] : whole / kExactPowers[-scale];
        return true;
    }
    const PowersOfTen& power = powersOfTen();
    const int shift = std::countl_zero(m);
    const auto high = static_cast<std::uint64_t>((static_cast<Wide>(m << shift) * power.significand(scale)) >> 64);
    const int lead = static_cast<int>(high >> 63);  // the leading bit is bit 62 + lead
    const int dropped = 10 + lead;
    const std::uint64_t below = high & ((1ull << dropped) - 1), half = 1ull << (dropped - 1), margin = 1ull << lead;
    if (below - (half - margin) < 2 * margin) [[unlikely]]
        return false;
    std::uint64_t mantissa = (high >> dropped) + (below > half ? 1 : 0);
    int exponent = power.exponent(scale) - shift + 126 + lead;  // of the leading bit
    if (mantissa == (1ull << 53)) {
        mantissa >>= 1;
        ++exponent;
    }
    if (exponent > 1023) {  // rounds to 2^1024 or beyond
        value = HUGE_VAL;
        return true;
    }
    if (exponent < -1022) return false;
    value = std::bit_cast<double>((static_cast<std::uint64_t>(exponent + 1023) << 52) | (mantissa & ((1ull << 52) - 1)));
    return true;
}

// The magnitude of a scanned number with a mantissa above 0, or false.
// Beyond 10^308 every such number is too large for a double; below 10^-342
// (mantissa < 10^19 and scale < -342) it lies under half the least subnormal
// and rounds to 0. A truncated mantissa bounds the value between m and m + 1
// units: where both round to the same double, so does the value.
[[gnu::always_inline]] inline bool magnitudeOf(const NumberScan& s, double& value) {
    if (!s.truncated && !s.outOfReach && s.scale >= -342 && s.scale <= 308) [[likely]]
        return nearest(s.mantissa, s.scale, value);
    if (s.outOfReach) return false;
    if (s.scale > 308) {
        value = HUGE_VAL;
        return true;
    }
    if (s.scale < -342) {
        value = 0.0;
        return true;
    }
    double low = 0.0, high = 0.0;  // truncated: between m and m + 1 units
    if (!nearest(s.mantissa, s.scale, low) || !nearest(s.mantissa + 1, s.scale, high) || low != high) return false;
    value = low;
    return true;
}

// The text as from_chars reads it (no leading "+", "e" for a "D" exponent),
// then strtod's answer beyond the doubles (an infinity, 0 or a subnormal).
[[gnu::noinline]] double readSlowly(std::string_view text) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    std::string copy(text);
    for (char& c : copy)
        if (c == 'd' || c == 'D') c = 'e';
    double value = 0.0;
    const auto result = std::from_chars(copy.data(), copy.data() + copy.size(), value);
    if (result.ec == std::errc()) return value;
    return std::strtod(copy.c_str(), nullptr);
}

// The double of a scanned number; `first` is where its text begins.
[[gnu::always_inline]] inline double valueOf(const NumberScan& s, const char* first) {
    double magnitude = 0.0;
    if (s.mantissa != 0 && !magnitudeOf(s, magnitude))
        return readSlowly(std::string_view(first, static_cast<std::size_t>(s.end - first)));
    return s.negative ? -magnitude : magnitude;
}

// "&H" and "&O" constants (the text after the "&", blanks skipped anywhere):
// 16-bit or 32-bit integers, negative past the sign bit; 0 without a digit.
[[gnu::noinline]] double readHexOrOctal(const char* p, const char* last) {
    while (p < last && isBlank(*p)) ++p;
    if (p == last || (*p != 'H' && *p != 'h' && *p != 'O' && *p != 'o')) return 0.0;
    const bool hex = *p == 'H' || *p == 'h';
    unsigned long long v = 0;
    bool any = false;
    for (++p; p < last; ++p) {
        const char c = *p;
        if (isBlank(c)) continue;
        int digit;
        if (c >= '0' && c <= '9') digit = c - '0';
        else if (hex && c >= 'a' && c <= 'f') digit = c - 'a' + 10;
        else if (hex && c >= 'A' && c <= 'F') digit = c - 'A' + 10;
        else break;
        if (!hex && digit > 7) break;
        v = v * (hex ? 16 : 8) + static_cast<unsigned>(digit);
        any = true;
        if (v > 0xFFFFFFFFull) break;
    }
    if (!any) return 0.0;
    if (v <= 0xFFFF) return v > 0x7FFF ? static_cast<double>(v) - 65536.0 : static_cast<double>(v);
    if (v <= 0xFFFFFFFFull) return v > 0x7FFFFFFF ? static_cast<double>(v) - 4294967296.0 : static_cast<double>(v);
    return static_cast<double>(v);
}

// The number of a whole text [first, last), or false.
[[gnu::always_inline]] inline bool readWhole(const char* first, const char* last, double& value) {
    const NumberScan s = scanNumber(first, last);
    if (!s.found() || s.end != last) return false;
    value = valueOf(s, first);
    return true;
}

}  // namespace

bool isStrict(std::string_view text) {
    const char* const last = text.data() + text.size();
    const NumberScan s = scanNumber(text.data(), last);
    return s.found() && s.end == last;
}

bool readStrict(std::string_view text, double& value) {
    return readWhole(text.data(), text.data() + text.size(), value);
}

namespace {

// Out of the readers' way: the error of a text that gave no finite number.
[[noreturn, gnu::noinline, gnu::cold]] void refuseNumber(bool numeric) {
    raiseError(numeric ? err::Overflow : err::TypeMismatch);
}

}  // namespace

double readBetweenBlanks(std::string_view text) {
    const char* first = text.data();
    const char* last = first + text.size();
    // One test each end for the usual text with no blank around it.
    if (first < last && static_cast<unsigned char>(*first) <= ' ')
        while (first < last && (*first == ' ' || *first == '\t')) ++first;
    if (first < last && static_cast<unsigned char>(last[-1]) <= ' ')
        while (last > first && (last[-1] == ' ' || last[-1] == '\t')) --last;
    double value;
    const bool numeric = readWhole(first, last, value);
    if (!numeric || std::isinf(value)) [[unlikely]]
        refuseNumber(numeric);
    return value;
}

double readLenient(std::string_view text) {
    const char* p = text.data();
    const char* const last = p + text.size();
    while (p < last && isBlank(*p)) ++p;
    if (p < last && *p == '&') return readHexOrOctal(p + 1, last);
    NumberScan s = scanNumber(p, last);
    // A blank where the number could have gone on: the number may go on
    // behind it, unless only blanks follow. Read the text without its blanks.
    const char* r = s.reached;
    while (r < last && isBlank(*r)) ++r;
    if (r != s.reached && r < last) {
        std::string packed;
        packed.reserve(static_cast<std::size_t>(last - p));
        for (; p < last; ++p)
            if (!isBlank(*p)) packed += *p;
        s = scanNumber(packed.data(), packed.data() + packed.size());
        return s.found() ? valueOf(s, packed.data()) : 0.0;
    }
    return s.found() ? valueOf(s, p) : 0.0;
}

}  // namespace bm::digits
