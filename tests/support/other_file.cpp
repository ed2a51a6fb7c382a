#include "tests/support/other_file.h"

#include <QFile>

namespace quorvex {

OtherFile::OtherFile() {
    QFile file(path());
    QByteArray content = "K4700\r\n";
    for (const QString& value : values())
        content += value.toLatin1().leftJustified(10) + "\r\n";
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no room for a settings file");
}

const QStringList& OtherFile::values() {
    static const QStringList all{"0044355555", "2A", "100BEEF700", "31", "02", "01", "02",
                                 "07",         "08", "09",         "0B", "0C", "0D", "03FE0A0B0C",
                                 "0E",         "02", "0F",         "11", "12", "13", "01"};
    return all;
}

}  // namespace quorvex
