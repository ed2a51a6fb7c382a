#include <algorithm>
#include <cstdio>

#include "bench/figures.h"
#include "bench/rows.h"

namespace quorvex::bench {

namespace {

Row row(const std::string& what, const std::string& figure, const std::string& details,
        const std::string& target, bool met) {
    return {what, figure + " (" + details + ")", target, met ? "met" : "missed"};
}

}  // namespace

Row ratioRow(const std::string& what, double ratio, const std::string& details, double most) {
    return row(what, fixed(ratio, 3), details, "at most " + fixed(most, 2), ratio <= most);
}

Row shareRow(const std::string& what, double share, const std::string& details, double below) {
    return row(what, percent(share), details, "below " + fixed(below * 100, 1) + " %", share < below);
}

void printTable(std::vector<Row> rows) {
    rows.insert(rows.begin(), {"What", "Measured", "Target", "Verdict"});
    Row rule;
    for (std::size_t i = 0; i < rule.size(); ++i) {
        const auto width = [i](const Row& each) { return each[i].size(); };
        const std::size_t widest = std::ranges::max(rows, {}, width)[i].size();
        for (Row& each : rows)
            each[i].resize(widest, ' ');
        rule[i] = std::string(widest + 2, '-');
    }
    for (const Row& each : rows) {
        std::printf("| %s | %s | %s | %s |\n", each[0].c_str(), each[1].c_str(), each[2].c_str(),
                    each[3].c_str());
        if (&each == &rows.front())
            std::printf("|%s|%s|%s|%s|\n", rule[0].c_str(), rule[1].c_str(), rule[2].c_str(),
                        rule[3].c_str());
    }
    std::fflush(stdout);
}

}  // namespace quorvex::bench
