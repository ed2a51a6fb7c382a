#include "link/device_facts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_LINUX
#include <poll.h>
#endif

namespace quorvex {

#ifdef Q_OS_LINUX

std::optional<bool> isHungUp(qintptr handle) {
    pollfd state{static_cast<int>(handle), 0, 0};
    return poll(&state, 1, 0) == 1 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

bool isAbsentUart(const QString& name) {
    QFile type(QStringLiteral("/sys/class/tty/%1/type").arg(name));
    return type.open(QIODevice::ReadOnly) && type.readAll().trimmed() == "0";
}

namespace {

QString nameOf(const QString& process) {
    QFile command(QStringLiteral("/proc/%1/cmdline").arg(process));
    const QByteArray program =
        command.open(QIODevice::ReadOnly) ? command.readAll().split('\0').constFirst() : QByteArray();
    return QStringLiteral("%1 (%2)").arg(QFileInfo(QString::fromLocal8Bit(program)).fileName(), process);
}

/// The live process that a lock file of the customary kind names; empty when there is none.
QString lockHolder(const QString& path) {
    const QString device =
        path.mid(QStringLiteral("/dev/").size()).replace(QLatin1Char('/'), QLatin1Char('_'));
    QFile lock(QStringLiteral("/var/lock/LCK..") + device);
    if (!lock.open(QIODevice::ReadOnly))
        return {};
    const QString process = QString::fromLatin1(lock.readLine().trimmed());
    const QString program = QString::fromLocal8Bit(lock.readLine().trimmed());
    if (process.isEmpty() || !QFileInfo::exists(QStringLiteral("/proc/") + process))
        return {};
    // The number of a program that was killed may have gone to another one.
    const QString running =
        QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(process))).fileName();
    return program.isEmpty() || running.isEmpty() || running == program ? process : QString();
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

#else

std::optional<bool> isHungUp(qintptr) {
    return std::nullopt;
}

bool isAbsentUart(const QString&) {
    return false;
}

QString DeviceUsers::otherUserOf(const QString&) {
    return {};
}

#endif

}  // namespace quorvex
