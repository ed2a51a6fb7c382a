#include "tests/faults/pair.h"

#include <QRegularExpression>
#include <algorithm>
#include <exception>
#include <utility>

#include "link/number_text.h"
#include "tests/faults/trial.h"
#include "tests/support/other_file.h"

namespace quorvex {

namespace {

using Values = Workshop::Values;
using Kind = Second::Kind;

/// Where the reply is that the first one waits for when the second begins.
enum class Coming {
    arrived,  ///< it is there, and dropped by the first line of a second operation
    inside,   ///< it comes behind that line, so that the second operation takes it for its own
    behind,   ///< it comes when an event is over
};

const QString kRead = "status green: Settings read from Beltpack successfully.";

/// Only a silence ends it without a version, as intended; a unit in calibration mode is never silent.
const std::string kEndless = "DECT version of a Beltpack";

const char* nameOf(Coming reply) {
    return reply == Coming::arrived  ? "reply there"
           : reply == Coming::inside ? "reply inside"
                                     : "reply behind";
}

QString lastStatus(const QStringList& entries) {
    const QStringList statuses = entries.filter(QRegularExpression("^status "));
    return statuses.isEmpty() ? QString() : statuses.last();
}

/// What the two do when they do not meet.
struct Apart {
    Values before, typed;  ///< before anything; when all is typed
    Values firstAlone;     ///< after the first, nothing typed for the second
    Values secondAlone;
    std::vector<Values> wholes;  ///< all in which the first has done its work

    Apart(const TestedOperation& first, const Second& second) {
        const auto after = [&](const std::vector<std::function<void(Workshop&)>>& deeds) {
            Workshop shop(first.unit);
            begin(shop, first, {});
            if (second.isFilledEarly)
                second.fill(shop);
            for (const auto& deed : deeds)
                deed(shop);
            return shop.values();
        };
        before = after({});
        typed = after({second.fill});
        firstAlone = after({first.run});
        secondAlone = after({second.fill, second.run});
        wholes = {firstAlone, after({first.run, second.fill}), after({second.fill, first.run}),
                  after({first.run, second.fill, second.run})};
        if (second.kind == Kind::operation || second.kind == Kind::file)
            wholes.push_back(after({second.fill, second.run, first.run}));
    }
};

/// One run of the first with the second in one of its waits.
class Meeting {
public:
    Meeting(const CleanRun& first, const Second& second, const Apart& apart, int wait, Coming reply)
        : shop(first.operation().unit),
          first_(first),
          second_(second),
          apart_(apart),
          wait_(wait),
          reply_(reply),
          typeBefore_(shop.rfModule.type()) {}

    /// False where there is no such cell: the second cannot begin there, or the reply is not due.
    bool run() {
        begin(shop, first_.operation(), {});
        if (second_.isFilledEarly)
            second_.fill(shop);
        shop.loop.onTurn([this] { return ++turns_ == wait_ && meet(); });
        const QString problem = quorvex::run(shop, first_.operation()).problem();
        shop.loop.onTurn({});
        if (!met_)
            return false;
        if (!problem.isEmpty())
            complaints << problem;
        judge();
        return true;
    }
    int turns() const { return turns_; }

    Workshop shop;
    QStringList complaints;

private:
    bool meet() {
        wasStreaming_ = shop.unit().inCalibrationMode();
        if ((second_.needsWindow() && shop.isBlocked()) || (wasStreaming_ && second_.name == kEndless))
            return false;
        const bool isComing = reply_ != Coming::arrived;
        const std::string late = isComing ? shop.port.holdBack() : std::string();
        if (isComing && late.empty())
            return false;
        met_ = true;
        if (!second_.isFilledEarly)
            second_.fill(shop);
        if (reply_ == Coming::inside)
            shop.port.sayWithNextLine(late);
        const qsizetype noted = shop.journal.entries().size();
        try {
            second_.run(shop);
        } catch (const std::exception& fault) {
            complaints << QString("thrown by the second: ") + fault.what();
        }
        shop.port.sayWhatIsLate();
        entriesBefore_ = noted;
        entriesWithin_ = shop.journal.entries().size() - noted;
        linesThen_ = shop.port.lines().size();
        if (second_.kind == Kind::operation)
            judgeSecond();
        if (reply_ == Coming::behind && shop.port.isAt(shop.unit()))
            shop.port.say(late);
        return true;
    }

    void judgeSecond() {
        const QString told = lastStatus(shop.journal.entries().mid(entriesBefore_, entriesWithin_));
        hasSecondDone_ = !second_.success.empty() && told == QString::fromStdString(second_.success);
        if (!hasSecondDone_ || reply_ == Coming::inside || (told == kRead && isImageTheUnits()))
            return;
        std::vector<Values> wholes = apart_.wholes;
        wholes.push_back(apart_.secondAlone);
        demandOneOf(
            wholes, [this](std::size_t i) { return apart_.typed[i] != apart_.secondAlone[i]; },
            "the second tells a mixture");
    }

    void judge() {
        complaints += leftBehind(shop);
        if (shop.port.lines().size() != linesThen_ &&
            (second_.kind == Kind::port || second_.kind == Kind::end))
            complaints << "sent afterwards: " + QString::fromStdString(shop.port.lines().back());
        if (second_.kind == Kind::file)
            judgeFile();
        if (reply_ == Coming::inside || second_.kind == Kind::end)
            return;
        const bool isMisled = second_.forAntennas && first_.operation().unit < UnitKind::antennaRm5;
        if (isMisled)
            return;
        judgeFirst();
        // Another unit's operation may change the module; a reader takes the records that stream for replies.
        if (shop.rfModule.type() == typeBefore_ && !wasStreaming_)
            judgeStrays();
    }

