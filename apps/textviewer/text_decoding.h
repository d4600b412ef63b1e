#pragma once
// The bytes of a text file as the viewer shows them. The workbench's reports
// may be UTF-8 or in the Windows code page its messages use (the "²" of
// "[ Vv ²"), and may end lines with CR/LF: the viewer takes valid UTF-8 as it
// is and reads anything else as Windows-1252, and ends every line with LF.

#include <string>
#include <string_view>

namespace bm::textviewer {

bool isValidUtf8(std::string_view bytes);

// UTF-8 text with LF line ends. A byte-order mark is dropped and a NUL byte
// (a binary file opened by mistake) shows as U+FFFD, so the text stays displayable.
std::string decodeText(std::string_view bytes);

}  // namespace bm::textviewer
