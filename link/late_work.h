#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace quorvex {

/// Work that may take its time, or never end: done one after the other on a thread of its own, so that nobody
/// waits for it.
class LateWork {
public:
    LateWork();
    /// What has not begun is left undone; nobody waits for what has.
    ~LateWork();
    LateWork(const LateWork&) = delete;
    LateWork& operator=(const LateWork&) = delete;

    /// Returns at once. `work` may outlive this object, so it owns what it works on.
    void add(std::function<void()> work);
    /// Waits until all is done. False when it was not within `most`.
    bool finish(std::chrono::milliseconds most);

private:
    struct Queue;
    std::shared_ptr<Queue> queue_;
    std::thread thread_;  ///< from the first piece of work on
};

}  // namespace quorvex
