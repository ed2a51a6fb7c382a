#include "tool/patience.h"

#include <utility>

namespace quorvex::tool {

Patience::Patience(const Heard& heard, std::chrono::milliseconds limit, std::function<void()> giveUp)
    : heard_(heard), limit_(limit), giveUp_(std::move(giveUp)) {
    constexpr int kLooks = 20;  ///< while a line is waited for
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    timer_.start(limit / kLooks);
}

void Patience::look() {
    if (std::exchange(sentLines_, heard_.sentLines()) != heard_.sentLines())
        sinceSent_.start();
    if (hasEnded_ || !sinceSent_.isValid() || !sinceSent_.hasExpired(limit_.count()))
        return;
    hasEnded_ = true;
    timer_.stop();
    giveUp_();
}

}  // namespace quorvex::tool
