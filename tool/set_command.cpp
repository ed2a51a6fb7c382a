#include "tool/set_command.h"

#include <algorithm>
#include <utility>

#include "link/number_text.h"
#include "link/qt_text.h"
#include "link/reply.h"
#include "tool/plain_window.h"
#include "tool/units.h"
#include "tool/values.h"

namespace quorvex::tool {

namespace {

[[noreturn]] void refuse(const QString& value, const QString& what, const QString& right) {
    throw Failure(Status::wrongUse, QStringLiteral("\"%1\" is no %2: it takes %3.").arg(value, what, right));
}

/// One thing that can be set by itself.
struct Setting {
    const char* word;
    int record;
    /// What the unit must hold then. Throws Failure for a value that is none.
    std::string (*digits)(const QString& value, const Setting& setting);
    /// Runs the window's update with the value in its field.
    void (*update)(PlainWindow& window, const QString& value);
};

std::string psnDigits(const QString& value, const Setting& /*setting*/) {
    const bool isDecimal = !value.isEmpty() && std::all_of(value.begin(), value.end(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
    bool fits = false;
    const int psn = value.toInt(&fits);
    if (!isDecimal || !fits || psn > PsnUpdate::kHighest)
        refuse(value, QStringLiteral("PSN"),
               QStringLiteral("a decimal number, 0 to %1").arg(PsnUpdate::kHighest));
    return PsnUpdate::digitsOf(psn);
}

/// As the unit spells them; the window's fields make letters large, too.
std::string hexDigits(const QString& value, const Setting& setting) {
    static const SettingsImage table;
    std::string digits = toLatin1(value.toUpper());
    const int count = table[setting.record].digits();
    if (static_cast<int>(digits.size()) != count || !std::all_of(digits.begin(), digits.end(), isHexDigit))
        refuse(value, nameOf(setting.record), QStringLiteral("%1 hexadecimal digits").arg(count));
    return digits;
}

const std::vector<Setting>& settings() {
    static const std::vector<Setting> all{
        {"psn", SettingsImage::kPsn, psnDigits,
         [](PlainWindow& window, const QString& value) {
             window.psn.setText(toLatin1(value));
             window.psnUpdate.CommandSetBpId_Click();
         }},
        {"system-id", SettingsImage::kSystemId, hexDigits,
         [](PlainWindow& window, const QString& value) {
             window.parkB.setText(toLatin1(value.toUpper()));
             window.systemId.TextParkB_KeyUp();
             window.systemId.CommandSetSysID_Click();
         }},
        {"pli", SettingsImage::kSystemIdLength, hexDigits,
         [](PlainWindow& window, const QString& value) {
             window.pli.setText(toLatin1(value.toUpper()));
             window.pliUpdate.CmdUpdatePli_Click();
         }},
        {"rf-carriers", SettingsImage::kRfCarrierMask, hexDigits,
         [](PlainWindow& window, const QString& value) {
             window.rfCarriers.setText(toLatin1(value.toUpper()));
             window.carriersUpdate.CmdSetRfCarrs_Click();
         }},
    };
    return all;
}

const Setting& settingNamed(const QString& word) {
    QStringList words;
    for (const Setting& setting : settings()) {
        words << QString::fromLatin1(setting.word);
        if (words.last() == word)
            return setting;
    }
    throw Failure(
        Status::wrongUse,
        QStringLiteral("\"%1\" cannot be set; what can is %2.").arg(word, words.join(QStringLiteral(", "))));
}

/// One value for several ports.
QStringList spread(const QString& value, const Setting& setting, std::size_t ports) {
    setting.digits(value, setting);
    QStringList values;
    for (int i = 0; i < static_cast<int>(ports); ++i)
        values << (setting.record == SettingsImage::kPsn ? QString::number(value.toInt() + i) : value);
    return values;
}

/// Judged by what came back alone: the window's texts go by a part of it.
Result set(PlainWindow& window, const Setting& setting, const QString& value, const std::string& digits) {
    setting.update(window, value);
    const std::string line = window.image[setting.record].readLine();
    const std::string reply = window.heard.replyTo(line);
    const bool isAnswer = isAnswerTo(line, reply);
    const std::string held(isAnswer ? dataDigits(reply) : std::string_view());
    const QString shown = fromLatin1(held);
    Result result;
    result.object = {{QStringLiteral("name"), nameOf(setting.record)},
                     {QStringLiteral("value"), fromLatin1(digits)},
                     {QStringLiteral("read"), isAnswer ? QJsonValue(shown) : QJsonValue()}};
    if (!isAnswer) {
        const QString wrong = window.heard.wrongReply();
        result.status = Status::noAnswer;
        result.problem = QStringLiteral("%1 was sent, but the Beltpack did not tell what it holds now. %2")
                             .arg(nameOf(setting.record), wrong.isEmpty() ? window.heard.howFar() : wrong);
    } else if (!isSameHex(held, digits)) {
        result.status = Status::differs;
        result.problem = QStringLiteral("%1: %2 was sent, %3 read back.")
                             .arg(nameOf(setting.record), fromLatin1(digits), shown);
    } else {
        result.text = QStringLiteral("%1 is %2 now.\n").arg(nameOf(setting.record), shown);
    }
    return result;
}

}  // namespace

UnitJob prepareSet(const Request& request) {
    const Setting& setting = settingNamed(request.arguments.at(0));
    const QString value = request.arguments.at(1);
    const std::string digits = setting.digits(value, setting);
    return [&setting, value, digits](PlainWindow& window) { return set(window, setting, value, digits); };
}

QStringList identitiesOfSet(const Request& request) {
    const Setting& setting = settingNamed(request.arguments.at(0));
    if (setting.record != SettingsImage::kPsn)
        return {};  // the units of one system have its System Id in common
    return {identityOf(setting.record, setting.digits(request.arguments.at(1), setting))};
}

std::vector<QStringList> dealSet(const QStringList& arguments, std::size_t ports) {
    const Setting& setting = settingNamed(arguments.at(0));
    QStringList values = arguments.at(1).split(QLatin1Char(','));
    if (values.size() == 1)
        values = spread(values.first(), setting, ports);
    if (static_cast<std::size_t>(values.size()) != ports)
        throw Failure(Status::wrongUse, QStringLiteral("There are %1 for %2: each port takes one.")
                                            .arg(countOf(static_cast<std::size_t>(values.size()), "value"),
                                                 countOf(ports, "port")));
    std::vector<QStringList> dealt;
    for (const QString& value : std::as_const(values))
        dealt.push_back({arguments.at(0), value});
    return dealt;
}

std::optional<int> psnGiven(const Request& request) {
    if (request.command->prepare != prepareSet ||
        settingNamed(request.arguments.at(0)).record != SettingsImage::kPsn)
        return {};
    return request.arguments.at(1).toInt();
}

}  // namespace quorvex::tool
