#pragma once

#include <QWidget>

namespace quorvex {

/// `Picture1`: the picture of the Beltpack's display, each of its pixels drawn as 2 x 2.
class RScreenPicture : public QWidget {
public:
    explicit RScreenPicture(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvex
