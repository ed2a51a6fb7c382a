#include "tests/support/bench_top.h"

#include <QFile>
#include <QTest>

namespace quorvex {

namespace {
constexpr int kLimitMs = 10'000;
}

BenchTop::BenchTop() = default;

UnitProcess& BenchTop::plugIn(int number, const QStringList& arguments) {
    unit_.reset();
    unit_ = std::make_unique<UnitProcess>(arguments, portLink(number));
    return *unit_;
}

Program& BenchTop::run() {
    program_.reset();
    environment_["QUORVEX_PORTS"] = ports_.path();
    environment_["XDG_CONFIG_HOME"] = settings_.path();
    program_ = std::make_unique<Program>(environment_);
    return *program_;
}

bool BenchTop::start() {
    run();
    const bool up = QTest::qWaitFor([this] { return program_->isWindowUp(); }, kLimitMs);
    return up && program_->box().isEmpty() && program_->text("LabelComPort").startsWith("COM");
}

QByteArray BenchTop::settings() const {
    QFile file(settingsFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void BenchTop::writeSettings(const QByteArray& text) const {
    QFile file(settingsFile());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
}

void BenchTop::pickPort(int number) {
    program_->key("ComboCom", Qt::Key_Home);
    for (int i = 1; i < number; ++i)
        program_->key("ComboCom", Qt::Key_Down);
    QTRY_COMPARE_WITH_TIMEOUT(program_->get("ComboCom", "currentText").toString(),
                              "COM" + QString::number(number), kLimitMs);
}

void BenchTop::chooseAgain(int number) {
    const QString port = "COM" + QString::number(number);
    program_->clickMenu("mnuFile", "mnuComPort");
    QTRY_COMPARE_WITH_TIMEOUT(program_->dialogs(), QStringList("ComSelect"), kLimitMs);
    QCOMPARE(program_->get("ComboCom", "currentText").toString(), port);
    program_->click("CmdOK");
    QTRY_COMPARE_WITH_TIMEOUT(program_->dialogs(), QStringList(), kLimitMs);
    QTRY_COMPARE_WITH_TIMEOUT(program_->text("LabelComPort"), port, kLimitMs);
    QCOMPARE(program_->box(), "");
}

}  // namespace quorvex
