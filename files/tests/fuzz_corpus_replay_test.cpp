// The data file fuzzer's corpus (tests/fixtures/fuzz_corpus, minimised with
// -merge=1), replayed through the reader under the normal build: every file,
// under every extension, must read (and write again) or end in a RuntimeError.

#include <gtest/gtest.h>

#include <exception>
#include <filesystem>
#include <string>

#include "files/code_page.h"
#include "files/data_file.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

namespace fs = std::filesystem;

// The extensions of the fuzzer: they choose between the single- and
// multi-chemical blocks.
const char* const kNames[] = {"f.one", "f.two", "f.tri", "f.mc1", "f.mc2", "f.mc3", "f.u1d", "f.mcu", "f.var"};

TEST(FuzzCorpusReplay, EveryEntryReadsOrEndsInARunTimeError) {
    const fs::path corpus = testkit::fixturePath("files", "fuzz_corpus");
    int entries = 0, read = 0;
    for (const auto& entry : fs::directory_iterator(corpus)) {
        if (!entry.is_regular_file()) continue;
        const std::string bytes = testkit::readFileBytes(entry.path());
        EXPECT_LE(bytes.size(), 8192u) << entry.path();
        ++entries;
        for (const char* name : kNames) {
            DataSet d;
            try {
                parseDataFile(d, windows1252ToUtf8(bytes), name);
                composeDataFile(d);
                ++read;
            } catch (const RuntimeError&) {
            } catch (const std::exception& e) {
                ADD_FAILURE() << entry.path().filename() << " as " << name << ": " << e.what();
            }
        }
    }
    EXPECT_GE(entries, 50) << "the corpus is missing";
    EXPECT_GT(read, 0) << "no entry reads at all";
}

}  // namespace
}  // namespace bm
