#include "identity/dect_version.h"

#include <utility>

namespace quorvex {

namespace {
constexpr std::size_t kVersionAt = 14;  ///< the version begins with the 15th character
constexpr std::string_view kMark = "DECT Version:";
}  // namespace

bool DectVersion::isWhereTaken(std::string_view reply) {
    return reply.size() > kVersionAt + 1 && reply.substr(kVersionAt - kMark.size(), kMark.size()) == kMark;
}

DectVersion::DectVersion(CommandLink& link, std::string request, TextField& version)
    : link_(link), request_(std::move(request)), version_(version) {}

void DectVersion::request() {
    Operation operation(link_);
    request(operation);
}

void DectVersion::request(Operation& operation) {
    operation.serialSendString(request_);
    for (;;) {
        const std::string reply = operation.serialGetResponse(limit::kLine, kCarriageReturn);
        if (reply == kError) {
            version_.setText("Unavailable");
            return;
        }
        if (reply.find(kMark) == std::string::npos)
            continue;
        // The last character of the line is not part of the version.
        version_.setText(reply.size() > kVersionAt + 1
                             ? reply.substr(kVersionAt, reply.size() - kVersionAt - 1)
                             : std::string());
        return;
    }
}

}  // namespace quorvex
