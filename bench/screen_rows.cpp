#include <QImage>
#include <QPainter>
#include <QTimer>
#include <stdexcept>

#include "bench/bench_top.h"
#include "bench/figures.h"
#include "bench/peers.h"
#include "bench/rows.h"
#include "bench/window_at_work.h"
#include "rscreen/rscreen_picture.h"

namespace quorvex::bench {

namespace {

constexpr int kRounds = 500;
constexpr int kStreamsMs = 10000;
constexpr int kLookMs = 100;  ///< a frame takes 269 ms
constexpr double kMostOfRectangles = 0.05;
constexpr double kMostShare = 0.03;

ScreenBits picture(int number) {
    ScreenBits bits{};
    for (std::size_t i = 0; i < bits.size(); ++i)
        bits[i] = static_cast<std::uint8_t>(i * 7 + static_cast<std::size_t>(number) * 31);
    return bits;
}

/// A frame's bits drawn and painted, as for a page in front.
void drawFrame(RScreenPicture& shown, const ScreenBits& bits, QImage& target) {
    shown.show(bits);
    QPainter painter(&target);
    shown.render(&painter, {}, {}, QWidget::RenderFlags());
}

/// The same picture, each of the display's pixels as a rectangle.
void drawRectangles(const ScreenBits& bits, QImage& target) {
    QPainter painter(&target);
    for (int line = 0; line < kScreenLines; ++line) {
        for (int column = 0; column < kScreenLineBytes * 8; ++column) {
            const std::uint8_t byte = *(bits.data() + line * kScreenLineBytes + column / 8);
            const bool isSet = (byte & (0x80 >> column % 8)) != 0;
            painter.fillRect(column * kScreenScale, line * kScreenScale, kScreenScale, kScreenScale,
                             isSet ? Qt::black : Qt::green);
        }
    }
}

Row drawingRow() {
    RScreenPicture shown;
    QImage byFrame(shown.size(), QImage::Format_RGB32);
    QImage byRectangles(shown.size(), QImage::Format_RGB32);
    std::vector<double> frame;
    std::vector<double> rectangles;
    for (int i = 0; i < kRounds; ++i) {  // in turns, so that other work on the machine meets both
        const ScreenBits bits = picture(i);
        const double begun = nowSeconds();
        drawFrame(shown, bits, byFrame);
        const double drawn = nowSeconds();
        drawRectangles(bits, byRectangles);
        rectangles.push_back(nowSeconds() - drawn);
        frame.push_back(drawn - begun);
        if (byFrame != byRectangles)
            throw std::runtime_error("The two drawings differ.");
    }
    const double took = median(frame);
    const double most = median(rectangles);
    return ratioRow("Drawing one frame, to 4224 rectangles", took / most,
                    milliseconds(took) + " to " + milliseconds(most), kMostOfRectangles);
}

Row streamingRow() {
    BenchTop top;
    DisplayLine line;
    line.terminal().linkAs(top.portPath());
    WindowAtWork window;
    auto& shown = window.showRemoteScreen();
    int frames = 0;
    QImage last = shown.image();
    QTimer look;
    look.callOnTimeout([&] {
        frames += shown.image() != last ? 1 : 0;
        last = shown.image();
    });
    look.start(kLookMs);
    line.start();
    const double begun = nowSeconds();
    const double usedBefore = ownCpuSeconds() - line.cpuUsed();
    window.rest(kStreamsMs);
    const double share = (ownCpuSeconds() - line.cpuUsed() - usedBefore) / (nowSeconds() - begun);
    const int sent = line.framesSent();
    if (frames < sent - 2)
        throw std::runtime_error("Of " + std::to_string(sent) + " frames sent, " + std::to_string(frames) +
                                 " were shown.");
    return shareRow("CPU while the display streams in at full line speed", share,
                    std::to_string(frames) + " frames in 10 s", kMostShare);
}

}  // namespace

std::vector<Row> screenRows() {
    return {drawingRow(), streamingRow()};
}

}  // namespace quorvex::bench
