#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QProcess>
#include <QStringList>

namespace quorvex {

/// The built program as its own process, worked through the driver that is
/// loaded into it.
class Program {
public:
    /// `environment` adds to the test's own; the value "" takes a variable away.
    explicit Program(const QMap<QString, QString>& environment);
    ~Program();

    qint64 id() const { return process_.processId(); }
    bool isRunning() const { return process_.state() == QProcess::Running; }
    /// Waits for the end: "exit 0", "exit 1", "crash", or "running" after the
    /// limit.
    QString end(int limitMs = 10'000);
    /// What the program has written about itself.
    QString errors() { return QString::fromLocal8Bit(process_.readAllStandardError()); }

    /// One command to the driver; null when the driver cannot, or nobody answers.
    QJsonValue ask(const QJsonObject& command);
    bool isWindowUp();
    QString text(const QString& control) { return get(control, "text").toString(); }
    QJsonValue get(const QString& control, const QString& property);
    /// The colour of a control's text, "#rrggbb".
    QString colour(const QString& control) { return ask({{"do", "colour"}, {"name", control}}).toString(); }
    QString shown(const QString& list) { return ask({{"do", "shown"}, {"name", list}}).toString(); }
    QString pointer() { return ask({{"do", "pointer"}}).toString(); }

    void click(const QString& control);
    void clickMenu(const QString& menu, const QString& item);
    void key(const QString& control, Qt::Key key);
    void close(const QString& window);

    /// The message box in front: `critical "Title" [OK]: text`; empty if there is
    /// none.
    QString box();
    /// Clicks OK of the box in front and waits until it is gone.
    void clickOk();
    /// Names of the dialogs that are open, message boxes left out.
    QStringList dialogs();

    /// The sentence of the driver's last refusal.
    const QString& refusal() const { return refusal_; }

private:
    QProcess process_;
    QString refusal_;
};

}  // namespace quorvex
