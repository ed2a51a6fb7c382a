#include "bench/instant_peer.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace quorvex::bench {

InstantPeer::InstantPeer(std::string reply) : reply_(std::move(reply)), end_(::eventfd(0, EFD_CLOEXEC)) {
    if (end_ < 0)
        throw std::system_error(errno, std::generic_category(), "No event can be made");
    thread_ = std::thread([this] { answer(); });
}

InstantPeer::~InstantPeer() {
    ::eventfd_write(end_, 1);
    thread_.join();
    ::close(end_);
}

void InstantPeer::answer() {
    std::array<pollfd, 2> watched{{{terminal_.master(), POLLIN, 0}, {end_, POLLIN, 0}}};
    std::array<char, 256> bytes{};
    while (true) {
        if (::poll(watched.data(), watched.size(), -1) < 0 && errno != EINTR)
            return;
        if (watched[1].revents != 0)
            return;
        const ssize_t count = ::read(terminal_.master(), bytes.data(), bytes.size());
        const auto lines = std::count(bytes.data(), bytes.data() + std::max<ssize_t>(count, 0), '\n');
        for (auto i = lines; i > 0; --i) {
            if (::write(terminal_.master(), reply_.data(), reply_.size()) < 0)
                return;
        }
    }
}

}  // namespace quorvex::bench
