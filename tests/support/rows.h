#pragma once

#include <QByteArray>
#include <QString>
#include <string>
#include <string_view>

#include "link/qt_text.h"

namespace quorvex {

// Texts of the core in the forms that Qt Test compares and prints.

inline QString shown(std::string_view text) {
    return fromLatin1(text);
}
inline QString shown(const std::string& text) {
    return fromLatin1(text);
}
inline QString shown(const char* text) {
    return fromLatin1(text);
}
inline std::string bytesOf(const QByteArray& text) {
    return text.toStdString();
}

}  // namespace quorvex
