#include "files/stopped_run_note.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace bm {

void markStoppedRun(const std::string& plotFile, bool stopped) {
    const std::filesystem::path note = plotFile + kStoppedRunNoteSuffix;
    std::error_code ignored;
    if (!stopped) {
        std::filesystem::remove(note, ignored);
        return;
    }
    std::ofstream out(note, std::ios::binary | std::ios::trunc);
    out << "Stopped before the end; values not computed are 0\r\n";
}

}  // namespace bm
