#pragma once

#include <QLabel>

#include "link/console.h"

namespace quorvex {

/// The status line at the bottom of the window, `LblStatus`. Its ground is light under every palette,
/// because the colours of its texts are fixed.
class StatusLine : public QLabel {
public:
    explicit StatusLine(QWidget* parent = nullptr);
    void tell(const QString& text, Colour colour);
};

}  // namespace quorvex
