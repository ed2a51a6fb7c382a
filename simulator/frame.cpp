#include "simulator/frame.h"

#include "simulator/hex.h"

namespace quorvex::sim {

bool Frame::isExact() const {
    const std::size_t announced = 2 * static_cast<std::size_t>(length - 1);
    return data.size() == announced && (data.empty() || isHex(data));
}

std::optional<Frame> parseFrame(std::string_view line) {
    constexpr std::size_t kHeadSize = 6;
    if (line.size() < kHeadSize || (line[0] != '#' && line[0] != '!') || line[1] != ' ')
        return std::nullopt;
    const std::optional<int> length = parseHex(line.substr(2, 2));
    const std::optional<int> number = parseHex(line.substr(4, 2));
    if (!length || *length < 1 || !number)
        return std::nullopt;
    std::string_view data = line.substr(kHeadSize);
    while (!data.empty() && data.back() == ' ')
        data.remove_suffix(1);
    return Frame{line[0], *length, *number, std::string(data)};
}

std::string replyFrame(int number, std::string_view data) {
    const int length = 1 + static_cast<int>(data.size() / 2);
    return "# " + hexByte(length) + hexByte(number | kReplyFlag) + std::string(data);
}

}  // namespace quorvex::sim
