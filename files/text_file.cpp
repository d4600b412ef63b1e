#include "files/text_file.h"

#include <utility>

#include "files/code_page.h"
#include "files/safe_save.h"

namespace bm {

void writeTextFile(const std::string& path, std::string utf8Text) {
    replaceFileContents(path, utf8ToWindows1252(std::move(utf8Text)));
}

}  // namespace bm
