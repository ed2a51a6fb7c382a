#include "form/status_line.h"

namespace quorvex {

StatusLine::StatusLine(QWidget* parent) : QLabel(parent) {
    setObjectName(QStringLiteral("LblStatus"));
    setTextFormat(Qt::PlainText);
    setFrameShape(QFrame::StyledPanel);
    setMargin(4);
    setAutoFillBackground(true);
    // A text longer than the line must not widen the window.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    tell({}, kBlack);
}

void StatusLine::tell(const QString& text, Colour colour) {
    QPalette colours = palette();
    colours.setColor(QPalette::Window, QColor(252, 252, 248));
    colours.setColor(QPalette::WindowText,
                     QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                            static_cast<int>(colour >> 16 & 0xFF)));
    setPalette(colours);
    setText(text);
}

}  // namespace quorvex
