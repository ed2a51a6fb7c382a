#include "tool/values.h"

#include "link/number_text.h"
#include "link/qt_text.h"

namespace quorvex::tool {

namespace {

QString shown(const std::string& value) {
    return value.empty() ? QStringLiteral("nothing") : fromUtf8(printable(value));
}

QJsonValue jsonValue(const std::string& value) {
    return isAvailable(value) ? QJsonValue(fromUtf8(printable(value))) : QJsonValue();
}

}  // namespace

Values valuesOf(const SettingsImage& image) {
    Values values;
    for (int i = 0; i < SettingsImage::kParameters; ++i)
        values[static_cast<std::size_t>(i)] = trimmedRight(image[i].value.str());
    return values;
}

bool isAvailable(const std::string& value) {
    return value != kNotAvailable;
}

QString nameOf(int record) {
    static const SettingsImage table;
    return fromLatin1(trimmedRight(table[record].name.str()));
}

bool isIdentity(int record) {
    return record == SettingsImage::kPsn || record == SettingsImage::kSystemId;
}

QString identityOf(int record, const std::string& value) {
    return nameOf(record) + QLatin1Char(' ') + fromUtf8(printable(value)).toUpper();
}

std::vector<Difference> differences(const Values& one, const Values& other) {
    std::vector<Difference> found;
    for (std::size_t i = 0; i < one.size(); ++i) {
        if (!isSameHex(one[i], other[i]))
            found.push_back({static_cast<int>(i), one[i], other[i]});
    }
    return found;
}

QString textOf(const std::vector<Difference>& differences, const QString& between) {
    constexpr int kNameWidth = 20;
    constexpr int kValueWidth = 10;
    QString text;
    for (const Difference& each : differences)
        text += QStringLiteral("%1  %2 %3 %4\n")
                    .arg(nameOf(each.record), -kNameWidth)
                    .arg(shown(each.one), kValueWidth)
                    .arg(between, shown(each.other));
    return text;
}

QJsonArray jsonOf(const std::vector<Difference>& differences, const char* one, const char* other) {
    QJsonArray all;
    for (const Difference& each : differences)
        all.append(QJsonObject{{QStringLiteral("name"), nameOf(each.record)},
                               {QString::fromLatin1(one), jsonValue(each.one)},
                               {QString::fromLatin1(other), jsonValue(each.other)}});
    return all;
}

QJsonObject jsonOf(const Values& values) {
    QJsonObject object;
    for (std::size_t i = 0; i < values.size(); ++i)
        object.insert(nameOf(static_cast<int>(i)), jsonValue(values[i]));
    return object;
}

}  // namespace quorvex::tool
