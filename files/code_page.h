#pragma once
// The character set of the data files.
//
// Data files are single-byte text in one fixed code page, Windows-1252 (the
// Western European code page the files have always been written in on the
// desktop), whatever the locale of the machine. Inside the program every string
// is UTF-8; the conversion happens once, on the whole file, when it is written
// and when it is read. The delimiters of the format (blank, comma, colon, CR, LF)
// are ASCII and the same in both.
//
// Writing: a character that Windows-1252 cannot represent becomes "?", and so
// does a byte sequence that is not valid UTF-8.
// Reading: every byte has a character. The five bytes that Windows-1252 leaves
// unassigned (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the control characters
// U+0081, U+008D, U+008F, U+0090 and U+009D, which are written back as the same
// bytes, so any file survives a read and a write byte for byte.

#include <string>
#include <string_view>

namespace bm {

std::string utf8ToWindows1252(std::string_view utf8);
// The same conversion of a text its owner gives up: a text of ASCII alone
// (the common case: every result table) is the same in both and comes back
// as it is, not copied.
std::string utf8ToWindows1252(std::string&& utf8);
inline std::string utf8ToWindows1252(const char* utf8) { return utf8ToWindows1252(std::string_view(utf8)); }
// A text of ASCII alone, the same bytes in UTF-8 and in the code page.
bool isAscii(std::string_view text);
std::string windows1252ToUtf8(std::string_view bytes);

}  // namespace bm
