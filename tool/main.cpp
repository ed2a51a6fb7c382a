#include <QCoreApplication>

#include "tool/run.h"

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    // The settings are the window program's.
    QCoreApplication::setApplicationName(QStringLiteral("quorvex-tool"));
    return quorvex::tool::runTool(QCoreApplication::arguments().mid(1));
}
