#pragma once

#include <functional>
#include <memory>
#include <string>

#include "calibration/calib_run.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_controls.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/fake_radio_module.h"
#include "tests/support/journal.h"
#include "tests/support/rows.h"

namespace quorvex {

/// The dialog in memory: notes what the run does to it, and ends as it is told to.
class FakeCalibDialog : public CalibDialog {
public:
    FakeCalibDialog(Journal& journal, const std::function<void()>& whileShown)
        : journal_(journal), whileShown_(whileShown) {}
    ~FakeCalibDialog() override { note("dialog gone"); }

    void Set_Cal_Data(std::int16_t fm, std::int16_t frequency, std::int16_t transmit, std::int16_t receive,
                      std::int16_t otherFm, const std::string& caption) override {
        std::string filled = "dialog filled:";
        for (const int value : {fm, frequency, transmit, receive, otherFm})
            filled += " " + std::to_string(value);
        journal_.note(filled + " " + caption);
    }
    void ShowRssiThreshold() override { note("threshold frame shown"); }
    TextField& rssiThreshold() override { return threshold_; }
    void StartCalTimer() override { note("timer started"); }
    void showModally() override {
        note("dialog shown");
        if (whileShown_)
            whileShown_();
        note("dialog closed");
    }

private:
    void note(const char* entry) { journal_.note(entry); }

    Journal& journal_;
    const std::function<void()>& whileShown_;
    FakeField threshold_{journal_, "dialog threshold"};
};

/// Calibration runs with nothing real around them, on an open port that nobody answers at first.
struct RunBench : private CalibNeighbours {
    explicit RunBench(int rfType = 0, FakeLoop::Tick startTick = 0) : loop(startTick) {
        port.holdOpen();
        module.hold(rfType);
        const auto fill = [](Set& fields, const char* fm, const char* freq, const char* tx, const char* rx) {
            fields.fm.type(fm);
            fields.freq.type(freq);
            fields.tx.type(tx);
            fields.rx.type(rx);
        };
        fill(beltpack, "33", "4", "2", "6");
        fill(moduleA, "34", "5", "3", "7");
        fill(moduleB, "35", "-2", "1", "0");
        threshold.type("72");
    }

    struct Set {
        Set(Journal& journal, const char* fmName, const std::string& freqName, const char* suffix)
            : fm(journal, fmName),
              freq(journal, freqName + suffix),
              tx(journal, freqName + "Tx" + suffix),
              rx(journal, freqName + "Rx" + suffix) {}
        FakeField fm, freq, tx, rx;
        CalibrationFields fields() { return {fm, freq, rx, tx}; }
    };

    /// "Beltpack", "A" or "B".
    void run(const QString& target) {
        if (target == "Beltpack")
            calib.CommandCalibBp_Click(beltpack.fields(), threshold);
        else if (target == "A")
            calib.CommandCalibAAA_Click(moduleA.fields(), moduleB.fields());
        else
            calib.CommandCalibAAB_Click(moduleA.fields(), moduleB.fields());
    }
    Set& set(const QString& target) {
        return target == "Beltpack" ? beltpack : target == "A" ? moduleA : moduleB;
    }
    /// How the next dialog ends, besides what `whileShown` does.
    void endWith(CalResult result) {
        whileShown = [this, result] { *result_ = result; };
    }
    void setResult(CalResult result) { *result_ = result; }

    /// Lets a whole unit answer every read.
    void connect() {
        for (const auto& [line, reply] : {std::pair{"# 0138", "# 02B850"}, std::pair{"# 013D", "# 02BD21"},
                                          std::pair{"# 013c", "# 02BC0A"}, std::pair{"# 0139", "# 02B907"},
                                          std::pair{"# 013a", "# 02BAC8"}, std::pair{"# 010B", "# 028B51"},
                                          std::pair{"# 0101", "# 02811E"}, std::pair{"# 0102", "# 02821F"},
                                          std::pair{"# 0105", "# 02850C"}, std::pair{"# 0106", "# 028603"},
                                          std::pair{"# 0107", "# 0287FF"}, std::pair{"# 0108", "# 028810"},
                                          std::pair{"# 0109", "# 028911"}, std::pair{"# 010a", "# 028A12"}})
            port.answer(line, std::string(reply) + "\r\n");
    }

    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    Set beltpack{journal, "TextFMDev", "TextFreqAccr", ""};
    Set moduleA{journal, "TextFmDevA", "TextFreqAdj", "A"},
        moduleB{journal, "TextFmDevB", "TextFreqAdj", "B"};
    FakeField threshold{journal, "TextRssiThr"};
    FakeRadioModule module{journal};
    std::function<void()> whileShown;
    CalibRun calib{link, module, *this};

private:
    std::unique_ptr<CalibDialog> createDialog(CalResult& result) override {
        // As the real one does when it loads.
        result = CalResult::none;
        result_ = &result;
        return std::make_unique<FakeCalibDialog>(journal, whileShown);
    }

    CalResult* result_ = nullptr;
};

}  // namespace quorvex
