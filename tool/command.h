#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "tool/result.h"

namespace quorvex::tool {

class PlainWindow;
struct Command;

/// What one command line asks for.
struct Request {
    const Command* command = nullptr;  ///< null where only help or the version is asked for
    QStringList arguments;
    QMap<QString, QString> options;  ///< by name, "--port"; flags have no value

    bool has(const char* option) const { return options.contains(QString::fromLatin1(option)); }
    QString value(const char* option) const { return options.value(QString::fromLatin1(option)); }
};

struct Option {
    QString name;   ///< "--frames"
    QString value;  ///< its name in the help; empty: the option takes none
    QString help;
};

/// What a command does with the unit on the line.
using UnitJob = std::function<Result(PlainWindow&)>;

/// One command: its words, and what it does. Either talks to a unit or does not.
struct Command {
    QString name;
    QString arguments;            ///< as in the help, "[FILE.bpc]"
    int fewest, most;             ///< of them
    QString purpose;              ///< a line of the list of commands
    QString details;              ///< further lines of its own help; may be empty
    QString example;              ///< without "quorvex-tool"
    std::vector<Option> options;  ///< of its own
    /// Looks at all that can be wrong before the port is opened. Throws Failure.
    UnitJob (*prepare)(const Request& request) = nullptr;
    Result (*run)(const Request& request) = nullptr;
    /// The files that a request writes; null for none.
    QStringList (*saves)(const Request& request) = nullptr;
    /// What no two units may get by a request: "Beltpack PSN/ID 00443186A0". Null for nothing. Throws
    /// Failure.
    QStringList (*identities)(const Request& request) = nullptr;
    /// The arguments for each of several ports where they differ by more than "{port}"; null where they do
    /// not. Throws Failure.
    std::vector<QStringList> (*deal)(const QStringList& arguments, std::size_t ports) = nullptr;

    bool talksToUnit() const { return prepare != nullptr; }
    /// With those that every command takes.
    std::vector<Option> allOptions() const;
};

/// All of them, in the order of the help.
const std::vector<Command>& commandTable();

}  // namespace quorvex::tool
