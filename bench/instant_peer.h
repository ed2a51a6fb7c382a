#pragma once

#include <string>
#include <thread>

#include "bench/pseudo_terminal.h"

namespace quorvex::bench {

/// A unit that answers every line at once with the same reply: a thread on a pseudo-terminal's master side.
class InstantPeer {
public:
    /// `reply` is sent as it is, line end included.
    explicit InstantPeer(std::string reply);
    ~InstantPeer();
    InstantPeer(const InstantPeer&) = delete;
    InstantPeer& operator=(const InstantPeer&) = delete;

    const std::string& devicePath() const { return terminal_.devicePath(); }

private:
    void answer();

    PseudoTerminal terminal_;
    std::string reply_;
    int end_ = -1;  ///< an event that ends the thread
    std::thread thread_;
};

}  // namespace quorvex::bench
