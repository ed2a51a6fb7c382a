#include "app/end_signals.h"

#include <QGuiApplication>

#include "form/guard.h"

namespace quorvex {

EndSignals::EndSignals() : StopSignals([](int) { endProgram(0); }) {
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [] { endProgram(0); });
}

}  // namespace quorvex
