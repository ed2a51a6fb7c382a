#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace quorvex::bench {

/// A program started by the benchmark, its standard input and output in the benchmark's hands. It is ended
/// by a signal with the object, unless it has ended before.
class ChildProcess {
public:
    /// Megabytes that a process holds: all its resident pages, and the same with every shared page divided by
    /// the number of processes that share it.
    struct Memory {
        double residentMb = 0;
        double proportionalMb = 0;
    };

    /// Starts `program` (a path) with this process's environment and `extra` ("NAME=value") besides.
    /// Throws std::system_error when it cannot be started.
    ChildProcess(const std::string& program, std::vector<std::string> arguments,
                 const std::vector<std::string>& extra = {});
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The monotonic clock at the start, in seconds.
    double startedAt() const { return startedAt_; }

    /// The next line that it prints, without its line end. Throws std::runtime_error when none has come for
    /// 10 s or the program has ended.
    std::string readLine();

    /// Closes the program's standard input and gives it 3 s to end by itself.
    void endByInput();

    /// Processor time used so far, in seconds.
    double cpuUsed() const;
    Memory memory() const;

private:
    std::string name_;
    pid_t id_ = -1;
    bool ended_ = false;
    int input_ = -1;
    int output_ = -1;
    double startedAt_ = 0;
    std::string unread_;
};

}  // namespace quorvex::bench
