#include "bench/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "bench/figures.h"

namespace quorvex::bench {

namespace {

constexpr int kLineLimitMs = 10000;
constexpr int kEndLimitMs = 3000;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentWith(const std::vector<std::string>& extra) {
    std::vector<std::string> all = extra;  // first, since the first of a name counts
    for (char** entry = environ; *entry != nullptr; ++entry)
        all.emplace_back(*entry);
    return all;
}

bool endsWithin(pid_t process, int limitMs) {
    for (int waitedMs = 0; waitedMs <= limitMs; ++waitedMs) {
        if (::waitpid(process, nullptr, WNOHANG) != 0)
            return true;
        ::usleep(1000);
    }
    return false;
}

}  // namespace

ChildProcess::ChildProcess(const std::string& program, std::vector<std::string> arguments,
                           const std::vector<std::string>& extra)
    : name_(std::filesystem::path(program).filename()) {
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(output.data(), O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "No pipe can be made");
    input_ = input[1];
    output_ = output[0];
    arguments.insert(arguments.begin(), program);
    std::vector<std::string> environment = environmentWith(extra);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    startedAt_ = nowSeconds();
    const int reason = ::posix_spawn(&id_, program.c_str(), &actions, nullptr, pointersTo(arguments).data(),
                                     pointersTo(environment).data());
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(input[0]);
    ::close(output[1]);
    if (reason != 0) {
        ::close(input_);
        ::close(output_);
        throw std::system_error(reason, std::generic_category(), "Cannot start " + program);
    }
}

ChildProcess::~ChildProcess() {
    if (!ended_) {
        ::kill(id_, SIGTERM);
        ended_ = endsWithin(id_, kEndLimitMs);
    }
    if (!ended_) {
        ::kill(id_, SIGKILL);
        ::waitpid(id_, nullptr, 0);
    }
    if (input_ >= 0)
        ::close(input_);
    ::close(output_);
}

void ChildProcess::endByInput() {
    ::close(input_);
    input_ = -1;
    ended_ = endsWithin(id_, kEndLimitMs);
}

std::string ChildProcess::readLine() {
    std::array<char, 256> bytes{};
    std::size_t end = 0;
    while ((end = unread_.find('\n')) == std::string::npos) {
        pollfd watched{output_, POLLIN, 0};
        if (::poll(&watched, 1, kLineLimitMs) == 0)
            throw std::runtime_error(name_ + " says nothing.");
        const ssize_t count = ::read(output_, bytes.data(), bytes.size());
        if (count <= 0)
            throw std::runtime_error(name_ + " has ended too early.");
        unread_.append(bytes.data(), static_cast<std::size_t>(count));
    }
    std::string line = unread_.substr(0, end);
    unread_.erase(0, end + 1);
    return line;
}

double ChildProcess::cpuUsed() const {
    return cpuSeconds(id_);
}

ChildProcess::Memory ChildProcess::memory() const {
    std::ifstream file("/proc/" + std::to_string(id_) + "/smaps_rollup");
    Memory memory;
    std::string word;
    while (file >> word) {
        if (word == "Rss:" && file >> memory.residentMb)
            memory.residentMb /= 1024;
        else if (word == "Pss:" && file >> memory.proportionalMb)
            memory.proportionalMb /= 1024;
    }
    if (memory.residentMb <= 0 || memory.proportionalMb <= 0)
        throw std::runtime_error("The system does not tell how much memory " + name_ + " holds.");
    return memory;
}

}  // namespace quorvex::bench
