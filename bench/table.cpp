#include <algorithm>
#include <array>
#include <cstdio>

#include "bench/figures.h"
#include "bench/rows.h"

namespace quorvex::bench {

namespace {

using Cells = std::array<std::string, 4>;

Row judgedRow(const std::string& what, double value, const std::string& measured, const std::string& target,
              bool met) {
    return {what, value, measured, target, met ? "met" : "missed"};
}

}  // namespace

Row ratioRow(const std::string& what, double ratio, const std::string& details, double most) {
    return judgedRow(what, ratio, toldRow(what, ratio, details).measured, "at most " + fixed(most, 2),
                     ratio <= most);
}

Row toldRow(const std::string& what, double ratio, const std::string& details) {
    return {.what = what, .value = ratio, .measured = fixed(ratio, 3) + " (" + details + ")"};
}

Row shareRow(const std::string& what, double share, const std::string& details, double below) {
    return judgedRow(what, share, percent(share) + " (" + details + ")",
                     "below " + fixed(below * 100, 1) + " %", share < below);
}

Row leftOutRow(const std::string& what, const std::string& why) {
    return {.what = what, .measured = "left out: " + why};
}

void printTable(const std::vector<Row>& rows) {
    std::vector<Cells> lines{{"What", "Measured", "Target", "Verdict"}};
    for (const Row& row : rows)
        lines.push_back({row.what, row.measured, row.target, row.verdict});
    Cells rule;
    for (std::size_t i = 0; i < rule.size(); ++i) {
        const auto width = [i](const Cells& each) { return each[i].size(); };
        const std::size_t widest = std::ranges::max(lines, {}, width)[i].size();
        for (Cells& each : lines)
            each[i].resize(widest, ' ');
        rule[i] = std::string(widest + 2, '-');
    }
    for (const Cells& each : lines) {
        std::printf("| %s | %s | %s | %s |\n", each[0].c_str(), each[1].c_str(), each[2].c_str(),
                    each[3].c_str());
        if (&each == &lines.front())
            std::printf("|%s|%s|%s|%s|\n", rule[0].c_str(), rule[1].c_str(), rule[2].c_str(),
                        rule[3].c_str());
    }
    std::fflush(stdout);
}

}  // namespace quorvex::bench
