// The batch fuzzer's corpus (tests/fixtures/batch_fuzz_corpus, minimised with
// -merge=1), replayed through the whole batch path under the normal build: no
// entry may crash, let an exception escape, fail without a message, succeed
// after one, or save a negative count.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "apps/brenmoor-calc/fuzz/batch_fuzz_run.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

namespace fs = std::filesystem;

TEST(BatchFuzzCorpus, EveryEntryKeepsTheCalculatorsPromises) {
    prepareBatchFuzzing(BRENMOOR_POINTS_FILE);
    const fs::path corpus = testkit::fixturePath("apps/brenmoor-calc", "batch_fuzz_corpus");
    int entries = 0;
    for (const auto& entry : fs::directory_iterator(corpus)) {
        if (!entry.is_regular_file()) continue;
        ++entries;
        const std::string violation = batchFuzzViolation(testkit::readFileBytes(entry.path()));
        EXPECT_EQ(violation, "") << entry.path().filename();
    }
    EXPECT_GE(entries, 50) << "the corpus is missing";
}

TEST(BatchFuzzCorpus, SampleModelsAndHostileFilesKeepThePromises) {
    prepareBatchFuzzing(BRENMOOR_POINTS_FILE);
    for (const char* name : {"sample1.one", "sample1.two", "sample1.tri", "sample1.u1d", "sample1.var"})
        EXPECT_EQ(batchFuzzViolation(testkit::readFileBytes(testkit::sourceDir() / "data" / "sampldat" / name)), "")
            << name;
    for (const auto& entry : fs::directory_iterator(testkit::fixturePath("apps/brenmoor-calc", "hostile")))
        EXPECT_EQ(batchFuzzViolation(testkit::readFileBytes(entry.path())), "") << entry.path().filename();
}

}  // namespace
}  // namespace bm
