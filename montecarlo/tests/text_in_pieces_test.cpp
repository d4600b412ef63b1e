// A text written in pieces over the calculation threads is the text of one
// loop over its items, for any number of threads and items, and keeps what
// was in front of it.

#include <gtest/gtest.h>

#include <string>

#include "montecarlo/pass/ordered_batches.h"
#include "montecarlo/pass/text_in_pieces.h"

namespace bm {
namespace {

// Item i as a line of its own, of a length that varies from item to item.
void writeItems(long long first, long long last, std::string& piece) {
    for (long long item = first; item < last; ++item) {
        piece += std::to_string(item);
        piece.append(static_cast<std::size_t>(item % 7), '#');
        piece += "\r\n";
    }
}

TEST(TextInPieces, IsTheTextOfOneLoopOnAnyThreads) {
    for (const long long count : {0LL, 1LL, 511LL, 512LL, 513LL, 10007LL}) {
        std::string expected = "head\r\n";
        for (long long item = 0; item < count; ++item) {
            expected += std::to_string(item) + std::string(static_cast<std::size_t>(item % 7), '#') + "\r\n";
        }
        for (const int threads : {1, 2, 3, 8}) {
            const ScopedCalculationThreads scope(threads);
            for (const std::size_t itemBytes : {0, 3, 64}) {  // estimates too small, close, too large
                std::string text = "head\r\n";
                appendTextInPieces(text, count, itemBytes, writeItems);
                EXPECT_EQ(text, expected) << count << " items on " << threads << " threads";
            }
        }
    }
}

}  // namespace
}  // namespace bm
