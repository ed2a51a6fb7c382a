#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <memory>

#include "simulator/active_antenna.h"
#include "simulator/beltpack.h"
#include "tests/support/chance.h"
#include "tests/support/other_file.h"

namespace quorvex {

// What a storm is made of besides its hand.

inline std::unique_ptr<sim::Unit> anyUnit(const Chance& chance) {
    const auto module = chance.oneIn(2) ? sim::RfModule::kRm5 : sim::RfModule::kKirk;
    if (chance.oneIn(3))
        return std::make_unique<sim::ActiveAntenna>(module);
    return std::make_unique<sim::Beltpack>(module);
}

inline sim::Fault anyFault(const Chance& chance) {
    using Number = sim::FaultRule::Number;
    constexpr int kMostAmount = 3000, kLastRegister = 0x3F;
    const auto table = sim::faultTable();
    const sim::FaultRule& rule =
        table[static_cast<std::size_t>(chance.upTo(static_cast<int>(table.size()) - 1))];
    sim::Fault fault{rule.kind, std::nullopt, 0, rule.mayBeOnce && chance.oneIn(2)};
    if (rule.number == Number::kRequired || (rule.number == Number::kOptional && !chance.oneIn(3)))
        fault.number = 1 + chance.upTo(kLastRegister - 1);
    if (rule.takesAmount)
        fault.amount = rule.least + chance.upTo(std::min(rule.most, kMostAmount) - rule.least);
    return fault;
}

/// A folder with a settings file, the current one for as long as it lives: what is saved goes there.
class StormFolder {
public:
    StormFolder() {
        if (!QFile::copy(OtherFile().path(), path() + "/0.bpc"))
            qFatal("no room for a settings file");
        QDir::setCurrent(path());
    }
    ~StormFolder() { QDir::setCurrent(before_); }
    StormFolder(const StormFolder&) = delete;
    StormFolder& operator=(const StormFolder&) = delete;

    QString path() const { return folder_.path(); }

private:
    QTemporaryDir folder_;
    QString before_ = QDir::currentPath();
};

}  // namespace quorvex
