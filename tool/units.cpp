#include "tool/units.h"

#include "link/qt_text.h"

namespace quorvex::tool {

int psnOf(const SettingsImage& image) {
    return QString::fromStdString(image.psnText()).toInt();
}

QString countOf(std::size_t count, const char* thing) {
    const QString number = count == 0 ? QStringLiteral("no") : QString::number(count);
    return QStringLiteral("%1 %2%3").arg(number, QString::fromLatin1(thing),
                                         count > 1 ? QStringLiteral("s") : QString());
}

void Facts::add(const char* name, const QString& text) {
    facts_.push_back({QString::fromLatin1(name), text});
}

void Facts::add(const char* name, const TextField& field) {
    facts_.push_back({QString::fromLatin1(name), fromLatin1(field.text()).toInt()});
}

QString Facts::text(const QString& indent) const {
    constexpr int kNameWidth = 20;
    QString lines;
    for (const auto& [name, value] : facts_)
        lines += indent + QStringLiteral("%1  %2\n").arg(name, -kNameWidth).arg(value.toVariant().toString());
    return lines;
}

QJsonObject Facts::object() const {
    QJsonObject object;
    for (const auto& [name, value] : facts_)
        object.insert(name, value);
    return object;
}

QString moduleName(const RadioModule& module) {
    return module.isKirk() ? QStringLiteral("Kirk KRM 1800") : QStringLiteral("Plextek RM5");
}

void addModule(Facts& facts, const RadioModule& module, const PlainWindow::ModuleFields& fields) {
    facts.add("RF Module", moduleName(module));
    facts.add("FM Deviation", fields.fmDeviation);
    facts.add(module.isKirk() ? "Mid" : "Frequency Accuracy", fields.frequency);
    if (!module.isKirk())
        return;
    facts.add("Receive", fields.receive);
    facts.add("Transmit", fields.transmit);
}

}  // namespace quorvex::tool
