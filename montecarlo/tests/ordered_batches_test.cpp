// Work spread over the calculation threads in ordered batches: every item's
// value as computed on its own, stored once and in item order, errors raised
// as the first failing item raises them, Stop between batches keeping exactly
// the items before the boundary, on one thread and on more threads than cores.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <mutex>
#include <thread>
#include <optional>
#include <vector>

#include <pthread.h>

#include "montecarlo/pass/ordered_batches.h"
#include "shell/base/runtime_error.h"

namespace bm {
namespace {

// A value with a cache that a copy fills as it goes, as the kernels' caches do.
struct CachedSquareRoot {
    std::optional<long long> lastItem;
    double lastValue = 0.0;
    double operator()(long long item) {
        if (!lastItem || *lastItem != item) {
            lastValue = std::sqrt(static_cast<double>(item)) + 1.0 / (1.0 + static_cast<double>(item));
            lastItem = item;
        }
        return lastValue;
    }
};

struct ItemRun {
    std::vector<long long> storedItems;
    std::vector<double> values;
    std::vector<long long> progress;
    bool finished = false;
    std::optional<int> error;
};

// Items 0 .. count - 1 on `threads` threads; proceed says no once `stopAfter`
// items are stored; items at `failAt` and later raise error 6 + item % 3.
ItemRun runItems(int threads, long long count, long long stopAfter = -1, long long failAt = -1) {
    const ScopedCalculationThreads scope(threads);
    ItemRun run;
    run.values.assign(static_cast<std::size_t>(count), -1.0);
    auto compute = [cached = CachedSquareRoot{}, failAt](long long item) mutable {
        if (failAt >= 0 && item >= failAt) raiseError(6 + static_cast<int>(item % 3));
        return cached(item);
    };
    try {
        run.finished = forEachInOrderedBatches<double>(
            count, compute,
            [&](long long item, double value) {
                run.storedItems.push_back(item);
                run.values[static_cast<std::size_t>(item)] = value;
            },
            [&] { return stopAfter < 0 || static_cast<long long>(run.storedItems.size()) < stopAfter; },
            [&](long long done) { run.progress.push_back(done); }, [&](long long item) { return compute(item); });
    } catch (const RuntimeError& e) {
        run.error = e.number();
    }
    return run;
}

// Sets the short-run threshold for a scope and puts the former one back.
struct SerialRunBelow {
    explicit SerialRunBelow(double seconds) { setSerialRunBelow(seconds); }
    ~SerialRunBelow() { setSerialRunBelow(former); }
    double former = serialRunBelow();
};

std::vector<long long> itemsUpTo(long long count) {
    std::vector<long long> items;
    for (long long i = 0; i < count; ++i) items.push_back(i);
    return items;
}

TEST(OrderedBatches, EveryItemIsStoredOnceInOrderWithTheValueItHasOnItsOwn) {
    const long long count = 20000;
    for (int threads : {1, 2, 3, 7}) {
        const ItemRun run = runItems(threads, count);
        EXPECT_TRUE(run.finished);
        EXPECT_EQ(run.storedItems, itemsUpTo(count)) << threads << " threads";
        for (long long i = 0; i < count; ++i) {
            const double expected = std::sqrt(static_cast<double>(i)) + 1.0 / (1.0 + static_cast<double>(i));
            ASSERT_EQ(run.values[static_cast<std::size_t>(i)], expected) << "item " << i << ", " << threads << " threads";
        }
        ASSERT_FALSE(run.progress.empty());
        EXPECT_EQ(run.progress.back(), count);
    }
}

TEST(OrderedBatches, OneThreadTestsBeforeAndReportsAfterEveryItem) {
    const ItemRun run = runItems(1, 50, 17);
    EXPECT_FALSE(run.finished);
    EXPECT_EQ(run.storedItems, itemsUpTo(17));
    EXPECT_EQ(run.progress, std::vector<long long>({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}));
}

TEST(OrderedBatches, SeveralBatchesReportProgressBetweenThem) {
    const ItemRun run = runItems(3, 200000);
    EXPECT_GT(run.progress.size(), 2u);
    for (std::size_t i = 1; i < run.progress.size(); ++i) EXPECT_GT(run.progress[i], run.progress[i - 1]);
}

TEST(OrderedBatches, StopBetweenBatchesKeepsExactlyTheItemsBeforeTheBoundary) {
    // Stop is asked for once 1000 items are stored: the run ends at the next
    // boundary, with every item before it stored and none after it.
    const ItemRun run = runItems(3, 200000, 1000);
    EXPECT_FALSE(run.finished);
    ASSERT_FALSE(run.progress.empty());
    const long long boundary = run.progress.back();
    EXPECT_GE(boundary, 1000);
    EXPECT_LT(boundary, 200000);
    EXPECT_EQ(run.storedItems, itemsUpTo(boundary));
    for (long long i = boundary; i < 200000; ++i) ASSERT_EQ(run.values[static_cast<std::size_t>(i)], -1.0);
}

TEST(OrderedBatches, AFailingItemRaisesItsErrorAfterTheItemsBeforeItAsOnOneThread) {
    for (long long failAt : {0LL, 1LL, 5LL, 4097LL, 19999LL}) {
        const ItemRun reference = runItems(1, 20000, -1, failAt);
        ASSERT_TRUE(reference.error.has_value());
        EXPECT_EQ(*reference.error, 6 + static_cast<int>(failAt % 3));
        EXPECT_EQ(reference.storedItems, itemsUpTo(failAt));
        for (int threads : {2, 3}) {
            const ItemRun run = runItems(threads, 20000, -1, failAt);
            EXPECT_EQ(run.error, reference.error) << "fail at " << failAt << ", " << threads << " threads";
            EXPECT_EQ(run.storedItems, reference.storedItems) << "fail at " << failAt << ", " << threads << " threads";
            EXPECT_EQ(run.values, reference.values) << "fail at " << failAt << ", " << threads << " threads";
        }
    }
}

TEST(OrderedBatches, AnItemThatFailsOnAWorkerAloneIsRecoveredOnTheCallingThread) {
    // Item 300 cannot be computed on a copy; recovered on the calling thread
    // it gives its value and the work goes on after it, whether it is met
    // on a worker or in the first part a run takes on the calling thread.
    for (const double below : {0.0, 0.008}) {
        const ScopedCalculationThreads scope(3);
        const SerialRunBelow threshold(below);
        auto compute = [](long long item) -> double {
            if (item == 300) throw std::runtime_error("not on this thread");
            return static_cast<double>(item) * 0.5;
        };
        std::vector<long long> stored;
        std::vector<double> values;
        const bool finished = forEachInOrderedBatches<double>(
            1000, compute,
            [&](long long item, double value) {
                stored.push_back(item);
                values.push_back(value);
            },
            [] { return true; }, [](long long) {}, [](long long item) { return static_cast<double>(item) * 0.5; });
        EXPECT_TRUE(finished);
        EXPECT_EQ(stored, itemsUpTo(1000));
        for (long long i = 0; i < 1000; ++i) EXPECT_EQ(values[static_cast<std::size_t>(i)], 0.5 * static_cast<double>(i));
    }
}

TEST(OrderedBatches, AShortRunStaysOnTheCallingThreadAndALongOneSpreads) {
    // With the programs' own threshold: 2000 cheap items take well under
    // 8 ms and never leave the calling thread; 2000 items of 20 us each
    // (40 ms) go to the workers after a first part. Both store every item
    // in order with its own value.
    const ScopedCalculationThreads scope(3);
    const SerialRunBelow threshold(0.008);
    for (const double itemMicroseconds : {0.0, 20.0}) {
        const long long count = 2000;
        std::mutex guard;
        std::vector<std::thread::id> seen;
        auto compute = [&](long long item) {
            if (itemMicroseconds > 0.0) {
                const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double, std::micro>(itemMicroseconds);
                while (std::chrono::steady_clock::now() < until) {
                }
            }
            const std::lock_guard<std::mutex> lock(guard);
            if (std::find(seen.begin(), seen.end(), std::this_thread::get_id()) == seen.end())
                seen.push_back(std::this_thread::get_id());
            return static_cast<double>(item) * 0.25;
        };
        std::vector<long long> stored;
        const bool finished = forEachInOrderedBatches<double>(
            count, compute,
            [&](long long item, double value) {
                EXPECT_EQ(value, static_cast<double>(item) * 0.25);
                stored.push_back(item);
            },
            [] { return true; }, [](long long) {}, [&](long long item) { return compute(item); });
        EXPECT_TRUE(finished);
        EXPECT_EQ(stored, itemsUpTo(count));
        if (itemMicroseconds > 0.0) {
            EXPECT_GT(seen.size(), 1u) << "a long run spreads";
        } else {
            EXPECT_EQ(seen.size(), 1u) << "a short run stays";
            if (!seen.empty()) {
                EXPECT_EQ(seen.front(), std::this_thread::get_id());
            }
        }
    }
}

TEST(OrderedBatches, TheThreadCountIsAllCoresUnlessSet) {
    EXPECT_GE(availableCores(), 1);
    {
        const ScopedCalculationThreads scope(0);
        EXPECT_EQ(calculationThreads(), availableCores());
    }
    {
        const ScopedCalculationThreads scope(5);
        EXPECT_EQ(calculationThreads(), 5);
    }
}

}  // namespace
}  // namespace bm

