#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include "form/field_edit.h"
#include "form/qt_controls.h"
#include "rscreen/remote_screen.h"
#include "rscreen/rscreen_picture.h"
#include "rscreen/screen_bezel.h"

namespace quorvex {

/// The remote screen: the Beltpack's display in its bezel, below it the controls that save it, and last a
/// line that tells which file was saved.
class RScreenFrame : public QWidget, private RemoteScreenWindow {
public:
    explicit RScreenFrame(CommandLink& link, QWidget* parent = nullptr);

private:
    void RScreenTimer_Timer();
    const void* inFront() const override;
    void repaint(const ScreenBits& bits) override { picture_->show(bits); }
    std::string savePicture(const std::string& path) override;
    /// Empty on success, else what went wrong.
    QString write(const QString& path) const;
    void place();
    /// The whole path stands in the line's hover text.
    void tellSaved(const QString& path);

    RScreenPicture* picture_;
    ScreenBezel* bezel_;
    FieldEdit* screenDump_;
    FieldEdit* screenDumpFName_;
    QCheckBox* autoIncrementOption_;
    FieldEdit* autoIncValText_;
    QPushButton* commandScreenDump_;
    QLabel* saved_;
    QTimer* timer_;
    LineEditField rootDir_{screenDump_, LineEditField::Holds::fileName};
    LineEditField fileName_{screenDumpFName_, LineEditField::Holds::fileName};
    LineEditField counter_{autoIncValText_};
    CheckBoxField autoIncrement_{autoIncrementOption_};
    RemoteScreen screen_;
};

}  // namespace quorvex
