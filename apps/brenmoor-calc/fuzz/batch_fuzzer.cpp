// libFuzzer target of the batch calculator's whole path (read, the kind's
// checks, a capped calculation, the outputs in memory): no crash, no escaped
// exception, no failure without a message, no success after one.
//   cmake -S . -B build-fuzz -DCMAKE_CXX_COMPILER=clang++ -DBRENMOOR_BUILD_FUZZERS=ON \
//         -DBRENMOOR_BUILD_GUI=OFF -DBRENMOOR_BUILD_TESTS=OFF -DBRENMOOR_BUILD_BENCH=OFF \
//         "-DCMAKE_CXX_FLAGS=-fsanitize=address,undefined -fno-sanitize-recover=all"
//   cmake --build build-fuzz -j2 --target fuzz_batch
//   nice build-fuzz/apps/brenmoor-calc/fuzz_batch -runs=1000000 -max_len=4096 -timeout=20 \
//        NEW_CORPUS apps/brenmoor-calc/tests/fixtures/batch_fuzz_corpus data/sampldat files/tests/fixtures
// then minimise into the kept corpus (replayed by tests/batch_fuzz_corpus_test.cpp):
//   build-fuzz/apps/brenmoor-calc/fuzz_batch -merge=1 MERGED NEW_CORPUS

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "apps/brenmoor-calc/fuzz/batch_fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    bm::prepareBatchFuzzing(BRENMOOR_POINTS_FILE);
    const std::string violation = bm::batchFuzzViolation(std::string(reinterpret_cast<const char*>(data), size));
    if (!violation.empty()) {
        std::fprintf(stderr, "batch fuzzer: %s\n", violation.c_str());
        std::abort();
    }
    return 0;
}