namespace bm {
namespace {

// Items in lines go to the threads by whole lines: every piece a thread is
// given begins and ends at a line's boundary (or at the items' ends), every
// batch ends at one, and each item is still stored once and in order.
TEST(OrderedBatches, LinesStayWholeOnOneThread) {
    const ScopedCalculationThreads scope(3);
    constexpr long long kLine = 7, kCount = 7 * 300 + 4;  // a last, shorter line
    std::mutex seen;
    std::vector<std::pair<long long, long long>> pieces;
    batches::Spread spread(3);
    spread.run(5, kCount - 2, [&](long long from, long long to, int) {
        const std::lock_guard lock(seen);
        pieces.emplace_back(from, to);
    }, kLine);
    std::sort(pieces.begin(), pieces.end());
    ASSERT_FALSE(pieces.empty());
    EXPECT_EQ(pieces.front().first, 5);
    EXPECT_EQ(pieces.back().second, kCount - 2);
    for (std::size_t p = 0; p < pieces.size(); ++p) {
        if (p > 0) {
            EXPECT_EQ(pieces[p].first, pieces[p - 1].second);  // no gap, no overlap
            EXPECT_EQ(pieces[p].first % kLine, 0) << pieces[p].first;
        }
        if (p + 1 < pieces.size()) {
            EXPECT_EQ(pieces[p].second % kLine, 0) << pieces[p].second;
        }
    }

    std::vector<long long> stored, batchEnds;
    auto compute = [](long long item) { return static_cast<double>(item) * 0.5; };
    const bool finished = forEachInOrderedBatches<double>(
        kCount, compute, [&](long long item, double value) {
            EXPECT_EQ(value, static_cast<double>(item) * 0.5);
            stored.push_back(item);
        },
        [] { return true; }, [&](long long done) { batchEnds.push_back(done); },
        [](long long item) { return static_cast<double>(item) * 0.5; }, kLine);
    EXPECT_TRUE(finished);
    ASSERT_EQ(stored.size(), static_cast<std::size_t>(kCount));
    for (long long i = 0; i < kCount; ++i) EXPECT_EQ(stored[static_cast<std::size_t>(i)], i);
    ASSERT_FALSE(batchEnds.empty());
    EXPECT_EQ(batchEnds.back(), kCount);
    for (std::size_t b = 0; b + 1 < batchEnds.size(); ++b) EXPECT_EQ(batchEnds[b] % kLine, 0) << batchEnds[b];
}

// The workers hold back the terminating signals, so that the process takes
// them on the calling thread (which holds them back itself while it makes a
// temporary file); the calling thread's own mask is left as it was.
TEST(OrderedBatches, WorkersHoldBackTheTerminatingSignals) {
    sigset_t before;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &before);
    const bool callerHeldInt = sigismember(&before, SIGINT) == 1;
    std::mutex seen;
    const std::thread::id caller = std::this_thread::get_id();
    int onWorkers = 0, heldOnWorkers = 0;
    batches::Spread spread(3);
    spread.run(0, 48, [&](long long from, long long to, int) {
        for (long long item = from; item < to; ++item) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));  // long enough for the workers to join in
        }
        sigset_t mask;
        ::pthread_sigmask(SIG_BLOCK, nullptr, &mask);
        const std::lock_guard lock(seen);
        if (std::this_thread::get_id() != caller) {
            ++onWorkers;
            if (sigismember(&mask, SIGINT) == 1 && sigismember(&mask, SIGTERM) == 1 && sigismember(&mask, SIGHUP) == 1)
                ++heldOnWorkers;
        }
    });
    EXPECT_GT(onWorkers, 0);
    EXPECT_EQ(heldOnWorkers, onWorkers);
    sigset_t after;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &after);
    EXPECT_EQ(sigismember(&after, SIGINT) == 1, callerHeldInt);
}

}  // namespace
}  // namespace bm