    /// Whether the image is what the unit holds, and the fields what the image does.
    bool isImageTheUnits() const {
        for (int i = 0; i < SettingsImage::kParameters; ++i) {
            const std::string value(trimmedRight(shop.image[i].value.str()));
            const bool isBeyond = i == SettingsImage::kFccEnabled && value == "00";  // then a read sets that
            if (value != shop.unit().value(i + 1) && !isBeyond)
                return false;
        }
        return shop.beltpackId.text() == shop.image.psnText() &&
               shop.pli.text() == shop.image[SettingsImage::kSystemIdLength].value.str() &&
               shop.rfCarriers.text() == shop.image[SettingsImage::kRfCarrierMask].value.str();
    }

    void judgeFile() {
        const QStringList& values = OtherFile::values();
        for (int i = 0; i < SettingsImage::kParameters; ++i) {
            const QString value = fromLatin1(trimmedRight(shop.image[i].value.str()));
            if (value != values[i])
                complaints << QString("record %1 is not the file's: %2").arg(i).arg(value);
        }
        if (shop.beltpackId.text() != shop.image.psnText() ||
            fromLatin1(shop.rfCarriers.text()) != values[SettingsImage::kRfCarrierMask] ||
            fromLatin1(shop.parkB.text()) != values[SettingsImage::kSystemId])
            complaints << "the fields are not the file's";
    }

    void judgeFirst() {
        QStringList outside = shop.journal.entries();
        outside.remove(entriesBefore_, entriesWithin_);
        const TestedOperation& operation = first_.operation();
        const QString success(operation.success);
        if (success.isEmpty() || lastStatus(outside) != success)
            return;
        const bool isCalibration = operation.kind == TestedOperation::Kind::calibration;
        demandOneOf(
            apart_.wholes,
            [&](std::size_t i) {
                const std::string& name = apart_.before[i].first;
                // A calibration's fields keep what they had where a reply was lost, and so does a read's
                // threshold.
                if ((isCalibration && !name.starts_with("the unit's")) || name == "threshold")
                    return false;
                if (second_.name == "Update the PLI" && isTouchedByPli(name))
                    return false;
                return apart_.before[i] != apart_.firstAlone[i] ||
                       (hasSecondDone_ && apart_.typed[i] != apart_.secondAlone[i]);
            },
            "the first tells a mixture");
    }

    /// The PLI lands in the carrier mask's record, as intended, so a read shows the one that it has read.
    static bool isTouchedByPli(const std::string& name) {
        return name == "the unit's 02" || name == "PLI" || name == "record 13" || name == "RF carriers";
    }

    /// Values that nothing of the two accounts for.
    void judgeStrays() {
        const Values now = shop.values();
        for (std::size_t i = 0; i < now.size(); ++i) {
            const auto accounts = [&](const Values& values) { return values[i] == now[i]; };
            const bool isIntended = second_.name == "Update the PLI" && isTouchedByPli(now[i].first);
            if (now[i].first != "picture" && !isIntended && !isMissing(now[i].second) &&
                !accounts(apart_.before) && !accounts(apart_.typed) && !accounts(apart_.secondAlone) &&
                std::none_of(apart_.wholes.begin(), apart_.wholes.end(), accounts))
                complaints << "stray " + shown(now[i]);
        }
    }

    void demandOneOf(const std::vector<Values>& wholes, const std::function<bool(std::size_t)>& isLookedAt,
                     const char* else_) {
        const Values now = shop.values();
        QStringList fewest;
        for (const Values& whole : wholes) {
            QStringList others;
            for (std::size_t i = 0; i < now.size(); ++i) {
                if (isLookedAt(i) && now[i] != whole[i] && !isMissing(now[i].second))
                    others << shown(now[i]);
            }
            if (others.isEmpty())
                return;
            if (fewest.isEmpty() || others.size() < fewest.size())
                fewest = others;
        }
        complaints << QString(else_) + ": " + fewest.join(", ");
    }

    static QString shown(const std::pair<std::string, std::string>& value) {
        return QString::fromLatin1(value.first.c_str()) + " = " + QString::fromLatin1(value.second.c_str());
    }

    const CleanRun& first_;
    const Second& second_;
    const Apart& apart_;
    int wait_;
    Coming reply_;
    std::int16_t typeBefore_;
    int turns_ = 0;
    bool met_ = false, hasSecondDone_ = false, wasStreaming_ = false;
    qsizetype entriesBefore_ = 0, entriesWithin_ = 0;
    std::size_t linesThen_ = 0;
};

}  // namespace

PairResult runPair(const CleanRun& first, const CleanRun& read, const Second& second) {
    PairResult result;
    const Apart apart(first.operation(), second);
    const std::vector<Coming> replies = {Coming::arrived,
                                         second.kind == Kind::operation ? Coming::inside : Coming::behind};
    Meeting never(first, second, apart, 0, Coming::arrived);
    never.run();
    for (int wait = 1; wait <= never.turns(); ++wait) {
        for (const Coming reply : replies) {
            Meeting meeting(first, second, apart, wait, reply);
            if (!meeting.run())
                continue;
            ++result.cells;
            QStringList complaints = meeting.complaints + afterwards(meeting.shop, first);
            if (&read != &first)
                complaints += afterwards(meeting.shop, read);
            for (const QString& complaint : complaints)
                result.complaints << QString("%1, in wait %2, %3: %4")
                                         .arg(second.name.c_str())
                                         .arg(wait)
                                         .arg(nameOf(reply), complaint);
        }
    }
    return result;
}

}  // namespace quorvex
