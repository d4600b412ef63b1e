#include "apps/textviewer/text_decoding.h"

namespace bm::textviewer {

namespace {

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Windows-1252 differs from Latin-1 only in 0x80..0x9F; its five unused
// places stay the control characters Latin-1 has there.
char32_t windows1252(unsigned char b) {
    static const char32_t high[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
                                      0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                                      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    return b >= 0x80 && b < 0xA0 ? high[b - 0x80] : b;
}

}  // namespace

bool isValidUtf8(std::string_view bytes) {
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        int follow;
        char32_t c;
        if (b < 0x80) { ++i; continue; }
        if (b >= 0xC2 && b <= 0xDF) { follow = 1; c = b & 0x1F; }
        else if (b >= 0xE0 && b <= 0xEF) { follow = 2; c = b & 0x0F; }
        else if (b >= 0xF0 && b <= 0xF4) { follow = 3; c = b & 0x07; }
        else return false;
        if (i + static_cast<std::size_t>(follow) >= bytes.size()) return false;  // cut off at the end
        for (int k = 1; k <= follow; ++k) {
            const auto f = static_cast<unsigned char>(bytes[i + static_cast<std::size_t>(k)]);
            if ((f & 0xC0) != 0x80) return false;
            c = (c << 6) | (f & 0x3F);
        }
        // Overlong forms, surrogates and values past U+10FFFF are not UTF-8.
        if ((follow == 2 && c < 0x800) || (follow == 3 && (c < 0x10000 || c > 0x10FFFF)) || (c >= 0xD800 && c <= 0xDFFF)) return false;
        i += static_cast<std::size_t>(follow) + 1;
    }
    return true;
}

std::string decodeText(std::string_view bytes) {
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
    const bool utf8 = isValidUtf8(bytes);
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        if (b == '\r') {
            out += '\n';
            if (i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
        } else if (b == 0) {
            appendUtf8(out, 0xFFFD);
        } else if (utf8 || b < 0x80) {
            out += static_cast<char>(b);
        } else {
            appendUtf8(out, windows1252(b));
        }
    }
    return out;
}

}  // namespace bm::textviewer
