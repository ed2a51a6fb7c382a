#include "bench/shown_program.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <stdexcept>
#include <thread>

namespace quorvex::bench {

namespace {

using namespace std::chrono_literals;

constexpr int kShownWithinMs = 10000;
constexpr int kEmptyWithinMs = 1000;
constexpr int kEndsWithinMs = 3000;
constexpr auto kSettles = 500ms;
constexpr auto kLooksAgain = 500us;
constexpr QByteArrayView kShown = "shown ";

/// One line across the screen. It meets windows in the upper left corner, where they appear when nobody
/// places them, and large ones in the middle.
QImage screenLine() {
    QScreen* screen = QGuiApplication::primaryScreen();
    const QSize size = screen->size();
    return screen->grabWindow(0, 0, size.height() / 4, size.width(), 1).toImage();
}

bool isOneColour(const QImage& line) {
    for (int x = 1; x < line.width(); ++x) {
        if (line.pixel(x, 0) != line.pixel(0, 0))
            return false;
    }
    return true;
}

bool screenGets(bool empty, int withinMs) {
    const double limit = nowSeconds() + withinMs / 1e3;
    while (isOneColour(screenLine()) != empty) {
        if (nowSeconds() > limit)
            return false;
        std::this_thread::sleep_for(kLooksAgain);
    }
    return true;
}

}  // namespace

bool isScreenEmpty() {
    return QGuiApplication::platformName() == "xcb" && screenGets(true, kEmptyWithinMs);
}

ShownProgram::ShownProgram(const QString& path, const QStringList& arguments, SeenBy seenBy) {
    if (seenBy == SeenBy::Probe) {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_PLUGIN_PATH", ownProgram("bench-plugins"));
        environment.insert("QT_QPA_GENERIC_PLUGINS", "quorvex-shown");
        process_.setProcessEnvironment(environment);
    } else {
        process_.setStandardOutputFile(QProcess::nullDevice());
        process_.setStandardErrorFile(QProcess::nullDevice());
        if (!isScreenEmpty())
            throw std::runtime_error("The screen is not empty.");
    }
    const double begun = nowSeconds();
    process_.start(path, arguments);
    secondsToShown_ = (seenBy == SeenBy::Probe ? awaitProbe() : awaitPicture()) - begun;
}

ShownProgram::~ShownProgram() {
    process_.terminate();
    process_.waitForFinished(kEndsWithinMs);
}

double ShownProgram::awaitProbe() {
    while (!process_.canReadLine() && process_.waitForReadyRead(kShownWithinMs)) {
    }
    const QByteArray line = process_.readLine();
    if (!line.startsWith(kShown))
        throw std::runtime_error(process_.program().toStdString() + " says: " + line.toStdString());
    return line.mid(kShown.size()).trimmed().toDouble() / 1e9;
}

double ShownProgram::awaitPicture() const {
    if (!screenGets(false, kShownWithinMs))
        throw std::runtime_error(process_.program().toStdString() + " shows nothing.");
    return nowSeconds();
}

void ShownProgram::settle() {
    std::this_thread::sleep_for(kSettles);
}

Starts::Starts(QString path, QStringList arguments, SeenBy seenBy)
    : path_(std::move(path)), arguments_(std::move(arguments)), seenBy_(seenBy) {
    ShownProgram(path_, arguments_, seenBy_);
}

void Starts::run() {
    const ShownProgram program(path_, arguments_, seenBy_);
    ShownProgram::settle();
    const Memory memory = memoryOf(program.id());
    seconds_.push_back(program.secondsToShown());
    residentMb_.push_back(memory.residentMb);
    proportionalMb_.push_back(memory.proportionalMb);
}

QString ownProgram(const QString& name) {
    return QCoreApplication::applicationDirPath() + '/' + name;
}

std::string megabytes(double mb) {
    return fixed(mb, 1) + " MB";
}

}  // namespace quorvex::bench
