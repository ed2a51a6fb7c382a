#include "link/open_file.h"

namespace quorvex {

std::FILE* openFile(const std::filesystem::path& path, const std::string& mode) {
#ifdef _WIN32
    return _wfopen(path.c_str(), std::filesystem::path(mode + "N").c_str());
#else
    return std::fopen(path.c_str(), (mode + "e").c_str());
#endif
}

std::filesystem::path pathOfUtf8(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

}  // namespace quorvex
