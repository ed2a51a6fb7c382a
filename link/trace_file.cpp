#include "link/trace_file.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

#include "link/open_file.h"

namespace quorvex {

namespace {

/// "2026-11-22 10:00:00", local time.
std::string dateNow() {
    const std::time_t now = std::time(nullptr);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", std::localtime(&now));
    return text.data();
}

}  // namespace

TraceFile::TraceFile(const std::string& path, std::function<void(const std::string&)> tell)
    : path_(path), tell_(std::move(tell)) {
    std::error_code ignored;
    const std::filesystem::file_status there = std::filesystem::status(pathOfUtf8(path), ignored);
    // A pipe without a reader would hold up the program, and a device is nobody's to write to.
    if (std::filesystem::exists(there) && !std::filesystem::is_regular_file(there)) {
        tell_("The trace cannot be written: " + path_ + " is no ordinary file.");
        return;
    }
    file_.reset(openFile(pathOfUtf8(path), "ab"));
    if (!file_)
        tell_("The trace " + path_ + " cannot be written: " + std::strerror(errno) + ".");
    else
        line("# trace of " + dateNow());
}

void TraceFile::line(const std::string& text) {
    if (!file_)
        return;
    if (std::fprintf(file_.get(), "%s\n", text.c_str()) >= 0 && std::fflush(file_.get()) == 0)
        return;
    const std::string reason = std::strerror(errno);
    file_.reset();
    tell_("The trace " + path_ + " ends here: " + reason + ".");
}

}  // namespace quorvex
