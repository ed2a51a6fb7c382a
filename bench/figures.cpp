#include "bench/figures.h"

#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <system_error>

namespace quorvex::bench {

double nowSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double cpuSeconds(pid_t process) {
    // To the nanosecond; the accounts in /proc count in hundredths of a second, too coarse for an idle
    // program.
    clockid_t clock{};
    if (const int reason = ::clock_getcpuclockid(process, &clock); reason != 0)
        throw std::system_error(reason, std::generic_category(), "No processor time is known");
    timespec used{};
    if (::clock_gettime(clock, &used) != 0)
        throw std::system_error(errno, std::generic_category(), "No processor time is known");
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

double ownCpuSeconds() {
    return cpuSeconds(::getpid());
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::string fixed(double value, int decimals) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

std::string milliseconds(double seconds) {
    const double ms = seconds * 1e3;
    return fixed(ms, ms < 10 ? 2 : 1) + " ms";
}

std::string percent(double share) {
    return fixed(share * 100, 2) + " %";
}

}  // namespace quorvex::bench
