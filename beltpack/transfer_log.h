#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "beltpack/settings_image.h"
#include "link/operation.h"

namespace quorvex {

/// What became of one read or write of a Beltpack, in the words of a record of it.
struct TransferEntry {
    std::string port;         ///< its name when the transfer began, UTF-8
    std::string operation;    ///< "read", "write", "production-values", "set System Id", ...
    std::string outcome;      ///< "done", "differs", "odd reply", "failed", "port lost", "interrupted"
    std::string psn;          ///< the unit's serial number in decimal; empty where it is not known
    std::string differences;  ///< what a write changed, "Headset Limit: 30 -> 24; ..."
    bool isRead = false;
    std::string file;  ///< a settings file of what the unit holds; empty where not all of it is known
};

class Transfer;

/// Knows of the unit on a line what its replies have said of it, and tells of each transfer that ends.
class TransferLog {
public:
    explicit TransferLog(const CommandLink& link);
    TransferLog(const TransferLog&) = delete;
    TransferLog& operator=(const TransferLog&) = delete;

    /// `tell` gets each transfer at its end, `portName` is asked as it begins.
    void onEnd(std::function<void(const TransferEntry&)> tell, std::function<std::string()> portName) {
        tell_ = std::move(tell);
        portName_ = std::move(portName);
    }
    /// The program ends, or is to: transfers under way are told as they stand.
    void interrupt();

    /// While it lives, a write and the read that follows it are one transfer: that read tells what is left in
    /// the unit. When it fails, both are told.
    class Reread {
    public:
        explicit Reread(TransferLog& log) : log_(log) { log_.awaitsReread_ = true; }
        ~Reread();
        Reread(const Reread&) = delete;
        Reread& operator=(const Reread&) = delete;

    private:
        TransferLog& log_;
    };

private:
    friend class Transfer;

    using Texts = std::array<std::optional<std::string>, SettingsImage::kParameters>;
    struct Facts {
        std::string port, operation;
        bool isRead = false;
        bool isDone = false;     ///< it went through to its end
        std::uint32_t line = 0;  ///< as line_ was when it began
        SettingsImage before;    ///< blank: not known
        Texts written;
    };
    /// A write that is over, but for the read that follows it.
    struct Waiting {
        Facts facts;
        std::string broken;
        TransferEntry entry;  ///< as it stood then
    };

    void begin(Transfer& transfer);
    void end(Transfer& transfer, const std::string& broken);
    void tell(const TransferEntry& entry) const;
    void tellWaiting();
    /// `broken`: the outcome of one that did not go through to its end.
    TransferEntry entryOf(const Facts& facts, const std::string& broken) const;
    static std::string outcomeOf(const Facts& facts, const SettingsImage& after);
    static std::string differencesOf(const Facts& facts, const SettingsImage& after);

    const CommandLink& link_;
    std::function<void(const TransferEntry&)> tell_;
    std::function<std::string()> portName_;
    std::function<bool()> isSameLine_;
    std::uint32_t line_ = 0;  ///< another one each time that there may be another unit
    SettingsImage known_;     ///< what the unit holds; blank: not known
    std::vector<Transfer*> underWay_;
    bool awaitsReread_ = false;
    std::optional<Waiting> waiting_;
};

/// One read or write of a Beltpack for as long as it lasts; it has failed unless it says that it is done. It
/// goes by the unit's replies alone, and only by whole ones: what is written or shown in the window tells
/// nothing.
class Transfer {
public:
    enum class Kind { read, write };

    /// Ends before `operation` does. Nothing is told where the image has no log.
    Transfer(const Operation& operation, const SettingsImage& image, Kind kind, std::string name);
    ~Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    /// Before `data` is sent to the parameter `record`, which is then unknown until the unit has told it.
    void writes(int record, std::string_view data);
    /// The unit's reply to reading the parameter.
    void answered(int record, std::string_view reply);
    /// The unit does not have the parameter.
    void lacks(int record);
    void done() { facts_.isDone = true; }

private:
    friend class TransferLog;

    const Operation& operation_;
    TransferLog* log_;  ///< null: nobody wants to know, or it was told
    TransferLog::Facts facts_;
};

}  // namespace quorvex
