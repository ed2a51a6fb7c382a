#include "simulator/dump_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace quorvex::sim {

namespace {

/// Makes the file `path`, which must not be there yet. Returns whether it holds `text` now; if not, errno
/// says why.
bool writeNew(const std::string& path, const std::string& text) {
    std::FILE* file = std::fopen(path.c_str(), "wx");
    if (file == nullptr)
        return false;
    const bool taken = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    return std::fclose(file) == 0 && taken;
}

}  // namespace

DumpFile::DumpFile(std::string path)
    : path_(std::move(path)), aside_(path_ + ".new" + std::to_string(::getpid())) {
    std::error_code none;
    const auto there = std::filesystem::status(path_, none);
    if (std::filesystem::exists(there) && !std::filesystem::is_regular_file(there))
        fail(std::filesystem::is_directory(there) ? "it is a folder" : "it is no file");
    if (!writeNew(aside_, {}))
        fail(std::strerror(errno));
    std::remove(aside_.c_str());
}

void DumpFile::write(const std::string& text) const {
    if (writeNew(aside_, text) && std::rename(aside_.c_str(), path_.c_str()) == 0)
        return;
    const int reason = errno;
    if (reason != EEXIST)  // that would be somebody else's
        std::remove(aside_.c_str());
    fail(std::strerror(reason));
}

void DumpFile::fail(const std::string& reason) const {
    throw std::runtime_error("Cannot write the dump " + path_ + ": " + reason + ".");
}

}  // namespace quorvex::sim
