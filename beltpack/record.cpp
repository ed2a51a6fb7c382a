#include "beltpack/record.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStringList>
#include <QThread>
#include <chrono>
#include <mutex>
#include <utility>

#include "link/qt_text.h"
#include "link/whole_file.h"

namespace quorvex {

namespace {

constexpr std::chrono::seconds kMostWait{3};
constexpr std::chrono::seconds kMostLocked{10};
constexpr unsigned long kTryAgainMs = 5;
const QString kJournal = QStringLiteral("journal.csv");
const QByteArray kHeader = "time,port,psn,operation,outcome,differences\n";

QString quoted(QString field) {
    field.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    if (!field.contains(QLatin1Char(',')) && !field.contains(QLatin1Char('"')))
        return field;
    return QLatin1Char('"') + field.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QByteArray journalLine(const QString& time, const TransferEntry& entry) {
    QStringList fields{time};
    for (const std::string& field :
         {entry.port, entry.psn, entry.operation, entry.outcome, entry.differences})
        fields << fromUtf8(field);
    for (QString& field : fields)
        field = quoted(field);
    return fields.join(QLatin1Char(',')).toUtf8() + '\n';
}

QString freeName(const QDir& folder, const QString& time, bool isRead) {
    const QString kind = isRead ? QStringLiteral("as-found") : QStringLiteral("as-left");
    QString name = folder.filePath(QStringLiteral("%1-%2.bpc").arg(time, kind));
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = folder.filePath(QStringLiteral("%1_%2-%3.bpc").arg(time).arg(number).arg(kind));
    return name;
}

/// For programs that finish at the same moment; the lock's own waiting has pauses of seconds.
bool locks(QLockFile& lock) {
    const QDeadlineTimer most(kMostLocked);
    while (!lock.tryLock(0)) {
        if (lock.error() != QLockFile::LockFailedError || most.hasExpired())
            return false;
        QThread::msleep(kTryAgainMs);
    }
    return true;
}

QString problemOf(const QLockFile& lock) {
    return lock.error() == QLockFile::LockFailedError
               ? QStringLiteral("Another program keeps it locked.")
               : QStringLiteral("It takes no lock; the disk may be full.");
}

}  // namespace

/// The folder, as the thread that writes it sees it.
class Record::Place {
public:
    Place(const QString& folder, std::function<void(const QString&)> tell)
        : folder_(folder), tell_(std::move(tell)) {}

    void prepare() { makeFolder(folder_.path()); }
    void keep(const QString& time, const TransferEntry& entry) {
        QLockFile lock(folder_.filePath(QStringLiteral("record.lock")));
        if (!locks(lock)) {
            tellOnce(folder_.path() + QStringLiteral(": ") + problemOf(lock));
            return;
        }
        if (!entry.file.empty())
            keepFile(time, entry);
        const QString problem =
            appendLine(folder_.filePath(kJournal), kHeader, journalLine(time, entry), kJournal);
        if (!problem.isEmpty())
            tellOnce(folder_.filePath(kJournal) + QStringLiteral(": ") + problem);
    }
    void tellOnce(const QString& problem) {
        const std::lock_guard lock(mutex_);
        if (!std::exchange(hasTold_, true))
            tell_(QStringLiteral("The record is not kept. ") + problem);
    }
    void tellNoMore() {
        const std::lock_guard lock(mutex_);
        hasTold_ = true;
    }

private:
    void keepFile(const QString& time, const TransferEntry& entry) {
        const QString path = folder_.filePath(QString::fromStdString(entry.psn));
        if (!makeFolder(path))
            return;
        const QString problem = replaceFile(freeName(QDir(path), time, entry.isRead),
                                            QByteArray::fromStdString(entry.file), QStringLiteral("file"));
        if (!problem.isEmpty())
            tellOnce(path + QStringLiteral(": ") + problem);
    }
    /// False, and told, where nothing can be put into it.
    bool makeFolder(const QString& path) {
        const QFileInfo info(path);
        QString problem;
        if (info.exists() && !info.isDir())
            problem = QStringLiteral(" is no folder.");
        else if (!QDir().mkpath(path))
            problem = QStringLiteral(" cannot be made.");
        else if (!QFileInfo(path).isWritable())
            problem = QStringLiteral(" may not be written.");
        if (!problem.isEmpty())
            tellOnce(path + problem);
        return problem.isEmpty();
    }

    const QDir folder_;
    const std::function<void(const QString&)> tell_;
    std::mutex mutex_;
    bool hasTold_ = false;
};

Record::Record(const QString& folder, std::function<void(const QString&)> tell)
    : place_(std::make_shared<Place>(folder, std::move(tell))) {
    work_.add([place = place_] { place->prepare(); });
}

Record::~Record() {
    finish();
}

void Record::keep(const TransferEntry& entry) {
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd'T'HHmmss"));
    work_.add([place = place_, time, entry] { place->keep(time, entry); });
}

void Record::finish() {
    if (std::exchange(isFinished_, true))
        return;
    if (!work_.finish(kMostWait))
        place_->tellOnce(QStringLiteral("The disk took too long."));
    place_->tellNoMore();
}

}  // namespace quorvex
