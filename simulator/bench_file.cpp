#include "simulator/bench_file.h"

#include <iomanip>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

namespace quorvex::sim {

namespace {

std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream text(line);
    std::vector<std::string> words;
    for (std::string word; text >> std::quoted(word);)
        words.push_back(word);
    return words;
}

Options unitOf(const std::vector<std::string>& words) {
    Options options = parseOptions(words);
    if (options.help || options.play != Options::Play::kUnit)
        throw std::invalid_argument("A bench has beltpacks and antennas.");
    makeUnit(options);  // so that a value that does not fit is told before any unit is there
    return options;
}

}  // namespace

std::vector<Options> readBench(std::istream& text) {
    std::vector<Options> units;
    std::set<std::string> links;
    int number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        const std::vector<std::string> words = wordsOf(line);
        if (words.empty() || words.front().starts_with('#'))
            continue;
        try {
            units.push_back(unitOf(words));
            if (!links.insert(units.back().linkPath).second)
                throw std::invalid_argument(units.back().linkPath + " is the link of another unit already.");
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument("Line " + std::to_string(number) + ": " + error.what());
        }
    }
    if (units.empty())
        throw std::invalid_argument("There is no unit in the bench.");
    return units;
}

}  // namespace quorvex::sim
