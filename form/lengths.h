#pragma once

#include <QFont>
#include <QRect>
#include <QString>
#include <vector>

namespace quorvex {

// The lengths of the window, in twips: 15 of them are one logical pixel at the default font, and more where
// the font of the window is larger.

/// Twips, none of them negative, to the nearest pixel. No smaller than at the default font.
int pixels(int twips);
QRect pixels(const QRect& twips);

/// What all pages have in common.
namespace grid {
inline constexpr int kField = 390;       ///< height of a field and of a button
inline constexpr int kMainButton = 510;  ///< height of a button that stands out
inline constexpr int kGap = 120;         ///< between a control and the next
inline constexpr int kLabelGap = 45;     ///< between a label and the field below it
inline constexpr int kFrameGap = 270;    ///< between a frame and the next, at least
inline constexpr int kColumnGap = 300;   ///< between a column and the next
inline constexpr int kInset = 180;       ///< around the columns of a page
inline constexpr int kFrameInset = 45;   ///< around what a frame holds
inline constexpr int kRowButton = 1200;  ///< least width of a button at the end of its row
inline constexpr int kHeading = 150;     ///< between a heading and what it stands over
}  // namespace grid

/// The width that a window needs to show its whole title, in pixels: beside it a window manager has its
/// buttons.
int widthForTitle(const QString& title);

struct PlacedText {
    QString text;
    int width = 0;  ///< of its place, in pixels
};

/// `face`, its letters set closer where it is too wide for one of the texts, then smaller, as long as it
/// stays readable.
QFont fittingFace(QFont face, const std::vector<PlacedText>& texts);

}  // namespace quorvex
