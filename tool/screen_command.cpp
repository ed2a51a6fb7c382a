#include "tool/screen_command.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QTimer>
#include <chrono>

#include "link/whole_file.h"
#include "rscreen/remote_screen.h"
#include "rscreen/screen_bitmap.h"
#include "tool/plain_window.h"
#include "tool/settings_files.h"
#include "tool/units.h"

namespace quorvex::tool {

namespace {

const QString kEnding = QStringLiteral(".bmp");
constexpr std::chrono::milliseconds kTick{250};
constexpr int kLongestMs =
    5000;  ///< without a whole frame; a unit that shows its display sends several in it

/// The page of the remote screen without a window.
class Grab : private RemoteScreenWindow {
public:
    /// `frames`: how many pictures; with more than one, a number is put before the ending.
    Grab(CommandLink& link, const QString& path, int frames) : frames_(frames), link_(link) {
        rootDir_.setText(path.chopped(kEnding.size()).toStdString());
        autoIncrement_.setValue(frames > 1 ? 1 : 0);
        since_.start();
    }

    /// What the window's timer does. True when another picture was saved.
    bool tick() {
        if (!screen_.RScreenTimer_Timer()) {
            hasGivenUp_ = since_.elapsed() > kLongestMs;  // ends a capture that waits
            return false;
        }
        since_.restart();
        screen_.CommandScreenDump_Click();
        return true;
    }
    bool isOver() const { return hasGivenUp_ || !problem_.isEmpty() || saved_.size() == frames_; }
    const QStringList& saved() const { return saved_; }
    const QString& problem() const { return problem_; }

private:
    const void* inFront() const override { return hasGivenUp_ ? this : nullptr; }
    void repaint(const ScreenBits& /*bits*/) override {}
    std::string savePicture(const std::string& path) override {
        const QString name = QString::fromStdString(path);
        problem_ =
            replaceFile(name, QByteArray::fromStdString(bitmapOf(screen_.bits())), QStringLiteral("picture"));
        if (problem_.isEmpty())
            saved_ << name;
        else
            problem_.prepend(name + QStringLiteral(": "));
        return problem_.toStdString();
    }

    int frames_;
    bool hasGivenUp_ = false;
    QElapsedTimer since_;  ///< the last picture
    QStringList saved_;
    QString problem_;
    PlainField rootDir_, fileName_, counter_;
    TakenCheck autoIncrement_;
    CommandLink& link_;
    RemoteScreen screen_{link_, *this, {rootDir_, fileName_, counter_, autoIncrement_}};
};

Result grabScreen(PlainWindow& window, const QString& path, int frames) {
    Grab grab(window.link, path, frames);
    QTimer timer;
    // Queued, for a timer stands still until what it calls directly has returned, and a capture may wait.
    QObject::connect(
        &timer, &QTimer::timeout, &timer,
        [&] {
            if (!grab.isOver() && grab.tick())
                timer.start();  // the next frame begins now
        },
        Qt::QueuedConnection);
    timer.start(kTick);
    while (!grab.isOver() && window.isPortOpen())
        window.loop.run(window.loop.ticks() + static_cast<std::int32_t>(kTick.count()));
    Result result;
    const QStringList& saved = grab.saved();
    result.object.insert(QStringLiteral("files"), QJsonArray::fromStringList(saved));
    for (const QString& name : saved)
        result.text += QStringLiteral("Saved in %1.\n").arg(name);
    result.problem = grab.problem();
    if (!grab.problem().isEmpty()) {
        result.status = Status::file;
    } else if (saved.size() < frames) {
        result.status = Status::noAnswer;
        result.problem = QStringLiteral("The Beltpack shows no display: %1 of %2 came in %3 s.")
                             .arg(saved.size())
                             .arg(countOf(static_cast<std::size_t>(frames), "picture"))
                             .arg(kLongestMs / 1000);
    }
    return result;
}

int framesOf(const Request& request) {
    if (!request.has("--frames"))
        return 1;
    bool isNumber = false;
    const int frames = request.value("--frames").toInt(&isNumber);
    if (!isNumber || frames < 1 || frames > RemoteScreen::kHighestCounter)
        throw Failure(Status::wrongUse, QStringLiteral("--frames: \"%1\" is no number from 1 to %2.")
                                            .arg(request.value("--frames"))
                                            .arg(RemoteScreen::kHighestCounter));
    return frames;
}

}  // namespace

UnitJob prepareScreen(const Request& request) {
    const QString path = request.arguments.at(0);
    if (!path.endsWith(kEnding) || QFileInfo(path).completeBaseName().isEmpty())
        throw Failure(
            Status::wrongUse,
            QStringLiteral("\"%1\" is no name that ends in %2, as display%2 does.").arg(path, kEnding));
    const int frames = framesOf(request);
    demandSavable(path);
    return [path, frames](PlainWindow& window) { return grabScreen(window, path, frames); };
}

QStringList savesOfScreen(const Request& request) {
    const QString& path = request.arguments.at(0);
    const int frames = framesOf(request);
    if (frames == 1)
        return {path};
    QStringList names;
    for (int i = 0; i < frames; ++i)
        names << path.chopped(kEnding.size()) + QString::number(i) + kEnding;
    return names;
}

}  // namespace quorvex::tool
