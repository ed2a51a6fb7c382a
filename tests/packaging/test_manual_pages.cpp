#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include "simulator/options.h"
#include "tests/packaging/file_text.h"
#include "tests/support/registry.h"
#include "tool/command_line.h"

namespace quorvex {

namespace {

/// A manual page by its source.
QString page(const QString& program) {
    return fileText(QUORVEX_PACKAGING "/man/" + program + ".1");
}

/// The items of a section as they look to whoever reads the page.
QStringList itemsOf(const QString& page, const QString& heading) {
    static const QRegularExpression unseen("\\b(Ar|Cm|Ev|Li) ");
    const QString section = page.section(".Sh " + heading + "\n", 1).section("\n.Sh ", 0, 0);
    QStringList items = section.split('\n').filter(QRegularExpression("^\\.It "));
    for (QString& item : items)
        item = item.mid(4).remove(unseen).replace("Fl ", "-").replace("Oo ", "[").replace(" Oc", "]");
    return items;
}

/// The forms that stand before what they mean, in a part of the simulator's help.
QStringList formsOf(const QString& help) {
    QStringList forms = help.split('\n').filter(QRegularExpression("^  "));
    for (QString& form : forms)
        form = form.trimmed().section("  ", 0, 0);
    return forms;
}

QString formOf(const tool::Option& option) {
    return (option.name + ' ' + option.value).trimmed();
}

/// The variables that sources of the window's program name.
QStringList variables() {
    QSet<QString> found;
    for (const char* folder :
         {"antenna", "app", "beltpack", "calibration", "form", "identity", "link", "rscreen"}) {
        QDirIterator sources(QString(QUORVEX_PACKAGING "/../") + folder, {"*.cpp"});
        while (sources.hasNext()) {
            static const QRegularExpression variable("\"(QUORVEX_[A-Z]+)\"");
            auto matches = variable.globalMatch(fileText(sources.next()));
            while (matches.hasNext())
                found << matches.next().captured(1);
        }
    }
    return found.values();
}

QStringList sorted(QStringList list) {
    list.sort();
    return list;
}

}  // namespace

/// The manual pages have what the programs have.
class TestManualPages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void commandsOfTheTool();
    void optionsOfTheTool();
    void optionsOfTheSimulator();
    void faultsOfTheSimulator();
    void variablesOfTheWindow();
};

void TestManualPages::commandsOfTheTool() {
    QStringList commands;
    for (const tool::Command& command : tool::commandTable()) {
        QStringList usage{command.name};
        for (const tool::Option& option : command.options)
            usage << '[' + formOf(option) + ']';
        commands << (usage << command.arguments).join(' ').trimmed();
    }
    QCOMPARE(itemsOf(page("quorvex-tool"), "COMMANDS"), commands);
}

void TestManualPages::optionsOfTheTool() {
    QStringList options{"--version"};
    for (const tool::Command& command : tool::commandTable()) {
        const std::vector<tool::Option> all = command.allOptions();
        for (std::size_t i = command.options.size(); i < all.size(); ++i)
            options << formOf(all[i]);
    }
    options.removeDuplicates();
    QCOMPARE(sorted(itemsOf(page("quorvex-tool"), "OPTIONS")).join('\n'), sorted(options).join('\n'));
}

void TestManualPages::optionsOfTheSimulator() {
    const QString help = QString::fromStdString(sim::helpText());
    QCOMPARE(itemsOf(page("quorvex-simulator"), "OPTIONS"),
             formsOf(help.section("\nOptions:\n", 1).section("\n\n", 0, 0)));
}

void TestManualPages::faultsOfTheSimulator() {
    const QString help = QString::fromStdString(sim::helpText());
    QCOMPARE(itemsOf(page("quorvex-simulator"), "FAULTS"), formsOf(help.section("\nFaults, ", 1)));
}

void TestManualPages::variablesOfTheWindow() {
    QCOMPARE(sorted(itemsOf(page("quorvex-config"), "ENVIRONMENT").filter("QUORVEX_")), sorted(variables()));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestManualPages, quorvex::NoApplication)
#include "test_manual_pages.moc"
