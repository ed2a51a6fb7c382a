#include "link/late_work.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace quorvex {

/// Shared with the thread, which may hang in a piece of work for good.
struct LateWork::Queue {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> waiting;
    bool isBusy = false;
    bool isOver = false;

    void run();
};

void LateWork::Queue::run() {
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return isOver || !waiting.empty(); });
        if (isOver)
            return;
        isBusy = true;
        const std::function<void()> work = std::move(waiting.front());
        waiting.pop_front();
        lock.unlock();
        work();
        lock.lock();
        isBusy = false;
        changed.notify_all();
    }
}

LateWork::LateWork() : queue_(std::make_shared<Queue>()) {}

LateWork::~LateWork() {
    if (!thread_.joinable())
        return;
    std::unique_lock lock(queue_->mutex);
    queue_->isOver = true;
    queue_->changed.notify_all();
    const bool hangs = queue_->isBusy;
    lock.unlock();
    if (hangs)
        thread_.detach();
    else
        thread_.join();
}

void LateWork::add(std::function<void()> work) {
    const std::lock_guard lock(queue_->mutex);
    queue_->waiting.push_back(std::move(work));
    queue_->changed.notify_all();
    if (!thread_.joinable())
        thread_ = std::thread([queue = queue_] { queue->run(); });
}

bool LateWork::finish(std::chrono::milliseconds most) {
    std::unique_lock lock(queue_->mutex);
    return queue_->changed.wait_for(lock, most,
                                    [this] { return queue_->waiting.empty() && !queue_->isBusy; });
}

}  // namespace quorvex
