#include "link/whole_file.h"

#include <QSaveFile>

namespace quorvex {

QString replaceFile(const QString& name, const QByteArray& bytes, const QString& what) {
    QSaveFile file(name);
    file.setDirectWriteFallback(true);  // a folder may forbid new files and yet hold one that may be written
    // Only a file that took every byte replaces the one of its name.
    const bool opened = file.open(QIODevice::WriteOnly);
    if (opened && file.write(bytes) == bytes.size() && file.flush() && file.size() == bytes.size() &&
        file.commit())
        return {};
    // The toolkit has no words for a file that ends too early.
    const bool endsTooEarly = file.error() == QFileDevice::NoError || file.error() == QFileDevice::WriteError;
    QString problem = opened && endsTooEarly
                          ? QStringLiteral("The disk did not take the whole %1; it may be full.").arg(what)
                          : file.errorString();
    file.cancelWriting();
    return problem;
}

}  // namespace quorvex
