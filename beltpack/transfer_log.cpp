#include "beltpack/transfer_log.h"

#include <algorithm>
#include <utility>

#include "beltpack/settings_file.h"
#include "link/number_text.h"
#include "link/reply.h"

namespace quorvex {

namespace {

constexpr const char* kInterrupted = "interrupted";

std::string shown(std::string_view value) {
    return value.empty() ? "?" : printable(value);
}

std::string brokenBy(const Operation& operation) {
    if (!operation.isWanted())
        return kInterrupted;
    return operation.isOver() ? "port lost" : "failed";
}

std::string_view valueOf(const SettingsImage& image, int record) {
    return trimmedRight(image[record].value.str());
}

bool isAllKnown(const SettingsImage& unit) {
    for (int record = 0; record < SettingsImage::kParameters; ++record) {
        if (unit[record].value.isBlank())
            return false;
    }
    return true;
}

std::string psnOf(const SettingsImage& unit) {
    return unit.isFilled() ? unit.psnText() : std::string();
}

}  // namespace

TransferLog::TransferLog(const CommandLink& link) : link_(link), isSameLine_(link.untilPortGone()) {}

TransferLog::Reread::~Reread() {
    log_.awaitsReread_ = false;
    log_.tellWaiting();
}

void TransferLog::interrupt() {
    tellWaiting();
    for (Transfer* transfer : std::exchange(underWay_, {})) {
        transfer->log_ = nullptr;
        tell(entryOf(transfer->facts_, kInterrupted));
    }
}

void TransferLog::begin(Transfer& transfer) {
    underWay_.push_back(&transfer);
    if (!isSameLine_()) {
        isSameLine_ = link_.untilPortGone();
        ++line_;
        known_ = {};
    }
    if (transfer.facts_.isRead)
        known_ = {};
    if (portName_)
        transfer.facts_.port = portName_();
    transfer.facts_.line = line_;
    transfer.facts_.before = known_;
}

void TransferLog::end(Transfer& transfer, const std::string& broken) {
    std::erase(underWay_, &transfer);
    const Facts& facts = transfer.facts_;
    const TransferEntry entry = entryOf(facts, broken);
    if (awaitsReread_ && !facts.isRead) {
        waiting_ = {facts, broken, entry};
    } else if (waiting_ && facts.isRead && !entry.file.empty()) {
        waiting_->entry = entryOf(waiting_->facts, waiting_->broken);
        tellWaiting();
    } else {
        tellWaiting();
        tell(entry);
    }
}

void TransferLog::tell(const TransferEntry& entry) const {
    if (tell_)
        tell_(entry);
}

void TransferLog::tellWaiting() {
    if (const auto waiting = std::exchange(waiting_, std::nullopt))
        tell(waiting->entry);
}

TransferEntry TransferLog::entryOf(const Facts& facts, const std::string& broken) const {
    const SettingsImage after = facts.line == line_ ? known_ : SettingsImage();
    TransferEntry entry{facts.port,
                        facts.operation,
                        facts.isDone ? outcomeOf(facts, after) : broken,
                        psnOf(after.isFilled() ? after : facts.before),
                        differencesOf(facts, after),
                        facts.isRead,
                        {}};
    const bool hasWritten =
        std::any_of(facts.written.begin(), facts.written.end(), [](const auto& text) { return text; });
    if ((facts.isDone || hasWritten) && isAllKnown(after))
        entry.file = settingsText(after);
    return entry;
}

std::string TransferLog::outcomeOf(const Facts& facts, const SettingsImage& after) {
    bool isAsWritten = true;
    for (int record = 0; record < SettingsImage::kParameters; ++record) {
        const auto& written = facts.written[static_cast<std::size_t>(record)];
        const std::string_view held = valueOf(after, record);
        if ((written || facts.isRead) && held.empty())
            return "odd reply";
        isAsWritten = isAsWritten && (!written || isSameHex(*written, held));
    }
    return isAsWritten ? "done" : "differs";
}

std::string TransferLog::differencesOf(const Facts& facts, const SettingsImage& after) {
    std::string text;
    for (int record = 0; record < SettingsImage::kParameters; ++record) {
        const auto& written = facts.written[static_cast<std::size_t>(record)];
        const std::string_view before = valueOf(facts.before, record);
        const std::string_view held = valueOf(after, record);
        const bool isAsWritten = !written || isSameHex(*written, held);
        const bool isKnown = !before.empty() && !held.empty();
        if ((!written && !isKnown) || (isAsWritten && isSameHex(before, held)))
            continue;
        text += text.empty() ? "" : "; ";
        text += trimmedRight(after[record].name.str());
        text += ": " + shown(before) + " -> " + shown(held);
        if (!isAsWritten)
            text += " (written " + shown(*written) + ")";
    }
    return text;
}

Transfer::Transfer(const Operation& operation, const SettingsImage& image, Kind kind, std::string name)
    : operation_(operation), log_(image.log()) {
    facts_.operation = std::move(name);
    facts_.isRead = kind == Kind::read;
    if (log_)
        log_->begin(*this);
}

Transfer::~Transfer() {
    if (log_)
        log_->end(*this, brokenBy(operation_));
}

void Transfer::writes(int record, std::string_view data) {
    if (!log_ || operation_.isOver())
        return;  // or nothing is sent
    facts_.written[static_cast<std::size_t>(record)] = trimmedRight(data);
    log_->known_[record].value = "";
}

void Transfer::answered(int record, std::string_view reply) {
    if (!log_)
        return;
    Parameter& known = log_->known_[record];
    known.value = isAnswerTo(known.readLine(), reply) ? dataDigits(reply) : std::string_view();
}

void Transfer::lacks(int record) {
    if (log_)
        log_->known_[record].value = kNotAvailable;
}

}  // namespace quorvex
