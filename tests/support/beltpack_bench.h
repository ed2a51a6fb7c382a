#pragma once

#include <array>
#include <string>

#include "beltpack/beltpack_read.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_controls.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_neighbours.h"
#include "tests/support/fake_port.h"
#include "tests/support/fake_radio_module.h"
#include "tests/support/journal.h"

namespace quorvex {

/// The read line of a parameter and what a Beltpack answers to it, both as they stand on the wire.
struct ParameterLines {
    const char* request;
    const char* head;    ///< of the answer
    const char* digits;  ///< of the answer
};

/// A read of a Beltpack with nothing real around it. The port is open and no unit answers at first.
struct BeltpackBench {
    static const std::array<ParameterLines, 21> kParameters;

    explicit BeltpackBench(FakeLoop::Tick startTick = 0) : loop(startTick) { port.holdOpen(); }
    BeltpackBench(const BeltpackBench&) = delete;
    BeltpackBench& operator=(const BeltpackBench&) = delete;

    /// Lets a whole Beltpack answer: module detection, 21 parameters, calibration values.
    void connectRm5();
    void connectKirk();
    /// What a parameter reads as from now on.
    void setDigits(int index, const std::string& digits);
    /// No answer to `line` from now on.
    void silence(const std::string& line) { port.answer(line, ""); }
    void silenceParameter(int index) { silence(kParameters.at(static_cast<std::size_t>(index)).request); }

    /// The value fields of the records 0 to 20, each with all its characters.
    QStringList values() const;
    /// What stands behind the last line sent.
    QStringList afterLastLine() const;

    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    SettingsImage image;
    FakeOptions mic{journal, {"optionMICBal", "optionMICUnBal", "optionMICElectret"}};
    FakeCheck batteryAlarm{journal, "checkBattAlarm"};
    FakeList hwRevision{journal, "BPHWRevision"};
    FakeList regulations{journal, "BPRegulations"};
    SettingsEditors editors{image, mic, batteryAlarm, hwRevision, regulations};
    FakeField beltpackId{journal, "TextBeltpackId"};
    FakeField rfCarriers{journal, "TextRfCarrs"};
    FakeField pli{journal, "TextPli"};
    FakeField fmDeviation{journal, "TextFMDev"};
    FakeField freqAccuracy{journal, "TextFreqAccr"};
    FakeField freqAccuracyRx{journal, "TextFreqAccrRx"};
    FakeField freqAccuracyTx{journal, "TextFreqAccrTx"};
    FakeField rssiThreshold{journal, "TextRssiThr"};
    FakeNeighbours neighbours{journal};
    FakeRadioModule module{journal};
    BeltpackRead read{link,
                      image,
                      module,
                      editors,
                      {beltpackId,
                       rfCarriers,
                       pli,
                       {fmDeviation, freqAccuracy, freqAccuracyRx, freqAccuracyTx},
                       rssiThreshold},
                      neighbours};

private:
    void connectParameters();
};

}  // namespace quorvex
