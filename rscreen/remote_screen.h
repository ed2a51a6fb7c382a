#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>

#include "link/command_link.h"
#include "link/controls.h"

namespace quorvex {

/// The picture of the Beltpack's display: 33 lines of 16 bytes, the most significant bit leftmost, a set
/// bit black, a clear one green. A frame fills 32 lines; the last one always shows the ground, as intended.
using ScreenBits = std::array<std::uint8_t, 33 * 16>;
inline constexpr int kScreenLines = 33;
inline constexpr int kScreenLineBytes = 16;
inline constexpr int kScreenScale = 2;  ///< each display pixel is a square of 2 x 2
// Colours as 0xRRGGBB.
inline constexpr std::uint32_t kScreenInk = 0x000000;
inline constexpr std::uint32_t kScreenGround = 0x00FF00;

/// What the remote screen needs of the window.
class RemoteScreenWindow {
public:
    virtual ~RemoteScreenWindow() = default;
    /// What is open in front of the window, null for nothing. A capture gives way when that changes: whoever
    /// waits below it for a box to be closed must go on then.
    virtual const void* inFront() const = 0;
    virtual void repaint(const ScreenBits& bits) = 0;
    /// Saves the picture as shown, replacing a file of that name whole or not at all. Empty on success,
    /// else what went wrong, UTF-8.
    virtual std::string savePicture(const std::string& path) = 0;
};

struct RemoteScreenFields {
    TextField& rootDir;
    TextField& fileName;
    TextField& counter;
    CheckField& autoIncrement;
};

/// Catching the Beltpack's display stream, and saving the picture under numbered names.
class RemoteScreen {
public:
    static constexpr int kHighestCounter = std::numeric_limits<std::uint8_t>::max();

    RemoteScreen(CommandLink& link, RemoteScreenWindow& window, RemoteScreenFields fields);

    /// Takes a frame if one is waiting, then repaints. A tick while another operation is on the port only
    /// repaints, and so does one while an earlier one still receives; the first of those leaves a frame alone
    /// that is nearly whole, for it takes little more than a tick and would be seen torn. True when a whole
    /// frame was received.
    bool RScreenTimer_Timer();
    void autoIncValText_Change();
    void CommandScreenDump_Click();

    ScreenBits bits() const;

private:
    // True when a whole frame was received.
    bool takeFrames();
    bool capture();
    bool isCapturing() const { return isCaptureWanted_ && isCaptureWanted_(); }
    void showCounter();
    void reportCounterRange();

    CommandLink& link_;
    RemoteScreenWindow& window_;
    RemoteScreenFields fields_;
    std::uint8_t counter_ = 0;
    std::function<bool()> isCaptureWanted_;  ///< of the capture under way; empty for none
    std::uint32_t captures_ = 0;             ///< number of captures so far
    int ticksInCapture_ = 0;
    bool isBehind_ = false;  ///< frames may have piled up
};

}  // namespace quorvex
