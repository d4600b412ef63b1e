#include "files/text_file.h"

#include "files/code_page.h"
#include "files/safe_save.h"

namespace bm {

void writeTextFile(const std::string& path, const std::string& utf8Text) {
    if (isAscii(utf8Text)) replaceFileContents(path, utf8Text);
    else replaceFileContents(path, utf8ToWindows1252(utf8Text));
}

}  // namespace bm
