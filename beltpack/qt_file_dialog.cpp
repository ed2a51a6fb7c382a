#include "beltpack/qt_file_dialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>

#include "link/latin1.h"

namespace quorvex {

namespace {

/// The descriptions of a filter text "description|pattern|description|pattern": in the toolkit's form a
/// description carries its pattern in brackets, as these do.
QStringList nameFilters(const std::string& filter) {
    const QStringList pieces = toQt(filter).split(QLatin1Char('|'));
    QStringList descriptions;
    for (qsizetype i = 0; i < pieces.size(); i += 2)
        descriptions.append(pieces.at(i));
    return descriptions;
}

}  // namespace

FileDialog::Choice QtFileDialog::chooseForSaving(const Settings& settings) {
    return choose(settings, Purpose::saving);
}

FileDialog::Choice QtFileDialog::chooseForLoading(const Settings& settings) {
    return choose(settings, Purpose::loading);
}

FileDialog::Choice QtFileDialog::choose(const Settings& settings, Purpose purpose) {
    QFileDialog dialog(parent_, toQt(settings.title), folder_);
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilters(nameFilters(settings.filter));
    // To the toolkit "*.*" is a name with a dot in it; here it means every file.
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        if (filter.contains(QLatin1String("(*.*)")))
            dialog.findChild<QFileSystemModel*>()->setNameFilters({QStringLiteral("*")});
    });
    if (purpose == Purpose::saving) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.selectFile(toQt(settings.proposedName));
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {kCancelled, "Cancel was selected", ""};
    folder_ = dialog.directory().absolutePath();
    return {0, "", QDir::toNativeSeparators(dialog.selectedFiles().constFirst()).toStdString()};
}

}  // namespace quorvex
