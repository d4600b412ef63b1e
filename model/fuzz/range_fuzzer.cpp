// libFuzzer target of the range texts: any text must end in a value
// or in a RuntimeError from every reader (never a crash, a hang or another
// exception), and the readers must agree (see range_properties.h).
//   cmake -S . -B build-fuzz -DCMAKE_CXX_COMPILER=clang++ -DBRENMOOR_BUILD_FUZZERS=ON \
//         -DBRENMOOR_BUILD_GUI=OFF -DBRENMOOR_BUILD_TESTS=OFF -DBRENMOOR_BUILD_BENCH=OFF \
//         -DCMAKE_CXX_FLAGS=-fno-sanitize-recover=all   (undefined behaviour stops the run)
//   cmake --build build-fuzz -j2 --target fuzz_ranges
//   build-fuzz/model/fuzz_ranges -max_total_time=600 -max_len=256 NEW_CORPUS model/tests/fixtures/range_corpus
// then minimise into the kept corpus (replayed by model/tests/range_corpus_replay_test.cpp):
//   build-fuzz/model/fuzz_ranges -merge=1 -use_counters=0 MERGED NEW_CORPUS model/tests/fixtures/range_corpus

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "model/fuzz/range_properties.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    bm::rangecheck::checkRangeReaders(text, [](const char* what) {
        std::fprintf(stderr, "range readers: %s\n", what);
        __builtin_trap();
    });
    return 0;
}
