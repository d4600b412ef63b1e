#include "apps/trazel/widgets/read_task.h"

#include <QThread>

namespace bm::trazel {

ReadTask::ReadTask(QObject* parent) : QObject(parent) {}

ReadTask::~ReadTask() {
    cancelled_ = true;
    for (QThread* t : findChildren<QThread*>()) t->wait();  // the children go with the task
}

void ReadTask::start(std::function<void(const ReadProgress&)> work) {
    if (thread_) {
        // A newer read replaces one under way: it ends at its next report.
        cancelled_ = true;
        thread_->wait();
        thread_ = nullptr;
    }
    cancelled_ = false;
    fraction_ = 0;
    const ReadProgress progress = [this](std::uint64_t done, std::uint64_t total) {
        fraction_ = total ? static_cast<double>(done) / static_cast<double>(total) : 1.0;
        return !cancelled_.load();
    };
    thread_ = QThread::create([work = std::move(work), progress] { work(progress); });
    thread_->setParent(this);
    connect(thread_, &QThread::finished, this, &ReadTask::finished, Qt::QueuedConnection);
    thread_->start();
}

void ReadTask::finished() {
    auto* ended = qobject_cast<QThread*>(sender());
    if (!ended) return;
    ended->wait();
    ended->deleteLater();
    if (ended != thread_) return;  // a read that a newer one replaced
    thread_ = nullptr;
    emit done();
}

}  // namespace bm::trazel
