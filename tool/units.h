#pragma once

#include <QJsonObject>
#include <QString>
#include <vector>

#include "tool/plain_window.h"

namespace quorvex::tool {

// What commands tell of a unit.

/// The serial number in decimal.
int psnOf(const SettingsImage& image);

/// "no parameter", "1 parameter", "2 parameters".
QString countOf(std::size_t count, const char* thing);

/// Names and values, as lines for people and as an object for programs.
class Facts {
public:
    void add(const char* name, const QString& text);
    /// What is in the field is a number.
    void add(const char* name, const TextField& field);
    QString text(const QString& indent = {}) const;
    QJsonObject object() const;

private:
    struct Fact {
        QString name;
        QJsonValue value;
    };
    std::vector<Fact> facts_;
};

/// The radio module's kind and calibration values.
void addModule(Facts& facts, const RadioModule& module, const PlainWindow::ModuleFields& fields);
QString moduleName(const RadioModule& module);

}  // namespace quorvex::tool
