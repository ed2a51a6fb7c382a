#include "form/status_line.h"

#include <QApplication>
#include <QEvent>
#include <algorithm>

#include "form/frame.h"
#include "form/lengths.h"

namespace quorvex {

namespace {

// In twips.
constexpr int kMargin = 90;
constexpr int kMark = 210;
constexpr int kMarkGap = 105;
constexpr int kStrip = 45;
constexpr int kTextLeft = kMargin + kMark + kMarkGap;

/// On these, green and red text has a contrast of 3.6 : 1; for large bold text 3 : 1 is enough.
constexpr QRgb kLightGround = qRgb(252, 252, 248);
constexpr QRgb kGroundInTheDark = qRgb(246, 246, 242);

QFont largeFace(QFont face) {
    constexpr double kLargePoints = 14;  ///< from here on, bold text counts as large
    face.setPointSizeF(std::max(kLargePoints, face.pointSizeF()));
    face.setBold(true);
    return face;
}

}  // namespace

StatusLine::StatusLine(QWidget* parent) : QLabel(parent), face_(largeFace(font())) {
    setObjectName(QStringLiteral("LblStatus"));
    setTextFormat(Qt::PlainText);
    setFont(face_);
    setContentsMargins(pixels(kTextLeft), 0, pixels(kMargin), 0);
    setFixedHeight(QFontMetrics(face_).height() + 2 * pixels(kMargin));
    // A text longer than the line must not widen the window.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    tell({}, kBlack);
}

void StatusLine::tell(const QString& text, Colour colour) {
    colour_ = colour;
    mark_ = markOf(text, colour);
    takeColours();
    setText(text);
    fit();
    update();  // the mark too
}

void StatusLine::showProgress(int done, int total) {
    progress_ = total > 0 ? static_cast<double>(done) / total : 0;
    setAccessibleDescription(total > 0 ? QStringLiteral("%1 of %2").arg(done).arg(total) : QString());
    update();
}

bool StatusLine::isDark() const {
    constexpr int kMiddle = 128;
    return QApplication::palette().color(QPalette::Window).lightness() < kMiddle;
}

void StatusLine::takeColours() {
    QPalette colours = palette();
    colours.setColor(QPalette::Window, QColor(isDark() ? kGroundInTheDark : kLightGround));
    colours.setColor(QPalette::WindowText,
                     QColor(static_cast<int>(colour_ & 0xFF), static_cast<int>(colour_ >> 8 & 0xFF),
                            static_cast<int>(colour_ >> 16 & 0xFF)));
    setPalette(colours);
}

void StatusLine::fit() {
    const QFont fitting = fittingFace(face_, {{text(), contentsRect().width()}});
    if (fitting != font())
        setFont(fitting);
}

/// In the dark no wider than the text needs, so that it does not glare.
QRect StatusLine::ground() const {
    if (!isDark())
        return rect();
    const int end = contentsRect().left() + fontMetrics().horizontalAdvance(text()) + pixels(kMargin);
    return {0, 0, std::min(end, width()), height()};
}

void StatusLine::paintEvent(QPaintEvent* event) {
    const QPalette window = QApplication::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawEdge(painter, rect(), window);
    if (!isDark() || !text().isEmpty()) {
        painter.setBrush(palette().color(QPalette::Window));
        drawEdge(painter, ground(), window);
    }

    painter.setPen(palette().color(QPalette::WindowText));
    const int mark = pixels(kMark);
    drawMark(painter, QRectF(pixels(kMargin), (height() - mark) / 2.0, mark, mark), mark_);
    const int strip = pixels(kStrip);
    painter.fillRect(QRectF(0, height() - strip, width() * progress_, strip),
                     window.color(QPalette::Highlight));
    painter.end();
    QLabel::paintEvent(event);
}

void StatusLine::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    fit();
}

void StatusLine::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        takeColours();  // of the same palette it takes the same ones, and there is no further change
}

}  // namespace quorvex
