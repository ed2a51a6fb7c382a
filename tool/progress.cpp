#include "tool/progress.h"

#include <cstdio>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace quorvex::tool {

namespace {
constexpr const char* kFreshLine = "\r\033[K";
}

#ifdef Q_OS_UNIX
Progress::Progress() : isTerminal_(isatty(STDERR_FILENO) != 0) {}
#else
Progress::Progress() : isTerminal_(false) {}
#endif

Progress::~Progress() {
    show({});
}

void Progress::show(const QString& text) {
    if (!isTerminal_ || text == shown_)
        return;
    shown_ = text;
    std::fprintf(stderr, "%s%s", kFreshLine, qPrintable(text));
    std::fflush(stderr);
}

}  // namespace quorvex::tool
