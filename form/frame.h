#pragma once

#include <QGroupBox>

namespace quorvex {

/// The face of headings: that of the window, but heavier.
QFont headingFace(QFont face);
/// A quiet line across `widget`, `y` pixels below its top, `inset` pixels short of both ends.
void drawRule(QWidget& widget, int y, int inset = 0);

/// The rounded edge of a part of the bottom line, filled with the painter's brush.
void drawEdge(QPainter& painter, const QRect& area, const QPalette& window);

/// A group box with its title as a heading and a line below it instead of a box, so that what it holds starts
/// at the same edge as the title.
class Frame : public QGroupBox {
public:
    using QGroupBox::QGroupBox;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvex
