#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>

#include "tour/steps.h"

namespace {

using namespace quorvex::tour;

/// The folder of everything that the tour makes, empty of what an earlier one has left.
QDir makeFolder(const QString& path) {
    QDir folder(path);
    for (const char* name : {"ports", "config"}) {
        QDir(folder.filePath(name)).removeRecursively();
        if (!folder.mkpath(name))
            throw TourFailure("Cannot make the folder " + folder.filePath(name));
    }
    const QStringList made = folder.entryList({"[0-9][0-9]-*.png", "*.bpc", "*.bmp"}, QDir::Files);
    for (const QString& file : made)
        folder.remove(file);
    return QDir(folder.absolutePath());
}

/// Takes the step, prints its outcome and leaves a picture of it.
bool takeStep(Visitor& visitor, int number, const Step& step) {
    const QString picture = QString::asprintf("%02d-%s", number, step.name);
    std::printf("%02d %-24s", number, step.name);
    std::fflush(stdout);
    try {
        step.take(visitor);
        visitor.takePicture(picture + ".png");
    } catch (const TourFailure& failure) {
        std::printf("FAILED: %s\n", failure.what());
        visitor.takePicture(picture + "-failed.png");
        return false;
    }
    std::printf("ok\n");
    return true;
}

/// Stops at the first step that fails, since those after it build on it.
int takeTour(const QDir& folder, const Look& look) {
    Visitor visitor(folder, look);
    const auto& steps = allSteps();
    int number = 0;
    for (const Step& step : steps) {
        if (!takeStep(visitor, ++number, step)) {
            std::printf("The tour stopped at step %d of %zu; its pictures are in %s\n", number, steps.size(),
                        qPrintable(folder.path()));
            return 1;
        }
    }
    std::printf("All %zu steps went well; their pictures are in %s\n", steps.size(),
                qPrintable(folder.path()));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QCommandLineOption scale("scale", "Scale of the display, 1.5 for example.", "factor");
    const QCommandLineOption dark("dark", "A dark palette.");
    const QCommandLineOption font("font", "Size of the window's font.", "points");
    QCommandLineParser options;
    options.setApplicationDescription(
        "Takes a tour through the main window and leaves its pictures in the folder.");
    options.addOptions({scale, dark, font});
    options.addHelpOption();
    options.addPositionalArgument("folder", "Where the pictures go.");
    options.process(application);
    const QStringList folders = options.positionalArguments();
    if (folders.size() != 1)
        options.showHelp(2);
    qputenv("QUORVEX_BIN", QCoreApplication::applicationDirPath().toLocal8Bit());
    try {
        return takeTour(makeFolder(folders.first()),
                        {options.value(scale), options.value(font), options.isSet(dark)});
    } catch (const TourFailure& failure) {
        std::fprintf(stderr, "quorvex-tour: %s\n", failure.what());
        return 1;
    }
}
