#include "app/port_label.h"

#include <QPainter>

#include "form/frame.h"
#include "form/lengths.h"

namespace quorvex {

namespace {

// In twips.
constexpr int kMargin = 120;
constexpr int kDot = 150;
constexpr int kGap = 90;

constexpr QRgb kGreen = qRgb(0, 160, 60);
constexpr QRgb kRed = qRgb(220, 50, 47);

QString nameOf(PortLabel::State state) {
    return state == PortLabel::State::open   ? QStringLiteral("open")
           : state == PortLabel::State::lost ? QStringLiteral("lost")
                                             : QStringLiteral("not open");
}

}  // namespace

PortLabel::PortLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setObjectName(QStringLiteral("LabelComPort"));
    setAlignment(Qt::AlignVCenter | Qt::AlignLeft);
    setContentsMargins(pixels(kMargin + kDot + kGap), 0, pixels(kMargin), 0);
    setMinimumWidth(sizeHint().width());  // the first text is the longest
    setAccessibleDescription(nameOf(state_));
}

void PortLabel::tell(const QString& text, State state, const QString& hover) {
    state_ = state;
    setText(text);
    setToolTip(hover);
    setAccessibleDescription(nameOf(state));
    update();
}

/// A full dot, an empty one, a crossed one: not by its colour alone.
void PortLabel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawEdge(painter, rect(), palette());
    const int size = pixels(kDot);
    const QRectF dot(pixels(kMargin), (height() - size) / 2.0, size, size);
    const QColor colour = state_ == State::open   ? QColor(kGreen)
                          : state_ == State::lost ? QColor(kRed)
                                                  : palette().color(QPalette::WindowText);
    constexpr double kLine = 7.5;  ///< a part of the dot
    painter.setPen(QPen(colour, size / kLine));
    if (state_ == State::open)
        painter.setBrush(colour);
    painter.drawEllipse(dot);
    if (state_ == State::lost)
        painter.drawLine(dot.topLeft(), dot.bottomRight());
}

}  // namespace quorvex
