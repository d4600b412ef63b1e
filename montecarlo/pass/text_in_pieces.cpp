#include "montecarlo/pass/text_in_pieces.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "montecarlo/pass/ordered_batches.h"

namespace bm {

namespace {

// Below this many items a text is written faster than threads start.
constexpr long long kFewestSpreadItems = 512;
// About how fast one thread writes a result table, for the threshold below
// which a run stays on one thread (serialRunBelow).
constexpr double kBytesPerSecond = 4.0e8;
// Pieces a thread: enough for one that finishes early to take another.
constexpr long long kPiecesPerThread = 4;

}  // namespace

void appendTextInPieces(std::string& out, long long count, std::size_t itemBytes,
                        const std::function<void(long long, long long, std::string&)>& write) {
    // No reserve for an estimate past the address space: such a text fails as it grows.
    auto bytesOf = [&](long long items) {
        const auto n = static_cast<std::size_t>(items);
        return itemBytes != 0 && n > std::numeric_limits<std::size_t>::max() / 4 / itemBytes ? 0 : n * itemBytes;
    };
    const int threads = calculationThreads();
    const double below = serialRunBelow();
    // Short enough to stay on the calling thread, unless the threads run already.
    const bool shortText = below > 0.0 && !calculationThreadsStarted() &&
                           static_cast<double>(bytesOf(count)) < below * kBytesPerSecond;
    if (threads <= 1 || count < kFewestSpreadItems || shortText) {
        out.reserve(out.size() + bytesOf(count));
        write(0, count, out);
        return;
    }
    const long long pieceCount = std::min(count, kPiecesPerThread * threads);
    std::vector<std::string> pieces(static_cast<std::size_t>(pieceCount));
    auto firstOf = [&](long long piece) { return count * piece / pieceCount; };
    batches::Spread spread(threads);
    spread.run(0, pieceCount, [&](long long from, long long to, int) {
        for (long long piece = from; piece < to; ++piece) {
            std::string& text = pieces[static_cast<std::size_t>(piece)];
            text.reserve(bytesOf(firstOf(piece + 1) - firstOf(piece)));
            write(firstOf(piece), firstOf(piece + 1), text);
        }
    });
    std::size_t total = out.size();
    for (const std::string& piece : pieces) total += piece.size();
    out.reserve(total);
    for (const std::string& piece : pieces) out += piece;
}

}  // namespace bm
