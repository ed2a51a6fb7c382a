#include <QGenericPlugin>

#include "tests/support/driver/driver.h"

namespace quorvex {

/// Makes the driver where the program is started with
/// QT_QPA_GENERIC_PLUGINS=quorvexdriver.
class DriverPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")
public:
    QObject* create(const QString& /*key*/, const QString& /*options*/) override { return new Driver; }
};

}  // namespace quorvex

#include "plugin.moc"
