#include <QApplication>
#include <QGenericPlugin>

#include "tests/support/driver/driver.h"

namespace quorvex {

namespace {

constexpr char kFontPoints[] = "QUORVEX_FONT_POINTS";
constexpr char kDark[] = "QUORVEX_DARK";

QPalette darkPalette() {
    QPalette dark(QColor(50, 50, 50), QColor(50, 50, 50));
    dark.setColor(QPalette::Base, QColor(36, 36, 36));
    dark.setColor(QPalette::AlternateBase, QColor(50, 50, 50));
    dark.setColor(QPalette::ToolTipBase, QColor(70, 70, 70));
    dark.setColor(QPalette::ToolTipText, QColor(240, 240, 240));
    dark.setColor(QPalette::PlaceholderText, QColor(160, 160, 160));
    dark.setColor(QPalette::Highlight, QColor(48, 140, 198));
    dark.setColor(QPalette::HighlightedText, QColor(240, 240, 240));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(role, QColor(240, 240, 240));
        dark.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
    }
    return dark;
}

/// The look that the tour was asked for, before any control is made.
void putOnLook() {
    if (const int points = qEnvironmentVariableIntValue(kFontPoints); points > 0) {
        QFont face = QApplication::font();
        face.setPointSize(points);
        QApplication::setFont(face);
    }
    if (qEnvironmentVariableIsSet(kDark))
        QApplication::setPalette(darkPalette());
}

}  // namespace

/// Makes the driver where the program is started with QT_QPA_GENERIC_PLUGINS=quorvexdriver. With
/// QUORVEX_FONT_POINTS the window has a font of that size, with QUORVEX_DARK a dark palette.
class DriverPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")
public:
    QObject* create(const QString& /*key*/, const QString& /*options*/) override {
        putOnLook();
        return new Driver;
    }
};

}  // namespace quorvex

#include "plugin.moc"
