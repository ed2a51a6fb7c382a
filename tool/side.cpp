#include "tool/side.h"

#include <QCoreApplication>
#include <QJsonDocument>

#ifdef Q_OS_UNIX
#include <unistd.h>
#include <csignal>
#endif
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

#include "tool/set_command.h"

namespace quorvex::tool {

void Side::start() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(kTextInObject), QStringLiteral("1"));
    process_.setProcessEnvironment(environment);
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setReadChannel(QProcess::StandardError);
#ifdef Q_OS_LINUX
    process_.setChildProcessModifier([parent = ::getpid()] {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent)  // it has gone before that
            ::_exit(kSignalled + SIGTERM);
    });
#endif
    QStringList words = share_.words();
    if (!share_.request.has("--json"))
        words.prepend(QStringLiteral("--json"));
    process_.start(QCoreApplication::applicationFilePath(), words);
}

void Side::interrupt(int signal) {
    interruptedBy_ = signal;  // also if it has just ended by the same signal
    if (!isRunning())
        return;
#ifdef Q_OS_UNIX
    ::kill(static_cast<pid_t>(process_.processId()), signal);
#else
    process_.terminate();
#endif
}

QByteArray Side::takeSaid() {
    QByteArray said;
    while (process_.canReadLine())
        said += process_.readLine();
    return isRunning() ? said : said + process_.readAllStandardError();
}

void Side::takeResult() {
    object_ = QJsonDocument::fromJson(process_.readAllStandardOutput()).object();
    text_ = object_.take(QStringLiteral("text")).toString();
    if (!object_.isEmpty() && process_.exitStatus() == QProcess::NormalExit) {
        status_ = process_.exitCode();
    } else {
        const bool isInterrupted = interruptedBy_ != 0;  // before it was ready for that
        status_ = isInterrupted ? kSignalled + interruptedBy_ : static_cast<int>(Status::noResult);
        untold_ = isInterrupted ? QStringLiteral("Interrupted.")
                                : QStringLiteral("The process for this port ended without a result.");
        object_.insert(QStringLiteral("problem"), untold_);
    }
    object_.insert(QStringLiteral("command"), share_.request.command->name);
    object_.insert(QStringLiteral("port"), share_.port.name);
    object_.insert(QStringLiteral("status"), status_);
    if (const auto psn = psnGiven(share_.request))
        object_.insert(QStringLiteral("psn"), *psn);
}

}  // namespace quorvex::tool
