#pragma once

#include <QByteArray>
#include <QImage>
#include <QTimer>
#include <functional>

#include "rscreen/rscreen_picture.h"
#include "tests/rscreen/frames.h"
#include "tests/support/bench.h"
#include "tests/support/talking_beltpack.h"

namespace quorvex {

/// The page "R-Screen" of the main window on a bench. The window's timer runs there as ever, by the real
/// clock; tick() adds a tick of it at a moment that a test can choose.
class ScreenPage {
public:
    /// Shows the window; the page in front is still the first one.
    explicit ScreenPage(sim::RfModule module = kRm5);

    Bench bench;

    void toFront() { bench.clickTab(QStringLiteral("R-Screen")); }
    RScreenPicture& picture() { return dynamic_cast<RScreenPicture&>(bench.control("Picture1")); }
    QTimer& timer();
    void tick();
    /// What the person does inside a frame, once all that has come of it is received.
    void onceReceived(std::function<void()> deed);
    /// Puts `bytes` into the program's receive buffer.
    void receive(const QByteArray& bytes);
    /// A whole frame and the tick that shows it.
    void show(const QByteArray& picture);
    /// Clicks into a field and types `text` over what it holds.
    void type(const QString& field, const QString& text);

    /// What a picture of these 512 bytes looks like: 256 x 66 pixels, black and green.
    static QImage drawn(const QByteArray& picture);

private:
    TalkingBeltpack unit_;
};

}  // namespace quorvex
