#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace quorvex {

// Wire text is Latin-1 bytes, window text is QString; a frame converts at its edge.

inline QString toQt(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string fromQt(const QString& text) {
    return text.toLatin1().toStdString();
}

}  // namespace quorvex
