#pragma once

#include <QImage>
#include <QWidget>

#include "rscreen/remote_screen.h"

namespace quorvex {

/// `Picture1`: the picture of the Beltpack's display, each of its pixels drawn as 2 x 2.
class RScreenPicture : public QWidget {
public:
    explicit RScreenPicture(QWidget* parent = nullptr);

    void show(const ScreenBits& bits);
    /// The picture as shown, 256 x 66 pixels.
    QImage image() const { return image_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void draw();

    ScreenBits bits_{};
    QImage image_;
};

}  // namespace quorvex
