#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

// Runs a target without libFuzzer: over its seeds, then over mutations of them, the same ones each time.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kLongestInput = 4096;
constexpr int kMostChanges = 8;

void tryOne(const std::string& text) {
    // A copy of exactly its size: a sanitizer sees what is read past its end.
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

std::vector<std::string> readSeeds(const char* folder) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());  // in the order of their names wherever it runs
    std::vector<std::string> seeds;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return seeds;
}

/// Changes seeds a little. The engine's numbers are the same on every machine; distributions' are not, so
/// none is used.
class Mutator {
public:
    std::string mutated(const std::vector<std::string>& seeds) {
        std::string text = seeds[below(seeds.size())];
        for (std::size_t left = 1 + below(kMostChanges); left > 0; --left)
            change(text, seeds);
        return text.substr(0, kLongestInput);
    }

private:
    std::size_t below(std::size_t limit) { return random_() % std::max<std::size_t>(limit, 1); }

    void change(std::string& text, const std::vector<std::string>& seeds) {
        const std::size_t at = below(text.size());
        const std::string& other = seeds[below(seeds.size())];
        switch (below(6)) {
            case 0:
                text.insert(at, 1, static_cast<char>(below(256)));
                break;
            case 1:
                text.erase(std::min(at, text.size()), 1 + below(4));
                break;
            case 2:
                text.replace(std::min(at, text.size()), 1, 1, static_cast<char>(below(256)));
                break;
            case 3:
                text.replace(std::min(at, text.size()), 1, 1, "0129afFZ#!^~{}\r\n ,"[below(18)]);
                break;
            case 4:  // a piece of its own, some times over
                text.insert(at, text.substr(below(text.size()), 1 + below(64)));
                break;
            default:
                text.insert(at, other.substr(below(other.size()), 1 + below(64)));
                break;
        }
    }

    std::mt19937 random_{4700};
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "Usage: %s SEEDS RUNS\n", argv[0]);
        return 2;
    }
    const std::vector<std::string> seeds = readSeeds(argv[1]);
    if (seeds.empty()) {
        std::fprintf(stderr, "There are no seeds in %s.\n", argv[1]);
        return 1;
    }
    for (const std::string& seed : seeds)
        tryOne(seed);
    const int runs = std::atoi(argv[2]);
    Mutator mutator;
    for (int i = 0; i < runs; ++i)
        tryOne(mutator.mutated(seeds));
    std::printf("%zu seeds and %d mutations of them passed\n", seeds.size(), runs);
    return 0;
}
