#include "icons/program_icon.h"

namespace quorvex {

QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64})
        icon.addFile(QStringLiteral(":/icons/%1x%1/apps/quorvex-config.png").arg(size), QSize(size, size));
    return icon;
}

}  // namespace quorvex
