#include "tool/antenna_command.h"

#include "tool/plain_window.h"
#include "tool/units.h"

namespace quorvex::tool {

namespace {

Result readAntenna(PlainWindow& window, bool setTbr6) {
    if (setTbr6)
        window.antenna.CommandSetTbr6_Click();
    else
        window.antenna.CommandRdSettingsAA_Click();
    if (window.console.hasFailed())
        throw Failure(Status::noAnswer, window.console.boxes() + QLatin1Char(' ') + window.heard.howFar());
    if (const QString problem = window.heard.wrongReply(); !problem.isEmpty())
        throw Failure(Status::noAnswer, problem);
    Result result;
    for (const auto& [name, fields] : {std::pair{"A", &window.moduleA}, {"B", &window.moduleB}}) {
        Facts facts;
        addModule(facts, window.module, *fields);
        result.text +=
            QStringLiteral("Module %1\n%2").arg(QLatin1String(name), facts.text(QStringLiteral("  ")));
        result.object.insert(QStringLiteral("module%1").arg(QLatin1String(name)), facts.object());
    }
    result.object.insert(QStringLiteral("tbr6"), setTbr6);
    if (setTbr6)
        result.text += QStringLiteral("The Active Antenna is in TBR6 mode.\n");
    return result;
}

}  // namespace

UnitJob prepareAntenna(const Request& request) {
    return [setTbr6 = request.has("--tbr6")](PlainWindow& window) { return readAntenna(window, setTbr6); };
}

}  // namespace quorvex::tool
