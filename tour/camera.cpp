#include "tour/camera.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>

namespace quorvex::tour {

namespace {

QRect placeOf(QWidget* window) {
    return {window->mapToGlobal(QPoint()), window->size()};
}

}  // namespace

bool takePicture(QMainWindow& window, const QString& path) {
    QWidget* dialog = QApplication::activeModalWidget();
    QWidget* front = dialog ? dialog : &window;
    QWidget* popup = QApplication::activePopupWidget();
    const QRect place = popup ? placeOf(front).united(placeOf(popup)) : placeOf(front);

    QPixmap picture(place.size() * window.devicePixelRatio());
    picture.setDevicePixelRatio(window.devicePixelRatio());
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.drawPixmap(placeOf(front).topLeft() - place.topLeft(), front->grab());
    if (popup)
        painter.drawPixmap(placeOf(popup).topLeft() - place.topLeft(), popup->grab());
    painter.end();
    return picture.save(path);
}

}  // namespace quorvex::tour
