#include "tests/support/own_surroundings.h"

#include <QDir>
#include <QFile>
#include <array>
#include <utility>

namespace quorvex {

namespace {

constexpr std::array<std::pair<const char*, const char*>, 5> kFolders{{{"XDG_CONFIG_HOME", ".config"},
                                                                       {"XDG_CACHE_HOME", ".cache"},
                                                                       {"XDG_DATA_HOME", ".local/share"},
                                                                       {"XDG_STATE_HOME", ".local/state"},
                                                                       {"XDG_RUNTIME_DIR", ".run"}}};

QString placeOfHomes() {
    const QString homes = QStringLiteral(QUORVEX_BUILD_FOLDER "/tests/homes");
    QDir().mkpath(homes);
    return homes + "/XXXXXX";
}

}  // namespace

OwnSurroundings::OwnSurroundings() : home_(placeOfHomes()) {
    if (!home_.isValid())
        qFatal("no home: %s", qPrintable(home_.errorString()));
    qputenv("HOME", home_.path().toLocal8Bit());
    for (const auto& [variable, name] : kFolders) {
        const QString folder = home_.filePath(name);
        // The run-time folder is taken only if nobody else can look into it.
        if (!QDir().mkpath(folder) ||
            !QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
            qFatal("cannot make %s", qPrintable(folder));
        qputenv(variable, folder.toLocal8Bit());
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QUORVEX_BIN", QUORVEX_BUILD_FOLDER "/bin");
}

}  // namespace quorvex
