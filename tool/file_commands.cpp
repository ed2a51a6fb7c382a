#include "tool/file_commands.h"

#include "beltpack/settings_summary.h"
#include "link/qt_text.h"
#include "tool/settings_files.h"
#include "tool/units.h"
#include "tool/values.h"

namespace quorvex::tool {

Result showFile(const Request& request) {
    const QString& path = request.arguments.at(0);
    const SettingsImage image = loadSettings(path, Ranges::anyValue);
    const bool hasPsn = isAvailable(valuesOf(image)[SettingsImage::kPsn]);
    Result result;
    result.text =
        QStringLiteral("PSN %1\n\n").arg(hasPsn ? QString::number(psnOf(image)) : QStringLiteral("N/A")) +
        fromLatin1(summaryText(image)).remove(QLatin1Char('\r'));
    result.object = {{QStringLiteral("file"), path},
                     {QStringLiteral("psn"), hasPsn ? QJsonValue(psnOf(image)) : QJsonValue()},
                     {QStringLiteral("parameters"), jsonOf(valuesOf(image))}};
    return result;
}

Result checkFile(const Request& request) {
    const QString& path = request.arguments.at(0);
    const std::vector<SettingsFileDefect> defects = defectsOf(path);
    Result result;
    result.status = defects.empty() ? Status::done : Status::file;
    result.text = defects.empty() ? QStringLiteral("%1 is as it should be.\n").arg(path) : textOf(defects);
    QJsonArray list;
    for (const SettingsFileDefect& defect : defects)
        list.append(QJsonObject{{QStringLiteral("line"), defect.line},
                                {QStringLiteral("defect"), fromUtf8(defect.text)}});
    result.object = {{QStringLiteral("file"), path}, {QStringLiteral("defects"), list}};
    return result;
}

Result diffFiles(const Request& request) {
    const QString& one = request.arguments.at(0);
    const QString& other = request.arguments.at(1);
    const auto found = differences(valuesOf(loadSettings(one, Ranges::anyValue)),
                                   valuesOf(loadSettings(other, Ranges::anyValue)));
    Result result;
    result.status = found.empty() ? Status::done : Status::differs;
    result.text = textOf(found, QStringLiteral("|"));
    result.object = {{QStringLiteral("files"), QJsonArray{one, other}},
                     {QStringLiteral("differences"), jsonOf(found, "first", "second")}};
    return result;
}

}  // namespace quorvex::tool
