#pragma once

#include <string>

#include "antenna/antenna_read.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_controls.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/fake_radio_module.h"
#include "tests/support/journal.h"
#include "tests/support/rows.h"

namespace quorvex {

/// Reading an Active Antenna with nothing real around it, on an open port that nobody answers at first.
struct AntennaBench {
    explicit AntennaBench(int heldType = 0, FakeLoop::Tick startTick = 0) : loop(startTick) {
        module.hold(heldType);
        port.holdOpen();
    }

    struct Module {
        Module(Journal& journal, const std::string& suffix)
            : fm(journal, "TextFmDev" + suffix),
              freq(journal, "TextFreqAdj" + suffix),
              rx(journal, "TextFreqAdjRx" + suffix),
              tx(journal, "TextFreqAdjTx" + suffix) {
            for (FakeField* field : {&fm, &freq, &rx, &tx})
                field->type("old");
        }
        FakeField fm, freq, rx, tx;
        CalibrationFields fields() { return {fm, freq, rx, tx}; }
    };

    void answer(const char* line, const std::string& reply) {
        port.answer(line, reply.empty() ? reply : reply + "\r\n");
    }
    /// Lets a whole antenna answer.
    void connectRm5() {
        answer("# 0101", "# 02811E");
        answer("# 0102", "# 0282C8");
        answer("# 0107", "# 01BF");
        answer("# 0105", "# 02850C");
        answer("# 0106", "# 028603");
        answer("! 0E030002100ECE00001503FF000000", "^ 020002");
    }
    void connectKirk() {
        connectRm5();
        answer("# 0107", "# 028701");
        answer("# 0108", "# 028802");
        answer("# 0109", "# 028903");
        answer("# 010a", "# 028A04");
    }
    void run(bool tbr6) { tbr6 ? read.CommandSetTbr6_Click() : read.CommandRdSettingsAA_Click(); }

    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    Module a{journal, "A"}, b{journal, "B"};
    FakeRadioModule module{journal};
    AntennaRead read{link, module, a.fields(), b.fields()};
};

inline constexpr const char* kTbr6Line = "! 0E030002100ECE00001503FF000000";

}  // namespace quorvex
