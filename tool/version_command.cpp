#include "tool/version_command.h"

#include "tool/plain_window.h"

namespace quorvex::tool {

namespace {

Result askVersion(PlainWindow& window, DectVersion& version) {
    version.request();
    const QString text = window.dectVersion();
    if (text.isEmpty())
        throw Failure(Status::noAnswer, QStringLiteral("The unit did not tell its DECT version."));
    Result result;
    result.text = text + QLatin1Char('\n');
    result.object = {{QStringLiteral("DECT Version"), text}};
    return result;
}

}  // namespace

UnitJob prepareVersion(const Request& request) {
    const QString unit = request.arguments.at(0);
    if (unit == QLatin1String("beltpack"))
        return [](PlainWindow& window) { return askVersion(window, window.beltpackVersion); };
    if (unit == QLatin1String("antenna"))
        return [](PlainWindow& window) { return askVersion(window, window.antennaVersion); };
    throw Failure(Status::wrongUse,
                  QStringLiteral("\"%1\" is neither \"beltpack\" nor \"antenna\".").arg(unit));
}

}  // namespace quorvex::tool
