#include "tool/written.h"

#include <algorithm>

#include "link/number_text.h"
#include "link/reply.h"
#include "tool/plain_window.h"
#include "tool/units.h"
#include "tool/values.h"

namespace quorvex::tool {

namespace {

/// What became of the parameters as they were written and read back one by one.
struct ReadBacks {
    std::vector<int> sent;
    QStringList verified;
    std::vector<Difference> otherwise;
    bool isWhole = true;  ///< every one was written and answered
};

ReadBacks readBacksOf(const PlainWindow& window, const std::vector<int>& written, const Values& wanted) {
    ReadBacks found;
    for (const int record : written) {
        const Parameter& parameter = window.image[record];
        const std::string& value = wanted[static_cast<std::size_t>(record)];
        const std::string reply = window.heard.replyTo(parameter.readLine());
        if (window.heard.hasSent(parameter.writeLine()))
            found.sent.push_back(record);
        if (!isAnswerTo(parameter.readLine(), reply))
            found.isWhole = false;
        else if (isSameHex(dataDigits(reply), value))
            found.verified << nameOf(record);
        else
            found.otherwise.push_back({record, value, std::string(dataDigits(reply))});
    }
    return found;
}

/// Those of the later read come after those of the write; one that is in both is named once.
std::vector<Difference> joined(std::vector<Difference> first, const std::vector<Difference>& later) {
    for (const Difference& each : later) {
        const auto same = std::find_if(first.begin(), first.end(), [&](const Difference& other) {
            return other.record == each.record && isSameHex(other.other, each.other);
        });
        if (same == first.end())
            first.push_back(each);
    }
    return first;
}

/// What is otherwise in the unit than it was before, or than it was written.
struct Left {
    std::vector<Difference> changes, otherwise;
    std::vector<Difference> unasked;  ///< changed without being written
};

Left leftOf(const Values& found, const Values& wanted, const Values& left, const ReadBacks& readBacks) {
    const auto isSent = [&](const Difference& each) {
        return std::find(readBacks.sent.begin(), readBacks.sent.end(), each.record) != readBacks.sent.end();
    };
    Left result{differences(found, left), differences(wanted, left), differences(found, left)};
    std::erase_if(result.changes, std::not_fn(isSent));
    std::erase_if(result.otherwise, std::not_fn(isSent));
    std::erase_if(result.unasked, isSent);
    result.otherwise = joined(readBacks.otherwise, result.otherwise);
    return result;
}

void tellChanges(Result& result, const Left& left) {
    result.text += QStringLiteral("PSN %1: %2 changed.\n")
                       .arg(result.object.value(QStringLiteral("psn")).toInt())
                       .arg(countOf(left.changes.size(), "parameter"));
    result.text += textOf(left.changes, QStringLiteral("->"));
    if (!left.otherwise.empty())
        result.text += QStringLiteral("Not read back as written:\n") +
                       textOf(left.otherwise, QStringLiteral("written, read back"));
    if (!left.unasked.empty())
        result.text += QStringLiteral("Changed without being written; is it still the same unit?\n") +
                       textOf(left.unasked, QStringLiteral("->"));
    result.object.insert(QStringLiteral("changes"), jsonOf(left.changes, "before", "after"));
    result.object.insert(QStringLiteral("otherwise"), jsonOf(left.otherwise, "written", "read"));
    result.object.insert(QStringLiteral("unasked"), jsonOf(left.unasked, "before", "after"));
}

/// The unit has not told what it holds now.
void tellUnknown(Result& result, const ReadBacks& readBacks, const QString& problem) {
    result.status = Status::noAnswer;
    result.text = QStringLiteral("Written and read back: %1.\nWhat the unit holds now is not known.\n")
                      .arg(readBacks.verified.isEmpty() ? QStringLiteral("nothing")
                                                        : readBacks.verified.join(QStringLiteral(", ")));
    result.object.insert(QStringLiteral("otherwise"), jsonOf(readBacks.otherwise, "written", "read"));
    if (result.problem.isEmpty())
        result.problem = problem;
}

}  // namespace

Result writeAndCompare(PlainWindow& window, const std::vector<int>& written,
                       const std::function<void()>& operation) {
    const SettingsImage before = window.found();
    const Values found = valuesOf(before);
    window.console.clear();
    window.heard.clear();
    const TransferLog::Reread reread(window.transfers);
    operation();
    Values wanted = found;
    for (const int record : written)
        wanted[static_cast<std::size_t>(record)] = valuesOf(window.image)[static_cast<std::size_t>(record)];
    const ReadBacks readBacks = readBacksOf(window, written, wanted);
    Result result;
    result.object.insert(QStringLiteral("psn"), psnOf(before));
    result.object.insert(QStringLiteral("written"), QJsonArray::fromStringList(readBacks.verified));
    if (!readBacks.isWhole) {
        const QString wrong = window.heard.wrongReply();
        result.problem =
            wrong.isEmpty() ? window.console.boxes() + QLatin1Char(' ') + window.heard.howFar() : wrong;
    }

    const QString problemAfter = window.isPortOpen() ? window.readBeltpack() : QString();
    if (!window.isPortOpen() || !problemAfter.isEmpty()) {
        tellUnknown(result, readBacks, problemAfter);
        return result;
    }
    const Left left = leftOf(found, wanted, valuesOf(window.found()), readBacks);
    tellChanges(result, left);
    if (!readBacks.isWhole)
        result.status = Status::noAnswer;
    else if (!left.otherwise.empty() || !left.unasked.empty())
        result.status = Status::differs;
    return result;
}

}  // namespace quorvex::tool
