#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace quorvex {

// Wire text is Latin-1, texts for the operator are UTF-8, window text is QString; a frame converts at its
// edge.

inline QString fromLatin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string toLatin1(const QString& text) {
    return text.toLatin1().toStdString();
}
inline QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace quorvex
