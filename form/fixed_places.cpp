#include "form/fixed_places.h"

#include <QFontMetrics>
#include <algorithm>

namespace quorvex {

QFont fittingFace(QFont face, const std::vector<FixedText>& texts) {
    constexpr double kLeastPoints = 5;
    constexpr double kStepPoints = 0.25;
    const auto isTooWide = [&face](const FixedText& place) {
        return QFontMetrics(face).horizontalAdvance(place.text) > place.width;
    };
    while (face.pointSizeF() > kLeastPoints && std::any_of(texts.begin(), texts.end(), isTooWide))
        face.setPointSizeF(face.pointSizeF() - kStepPoints);
    return face;
}

}  // namespace quorvex
