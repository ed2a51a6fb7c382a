#pragma once

#include <QFont>
#include <QRect>
#include <QString>
#include <vector>

namespace quorvex {

// For controls that stand at fixed places, drawn in twips: 15 of them are one logical pixel.

/// Twips from the corner of what holds the control, none of them negative, to the nearest pixel.
constexpr int pixels(int twips) {
    constexpr int kTwipsPerPixel = 15;
    return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel;
}

inline QRect pixels(const QRect& twips) {
    return {pixels(twips.x()), pixels(twips.y()), pixels(twips.width()), pixels(twips.height())};
}

struct FixedText {
    QString text;
    int width = 0;  ///< of its place, in pixels
};

/// `face`, set smaller where it is too wide for one of the texts, as long as it stays readable.
QFont fittingFace(QFont face, const std::vector<FixedText>& texts);

}  // namespace quorvex
