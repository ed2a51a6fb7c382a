#include "tests/support/program.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace quorvex {

namespace {
constexpr int kLimitMs = 10'000;
}

Program::Program(const QMap<QString, QString>& environment) {
    QProcessEnvironment whole = QProcessEnvironment::systemEnvironment();
    whole.insert("QT_QPA_PLATFORM", "offscreen");
    whole.insert("QT_PLUGIN_PATH", QUORVEX_BUILD_FOLDER "/tests/plugins");
    whole.insert("QT_QPA_GENERIC_PLUGINS", "quorvexdriver");
    for (auto entry = environment.begin(); entry != environment.end(); ++entry) {
        if (entry.value().isEmpty())
            whole.remove(entry.key());
        else
            whole.insert(entry.key(), entry.value());
    }
    process_.setProcessEnvironment(whole);
    process_.start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-config", {});
    process_.waitForStarted(kLimitMs);
}

Program::~Program() {
    process_.kill();
    process_.waitForFinished(kLimitMs);
}

QString Program::end(int limitMs) {
    if (isRunning() && !process_.waitForFinished(limitMs))
        return QStringLiteral("running");
    if (process_.exitStatus() == QProcess::CrashExit)
        return QStringLiteral("crash");
    return "exit " + QString::number(process_.exitCode());
}

QJsonValue Program::ask(const QJsonObject& command) {
    refusal_.clear();
    process_.write(QJsonDocument(command).toJson(QJsonDocument::Compact) + '\n');
    while (!process_.canReadLine()) {
        if (!isRunning() || !process_.waitForReadyRead(kLimitMs)) {
            refusal_ = QStringLiteral("no answer");
            return {};
        }
    }
    const QJsonObject answer = QJsonDocument::fromJson(process_.readLine()).object();
    refusal_ = answer["error"].toString();
    return answer["value"];
}

bool Program::isWindowUp() {
    return get("FrmMain", "visible").toBool();
}

QJsonValue Program::get(const QString& control, const QString& property) {
    return ask({{"do", "get"}, {"name", control}, {"property", property}});
}

void Program::click(const QString& control) {
    ask({{"do", "click"}, {"name", control}});
    QVERIFY2(refusal().isEmpty(), qPrintable(refusal()));
}

void Program::clickMenu(const QString& menu, const QString& item) {
    ask({{"do", "clickItem"}, {"name", menu}});
    QVERIFY2(refusal().isEmpty(), qPrintable(refusal()));
    QTRY_VERIFY_WITH_TIMEOUT(get(menu, "visible").toBool(), kLimitMs);
    ask({{"do", "clickItem"}, {"name", item}});
    QVERIFY2(refusal().isEmpty(), qPrintable(refusal()));
}

void Program::key(const QString& control, Qt::Key key) {
    ask({{"do", "key"}, {"name", control}, {"key", int(key)}});
    QVERIFY2(refusal().isEmpty(), qPrintable(refusal()));
}

void Program::close(const QString& window) {
    ask({{"do", "close"}, {"name", window}});
    QVERIFY2(refusal().isEmpty(), qPrintable(refusal()));
}

QString Program::box() {
    QString front;
    for (const QJsonValue& each : ask({{"do", "windows"}}).toArray()) {
        const QJsonObject window = each.toObject();
        if (!window.contains("text"))
            continue;
        QStringList buttons;
        for (const QJsonValue& button : window["buttons"].toArray())
            buttons << button.toString();
        front += QStringLiteral("%1 \"%2\" [%3]: %4")
                     .arg(window["icon"].toString(), window["title"].toString(), buttons.join(", "),
                          window["text"].toString());
        if (!window["modal"].toBool())
            front += QStringLiteral(" (not modal)");
    }
    return front;
}

void Program::clickOk() {
    const QString before = box();
    ask({{"do", "clickOk"}});
    QVERIFY2(refusal().isEmpty(), qPrintable(refusal()));
    QTRY_VERIFY_WITH_TIMEOUT(!isRunning() || box() != before, kLimitMs);
}

QStringList Program::dialogs() {
    QStringList names;
    for (const QJsonValue& each : ask({{"do", "windows"}}).toArray()) {
        const QJsonObject window = each.toObject();
        if (window["modal"].toBool() && !window.contains("text"))
            names << window["name"].toString();
    }
    return names;
}

}  // namespace quorvex
