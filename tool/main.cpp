#include <QCoreApplication>
#include <csignal>

#include "tool/run.h"

int main(int argc, char** argv) {
#ifdef SIGPIPE
    // Whoever reads the result may go; what was begun is finished all the same, and the exit status tells.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    const QCoreApplication application(argc, argv);
    // The settings are the window program's.
    QCoreApplication::setApplicationName(QStringLiteral("quorvex-tool"));
    return quorvex::tool::runTool(QCoreApplication::arguments().mid(1));
}
