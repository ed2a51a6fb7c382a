#include "fuzz/input.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace quorvex::fuzz {

void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

char Input::letter() {
    if (rest_.empty())
        return '0';
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
}

int Input::choice(int count) {
    return static_cast<unsigned char>(letter() - '0') % count;
}

std::string_view Input::line() {
    const std::string_view line = rest_.substr(0, rest_.find('\n'));
    rest_.remove_prefix(line.size() == rest_.size() ? line.size() : line.size() + 1);
    return line;
}

}  // namespace quorvex::fuzz

// Called by libFuzzer, or by replay.cpp in its place.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quorvex::fuzz::tryInput(
        quorvex::fuzz::Input(std::string_view(reinterpret_cast<const char*>(data), size)));
    return 0;
}
