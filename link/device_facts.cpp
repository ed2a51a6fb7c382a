#include "link/device_facts.h"

namespace quorvex {

QString adapterText(const QString& maker, const QString& product, const QString& serial) {
    const QString name = QStringLiteral("%1 %2").arg(maker, product).trimmed();
    return serial.isEmpty() ? name : name + QStringLiteral(", serial number ") + serial;
}

}  // namespace quorvex
