#include "form/guard.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "form/message_box.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr int kDeepestNesting = 64;

void exitAtOnce(int status) {
    std::fflush(nullptr);
    std::_Exit(status);
}

std::function<void(int)>& programEnd() {
    static std::function<void(int)> end = exitAtOnce;
    return end;
}

void reportAndEnd(const std::string& report) {
    if (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    showMessageBox(report, Icon::critical);
    endProgram(1);
}

class Level {
public:
    Level() { ++depth; }
    ~Level() { --depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    static inline int depth = 0;
};

}  // namespace

void guarded(const std::function<void()>& handler) {
    if (Level::depth >= kDeepestNesting)
        return;
    const Level level;
    try {
        handler();
    } catch (const RuntimeFault& fault) {
        reportAndEnd(fault.report());
    } catch (const std::bad_alloc&) {
        reportAndEnd(RuntimeFault(7, "Out of memory").report());
    } catch (const std::exception& fault) {
        reportAndEnd(RuntimeFault(51, std::string("Internal error (") + fault.what() + ")").report());
    }
}

int runningHandlers() {
    return Level::depth;
}

void endProgram(int status) {
    programEnd()(status);
}

void setProgramEnd(std::function<void(int)> end) {
    programEnd() = end ? std::move(end) : exitAtOnce;
}

}  // namespace quorvex
