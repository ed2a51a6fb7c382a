#pragma once

#include <QAction>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "app/frm_main.h"
#include "simulator/beltpack.h"
#include "tests/support/bench_loop.h"
#include "tests/support/fake_store.h"
#include "tests/support/hand.h"
#include "tests/support/journal.h"
#include "tests/support/operator.h"
#include "tests/support/wire.h"

namespace quorvex {

inline constexpr sim::RfModule kRm5 = sim::RfModule::kRm5;
inline constexpr sim::RfModule kKirk = sim::RfModule::kKirk;

/// The main window on a bench: settings in memory, a wire instead of a port, a clock of its own, and an
/// operator who answers what opens. One journal holds what happened to all of them, in order; the end of
/// the program is noted there as "end 0" and does not happen.
class Bench {
public:
    Bench();
    ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    /// Whether a link can stand in for a port. On Windows hover texts tell of the machine's own.
#ifdef Q_OS_WIN
    static constexpr bool kPortsAreLinks = false;
#else
    static constexpr bool kPortsAreLinks = true;
#endif
    QTemporaryDir noPorts;  ///< the folder of the links
    /// As hover texts name the device of a port.
    QString deviceOf(int number) const {
        const QString name = QStringLiteral("COM%1").arg(number);
        return kPortsAreLinks ? noPorts.filePath(name) : name;
    }

    Journal journal;
    FakeStore store{journal};
    Clock clock;
    Wire wire{clock, journal};
    BenchLoop loop{clock, wire};
    Operator person{journal};

    /// Makes and shows the window, and loads it as the program does at its start.
    void start();
    /// Makes and shows the window, not yet loaded.
    void show();
    /// Start with a Beltpack of this kind on the wire; nothing else happens, and the journal is empty then.
    sim::Beltpack& startWith(sim::RfModule module);

    FrmMain& window() {
        return *window_;
    }
    /// The control of the main window with that name.
    template <typename Control = QWidget>
    Control& control(const QString& name) {
        auto* found = window_->findChild<Control*>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return *found;
    }
    void click(const QString& name) {
        hand::click(control(name));
    }
    void clickMenu(const QString& name) {
        hand::clickMenuItem(window(), control<QAction>(name));
    }
    void clickTab(const QString& caption) {
        hand::clickTab(control("SSTab1"), caption);
    }

    /// Text of a field, label or button.
    QString text(const QString& name) {
        return control(name).property("text").toString();
    }
    /// The status line: "black: text", "red: text", "green: text", or the colour's name if it is another.
    QString status();
    static bool isHourglassUp();

    /// What was to be seen when each line went out: "# 0102 | hourglass | black: text".
    const QStringList& steps() const {
        return steps_;
    }

    /// What the person does once, while the program waits for the reply to the next `line`.
    void duringExchange(const QString& line, std::function<void()> deed) {
        deeds_.emplace(line, std::move(deed));
    }

    /// The unit on the wire after startWith.
    sim::Beltpack& beltpack() {
        return *beltpack_;
    }

private:
    std::unique_ptr<sim::Beltpack> beltpack_;
    std::unique_ptr<FrmMain> window_;
    QStringList steps_;
    std::multimap<QString, std::function<void()>> deeds_;
};

/// A new bench. The old one goes first: only one of them can hold the program's end.
void renew(std::unique_ptr<Bench>& bench);

/// The lines of a whole read of a Beltpack with an RM5 or a Kirk.
QStringList readLines(sim::RfModule module);

}  // namespace quorvex
