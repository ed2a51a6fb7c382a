#include "tool/settings_files.h"

#include <QFileInfo>
#include <algorithm>

#include "beltpack/settings_file.h"
#include "link/qt_text.h"
#include "link/runtime_fault.h"
#include "link/whole_file.h"
#include "tool/result.h"

namespace quorvex::tool {

namespace {

std::filesystem::path pathOf(const QString& path) {
    return {path.toStdU16String()};
}

[[noreturn]] void cannotRead(const QString& path) {
    const QFileInfo info(path);
    const QString why = !info.exists()   ? QStringLiteral("there is no such file")
                        : !info.isFile() ? QStringLiteral("it is no file")
                                         : QStringLiteral("it cannot be read, or is far too large");
    throw Failure(Status::file, QStringLiteral("%1: %2.").arg(path, why));
}

}  // namespace

QString textOf(const std::vector<SettingsFileDefect>& defects) {
    QString text;
    for (const SettingsFileDefect& defect : defects)
        text += QStringLiteral("line %1: %2\n").arg(defect.line).arg(fromUtf8(defect.text));
    return text;
}

std::vector<SettingsFileDefect> defectsOf(const QString& path) {
    try {
        return checkSettingsFile(pathOf(path));
    } catch (const RuntimeFault&) {
        cannotRead(path);
    }
}

SettingsImage loadSettings(const QString& path, Ranges ranges) {
    const std::vector<SettingsFileDefect> defects = defectsOf(path);
    const bool isUsable = std::all_of(defects.begin(), defects.end(), [&](const SettingsFileDefect& defect) {
        return defect.isRange && ranges == Ranges::anyValue;
    });
    if (!isUsable)
        throw Failure(Status::file,
                      QStringLiteral("%1 is not as it should be:\n%2").arg(path, textOf(defects)));
    try {
        SettingsImage image;
        FileNumberOne file;
        file.openForInput(pathOf(path));
        readSettings(file, image);
        return image;
    } catch (const RuntimeFault&) {  // it has gone since it was checked
        cannotRead(path);
    }
}

void demandSavable(const QString& path) {
    const QFileInfo info(path);
    const QFileInfo folder(info.absolutePath());
    if (info.exists() && !info.isFile())
        throw Failure(Status::file, QStringLiteral("%1 is no file.").arg(path));
    if (!folder.isDir())
        throw Failure(Status::file, QStringLiteral("%1: there is no folder %2.").arg(path, info.path()));
    if (!(info.exists() ? info.isWritable() : folder.isWritable()))
        throw Failure(Status::file, QStringLiteral("%1 may not be written.").arg(path));
}

void saveSettings(const QString& path, const SettingsImage& image) {
    const QString problem =
        replaceFile(path, QByteArray::fromStdString(settingsText(image)), QStringLiteral("file"));
    if (!problem.isEmpty())
        throw Failure(Status::file, QStringLiteral("%1: %2").arg(path, problem));
}

}  // namespace quorvex::tool
