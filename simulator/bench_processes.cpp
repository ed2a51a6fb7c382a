#include "simulator/bench_processes.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <set>
#include <stdexcept>

namespace quorvex::sim {

namespace {

/// The processes that have not ended.
class Processes {
public:
    void start(const Options& unit, const std::function<int(const Options&)>& play) {
        std::fflush(stdout);
        const pid_t process = fork();
        if (process < 0)
            throw std::runtime_error("No process can be started.");
        if (process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGTERM);
            std::exit(play(unit));
        }
        running_.insert(process);
    }

    bool anyLeft() const { return !running_.empty(); }

    void tell(int signal) const {
        for (const pid_t process : running_)
            kill(process, signal);
    }

    /// Passes over those that have ended; the status of the last that failed, else 0.
    int bury() {
        int failed = 0;
        int status = 0;
        for (pid_t process = 0; (process = waitpid(-1, &status, WNOHANG)) > 0;) {
            running_.erase(process);
            if (WIFEXITED(status) && WEXITSTATUS(status) != 0)
                failed = WEXITSTATUS(status);
        }
        return failed;
    }

private:
    std::set<pid_t> running_;
};

}  // namespace

int playBench(const std::vector<Options>& units, const std::function<int(const Options&)>& play) {
    // Held, and taken one by one below.
    sigset_t awaited;
    sigemptyset(&awaited);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGUSR1, SIGCHLD})
        sigaddset(&awaited, number);
    sigprocmask(SIG_BLOCK, &awaited, nullptr);

    Processes processes;
    for (const Options& unit : units)
        processes.start(unit, play);
    int failure = 0;
    while (processes.anyLeft()) {
        const int number = sigwaitinfo(&awaited, nullptr);
        if (number == SIGUSR1)
            processes.tell(SIGUSR1);
        else if (number != SIGCHLD)
            processes.tell(SIGTERM);
        const int failed = processes.bury();
        if (failed != 0)
            processes.tell(SIGTERM);
        if (failure == 0)
            failure = failed;
    }
    return failure;
}

}  // namespace quorvex::sim
