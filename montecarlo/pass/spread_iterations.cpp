#include "montecarlo/pass/spread_iterations.h"

#include <optional>

#include "montecarlo/pass/calculation_pass.h"
#include "montecarlo/pass/ordered_batches.h"

namespace bm {

namespace {

// An iteration that has to run on the calling thread.
struct NeedsCallingThread {};
// Stop ended an iteration inside its grid.
struct StoppedInside {};

// A calculation thread does not reach the user: an iteration that would (a
// message, progress) is sent back to the calling thread, where it runs in its turn.
class NoUserHere final : public UserInterface {
public:
    MessageAnswer showMessage(const MessageRequest&) override { throw NeedsCallingThread{}; }
    std::optional<std::string> askFile(const FileDialogRequest&) override { throw NeedsCallingThread{}; }
    void setBusy(bool) override { throw NeedsCallingThread{}; }
    void reportProgress(ProgressOwner, double, double) override { throw NeedsCallingThread{}; }
    void processEvents() override { throw NeedsCallingThread{}; }
    bool startProgram(const std::string&, const std::vector<std::string>&) override { throw NeedsCallingThread{}; }
};

constexpr int kFirstSpread = 2;

// Iteration kFirstSpread + item on a DataSet of the thread's own, copied at its
// first iteration from the state the first iteration left.
class IterationOnCopy {
public:
    IterationOnCopy(const KindCalculation& kind, const DataSet& start) : kind_(&kind), start_(&start) {}
    IterationOnCopy(const IterationOnCopy& other) : kind_(other.kind_), start_(other.start_) {}
    IterationOnCopy& operator=(const IterationOnCopy&) = delete;

    double operator()(long long item) {
        if (!own_) own_.emplace(*start_);
        const std::optional<double> value = kind_->iterate(*own_, true, kFirstSpread + static_cast<int>(item), ui_);
        if (!value) throw NeedsCallingThread{};
        return *value;
    }

private:
    const KindCalculation* kind_;
    const DataSet* start_;
    std::optional<DataSet> own_;
    NoUserHere ui_;
};

}  // namespace

bool spreadsIterations(int n) { return calculationThreads() > 1 && n - 1 > kFirstSpread; }

bool spreadLaterIterations(DataSet& data, const KindCalculation& kind, int n, IterationResults& results,
                           PassResult& pass, ProgressOwner owner, UserInterface& ui) {
    const DataSet start = data;
    IterationOnCopy compute(kind, start);

    // The iteration whose changes `data` holds; it runs an iteration again to
    // hold another's.
    int held = pass.stored;
    auto runOnData = [&](int i) {
        held = i;
        const std::optional<double> value = kind.iterate(data, true, i, ui);
        if (!value) throw StoppedInside{};
        return *value;
    };
    auto holdIteration = [&](int i) {
        if (i >= 1 && held != i) runOnData(i);
    };

    bool finished = false;
    try {
        finished = forEachInOrderedBatches<double>(
            n - kFirstSpread, compute,
            [&](long long item, double value) {
                const int i = kFirstSpread + static_cast<int>(item);
                results.set(i, value);
                pass.stored = i;
                pass.lastValue = results(i);
            },
            [&] {
                if (!data.stopRequested) return true;
                data.stopRequested = false;
                return false;
            },
            [&](long long done) { ui.reportProgress(owner, n, static_cast<double>(done + kFirstSpread - 1)); },
            [&](long long item) {
                const int i = kFirstSpread + static_cast<int>(item);
                holdIteration(i - 1);
                return runOnData(i);
            });
    } catch (const StoppedInside&) {
        data.stopRequested = false;
        return false;
    }
    holdIteration(pass.stored);
    return finished;
}

}  // namespace bm
