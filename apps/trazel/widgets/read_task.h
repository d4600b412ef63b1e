#pragma once
// A read of a plot file on a thread of its own, so that the window goes on
// painting and answering while a large file streams in. The work gets a
// progress function to hand to the reader; cancel() makes that function
// answer false, which ends the read at its next report. done() comes back in
// the thread that owns the task.

#include <QObject>
#include <atomic>
#include <functional>

#include "apps/trazel/line_reader.h"

class QThread;

namespace bm::trazel {

class ReadTask : public QObject {
    Q_OBJECT
public:
    explicit ReadTask(QObject* parent = nullptr);
    ~ReadTask() override;  // cancels a read under way and waits for it

    void start(std::function<void(const ReadProgress&)> work);
    void cancel() { cancelled_ = true; }
    bool running() const { return thread_ != nullptr; }
    bool cancelled() const { return cancelled_; }
    // The share of the file read, 0 to 1.
    double fraction() const { return fraction_; }

signals:
    void done();

private:
    void finished();

    QThread* thread_ = nullptr;
    std::atomic<bool> cancelled_{false};
    std::atomic<double> fraction_{0};
};

}  // namespace bm::trazel
