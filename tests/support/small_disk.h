#pragma once

#include <sys/resource.h>
#include <QtGlobal>
#include <csignal>

namespace quorvex {

/// Lets no file of this program grow past a size: every write beyond fails, as on a disk that is full.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) {
        signalBefore_ = std::signal(SIGXFSZ, SIG_IGN);  // or the program would be ended
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{bytes, before_.rlim_max};
        if (::setrlimit(RLIMIT_FSIZE, &small) != 0)
            qFatal("no limit for files");
    }
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signalBefore_);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit before_{};
    void (*signalBefore_)(int);
};

}  // namespace quorvex
