#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "simulator/calibration_stream.h"
#include "simulator/fault.h"
#include "simulator/frame.h"
#include "simulator/line_end.h"
#include "simulator/register_bank.h"

namespace quorvex::sim {

enum class RfModule { kRm5, kKirk };

/// One unit at the other end of the serial line.
///
/// What every unit does:
/// - a line ends with carriage return and line feed, and both are needed; lines that are not understood
///   are passed over in silence;
/// - "# 01" + nn reads register nn: "# " + LL + (nn + 0x80) + its digits, in upper case, where LL counts the
///   bytes after it, so 02 for a register of one byte; a register that the unit does not hold is not
///   answered;
/// - "# " + LL + (nn + 0x40) + digits writes it, if LL is the register's own length and there are digits
///   enough; digits beyond LL and trailing blanks are passed over. Not answered unless asked for;
/// - a version request is answered by any count of unrelated lines and the version line;
/// - a Kirk module's calibration mode makes it send records, see CalibrationStream.
class Unit : public LineEnd {
public:
    Unit(const Unit&) = delete;
    Unit& operator=(const Unit&) = delete;

    void receive(std::string_view bytes, std::int64_t nowMs) override;
    std::string take(std::int64_t nowMs) override;
    std::optional<std::int64_t> nextEventMs() const override;
    void setTranscript(Transcript transcript) override { transcript_ = std::move(transcript); }

    void addFault(const Fault& fault) { faults_.add(fault); }
    void clearFaults() { faults_.clear(); }

    /// Whether the unit has register `number` and answers for it.
    bool holds(int number) const { return registers_.holds(number); }
    /// The register's digits. Throws std::out_of_range for one that this unit has not got.
    const std::string& value(int number) const { return registers_.value(number); }
    /// False if the register is not held or the digits are not exactly its own count.
    bool setValue(int number, std::string_view digits) { return registers_.store(number, digits); }
    /// Throws std::out_of_range for a register that this unit has not got.
    void setAvailable(int number, bool available) { registers_.setAvailable(number, available); }
    /// What the unit holds: a line "NN=DIGITS" for each register, ascending, each ended by line feed.
    std::string dump() const;

    /// The version itself, as the program is to show it.
    void setVersion(std::string version) { version_ = std::move(version); }
    /// Unrelated lines sent before the version line.
    void setLinesBeforeVersion(int lines) { linesBeforeVersion_ = lines; }
    /// Answers each write by "# 01" + (write number + 0x80).
    void setAnswersWrites(bool answers) { answersWrites_ = answers; }

    RfModule module() const { return module_; }
    CalibrationStream& calibrationStream() { return calibration_; }
    bool inCalibrationMode() const { return inCalibrationMode_; }
    /// Whether a fault has silenced the unit for good.
    bool isGone() const { return gone_; }

protected:
    /// What tells one kind of unit from the other on the line.
    struct CommandCodes {
        int version;      ///< "! 01" + code
        int calibration;  ///< "! 03" + code + "E803" or "0000"
    };

    Unit(RfModule module, CommandCodes codes) : module_(module), codes_(codes) {}

    RegisterBank& registers() { return registers_; }
    FaultList& faults() { return faults_; }

    /// Queues `text` as the reply to the line just received, with the faults that strike at `number`.
    void reply(const std::string& text, std::optional<int> number, std::int64_t nowMs);
    /// Queues bytes that are sent just as they are; `shown` is for the transcript. A late reply holds up what
    /// comes after it, as it does on a line with one sender.
    void send(std::string bytes, std::string shown, std::int64_t dueMs);
    void note(const std::string& text, std::int64_t nowMs);

private:
    /// What will go out on the line, and when.
    struct Piece {
        std::int64_t dueMs = 0;
        std::string bytes;
        std::string shown;  ///< for the transcript
    };

    /// A "!" command of this kind of unit alone. False if it is not known.
    virtual bool handleOwnCommand(const Frame& frame, std::int64_t nowMs) = 0;
    /// What a read of a register that is not held is answered with; nothing for silence.
    virtual std::optional<std::string> refusal(int number) const = 0;
    /// The Mid value that the calibration records follow.
    virtual int midValue() const = 0;
    virtual void written(int /*number*/) {}
    /// A stream of the unit's own, with the meaning of CalibrationStream's functions.
    virtual std::optional<std::int64_t> nextStreamMs() const { return std::nullopt; }
    virtual void stream() {}

    void handleLine(const std::string& line, std::int64_t nowMs);
    void handleRead(int number, std::int64_t nowMs);
    void handleWrite(const Frame& frame, std::int64_t nowMs);
    bool handleCommand(const Frame& frame, std::int64_t nowMs);
    bool switchCalibration(std::string_view data, std::int64_t nowMs);
    void replyVersion(std::int64_t nowMs);
    void goIfDue(int number, std::int64_t nowMs);
    void runStreams(std::int64_t nowMs);
    void sendRecords(std::int64_t dueMs);
    void sendLine(const std::string& line, std::int64_t dueMs);
    std::string nextUnrelatedLine();
    void record(TranscriptEntry::Kind kind, const std::string& text, std::int64_t atMs);

    RfModule module_;
    CommandCodes codes_;
    RegisterBank registers_;
    FaultList faults_;
    CalibrationStream calibration_;
    std::deque<Piece> outbox_;
    Transcript transcript_;
    std::string line_;       ///< what has come of the line being received
    std::string lastLine_;   ///< the last complete one
    std::set<int> written_;  ///< registers that the program has written
    std::string version_ = "4.07";
    int linesBeforeVersion_ = 0;
    int unrelatedLines_ = 0;
    bool answersWrites_ = false;
    bool inCalibrationMode_ = false;
    bool gone_ = false;
};

}  // namespace quorvex::sim
