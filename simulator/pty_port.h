#pragma once

#include <string>
#include <string_view>

namespace quorvex::sim {

/// A pseudo-terminal that stands for the unit's serial connector, and the link by which it is found.
/// Programs may open and close it as often as they like.
class PtyPort {
public:
    /// Makes the pseudo-terminal, in raw mode, and `linkPath` a link to it. A link that is already there is
    /// replaced if it leads to a terminal or nowhere; anything else stays, and std::runtime_error says so,
    /// as it does when the system refuses something.
    explicit PtyPort(std::string linkPath);

    /// Removes the link, unless somebody has made it lead elsewhere.
    ~PtyPort();

    PtyPort(const PtyPort&) = delete;
    PtyPort& operator=(const PtyPort&) = delete;

    const std::string& devicePath() const { return devicePath_; }

    /// To wait on for bytes from the program.
    int dataDescriptor() const { return master_; }
    /// To wait on for programs that open or close the port; -1 if the system does not tell.
    int userDescriptor() const { return watch_; }

    /// The bytes that have come; empty when there are none.
    std::string read();

    /// Hands bytes to the program. False if it has left so many unread that some of these are lost.
    bool write(std::string_view bytes);

    /// To be called when userDescriptor() has something, and before read(): makes the port fresh for the
    /// program that opens it or will open it next. Whether one has opened it.
    bool handleUsers();

private:
    void openTerminal();
    void makeLink();
    void watchUsers();

    std::string linkPath_;
    std::string devicePath_;
    int master_ = -1;
    int slave_ = -1;  ///< kept open, or the master would fail whenever no program has the port open
    int watch_ = -1;
};

}  // namespace quorvex::sim
