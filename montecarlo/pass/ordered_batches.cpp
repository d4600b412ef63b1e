#include "montecarlo/pass/ordered_batches.h"

#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdlib>

#include <pthread.h>

#include <tbb/blocked_range.h>
#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>
#include <tbb/task_arena.h>
#include <tbb/task_scheduler_observer.h>

namespace bm {

namespace {

std::atomic<int> theThreads{0};

double serialRunBelowAtStart() {
    const char* given = std::getenv("BRENMOOR_SERIAL_BELOW");
    if (given == nullptr) return 0.008;
    char* end = nullptr;
    const double seconds = std::strtod(given, &end);
    return end != given && std::isfinite(seconds) && seconds >= 0.0 ? seconds : 0.008;
}

// The threshold, read from the environment at its first use (not during
// static initialisation, which another file's initialiser might precede).
std::atomic<double>& theSerialRunBelow() {
    static std::atomic<double> below{serialRunBelowAtStart()};
    return below;
}
std::atomic<bool> theThreadsStarted{false};

// A batch this long keeps the progress display moving and answers Stop at once.
constexpr double kShortBatch = 0.02;
constexpr double kLongBatch = 0.08;

}  // namespace

int availableCores() { return std::max(1, tbb::info::default_concurrency()); }

int calculationThreads() {
    const int threads = theThreads.load();
    return threads > 0 ? threads : availableCores();
}

void setCalculationThreads(int threads) { theThreads.store(std::max(threads, 0)); }

ScopedCalculationThreads::ScopedCalculationThreads(int threads) : former_(theThreads.load()) {
    setCalculationThreads(threads);
}

ScopedCalculationThreads::~ScopedCalculationThreads() { theThreads.store(former_); }

double serialRunBelow() { return theSerialRunBelow().load(); }

void setSerialRunBelow(double seconds) { theSerialRunBelow().store(std::max(seconds, 0.0)); }

bool calculationThreadsStarted() { return theThreadsStarted.load(); }

namespace batches {

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The worker threads hold back the terminating signals (SIGINT, SIGTERM,
// SIGHUP), so that the process receives them on the calling thread, which
// holds them back itself while it makes and registers a temporary file: on a
// worker the handler would run beside a save and miss the file it is making.
class QuietWorkers : public tbb::task_scheduler_observer {
public:
    explicit QuietWorkers(tbb::task_arena& arena) : tbb::task_scheduler_observer(arena) { observe(true); }
    ~QuietWorkers() override { observe(false); }
    void on_scheduler_entry(bool worker) override {
        if (!worker) return;
        sigset_t held;
        sigemptyset(&held);
        for (int signalNumber : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signalNumber);
        ::pthread_sigmask(SIG_BLOCK, &held, nullptr);
    }
};

// More threads than cores need the process-wide limit raised as well as an
// arena of that many places.
struct Spread::Threads {
    explicit Threads(int threads)
        : count(threads), limit(tbb::global_control::max_allowed_parallelism, static_cast<std::size_t>(threads)),
          arena(threads), quiet(arena) {}
    int count;
    tbb::global_control limit;
    tbb::task_arena arena;
    QuietWorkers quiet;
};

Spread::Spread(int threads) : threads_(std::make_unique<Threads>(threads)) { theThreadsStarted.store(true); }

Spread::~Spread() = default;

// A few pieces a thread, none smaller, of whole lines: neighbouring points
// share the node values the kernels keep per thread (one line of a grid fills
// them once), so a thread is not given scattered points or parts of a line
// even when it steals.
void Spread::run(long long first, long long last, const std::function<void(long long, long long, int)>& body,
                 long long line) {
    line = std::max(1LL, line);
    const long long firstLine = first / line, endLine = (last + line - 1) / line;
    const long long grain = std::max(1LL, (endLine - firstLine) / (4LL * threads_->count));
    threads_->arena.execute([&] {
        tbb::parallel_for(
            tbb::blocked_range<long long>(firstLine, endLine, static_cast<std::size_t>(grain)),
            [&](const tbb::blocked_range<long long>& lines) {
                const long long from = std::max(first, lines.begin() * line);
                const long long to = std::min(last, lines.end() * line);
                if (from < to) body(from, to, tbb::this_task_arena::current_thread_index());
            },
            tbb::simple_partitioner());
    });
}

// Lines longer than this are cut like any items: whole lines would make the
// first batches too long for progress and Stop.
constexpr long long kLongestWholeLine = 1024;

BatchSizer::BatchSizer(int threads, long long line)
    : line_(line > kLongestWholeLine ? 1 : std::max(1LL, line)), size_(4LL * threads * line_), smallest_(size_),
      largest_(std::max(1LL << 20, size_)) {}

long long BatchSizer::endOf(long long first, long long count) const {
    const long long end = first + size_;
    if (end >= count) return count;
    return std::min(count, (end + line_ - 1) / line_ * line_);  // the end of the line the batch reaches
}

void BatchSizer::started() { startedAt_ = secondsNow(); }

void BatchSizer::finished() {
    const double took = secondsNow() - startedAt_;
    if (took < kShortBatch) size_ = std::min(size_ * 2, largest_);
    else if (took > kLongBatch) size_ = std::max(size_ / 2, smallest_);
}

}  // namespace batches

}  // namespace bm
