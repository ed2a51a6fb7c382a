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

int widthForTitle(const QString& title) {
    constexpr int kButtons = 2100;  ///< twips: three of them, and an icon
    QFont face = QApplication::font();
    face.setBold(true);
    return QFontMetrics(face).horizontalAdvance(title) + pixels(kButtons);
}

QFont fittingFace(QFont face, const std::vector<PlacedText>& texts) {
    constexpr int kClosestPercent = 95;
    constexpr double kLeastPoints = 5;
    constexpr double kStepPoints = 0.25;
    const auto isTooWide = [&face](const PlacedText& place) {
        return QFontMetrics(face).size(Qt::TextSingleLine, place.text).width() > place.width;
    };
    const auto isAnyTooWide = [&] { return std::any_of(texts.begin(), texts.end(), isTooWide); };
    for (int percent = 100; percent > kClosestPercent && isAnyTooWide(); --percent)
        face.setLetterSpacing(QFont::PercentageSpacing, percent - 1);
    while (face.pointSizeF() > kLeastPoints && isAnyTooWide())
        face.setPointSizeF(face.pointSizeF() - kStepPoints);
    return face;
}

}  // namespace quorvex
