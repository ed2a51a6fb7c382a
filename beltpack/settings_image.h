#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "beltpack/fixed_text.h"

namespace quorvex {

/// The value of a parameter that the unit does not have.
inline constexpr std::string_view kNotAvailable = "N/A";

/// One parameter of a Beltpack.
struct Parameter {
    std::int16_t length = 0;  ///< payload bytes of a reply or write: the number and the data, 2 or 6
    std::int16_t number = 0;  ///< on the wire, 1 to 21
    FixedText<10> value;  ///< hexadecimal digits, kNotAvailable when the unit has none, blank when unknown
    FixedText<20> name;
    int highest = 0;         ///< the largest value that means something; -1 where every one does
    FixedText<2> available;  ///< "1" or "0" by the last read, blank before one

    std::string readLine() const;
    /// Characters of the reply to `readLine` and of the read-back of a write.
    int replyLength() const { return 2 * length + 4; }
    /// Number of data digits.
    int digits() const { return 2 * (length - 1); }
    /// Writes the whole value field, its trailing blanks too, or other data.
    std::string writeLine() const { return writeLine(value.str()); }
    std::string writeLine(std::string_view data) const;

    /// Whether the last read found it. Throws "Type mismatch" before the first read: the field holds no
    /// number.
    bool isAvailable() const;
    /// Stores the data digits of what a unit answered to `readLine`.
    void storeReply(std::string_view reply);
};

class TransferLog;

/// The configurable parameters of one Beltpack, in memory. Records 0 to 20 are in use; record 21 stays empty.
class SettingsImage {
public:
    static constexpr int kParameters = 21;
    static constexpr int kRecords = 22;

    // Records that something else than the table goes by.
    static constexpr int kPsn = 0;
    static constexpr int kSystemIdLength = 1;
    static constexpr int kSystemId = 2;
    static constexpr int kHeadsetLimit = 3;
    static constexpr int kRssiWarningAlarm = 4;
    static constexpr int kLowBatteryAlarm = 5;
    static constexpr int kMicType = 6;
    static constexpr int kMicGain = 7;
    static constexpr int kHeadphoneOffLevel = 8;
    static constexpr int kSidetoneVolume = 9;
    static constexpr int kMasterVolume = 10;
    static constexpr int kProgrammingMode = 11;
    static constexpr int kRfCarrierMask = 13;
    static constexpr int kPageChangeMode = 14;
    static constexpr int kFccEnabled = 15;
    static constexpr int kMicNoiseGate = 18;
    static constexpr int kFeatureMap = 20;

    SettingsImage();

    /// Throws "Subscript out of range" outside 0 to 21.
    Parameter& operator[](int index);
    const Parameter& operator[](int index) const;

    /// A read that fills the image, for as long as it lasts. Blanks the values of records 0 to 20 at its
    /// start.
    class Filling {
    public:
        explicit Filling(SettingsImage& image);
        ~Filling();
        Filling(const Filling&) = delete;
        Filling& operator=(const Filling&) = delete;

    private:
        SettingsImage& image_;
        std::uint32_t file_;  ///< number of files before it
    };
    /// Whether a read is under way: some values may be blank, or another unit's.
    bool isBeingFilled() const { return fillings_ > 0; }
    /// A file's values take the place of all that was there; reads under way fill it no more.
    void beginFile();

    // For operations that belong to what the image holds as they begin: true until ...
    std::function<bool()> untilFile() const;      ///< ... a file was loaded
    std::function<bool()> untilReplaced() const;  ///< ... a file was loaded or a read begun

    /// From now on reads and writes on the image are told to `log`, which must outlive them; null for none.
    void keepLog(TransferLog* log) { log_ = log; }
    TransferLog* log() const { return log_; }

    /// The serial number in decimal: the last five digits of record 0.
    std::string psnText() const;
    /// Whether a read or a file has filled the image, so that it may be written to a unit.
    bool isFilled() const { return !records_[kPsn].value.isBlank(); }

private:
    std::array<Parameter, kRecords> records_;
    std::uint32_t files_ = 0;  ///< loaded so far
    std::uint32_t reads_ = 0;  ///< begun so far
    int fillings_ = 0;         ///< reads under way, inside each other's waits
    TransferLog* log_ = nullptr;
};

}  // namespace quorvex
