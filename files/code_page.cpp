#include "files/code_page.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

namespace bm {

namespace {

// Code points of the bytes 0x80 to 0x9F; the unassigned ones map to the C1
// control character of the same number.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80-87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88-8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90-97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98-9F
};

void appendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// The byte of a code point, or '?' when the code page has none.
char byteOf(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<char>(cp);
    for (std::size_t i = 0; i < kHighControls.size(); ++i)
        if (kHighControls[i] == cp) return static_cast<char>(0x80 + i);
    return '?';
}

}  // namespace

std::string windows1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    std::size_t i = 0;
    while (i < bytes.size()) {
        // Runs of ASCII go over as they are.
        std::size_t j = i;
        while (j < bytes.size() && static_cast<unsigned char>(bytes[j]) < 0x80) ++j;
        out.append(bytes.substr(i, j - i));
        if (j == bytes.size()) break;
        const auto b = static_cast<unsigned char>(bytes[j]);
        i = j + 1;
        if (b < 0xA0) appendUtf8(out, kHighControls[b - 0x80]);
        else appendUtf8(out, b);
    }
    return out;
}

bool isAscii(std::string_view text) {
    // Whole words or-ed together without a branch: the loop runs at the speed
    // of memory on a text of megabytes.
    constexpr std::uint64_t kHighBits = 0x8080808080808080ull;
    std::uint64_t any = 0;
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        std::uint64_t word;
        std::memcpy(&word, text.data() + i, 8);
        any |= word;
    }
    for (; i < text.size(); ++i) any |= static_cast<unsigned char>(text[i]);
    return (any & kHighBits) == 0;
}

std::string utf8ToWindows1252(std::string&& utf8) {
    if (isAscii(utf8)) return std::move(utf8);
    return utf8ToWindows1252(std::string_view(utf8));
}

std::string utf8ToWindows1252(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    const std::size_t n = utf8.size();
    std::size_t i = 0;
    while (i < n) {
        const auto b = static_cast<unsigned char>(utf8[i]);
        if (b < 0x80) {
            // A run of ASCII (nearly the whole of a result file) copied at once.
            std::size_t end = i + 1;
            while (end < n && static_cast<unsigned char>(utf8[end]) < 0x80) ++end;
            out.append(utf8, i, end - i);
            i = end;
            continue;
        }
        // Length and minimum value of the sequence that this lead byte starts.
        int length = 0;
        char32_t cp = 0, minimum = 0;
        if ((b & 0xE0) == 0xC0) { length = 2; cp = b & 0x1F; minimum = 0x80; }
        else if ((b & 0xF0) == 0xE0) { length = 3; cp = b & 0x0F; minimum = 0x800; }
        else if ((b & 0xF8) == 0xF0) { length = 4; cp = b & 0x07; minimum = 0x10000; }
        bool valid = length > 0 && i + static_cast<std::size_t>(length) <= n;
        for (int k = 1; valid && k < length; ++k) {
            const auto cont = static_cast<unsigned char>(utf8[i + static_cast<std::size_t>(k)]);
            if ((cont & 0xC0) != 0x80) valid = false;
            else cp = (cp << 6) | (cont & 0x3F);
        }
        if (valid && (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))) valid = false;
        if (!valid) {
            out += '?';  // one mark per stray byte
            ++i;
            continue;
        }
        out += byteOf(cp);
        i += static_cast<std::size_t>(length);
    }
    return out;
}

}  // namespace bm
