#include "tour/tour.h"

#include <cstdio>
#include <cstdlib>

#include "tour/camera.h"

namespace quorvex::tour {

namespace {

/// Whatever could still be tidied up is in the hands of the thread that hangs.
[[noreturn]] void giveUp() {
    std::fflush(nullptr);
    std::_Exit(1);
}

}  // namespace

int Tour::take() {
    const auto& steps = allSteps();
    int number = 0;
    for (const Step& step : steps) {
        if (!takeStep(++number, step)) {
            std::printf("The tour stopped at step %d of %zu; its pictures are in %s\n", number, steps.size(),
                        qPrintable(pictures_.path()));
            return 1;
        }
    }
    std::printf("All %zu steps went well; their pictures are in %s\n", steps.size(),
                qPrintable(pictures_.path()));
    return 0;
}

bool Tour::takeStep(int number, const Step& step) {
    std::printf("%02d %-24s", number, step.name);
    std::fflush(stdout);
    try {
        step.take(visitor_);
        if (const auto status = visitor_.ask([this] { return ended_; }))
            throw TourFailure("The program ended with status " + std::to_string(*status) + ".");
        photograph(number, step.name);
        std::printf("ok\n");
        return true;
    } catch (const WindowHangs& failure) {
        std::printf("FAILED: %s\n", failure.what());
        giveUp();
    } catch (const std::exception& failure) {
        std::printf("FAILED: %s\n", failure.what());
        photograph(number, std::string(step.name) + "-failed");
        return false;
    }
}

void Tour::photograph(int number, const std::string& name) {
    const QString file = QStringLiteral("%1-%2.png").arg(number, 2, 10, QLatin1Char('0')).arg(name.c_str());
    visitor_.stepBack();
    if (!visitor_.ask([&] { return takePicture(window_, pictures_.filePath(file)); }))
        throw TourFailure("The picture " + file.toStdString() + " cannot be written.");
}

}  // namespace quorvex::tour
