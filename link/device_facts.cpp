#include "link/device_facts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

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

QString otherUserOf(const QString& path) {
    const QString self = QString::number(QCoreApplication::applicationPid());
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& process : processes) {
        if (process == self || !process.at(0).isDigit())
            continue;
        const QDir files(QStringLiteral("/proc/%1/fd").arg(process));
        const QFileInfoList links = files.entryInfoList(QDir::AllEntries | QDir::System);
        for (const QFileInfo& link : links) {
            if (link.symLinkTarget() != path)
                continue;
            QFile name(QStringLiteral("/proc/%1/comm").arg(process));
            const QString program =
                name.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(name.readAll().trimmed()) : QString();
            return QStringLiteral("%1 (%2)").arg(program, process);
        }
    }
    return {};
}

#else

std::optional<bool> isHungUp(qintptr) {
    return std::nullopt;
}

bool isAbsentUart(const QString&) {
    return false;
}

QString otherUserOf(const QString&) {
    return {};
}

#endif

}  // namespace quorvex
