// The range text fuzzer's corpus (tests/fixtures/range_corpus,
// minimised with -merge=1), replayed under the normal build through the same
// checks the fuzzer makes: every reader gives a value or its own run-time
// error, and the readers agree.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "model/fuzz/range_properties.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

namespace fs = std::filesystem;

TEST(RangeCorpusReplay, EveryEntryKeepsTheReadersInAgreement) {
    const fs::path corpus = testkit::fixturePath("model", "range_corpus");
    int entries = 0;
    for (const auto& entry : fs::directory_iterator(corpus)) {
        if (!entry.is_regular_file()) continue;
        const std::string text = testkit::readFileBytes(entry.path());
        EXPECT_LE(text.size(), 1024u) << entry.path();
        ++entries;
        try {
            rangecheck::checkRangeReaders(text, [&](const char* what) {
                ADD_FAILURE() << entry.path().filename() << " [" << text << "]: " << what;
            });
        } catch (const std::exception& e) {
            ADD_FAILURE() << entry.path().filename() << " [" << text << "]: " << e.what();
        }
    }
    EXPECT_GE(entries, 50) << "the corpus is missing";
}

TEST(RangeCorpusReplay, TextsOfTheDocumentedFormsPassTheChecks) {
    for (const std::string text : {"5", "0:100:1", "0:100:1:50", " 0:100:1 ", "0:100:1:2:3", "1:2", "1:2:", "a:b:c",
                                   "", "0:1:1e-10", "label: 0 100 1"}) {
        rangecheck::checkRangeReaders(text, [&](const char* what) { ADD_FAILURE() << "[" << text << "]: " << what; });
    }
}

}  // namespace
}  // namespace bm
