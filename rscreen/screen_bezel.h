#pragma once

#include <QTimer>
#include <QWidget>

namespace quorvex {

/// The dark bezel with the picture in its middle. It lights up for a moment when the picture was saved.
class ScreenBezel : public QWidget {
public:
    ScreenBezel(QWidget* picture, QWidget* parent);

    void flash();
    bool isLit() const { return light_.isActive(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer light_;
};

}  // namespace quorvex
