// glqgen: writes the Gauss-Legendre points file (glq.pts) that the two- and
// three-dimensional solutions read. Run by the build; usage: glqgen OUTPUT.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "kernels/gauss_legendre.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: glqgen OUTPUT\n");
        return 2;
    }
    const std::filesystem::path target = argv[1];
    const std::string text = bm::gaussPointsFileText();
    // Written beside the target and renamed over it, so that a failed run never
    // leaves a short points file behind.
    std::filesystem::path partial = target;
    partial += ".partial";
    {
        std::ofstream out(partial, std::ios::binary | std::ios::trunc);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        out.close();
        if (!out) {
            std::fprintf(stderr, "glqgen: cannot write %s\n", partial.string().c_str());
            std::error_code ignored;
            std::filesystem::remove(partial, ignored);
            return 1;
        }
    }
    std::error_code ec;
    std::filesystem::rename(partial, target, ec);
    if (ec) {
        std::fprintf(stderr, "glqgen: cannot replace %s: %s\n", target.string().c_str(), ec.message().c_str());
        std::filesystem::remove(partial, ec);
        return 1;
    }
    return 0;
}
