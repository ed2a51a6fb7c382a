#pragma once

#include "beltpack/beltpack_write.h"
#include "tests/support/beltpack_bench.h"

namespace quorvex {

/// A bench on which a Beltpack with an RM5 has been read, and is then written.
struct WriteBench : BeltpackBench {
    /// Reads the whole unit, and forgets how.
    void readUnit() {
        connectRm5();
        read.CommandRdSettingsBp_Click();
        journal.take();
    }
    /// The lines sent since the read.
    QStringList lines() const { return journal.entriesOf("> "); }

    BeltpackWrite write{link, image};
};

// What a whole write of BeltpackBench's unit puts on the wire, as an oscilloscope would show it.
inline const QStringList kWriteLines{"> # 06410044303039", "> # 02421F        ", "> # 0643100ECE1000",
                                     "> # 024430        ", "> # 024500        ", "> # 024601        ",
                                     "> # 024701        ", "> # 024802        ", "> # 024903        ",
                                     "> # 024A04        ", "> # 024B10        ", "> # 024C05        ",
                                     "> # 024D06        ", "> # 064E03FF00000F", "> # 024F07        ",
                                     "> # 025001        ", "> # 025108        ", "> # 025209        ",
                                     "> # 02530A        ", "> # 02540B        ", "> # 025502        "};
inline const QStringList kReadBackLines{
    "> # 0101", "> # 0102", "> # 0103", "> # 0104", "> # 0105", "> # 0106", "> # 0107",
    "> # 0108", "> # 0109", "> # 010A", "> # 010B", "> # 010C", "> # 010D", "> # 010E",
    "> # 010F", "> # 0110", "> # 0111", "> # 0112", "> # 0113", "> # 0114", "> # 0115"};

/// The lines for the records `first` to `last`.
inline QStringList exchanges(int first, int last) {
    QStringList lines;
    for (int i = first; i <= last; ++i)
        lines << kWriteLines[i] << kReadBackLines[i];
    return lines;
}

inline const QStringList kWriteStart{"hourglass up", "status black: Writing settings to Beltpack..."};
inline const QStringList kWritten{"hourglass down",
                                  "status green: Settings written to Beltpack successfully!"};
inline const QStringList kNotWritten{
    "hourglass down",
    "box critical: Error occured while writing settings to Beltpack!\r\n\r\nCheck connection to Beltpack. []",
    "status black: Error communicating with Beltpack."};
inline const QStringList kNotVerified{
    "box plain: Rd Error []", "box critical: Error occured while verifying settings written to Beltpack! []"};
inline const QString kNeverFilled =
    "box critical: File must be loaded or Beltpack read before the settings can be written.\r\n\r\n"
    "Use the 'Update' buttons to write the Sytem and Beltpack IDs individually. []";

}  // namespace quorvex
