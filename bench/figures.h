#pragma once

#include <sys/types.h>
#include <time.h>

#include <string>
#include <vector>

namespace quorvex::bench {

/// Seconds of the monotonic clock, which is one for all processes.
double nowSeconds();

/// What a clock of the system says, in seconds. Throws std::system_error when there is no such clock.
double clockSeconds(clockid_t clock);

/// Processor time that a process has used so far, in seconds, all its threads together.
/// Throws std::system_error when there is no such process.
double cpuSeconds(pid_t process);
/// The same of this process.
double ownCpuSeconds();

/// Megabytes that a process holds: all its resident pages, and the same with every shared page divided by the
/// number of processes that share it.
struct Memory {
    double residentMb = 0;
    double proportionalMb = 0;
};
/// Throws std::runtime_error when the system does not tell.
Memory memoryOf(pid_t process);

/// The middle one; other work on the machine moves it less than it moves the mean. `values` is not empty.
double median(std::vector<double> values);

/// `value` with `decimals` digits behind the point.
std::string fixed(double value, int decimals);
/// A time in milliseconds with its unit, to three significant digits or so.
std::string milliseconds(double seconds);
/// A share of one core, 0 to 1, in percent.
std::string percent(double share);

}  // namespace quorvex::bench
