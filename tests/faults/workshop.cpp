#include "tests/faults/workshop.h"

#include <sstream>

#include "link/number_text.h"
#include "simulator/active_antenna.h"
#include "simulator/beltpack.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

constexpr FakeLoop::Tick kTickMs = 250;
constexpr int kPort = 1;
constexpr int kFrameMs = 500;

std::unique_ptr<sim::Unit> makeUnit(UnitKind kind) {
    switch (kind) {
        case UnitKind::beltpackRm5:
            return std::make_unique<sim::Beltpack>(sim::RfModule::kRm5);
        case UnitKind::beltpackKirk:
            return std::make_unique<sim::Beltpack>(sim::RfModule::kKirk);
        case UnitKind::antennaRm5:
            return std::make_unique<sim::ActiveAntenna>(sim::RfModule::kRm5);
        case UnitKind::antennaKirk:
            break;
    }
    return std::make_unique<sim::ActiveAntenna>(sim::RfModule::kKirk);
}

}  // namespace

/// A dialog in which the planned deeds are done, and which counts itself.
struct Workshop::Counted : VirtualDialog {
    Counted(Workshop& shop, CalResult& result)
        : VirtualDialog(shop.link, shop.store, result, shop.loop, shop.journal), shop_(shop) {
        ++shop_.dialogsOpen_;
        atEachTurn = [this] { shop_.port.waiting(); };
    }
    ~Counted() override { --shop_.dialogsOpen_; }
    void showModally() override {
        for (const Deed& deed : shop_.deeds) {
            shop_.loop.at(shop_.loop.now() + deed.atMs, [weak = handleForLater(), what = deed.what] {
                if (const auto self = weak.lock())
                    (*self)->handle([&] { what(**self); });
            });
        }
        VirtualDialog::showModally();
    }
    Workshop& shop_;
};

Workshop::Workshop(UnitKind kind, Tick startTick, sim::LineEnd* insteadOfUnit)
    : unit_(makeUnit(kind)),
      unitAtStart_(unit_->dump()),
      loop(startTick),
      port(insteadOfUnit != nullptr ? *insteadOfUnit : *unit_, loop) {
    port.onPicked([this] { portChoice.open(kPort); });
    prepare();
}

std::unique_ptr<CalibDialog> Workshop::createDialog(CalResult& result) {
    return std::make_unique<Counted>(*this, result);
}

void Workshop::resetUnit() {
    std::istringstream lines(unitAtStart_);
    for (std::string line; std::getline(lines, line);)
        unit_->setValue(static_cast<int>(hexValue(line.substr(0, 2))), line.substr(3));
    if (dynamic_cast<sim::ActiveAntenna*>(unit_.get()) == nullptr)
        return;
    for (const auto& [a, b] : {std::pair{0x01, 0x02}, {0x05, 0x06}, {0x07, 0x08}, {0x09, 0x0A}}) {
        if (unit_->holds(a))
            unit_->setValue(b, unit_->value(a));
    }
}

void Workshop::prepare() {
    resetUnit();
    store.put(kRfModuleKey, unit_->module() == sim::RfModule::kKirk ? "1" : "0");
    rfModule.load();
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        Parameter& parameter = image[i];
        parameter.value = HexPad(0x40 + i, parameter.digits());
        parameter.available = "1";
    }
    for (FakeField* field :
         {&beltpackId,   &rfCarriers, &pli,         &parkB,         &eic,          &fpn,         &fps,
          &versionField, &threshold,  &beltpack.fm, &beltpack.freq, &beltpack.rx,  &beltpack.tx, &moduleA.fm,
          &moduleA.freq, &moduleA.rx, &moduleA.tx,  &moduleB.fm,    &moduleB.freq, &moduleB.rx,  &moduleB.tx})
        field->type("1");
    window.front = nullptr;
    journal.take();
    traced.clear();
}

Workshop::Values Workshop::values() const {
    Values all;
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        const std::string value(trimmedRight(image[i].value.str()));
        const std::string available(trimmedRight(image[i].available.str()));
        all.emplace_back("record " + std::to_string(i), value + (available == "1" ? "" : " not available"));
    }
    addFieldValues(all);
    std::istringstream lines(unit_->dump());
    for (std::string line; std::getline(lines, line);)
        all.emplace_back("the unit's " + line.substr(0, 2), line.substr(3));
    all.emplace_back("module type", std::to_string(rfModule.type()));
    all.emplace_back("picture", pictureShown());
    return all;
}

void Workshop::addFieldValues(Values& values) const {
    const std::pair<const char*, const FakeField&> fields[] = {{"PSN", beltpackId},
                                                               {"RF carriers", rfCarriers},
                                                               {"PLI", pli},
                                                               {"PARK B", parkB},
                                                               {"EIC", eic},
                                                               {"FPN", fpn},
                                                               {"FPS", fps},
                                                               {"version", versionField},
                                                               {"threshold", threshold},
                                                               {"FM", beltpack.fm},
                                                               {"frequency", beltpack.freq},
                                                               {"receive", beltpack.rx},
                                                               {"transmit", beltpack.tx},
                                                               {"FM A", moduleA.fm},
                                                               {"frequency A", moduleA.freq},
                                                               {"receive A", moduleA.rx},
                                                               {"transmit A", moduleA.tx},
                                                               {"FM B", moduleB.fm},
                                                               {"frequency B", moduleB.freq},
                                                               {"receive B", moduleB.rx},
                                                               {"transmit B", moduleB.tx}};
    for (const auto& [name, field] : fields)
        values.emplace_back(name, field.text());
}

std::string Workshop::pictureShown() const {
    if (window.painted.isEmpty())
        return "nothing";
    const std::string shown = window.painted.last().first(kFrameBytes).toStdString();
    if (shown == std::string(kFrameBytes, '\0'))
        return "nothing";
    const auto& frames = port.streamed();
    for (std::size_t i = frames.size(); i > 0; --i) {
        if (frames[i - 1] == "sync" + shown)
            return i == frames.size() ? "the last frame" : "an earlier frame";
    }
    return "parts of frames";
}

void Workshop::watchDisplay(Tick lastsMs) {
    auto& stream = static_cast<sim::Beltpack&>(*unit_).displayStream();
    const Tick endsAt = loop.now() + lastsMs;
    stream.start(loop.now(), kFrameMs);
    isWatching_ = true;
    tickIn(kTickMs);
    loop.at(endsAt, [this, &stream] {
        stream.stop();
        isWatching_ = false;
        window.front = this;  // a box: a capture under way ends
    });
    while (isWatching_) {
        port.waiting();
        loop.runUntil(endsAt);
    }
}

void Workshop::tickIn(Tick ms) {
    loop.at(loop.now() + ms, [this] {
        if (!isWatching_)
            return;
        tickIn(kTickMs);  // the timer goes on while a capture waits
        screen.RScreenTimer_Timer();
    });
}

}  // namespace quorvex
