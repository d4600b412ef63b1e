#pragma once
// Work spread over the calculation threads in ordered batches: the grid points
// of a run, the iterations of a simulation. Every item is computed on its own
// and stored in its own place, so the results do not depend on the number of
// threads. Between batches the calling thread stores the batch in item order,
// reports progress (which lets pending events, and so Stop, through) and asks
// whether to go on; a run stopped there keeps exactly the items before the
// batch boundary, as a run on one thread stopped at the same item keeps them.
// On one thread every batch is one item, computed on the calling thread: the
// loop is the plain loop of stop test, item, store and progress.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace bm {

// The threads a calculation spreads over: all the processor's cores unless set.
int calculationThreads();
// 0 (or less) for all cores.
void setCalculationThreads(int threads);
// The processor's cores.
int availableCores();

// A run whose work left after a first part on the calling thread would take
// less than this many seconds there stays there: starting the threads
// (about 2 ms in all, with the library's start and end in the process) and
// handing them batches would cost more than they gain. 0: a run of more than
// one item always spreads. 0.008 unless set (or BRENMOOR_SERIAL_BELOW says
// otherwise); the results are the same either way.
double serialRunBelow();
void setSerialRunBelow(double seconds);
// Whether work has been spread in this process: the threads' library has
// then started, and spreading again costs little.
bool calculationThreadsStarted();

// Sets the calculation threads for a scope and puts the former count back.
class ScopedCalculationThreads {
public:
    explicit ScopedCalculationThreads(int threads);
    ~ScopedCalculationThreads();
    ScopedCalculationThreads(const ScopedCalculationThreads&) = delete;
    ScopedCalculationThreads& operator=(const ScopedCalculationThreads&) = delete;

private:
    int former_;
};

namespace batches {

// A steady clock, in seconds.
double secondsNow();

// The threads of one spread loop, kept from batch to batch.
class Spread {
public:
    explicit Spread(int threads);
    ~Spread();
    Spread(const Spread&) = delete;
    Spread& operator=(const Spread&) = delete;
    // Runs body(from, to, slot) over pieces of [first, last) and returns when
    // all are done; `slot` (0 .. threads - 1) is the running thread's own
    // place, held by one thread at a time. Pieces begin and end at multiples
    // of `line` (and at first and last).
    void run(long long first, long long last, const std::function<void(long long, long long, int slot)>& body,
             long long line = 1);

private:
    struct Threads;
    std::unique_ptr<Threads> threads_;
};

// The size of the next batch: grown while batches take less than a few
// hundredths of a second, so that progress and Stop come often and the cost
// of starting a batch stays small.
class BatchSizer {
public:
    // Batches of whole lines of `line` items, a few lines a thread at first.
    explicit BatchSizer(int threads, long long line = 1);
    // The end of the batch starting at `first` of `count` items.
    long long endOf(long long first, long long count) const;
    long long next() const { return size_; }
    // The line the batches keep whole (1 for a line too long to keep whole).
    long long line() const { return line_; }
    void started();
    void finished();

private:
    long long line_;
    long long size_;
    long long smallest_;
    long long largest_;
    double startedAt_ = 0.0;
};

// The first failing item of a batch, or the batch's end when none failed.
class FirstFailure {
public:
    void reset(long long end) { index_.store(end); }
    long long index() const { return index_.load(std::memory_order_relaxed); }
    void record(long long item) {
        long long seen = index_.load();
        while (item < seen && !index_.compare_exchange_weak(seen, item)) {
        }
    }

private:
    std::atomic<long long> index_{0};
};

}  // namespace batches

// Items 0 .. count - 1: before each batch proceed() (false: stop, the call
// returns false); compute(item) of every item of the batch, on copies of
// `compute` kept one per thread (so that the caches a computation fills as it
// goes are its own), then store(item, value) in item order and progress(items
// done so far). When an item fails on a worker, the items before it are
// stored and recover(item) is called on the calling thread: it raises the
// item's error there (as a one-thread run raises it first in item order), or
// gives the item's value, and the work goes on after it. Items in lines of
// `line` (a grid's inner loop) go to the threads by whole lines, so that what
// a thread keeps from one point of a line to the next serves the whole line.
template <class Value, class Compute, class Store, class Proceed, class Progress, class Recover>
bool forEachInOrderedBatches(long long count, Compute& compute, Store&& store, Proceed&& proceed, Progress&& progress,
                             Recover&& recover, long long line = 1) {
    const int threads = calculationThreads();
    if (threads <= 1 || count <= 1) {
        for (long long item = 0; item < count; ++item) {
            if (!proceed()) return false;
            store(item, compute(item));
            progress(item + 1);
        }
        return true;
    }

    long long first = 0;
    if (const double below = serialRunBelow(); below > 0.0) {
        // Items on the calling thread, one by one as on one thread (an item
        // that fails goes to recover() as on a worker), for two spells of a
        // fifth of the threshold each (the clock read after 1, 2, 4 and 8
        // items, then every 16, so that slow items are not run in a row); the
        // second spell's pace, which the first items' own set-up no longer
        // slows, tells how long the rest would take: under the threshold, it
        // is done here too.
        const auto spell = [&](double seconds) {
            const double started = batches::secondsNow();
            int stride = 1, untilClock = 1;
            while (first < count) {
                if (!proceed()) return false;
                std::optional<Value> value;
                try {
                    value.emplace(compute(first));
                } catch (...) {  // as an item that fails on a worker
                    value.emplace(recover(first));
                }
                store(first, std::move(*value));
                ++first;
                progress(first);
                if (--untilClock > 0) continue;
                stride = std::min(stride * 2, 16);
                untilClock = stride;
                if (batches::secondsNow() - started >= seconds) break;
            }
            return true;
        };
        if (!spell(0.2 * below)) return false;
        const long long secondFrom = first;
        const double secondStarted = batches::secondsNow();
        if (!spell(0.2 * below)) return false;
        const double perItem =
            (batches::secondsNow() - secondStarted) / static_cast<double>(std::max(first - secondFrom, 1LL));
        if (perItem * static_cast<double>(count - first) < below && !spell(HUGE_VAL)) return false;
    }
    if (first >= count) return true;

    std::vector<std::optional<Compute>> copies(static_cast<std::size_t>(threads));
    std::vector<std::optional<Value>> values;
    batches::Spread spread(threads);
    batches::BatchSizer sizer(threads, line);
    batches::FirstFailure failure;
    while (first < count) {
        if (!proceed()) return false;
        const long long last = sizer.endOf(first, count);
        values.assign(static_cast<std::size_t>(last - first), std::nullopt);
        failure.reset(last);
        sizer.started();
        spread.run(first, last, [&](long long from, long long to, int slot) {
            std::optional<Compute>& own = copies[static_cast<std::size_t>(slot)];
            if (!own) own.emplace(compute);
            for (long long item = from; item < to && item < failure.index(); ++item) {
                try {
                    values[static_cast<std::size_t>(item - first)].emplace((*own)(item));
                } catch (...) {  // computed again by recover(), in its turn
                    failure.record(item);
                    return;
                }
            }
        }, sizer.line());
        sizer.finished();
        const long long failed = failure.index();
        for (long long item = first; item < failed; ++item)
            store(item, std::move(*values[static_cast<std::size_t>(item - first)]));
        if (failed < last) {
            store(failed, recover(failed));
            first = failed + 1;
        } else {
            first = last;
        }
        progress(first);
    }
    return true;
}

}  // namespace bm
