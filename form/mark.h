#pragma once

#include <QPainter>
#include <QString>

#include "link/console.h"

namespace quorvex {

/// What a status text tells, at a glance.
enum class Mark { none, working, done, failed };

/// The texts of the status line are fixed, so the mark goes by them: work under way ends with "...", green is
/// done and red has failed; black says by its words which of both it is. A cancelled run is neither.
Mark markOf(const QString& text, Colour colour);

/// Draws the mark into a square, in the painter's pen colour: three dots, a tick, a cross.
void drawMark(QPainter& painter, const QRectF& square, Mark mark);

}  // namespace quorvex
