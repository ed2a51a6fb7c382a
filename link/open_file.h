#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace quorvex {

/// As fopen, whatever letters are in the path; the file is not handed on to programs that are started.
std::FILE* openFile(const std::filesystem::path& path, const std::string& mode);

std::filesystem::path pathOfUtf8(const std::string& path);

}  // namespace quorvex
