#include "bench/figures.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace quorvex::bench {

double nowSeconds() {
    return clockSeconds(CLOCK_MONOTONIC);
}

double clockSeconds(clockid_t clock) {
    timespec time{};
    if (::clock_gettime(clock, &time) != 0)
        throw std::system_error(errno, std::generic_category(), "No time is known");
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double cpuSeconds(pid_t process) {
    // To the nanosecond; the accounts in /proc count in hundredths of a second, too coarse for an idle
    // program.
    clockid_t clock{};
    if (const int reason = ::clock_getcpuclockid(process, &clock); reason != 0)
        throw std::system_error(reason, std::generic_category(), "No processor time is known");
    return clockSeconds(clock);
}

double ownCpuSeconds() {
    return clockSeconds(CLOCK_PROCESS_CPUTIME_ID);
}

Memory memoryOf(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    Memory memory;
    std::string word;
    while (file >> word) {
        if (word == "Rss:" && file >> memory.residentMb)
            memory.residentMb /= 1024;
        else if (word == "Pss:" && file >> memory.proportionalMb)
            memory.proportionalMb /= 1024;
    }
    if (memory.residentMb <= 0 || memory.proportionalMb <= 0)
        throw std::runtime_error("The system does not tell how much memory a program holds.");
    return memory;
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
