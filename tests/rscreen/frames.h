#pragma once

#include <QByteArray>

namespace quorvex {

inline constexpr int kFrameBytes = 512;

/// The 512 bytes of a picture that differs from every other `number` below 250 in every one of its bytes.
/// Each byte value occurs in the pictures; none of them holds a marker.
inline QByteArray pictureBytes(int number) {
    QByteArray bytes;
    for (int i = 0; i < kFrameBytes; ++i)
        bytes += static_cast<char>(i * 7 + i / 16 + number);
    return bytes;
}

/// A whole frame as it comes over the line.
inline QByteArray frameOf(const QByteArray& picture) {
    return "sync" + picture;
}
inline QByteArray frame(int number) {
    return frameOf(pictureBytes(number));
}

}  // namespace quorvex
