#include "link/device_facts_linux.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSerialPort>
#include <QThread>
#include <algorithm>
#include <chrono>

#include "link/device_facts.h"

namespace quorvex {

bool isHungUp(int descriptor) {
    pollfd state{descriptor, 0, 0};
    return poll(&state, 1, 0) == 1 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

std::optional<bool> isHungUp(const QSerialPort& port) {
    return isHungUp(port.handle());
}

void letLeave(int descriptor) {
    using std::chrono::milliseconds;
    constexpr milliseconds kMost{1000};
    constexpr milliseconds kTurn{1};
    int left = 0;
    for (milliseconds waited{0}; ioctl(descriptor, TIOCOUTQ, &left) == 0 && left > 0; waited += kTurn) {
        if (waited >= kMost || isHungUp(descriptor))
            return;
        QThread::msleep(static_cast<unsigned long>(kTurn.count()));
    }
    tcdrain(descriptor);  // what the chip itself still holds
}

void letLeave(QSerialPort& port) {
    letLeave(port.handle());
}

bool isAbsentUart(const QString& name) {
    QFile type(QStringLiteral("/sys/class/tty/%1/type").arg(name));
    return type.open(QIODevice::ReadOnly) && type.readAll().trimmed() == "0";
}

bool isNoSerialPort(const QString& path) {
    struct stat facts {};
    if (stat(QFile::encodeName(path).constData(), &facts) != 0)
        return false;
    if (!S_ISCHR(facts.st_mode))
        return true;
    // The system knows of what kind its devices are; of pseudo-terminals it says nothing.
    const QString kind = QFileInfo(QFile::symLinkTarget(QStringLiteral("/sys/dev/char/%1:%2/subsystem")
                                                            .arg(major(facts.st_rdev))
                                                            .arg(minor(facts.st_rdev))))
                             .fileName();
    return !kind.isEmpty() && kind != QLatin1String("tty");
}

namespace {

/// The folder of the adapter that carries the device, itself some steps above the device; nothing without
/// one.
std::optional<QDir> adapterFolder(const QString& path, const QString& system) {
    const QString device =
        QFileInfo(QStringLiteral("%1/class/tty/%2/device").arg(system, QFileInfo(path).fileName()))
            .canonicalFilePath();
    if (path.isEmpty() || device.isEmpty())
        return std::nullopt;
    constexpr int kMostSteps = 4;
    QDir folder(device);
    for (int step = 0; step < kMostSteps; ++step) {
        if (folder.exists(QStringLiteral("product")))
            return folder;
        if (!folder.cdUp())
            break;
    }
    return std::nullopt;
}

QString fact(const QDir& folder, const QString& name) {
    constexpr int kMostRead = 256;
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(kMostRead)).simplified() : QString();
}

QString nameOf(const QString& process) {
    QFile command(QStringLiteral("/proc/%1/cmdline").arg(process));
    const QByteArray program =
        command.open(QIODevice::ReadOnly) ? command.readAll().split('\0').constFirst() : QByteArray();
    return QStringLiteral("%1 (%2)").arg(QFileInfo(QString::fromLocal8Bit(program)).fileName(), process);
}

/// Whether the process has the device open; nothing where that may not be asked, of another user's process.
std::optional<bool> hasOpen(const QString& process, const QString& path) {
    const QDir files(QStringLiteral("/proc/%1/fd").arg(process));
    if (!files.isReadable())
        return std::nullopt;
    const QStringList numbers = files.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    return std::any_of(numbers.begin(), numbers.end(), [&](const QString& number) {
        return QFile::symLinkTarget(files.filePath(number)) == path;
    });
}

/// Whether the process that a lock file names still holds the device.
bool isAlive(const QStringList& lock, const QString& path) {
    if (lock.value(0).toLongLong() <= 0 || !QFileInfo::exists(QStringLiteral("/proc/") + lock.first()))
        return false;
    // The number of a program that was killed may have gone to another one.
    const QString running =
        QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(lock.first()))).fileName();
    return hasOpen(lock.first(), path)
        .value_or(lock.size() < 2 || running.isEmpty() || running == lock.at(1));
}

/// What the other processes have open, and the first one that has it.
std::map<QString, QString> filesOfOthers(const QString& self) {
    std::map<QString, QString> files;
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& process : processes) {
        if (process == self || !process.at(0).isDigit())
            continue;
        const QDir open(QStringLiteral("/proc/%1/fd").arg(process));
        for (const QString& number : open.entryList(QDir::AllEntries | QDir::System))
            files.emplace(QFile::symLinkTarget(open.filePath(number)), process);
    }
    return files;
}

}  // namespace

QString adapterOf(const QString& path) {
    return adapterOf(path, QStringLiteral("/sys"));
}

QString adapterOf(const QString& path, const QString& system) {
    const auto folder = adapterFolder(path, system);
    if (!folder)
        return {};
    return adapterText(fact(*folder, QStringLiteral("manufacturer")),
                       fact(*folder, QStringLiteral("product")), fact(*folder, QStringLiteral("serial")));
}

QString lockHolder(const QString& path, bool clearsDead) {
    const QString device =
        path.mid(QStringLiteral("/dev/").size()).replace(QLatin1Char('/'), QLatin1Char('_'));
    QFile lock(QStringLiteral("/var/lock/LCK..") + device);
    if (!QFileInfo(lock).isFile() || !lock.open(QIODevice::ReadOnly))
        return {};
    constexpr int kMostRead = 1024;
    const QStringList words =
        QString::fromLocal8Bit(lock.read(kMostRead)).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (isAlive(words, path))
        return words.first();
    if (clearsDead)
        lock.remove();
    return {};
}

QString DeviceUsers::otherUserOf(const QString& path) {
    const QString self = QString::number(QCoreApplication::applicationPid());
    const QString holder = lockHolder(path);
    if (!holder.isEmpty())
        return holder == self ? QString() : nameOf(holder);
    // A pseudo-terminal is held open by whoever serves it, which keeps nobody out.
    if (path.startsWith(QLatin1String("/dev/pts/")))
        return {};
    if (!openFiles_)
        openFiles_ = filesOfOthers(self);
    const auto user = openFiles_->find(path);
    return user == openFiles_->end() ? QString() : nameOf(user->second);
}

}  // namespace quorvex
