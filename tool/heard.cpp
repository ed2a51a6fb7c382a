#include "tool/heard.h"

#include <QStringList>
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

bool isAnswered(const Heard::Exchange& exchange) {
    return exchange.reply && !exchange.hasGivenUp;
}

/// It has more than the one byte of a line that asks.
bool isSetting(const Heard::Exchange& exchange) {
    constexpr std::size_t kCountAt = 2;
    return exchange.line.size() > kCountAt && exchange.line.compare(kCountAt, 2, "01") != 0;
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
    for (Exchange& earlier : exchanges_) {
        if (earlier.hasGivenUp && earlier.line != exchange.line && isAnswerTo(earlier.line, reply))
            earlier.late = reply;
    }
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

void Heard::clear() {
    const auto answered = std::find_if(exchanges_.rbegin(), exchanges_.rend(), isAnswered);
    if (answered != exchanges_.rend())
        answeredBefore_ = answered->line;
    exchanges_.clear();
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
        if (!exchange.late.empty())
            return QStringLiteral("The answer to %1 came too late: %2.")
                .arg(inQuotes(exchange.line), inQuotes(exchange.late));
        if (const std::string reply = wrongReplyIn(exchange); !reply.empty())
            return QStringLiteral("What came back for %1 is no answer to it: %2.")
                .arg(inQuotes(exchange.line), inQuotes(reply));
    }
    return {};
}

bool Heard::hasSent(const std::string& line) const {
    return std::any_of(exchanges_.begin(), exchanges_.end(),
                       [&](const Exchange& exchange) { return exchange.line == line; });
}

QString Heard::howFar() const {
    const auto answered = std::find_if(exchanges_.rbegin(), exchanges_.rend(), isAnswered);
    const std::string& last = answered == exchanges_.rend() ? answeredBefore_ : answered->line;
    QString text = last.empty() ? QStringLiteral("No line was answered.")
                                : QStringLiteral("The last line that was answered: %1.").arg(inQuotes(last));
    QStringList unconfirmed;
    for (auto exchange = answered.base(); exchange != exchanges_.end(); ++exchange) {
        if (isSetting(*exchange))
            unconfirmed << inQuotes(std::string(trimmedRight(exchange->line)));
    }
    if (!unconfirmed.isEmpty())
        text += QStringLiteral(" Sent and not confirmed: %1.").arg(unconfirmed.join(QStringLiteral(", ")));
    return text;
}

}  // namespace quorvex::tool
