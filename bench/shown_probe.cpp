#include <QEvent>
#include <QGenericPlugin>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <cinttypes>
#include <cstdio>

namespace quorvex::bench {

/// Prints "shown" and the monotonic clock in nanoseconds once the first top-level window has been drawn,
/// then looks no further. The toolkit loads it into any program when told to by the environment, so that the
/// program that is measured knows nothing of it.
class ShownProbe : public QObject {
public:
    ShownProbe() { QCoreApplication::instance()->installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Expose && watched->isWindowType() && isDrawnNext(watched)) {
            QCoreApplication::instance()->removeEventFilter(this);
            // The window is drawn while it handles this event; what is queued now runs after that.
            QTimer::singleShot(0, this, &ShownProbe::report);
        }
        return false;
    }

private:
    static bool isDrawnNext(QObject* watched) {
        const auto* window = static_cast<QWindow*>(watched);
        return window->isTopLevel() && window->isExposed();
    }

    void report() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        std::printf("shown %" PRId64 "\n",
                    std::int64_t{std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()});
        std::fflush(stdout);
    }
};

class ShownProbePlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "shown_probe.json")
public:
    QObject* create(const QString& /*key*/, const QString& /*options*/) override { return new ShownProbe; }
};

}  // namespace quorvex::bench

#include "shown_probe.moc"
