#pragma once

#include <QWidget>

#include "rscreen/rscreen_frame.h"

namespace quorvex {

/// The page "R-Screen": places its frame.
class RScreenPage : public QWidget {
public:
    explicit RScreenPage(CommandLink& link, QWidget* parent = nullptr);

private:
    RScreenFrame* screen_;
};

}  // namespace quorvex
