#include "form/guard.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "form/message_box.h"
#include "link/operation.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

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

}  // namespace

void guarded(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const OperationRefused&) {  // NOLINT(bugprone-empty-catch): the operator knows
    } catch (const RuntimeFault& fault) {
        reportAndEnd(fault.report());
    } catch (const std::bad_alloc&) {
        reportAndEnd(RuntimeFault(7, "Out of memory").report());
    } catch (const std::exception& fault) {
        reportAndEnd(RuntimeFault(51, std::string("Internal error (") + fault.what() + ")").report());
    }
}

void endProgram(int status) {
    programEnd()(status);
}

void setProgramEnd(std::function<void(int)> end) {
    programEnd() = end ? std::move(end) : exitAtOnce;
}

}  // namespace quorvex
