#include "bench/window_at_work.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTabWidget>
#include <QTimer>
#include <QWindow>
#include <exception>

#include "bench/bench_top.h"
#include "form/guard.h"
#include "link/qt_text.h"

namespace quorvex::bench {

namespace {

constexpr int kBoxCheckMs = 1000;
constexpr std::int32_t kComesUpWithinMs = 10000;
constexpr std::int32_t kRestMs = 300;

/// Closes the boxes and dialogs that come up while it lives, so that a failure does not stop the benchmark
/// for good, and keeps what the first one said. It looks rarely enough to cost nothing.
class BoxCatcher {
public:
    BoxCatcher() {
        timer_.callOnTimeout([this] { look(); });
        timer_.start(kBoxCheckMs);
    }

    void demandNone() const {
        if (!said_.empty())
            throw std::runtime_error("The program says: " + said_);
    }

private:
    void look() {
        QWidget* box = QApplication::activeModalWidget();
        if (box == nullptr)
            return;
        const auto* message = qobject_cast<QMessageBox*>(box);
        if (said_.empty())
            said_ = (message != nullptr ? message->text() : box->windowTitle()).simplified().toStdString();
        box->close();
    }

    QTimer timer_;
    std::string said_;
};

}  // namespace

SerialPort& WindowAtWork::traced(const std::string& path) {
    traceFile_.emplace(path, [](const std::string& text) { throw std::runtime_error(text); });
    return tracePort_.emplace(port_, loop_, [this](const std::string& line) { traceFile_->line(line); });
}

WindowAtWork::WindowAtWork(const std::string& tracePath)
    : counted_(tracePath.empty() ? static_cast<SerialPort&>(port_) : traced(tracePath)) {
    store_.save(kComPortKey, std::to_string(kPort));
    window_ = std::make_unique<FrmMain>(Machine{counted_, loop_, store_});
    const BoxCatcher boxes;
    window_->show();
    window_->load();
    boxes.demandNone();
    const std::int32_t limit = loop_.ticks() + kComesUpWithinMs;
    while (!window_->windowHandle()->isExposed() && loop_.ticks() < limit)
        loop_.run(limit);
    if (!window_->windowHandle()->isExposed())
        throw std::runtime_error("The main window does not come up.");
    rest(kRestMs);
}

void WindowAtWork::rest(int ms) {
    const std::int32_t rested = loop_.ticks() + ms;
    while (loop_.ticks() < rested)
        loop_.run(rested);
}

RScreenPicture& WindowAtWork::showRemoteScreen() {
    auto& picture = dynamic_cast<RScreenPicture&>(control<QWidget>("Picture1"));
    auto& pages = control<QTabWidget>("SSTab1");
    for (int page = 0; page < pages.count() && !picture.isVisible(); ++page)
        pages.setCurrentIndex(page);
    return picture;
}

void WindowAtWork::click(const QString& button) {
    const BoxCatcher boxes;
    control<QAbstractButton>(button).click();
    boxes.demandNone();
}

void WindowAtWork::operate(const std::function<void()>& work) {
    std::exception_ptr failure;
    guarded([&] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
    });
    if (failure)
        std::rethrow_exception(failure);
}

}  // namespace quorvex::bench
