#include "bench/table.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "bench/figures.h"

namespace quorvex::bench {

namespace {

std::string verdictOf(bool met) {
    return met ? "met" : "missed";
}

std::string withDetails(const std::string& figure, const std::string& details) {
    return details.empty() ? figure : figure + " (" + details + ")";
}

std::array<std::string, 4> cells(const Row& row) {
    return {row.what, row.measured, row.target, row.verdict};
}

}  // namespace

Row ratioRow(std::string what, double ratio, const std::string& details, double most) {
    return {std::move(what), withDetails(fixed(ratio, 3), details), "at most " + fixed(most, 2),
            verdictOf(ratio <= most)};
}

Row shareRow(std::string what, double share, const std::string& details, double below) {
    return {std::move(what), withDetails(percent(share), details), "below " + fixed(below * 100, 1) + " %",
            verdictOf(share < below)};
}

void printTable(const std::vector<Row>& rows) {
    std::vector<Row> all{{"What", "Measured", "Target", "Verdict"}};
    all.insert(all.end(), rows.begin(), rows.end());
    std::array<std::size_t, 4> widths{};
    for (const Row& row : all) {
        const auto texts = cells(row);
        for (std::size_t i = 0; i < texts.size(); ++i)
            widths[i] = std::max(widths[i], texts[i].size());
    }
    for (const Row& row : all) {
        const auto texts = cells(row);
        std::string line;
        for (std::size_t i = 0; i < texts.size(); ++i)
            line += (i == 0 ? "| " : " | ") + texts[i] + std::string(widths[i] - texts[i].size(), ' ');
        std::printf("%s |\n", line.c_str());
        if (&row != &all.front())
            continue;
        line.clear();
        for (const std::size_t width : widths)
            line += "|" + std::string(width + 2, '-');
        std::printf("%s|\n", line.c_str());
    }
    std::fflush(stdout);
}

}  // namespace quorvex::bench
