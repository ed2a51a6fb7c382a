#include "beltpack/qt_file_dialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QPushButton>

#include "link/qt_text.h"

namespace quorvex {

namespace {

/// The descriptions of a filter text "description|pattern|description|pattern": in the toolkit's form a
/// description carries its pattern in brackets, as these do.
QStringList nameFilters(const std::string& filter) {
    const QStringList pieces = fromLatin1(filter).split(QLatin1Char('|'));
    QStringList descriptions;
    for (qsizetype i = 0; i < pieces.size(); i += 2)
        descriptions.append(pieces.at(i));
    return descriptions;
}

// The toolkit's dialog has no functions of its own for three things, so the parts behind them are looked up:
// the field of the name, the button "Open", and what the filter "*.*" means.

/// The toolkit lets only names be opened that pass the filter; here any name may be tried, and one that does
/// not exist is told of.
void letAnyNameBeOpened(QFileDialog& dialog, QLineEdit* name) {
    auto* open = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
    const auto enable = [open, name] { open->setEnabled(!name->text().isEmpty()); };
    QObject::connect(name, &QLineEdit::textChanged, open, enable);
    QObject::connect(&dialog, &QFileDialog::filterSelected, open, enable);
}

}  // namespace

FileDialog::Choice QtFileDialog::choose(const Settings& settings, Purpose purpose) {
    QFileDialog dialog(parent_, fromLatin1(settings.title), folder_);
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilters(nameFilters(settings.filter));
    // To the toolkit "*.*" is a name with a dot in it; here it means every file. "(*)" in the description
    // would do, but it is shown.
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        if (filter.contains(QLatin1String("(*.*)")))
            dialog.findChild<QFileSystemModel*>()->setNameFilters({QStringLiteral("*")});
    });
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (purpose == Purpose::saving) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        name->setText(fromLatin1(settings.proposedName));  // as it stands, even where it could name a folder
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
        letAnyNameBeOpened(dialog, name);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {kCancelled, "Cancel was selected", ""};
    const QString file = dialog.selectedFiles().constFirst();
    folder_ = QFileInfo(file).absolutePath();  // not the one that is shown, where the name told of another
    return {0, "", QDir::toNativeSeparators(file).toStdString()};
}

}  // namespace quorvex
