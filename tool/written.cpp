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
    QStringList verified;
    std::vector<Difference> otherwise;
    bool isWhole = true;  ///< every one was written and answered
};

ReadBacks readBacksOf(const PlainWindow& window, const std::vector<int>& written, const Values& wanted) {
    ReadBacks found;
    for (const int record : written) {
        const Parameter& parameter = window.image[record];
        const std::string reply = window.heard.replyTo(parameter.readLine());
        const std::string& value = wanted[static_cast<std::size_t>(record)];
        const std::string data(dataDigits(reply));
        if (reply.empty())
            found.isWhole = false;
        else if (isAnswerTo(parameter.readLine(), reply) && isSameHex(data, value))
            found.verified << nameOf(record);
        else
            found.otherwise.push_back({record, value, data});
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

void tellChanges(Result& result, const std::vector<Difference>& changes,
                 const std::vector<Difference>& otherwise) {
    result.text += QStringLiteral("PSN %1: %2 changed.\n")
                       .arg(result.object.value(QStringLiteral("psn")).toInt())
                       .arg(countOf(changes.size(), "parameter"));
    result.text += textOf(changes, QStringLiteral("->"));
    if (!otherwise.empty())
        result.text += QStringLiteral("Not read back as written:\n") +
                       textOf(otherwise, QStringLiteral("written, read back"));
    result.object.insert(QStringLiteral("changes"), jsonOf(changes, "before", "after"));
    result.object.insert(QStringLiteral("otherwise"), jsonOf(otherwise, "written", "read"));
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
    if (!readBacks.isWhole)
        result.problem = window.console.boxes() + QLatin1Char(' ') + window.heard.howFar();

    const QString problemAfter = window.isPortOpen() ? window.readBeltpack() : QString();
    if (!window.isPortOpen() || !problemAfter.isEmpty()) {
        result.status = Status::noAnswer;
        result.text = QStringLiteral("Written and read back: %1.\nWhat the unit holds now is not known.\n")
                          .arg(readBacks.verified.isEmpty() ? QStringLiteral("nothing")
                                                            : readBacks.verified.join(QStringLiteral(", ")));
        result.object.insert(QStringLiteral("otherwise"), jsonOf(readBacks.otherwise, "written", "read"));
        if (result.problem.isEmpty())
            result.problem = problemAfter;
        return result;
    }
    const Values left = valuesOf(window.found());
    const auto otherwise = joined(readBacks.otherwise, differences(wanted, left));
    tellChanges(result, differences(found, left), otherwise);
    if (!readBacks.isWhole)
        result.status = Status::noAnswer;
    else if (!otherwise.empty())
        result.status = Status::differs;
    return result;
}

}  // namespace quorvex::tool
