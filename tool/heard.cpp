#include "tool/heard.h"

#include <algorithm>

#include "link/number_text.h"
#include "link/qt_text.h"
#include "link/reply.h"

namespace quorvex::tool {

namespace {

/// A line that no one answers: the unit has no such register, or something else is sent meanwhile.
bool isNoReply(const std::string& line, std::string_view came) {
    return came == line || isRefusal(came) || !came.starts_with(line.substr(0, 1));
}

/// What came back for a line that was read, and is no answer to it; empty for nothing.
std::string wrongReplyIn(const Heard::Exchange& exchange) {
    const std::string& line = exchange.line;
    if (!isReadLine(line))
        return {};
    if (!exchange.part.empty())
        return exchange.part;
    if (exchange.hasGivenUp)
        return exchange.spoken;
    if (!exchange.reply)
        return {};
    const std::string& reply = *exchange.reply;
    // The radio module is told by six characters: a refusal, or the head of an answer.
    const bool isRight =
        isAnswerTo(line, reply) || isRefusal(reply) || (exchange.isCutOff && isHeadOfAnswerTo(line, reply));
    return isRight ? std::string() : reply;
}

QString inQuotes(const std::string& text) {
    return QLatin1Char('"') + fromUtf8(printable(text)) + QLatin1Char('"');
}

}  // namespace

void Heard::sent(std::string_view line) {
    exchanges_.emplace_back();
    exchanges_.back().line = line;
    ++sentLines_;
}

void Heard::take(std::string_view reply, bool isCutOff) {
    if (exchanges_.empty())
        return;
    Exchange& exchange = exchanges_.back();
    exchange.reply = reply;
    exchange.isCutOff = isCutOff;
    if (exchange.spoken.empty() && !isNoReply(exchange.line, reply))
        exchange.spoken = reply;
}

void Heard::gaveUp(std::string_view part) {
    if (exchanges_.empty())
        return;
    exchanges_.back().part = part;
    exchanges_.back().hasGivenUp = true;
}

std::string Heard::replyTo(const std::string& line) const {
    const auto found = std::find_if(exchanges_.rbegin(), exchanges_.rend(),
                                    [&](const Exchange& exchange) { return exchange.line == line; });
    if (found == exchanges_.rend() || found->hasGivenUp)
        return {};
    return found->reply.value_or("");
}

QString Heard::wrongReply() const {
    for (const Exchange& exchange : exchanges_) {
        if (const std::string reply = wrongReplyIn(exchange); !reply.empty())
            return QStringLiteral("What came back for %1 is no answer to it: %2.")
                .arg(inQuotes(exchange.line), inQuotes(reply));
    }
    return {};
}

QString Heard::howFar() const {
    const auto answered = std::find_if(exchanges_.rbegin(), exchanges_.rend(), [](const Exchange& exchange) {
        return exchange.reply && !exchange.hasGivenUp;
    });
    if (answered == exchanges_.rend())
        return QStringLiteral("No line was answered.");
    return QStringLiteral("The last line that was answered: %1.").arg(inQuotes(answered->line));
}

}  // namespace quorvex::tool
