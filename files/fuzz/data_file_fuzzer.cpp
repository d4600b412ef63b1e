// libFuzzer target of the data file reader: any bytes must end in a read or in
// a RuntimeError, and whatever was read must write again.
//   cmake -S . -B build-fuzz -DCMAKE_CXX_COMPILER=clang++ -DBRENMOOR_BUILD_FUZZERS=ON \
//         -DBRENMOOR_BUILD_GUI=OFF -DBRENMOOR_BUILD_TESTS=OFF -DBRENMOOR_BUILD_BENCH=OFF \
//         -DCMAKE_CXX_FLAGS=-fno-sanitize-recover=all   (undefined behaviour stops the run)
//   cmake --build build-fuzz -j2 --target fuzz_data_file
//   build-fuzz/files/fuzz_data_file -max_total_time=600 -max_len=4096 NEW_CORPUS files/tests/fixtures/fuzz_corpus files/tests/fixtures
// then minimise into the kept corpus (replayed by files/tests/fuzz_corpus_replay_test.cpp):
//   build-fuzz/files/fuzz_data_file -merge=1 -use_counters=0 MERGED NEW_CORPUS files/tests/fixtures/fuzz_corpus

#include <cstddef>
#include <cstdint>
#include <string>

#include "files/code_page.h"
#include "files/data_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The name's extension chooses between the single- and multi-chemical blocks.
    static const char* const names[] = {"f.one", "f.two", "f.tri", "f.mc1", "f.mc2", "f.mc3", "f.u1d", "f.mcu", "f.var"};
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    bm::DataSet d;
    try {
        bm::parseDataFile(d, bm::windows1252ToUtf8(bytes), names[size % 9]);
        bm::composeDataFile(d);
    } catch (const bm::RuntimeError&) {
    }
    return 0;
}
