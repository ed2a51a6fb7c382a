#include "form/lengths.h"

#include <QApplication>
#include <QFontMetrics>
#include <algorithm>

namespace quorvex {

int pixels(int twips) {
    constexpr int kDefaultHeight = 14;  ///< of the default font, in pixels
    constexpr int kTwipsPerPixel = 15;
    constexpr int kDivisor = kDefaultHeight * kTwipsPerPixel;
    const int height = std::max(QFontMetrics(QApplication::font()).height(), kDefaultHeight);
    return (twips * height + kDivisor / 2) / kDivisor;
}

QRect pixels(const QRect& twips) {
    return {pixels(twips.x()), pixels(twips.y()), pixels(twips.width()), pixels(twips.height())};
}

QFont fittingFace(QFont face, const std::vector<PlacedText>& texts) {
    constexpr double kClosest = -0.3;
    constexpr double kStepCloser = 0.1;
    constexpr double kLeastPoints = 5;
    constexpr double kStepPoints = 0.25;
    const auto isTooWide = [&face](const PlacedText& place) {
        return QFontMetrics(face).horizontalAdvance(place.text) > place.width;
    };
    while (face.letterSpacing() > kClosest && std::any_of(texts.begin(), texts.end(), isTooWide))
        face.setLetterSpacing(QFont::AbsoluteSpacing, face.letterSpacing() - kStepCloser);
    while (face.pointSizeF() > kLeastPoints && std::any_of(texts.begin(), texts.end(), isTooWide))
        face.setPointSizeF(face.pointSizeF() - kStepPoints);
    return face;
}

}  // namespace quorvex
