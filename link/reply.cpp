#include "link/reply.h"

#include <algorithm>

namespace quorvex {

namespace {

constexpr std::string_view kReadHead = "# 01";
constexpr std::string_view kFamily = "# ";
constexpr std::size_t kHeadLength = 6;
constexpr std::size_t kCountedFrom = 4;  ///< the bytes that a line counts begin with the 5th character
constexpr std::uint64_t kReplyBit = 0x80;

bool isHex(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isHexDigit);
}

bool hasHeadOfAnswerTo(std::string_view readLine, std::string_view reply) {
    return reply.size() >= kHeadLength && reply.starts_with(kFamily) && isHex(reply.substr(kFamily.size())) &&
           hexValue(reply.substr(kCountedFrom, 2)) == (hexValue(readLine.substr(kCountedFrom)) | kReplyBit);
}

}  // namespace

bool isReadLine(std::string_view line) {
    return line.size() == kHeadLength && line.starts_with(kReadHead);
}

bool isAnswerTo(std::string_view readLine, std::string_view reply) {
    return hasHeadOfAnswerTo(readLine, reply) && reply.size() > kHeadLength &&
           reply.size() == kCountedFrom + 2 * hexValue(reply.substr(kFamily.size(), 2));
}

bool isHeadOfAnswerTo(std::string_view readLine, std::string_view reply) {
    return hasHeadOfAnswerTo(readLine, reply) && reply.size() == kHeadLength;
}

bool isRefusal(std::string_view reply) {
    return reply == "# 01BF";
}

}  // namespace quorvex
