#include "simulator/display_stream.h"

#include "simulator/menu_picture.h"

namespace quorvex::sim {

namespace {

constexpr std::string_view kMarker = "sync";

/// Bytes as they might come when the display's own line is disturbed; any but those of the marker's start.
std::string garbage(int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(0x80 + (i * 37) % 0x80);
    return bytes;
}

}  // namespace

void DisplayStream::start(std::int64_t nowMs, int intervalMs) {
    nextMs_ = nowMs;
    intervalMs_ = intervalMs;
}

std::string DisplayStream::nextFrame(int volume, FaultList& faults) {
    std::string picture = drawMenu(pictures_++, volume).bytes();
    *nextMs_ += intervalMs_;
    if (const auto inner = faults.strike(FaultKind::kDisplayInnerMarker))
        picture.replace(static_cast<std::size_t>(inner->amount), kMarker.size(), kMarker);
    if (const auto cut = faults.strike(FaultKind::kDisplayShort))
        picture.resize(static_cast<std::size_t>(cut->amount));
    std::string marker(kMarker);
    if (faults.strike(FaultKind::kDisplayBrokenMarker))
        marker = "syn" + marker;
    std::string before;
    if (const auto stray = faults.strike(FaultKind::kDisplayGarbage))
        before = garbage(stray->amount);
    return before + marker + picture;
}

}  // namespace quorvex::sim
