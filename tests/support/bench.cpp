#include "tests/support/bench.h"

#include <QApplication>
#include <QLabel>

#include "form/guard.h"

namespace quorvex {

Bench::Bench() {
    qputenv("QUORVEX_PORTS", noPorts.path().toLocal8Bit());
    setProgramEnd([this](int status) {
        window_->closePort();
        journal.note("end " + QString::number(status));
    });
    wire.onLine([this](const QString& line) {
        steps_ << line + (isHourglassUp() ? " | hourglass | " : " | pointer | ") + status();
        const auto deed = deeds_.find(line);
        if (deed == deeds_.end())
            return;
        loop.inNextWait(std::move(deed->second));
        deeds_.erase(deed);
    });
}

Bench::~Bench() {
    setProgramEnd({});
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
}

void Bench::show() {
    window_ = std::make_unique<FrmMain>(Machine{wire, loop, store});
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void Bench::start() {
    show();
    window_->load();
}

sim::Beltpack& Bench::startWith(sim::RfModule module) {
    beltpack_ = std::make_unique<sim::Beltpack>(module);
    wire.plugIn(beltpack_.get());
    start();
    const QStringList happened = journal.take();
    if (happened.size() != 1 || !happened.first().startsWith("open "))
        QTest::qFail(qPrintable("start-up: " + happened.join(QStringLiteral("; "))), __FILE__, __LINE__);
    return *beltpack_;
}

QString Bench::status() {
    const auto& line = control<QLabel>("LblStatus");
    const QColor colour = line.palette().color(QPalette::WindowText);
    const QString name = colour == QColor(0, 0, 0)     ? QStringLiteral("black")
                         : colour == QColor(255, 0, 0) ? QStringLiteral("red")
                         : colour == QColor(0, 150, 0) ? QStringLiteral("green")
                                                       : colour.name();
    return name + ": " + line.text();
}

bool Bench::isHourglassUp() {
    const QCursor* pointer = QApplication::overrideCursor();
    return pointer && pointer->shape() == Qt::WaitCursor;
}

void renew(std::unique_ptr<Bench>& bench) {
    bench.reset();
    bench = std::make_unique<Bench>();
}

QStringList readLines(sim::RfModule module) {
    QStringList lines{"# 0139"};
    for (int number = 1; number <= 21; ++number)
        lines << QStringLiteral("# 01%1").arg(number, 2, 16, QLatin1Char('0')).toUpper();
    lines << "# 013D"
          << "# 013C";
    if (module == kKirk)
        lines << "# 0139"
              << "# 013a"
              << "# 0138";
    lines << "! 0108";
    return lines;
}

}  // namespace quorvex
