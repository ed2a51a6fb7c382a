#include "link/whole_file.h"

#include <QFileInfo>
#include <QSaveFile>

namespace quorvex {

namespace {

/// The toolkit has no words for a file that ends too early.
QString problemOf(const QFileDevice& file, bool wasOpened, const QString& what) {
    const bool endsTooEarly = file.error() == QFileDevice::NoError || file.error() == QFileDevice::WriteError;
    return wasOpened && endsTooEarly
               ? QStringLiteral("The disk did not take the whole %1; it may be full.").arg(what)
               : file.errorString();
}

bool takesAll(QFileDevice& file, const QByteArray& bytes) {
    const qint64 before = file.size();
    return file.write(bytes) == bytes.size() && file.flush() && file.size() == before + bytes.size();
}

}  // namespace

QString replaceFile(const QString& name, const QByteArray& bytes, const QString& what) {
    QSaveFile file(name);
    file.setDirectWriteFallback(true);  // a folder may forbid new files and yet hold one that may be written
    // Only a file that took every byte replaces the one of its name.
    const bool isOpened = file.open(QIODevice::WriteOnly);
    if (isOpened && takesAll(file, bytes) && file.commit())
        return {};
    QString problem = problemOf(file, isOpened, what);
    file.cancelWriting();
    return problem;
}

QString appendLine(const QString& name, const QByteArray& header, const QByteArray& line,
                   const QString& what) {
    if (QFileInfo::exists(name) && !QFileInfo(name).isFile())
        return QStringLiteral("It is no ordinary file.");  // a pipe would wait for a reader
    QFile file(name);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
        return file.errorString();
    const qint64 before = file.size();
    char last = '\n';
    if (before > 0 && file.seek(before - 1))
        file.getChar(&last);
    const QByteArray end(last == '\n' ? "" : "\n");  // someone else has left half a line
    if (takesAll(file, (before == 0 ? header : end) + line))
        return {};
    QString problem = problemOf(file, true, what);
    file.resize(before);
    return problem;
}

}  // namespace quorvex
