#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include "rscreen/rscreen_picture.h"

namespace quorvex {

/// The remote screen: the Beltpack's display and the controls that save it.
class RScreenFrame : public QWidget {
public:
    explicit RScreenFrame(QWidget* parent = nullptr);

private:
    RScreenPicture* picture_;
    QLineEdit* screenDump_;
    QLineEdit* screenDumpFName_;
    QCheckBox* autoIncrement_;
    QLineEdit* autoIncVal_;
    QPushButton* save_;
    QTimer* timer_;
};

}  // namespace quorvex
