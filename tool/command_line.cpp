#include "tool/command_line.h"

#include <algorithm>

namespace quorvex::tool {

namespace {

const QString kProgram = QStringLiteral("quorvex-tool");

[[noreturn]] void refuse(const QString& sentence) {
    throw Failure(Status::wrongUse, sentence);
}

QString namesOfCommands() {
    QStringList names;
    for (const Command& command : commandTable())
        names << command.name;
    return names.join(QStringLiteral(", "));
}

const Command& commandNamed(const QString& name) {
    const auto& table = commandTable();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const Command& command) { return command.name == name; });
    if (found == table.end())
        refuse(QStringLiteral("\"%1\" is no command; there are %2.").arg(name, namesOfCommands()));
    return *found;
}

QString usageOf(const Command& command) {
    QString usage =
        kProgram +
        (command.talksToUnit() ? QStringLiteral(" [--port PORT[,PORT...]] ") : QStringLiteral(" ")) +
        command.name;
    for (const Option& option : command.options)
        usage += QStringLiteral(" [%1]").arg((option.name + QLatin1Char(' ') + option.value).trimmed());
    return (usage + QLatin1Char(' ') + command.arguments).trimmed();
}

QString exampleOf(const Command& command) {
    return kProgram + QLatin1Char(' ') + command.example;
}

/// An option as it stands on the line.
struct Given {
    QString name, value;
};

/// Every option of any command: those that the line's command does not take are refused once it is known.
Option optionNamed(const QString& name) {
    for (const Command& command : commandTable()) {
        for (const Option& option : command.allOptions()) {
            if (option.name == name)
                return option;
        }
    }
    refuse(QStringLiteral("There is no option %1; %2 COMMAND --help lists those of a command.")
               .arg(name, kProgram));
}

Given takeOption(const QStringList& words, qsizetype& at) {
    const QString& word = words.at(at);
    const qsizetype equals = word.indexOf(QLatin1Char('='));
    const Option option = optionNamed(word.left(equals));
    const bool isWhole = equals < 0;
    if (option.value.isEmpty()) {
        if (!isWhole)
            refuse(QStringLiteral("%1 takes no value.").arg(option.name));
        return {option.name, {}};
    }
    const QString value = isWhole ? words.value(++at) : word.mid(equals + 1);
    if (value.isEmpty() || (isWhole && value.startsWith(QLatin1String("--"))))
        refuse(QStringLiteral("%1 needs %2 after it.").arg(option.name, option.value));
    return {option.name, value};
}

void checkOptions(const Request& request) {
    const std::vector<Option> taken = request.command->allOptions();
    QStringList names;
    for (const Option& option : taken)
        names << option.name;
    for (const QString& given : request.options.keys()) {
        if (!names.contains(given))
            refuse(QStringLiteral("%1 does not take %2; it takes %3.")
                       .arg(request.command->name, given, names.join(QStringLiteral(", "))));
    }
}

void checkArguments(const Request& request) {
    const Command& command = *request.command;
    const auto count = static_cast<int>(request.arguments.size());
    if (request.arguments.contains(QString()))
        refuse(QStringLiteral("%1: \"\" is no name and no value; leave it out, or say what is meant: %2")
                   .arg(command.name, usageOf(command)));
    if (count < command.fewest)
        refuse(QStringLiteral("%1 needs %2, as in: %3")
                   .arg(command.name, command.arguments, exampleOf(command)));
    if (count > command.most)
        refuse(QStringLiteral("\"%1\" is more than %2 takes: %3")
                   .arg(request.arguments.at(command.most), command.name, usageOf(command)));
}

QString listed(const QString& name, const QString& meaning) {
    constexpr int kNameWidth = 28;
    const QString gap = name.size() > kNameWidth
                            ? QLatin1Char('\n') + QString(kNameWidth + 3, QLatin1Char(' '))
                            : QStringLiteral(" ");
    return QStringLiteral("  %1%2%3\n").arg(name, -kNameWidth).arg(gap, meaning);
}

QString listOf(const std::vector<Option>& options) {
    QString list = QStringLiteral("\nOptions:\n");
    for (const Option& option : options)
        list += listed((option.name + QLatin1Char(' ') + option.value).trimmed(), option.help);
    return list;
}

QString helpOfAll() {
    QString text =
        QStringLiteral(
            "Usage: %1 [--port PORT[,PORT...]] [--json] [--trace FILE] [--record DIR] COMMAND ...\n\n"
            "Reads and sets a Quorvex Beltpack or Active Antenna on a serial port.\n\n"
            "Commands; %1 COMMAND --help says more and gives an example:\n")
            .arg(kProgram);
    for (const Command& command : commandTable())
        text += listed((command.name + QLatin1Char(' ') + command.arguments).trimmed(), command.purpose);
    return text +
           QStringLiteral(
               "\nPORT is COM1 to COM12, or a device such as /dev/ttyUSB0; without --port it is the one "
               "that\n"
               "the window program uses. With several ports, as in COM1,COM2, the command runs on all of "
               "them\n"
               "side by side; {port} in arguments and options becomes the name of each. --json prints the\n"
               "result as one JSON object. Results go to the standard output, everything else to the "
               "standard\n"
               "error output. --version prints the version and ends.\n\n"
               "Exit status: 0 done, 1 verified otherwise or files differ, 2 wrong use, 3 no answer, 4 "
               "port,\n"
               "5 file; interrupted by signal N: 128 + N. Of several ports: the worst.\n");
}

}  // namespace

std::vector<Option> Command::allOptions() const {
    std::vector<Option> all = options;
    if (talksToUnit()) {
        all.push_back(
            {QStringLiteral("--port"), QStringLiteral("PORT[,PORT...]"),
             QStringLiteral("COM1 to COM12, or a device such as /dev/ttyUSB0; several side by side")});
        all.push_back({QStringLiteral("--trace"), QStringLiteral("FILE"),
                       QStringLiteral("add whatever passes over the port to FILE")});
        all.push_back({QStringLiteral("--record"), QStringLiteral("DIR"),
                       QStringLiteral("keep what is read from and written to a Beltpack in DIR")});
    }
    all.push_back({QStringLiteral("--json"), {}, QStringLiteral("print the result as one JSON object")});
    all.push_back({QStringLiteral("--help"), {}, QStringLiteral("print this and end")});
    return all;
}

Request parseCommandLine(const QStringList& words) {
    Request request;
    for (qsizetype at = 0; at < words.size(); ++at) {
        const QString& word = words.at(at);
        if (word == QLatin1String("--version")) {
            request.options.insert(word, {});
        } else if (word.startsWith(QLatin1String("--"))) {
            const Given given = takeOption(words, at);
            if (request.options.contains(given.name))
                refuse(QStringLiteral("%1 is given twice.").arg(given.name));
            request.options.insert(given.name, given.value);
        } else if (!request.command) {
            request.command = &commandNamed(word);
        } else {
            request.arguments << word;
        }
    }
    if (request.has("--help") || request.has("--version"))
        return request;
    if (!request.command)
        refuse(QStringLiteral("Say what to do: %1.").arg(namesOfCommands()));
    checkOptions(request);
    checkArguments(request);
    return request;
}

QString helpText(const Command* command) {
    if (!command)
        return helpOfAll();
    const QString details = command->details.isEmpty() ? QString() : QLatin1Char('\n') + command->details;
    return QStringLiteral("Usage: %1\n\n%2\n%3%4\nExample:\n  %5\n")
        .arg(usageOf(*command), command->purpose, details, listOf(command->allOptions()),
             exampleOf(*command));
}

}  // namespace quorvex::tool
