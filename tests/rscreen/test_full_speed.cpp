#include <QInputDevice>
#include <QTemporaryDir>
#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

#include "app/frm_main.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "tests/rscreen/screen_page.h"
#include "tests/rscreen/terminal_pair.h"
#include "tests/support/fake_store.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

using Moment = std::chrono::steady_clock::time_point;
using std::chrono::milliseconds;

constexpr int kFrames = 12;
constexpr int kBytesPerSecond = 1920;
constexpr milliseconds kAnswerLimit{50};
constexpr int kKeys = 60;

Moment now() {
    return std::chrono::steady_clock::now();
}

/// Sends frames 1, 2, … back to back at the line's own speed, in a thread of its own.
class FrameSender {
public:
    FrameSender(int terminal, int frames) : thread_([terminal, frames] { run(terminal, frames); }) {}
    ~FrameSender() { thread_.join(); }
    FrameSender(const FrameSender&) = delete;
    FrameSender& operator=(const FrameSender&) = delete;

private:
    static void run(int terminal, int frames) {
        QByteArray all;
        for (int number = 1; number <= frames; ++number)
            all += frame(number);
        const Moment start = now();
        for (qsizetype sent = 0; sent < all.size();) {
            const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(now() - start).count();
            const qsizetype due = std::min<qsizetype>(elapsed * kBytesPerSecond / 1'000'000, all.size());
            sent += TerminalPair::send(terminal, all.sliced(sent, due - sent));
            std::this_thread::sleep_for(milliseconds(1));  // the pace of the line, not a wait for the program
        }
    }

    std::thread thread_;
};

/// Presses keys for `field` from a thread of its own, as a keyboard does: whatever the window is doing.
class Typist {
public:
    Typist(QWidget& field, int keys) {
        static_cast<void>(
            QInputDevice::primaryKeyboard());  // made on first use, which must be in this thread
        thread_ = std::thread([this, &field, keys] { run(field, keys); });
    }
    ~Typist() { thread_.join(); }
    Typist(const Typist&) = delete;
    Typist& operator=(const Typist&) = delete;

    Moment pressedAt(std::size_t key) {
        const std::lock_guard lock(mutex_);
        return pressed_.at(key);
    }

private:
    void run(QWidget& field, int keys) {
        for (int i = 0; i < keys; ++i) {
            std::this_thread::sleep_for(milliseconds(43));  // falls on another moment of each frame
            {
                const std::lock_guard lock(mutex_);
                pressed_.push_back(now());
            }
            QCoreApplication::postEvent(&field,
                                        new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a"));
        }
    }

    std::mutex mutex_;
    std::vector<Moment> pressed_;
    std::thread thread_;
};

}  // namespace

/// The program's window on a real port, while a Beltpack sends its display without a pause: 269 ms a frame,
/// which is longer than a tick.
class TestFullSpeed : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyFrameIsShownWhole();
    void keysAreAnswered();
    void stalledFrameIsShown();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    /// Returns right behind a tick, so that the next one falls into what is sent then.
    void awaitTick();
    QList<QImage> painted() const { return painted_; }

    std::unique_ptr<QTemporaryDir> ports_;
    std::unique_ptr<TerminalPair> terminal_;
    Journal journal_;
    std::unique_ptr<FakeStore> store_;
    std::unique_ptr<QtEventLoop> loop_;
    std::unique_ptr<QtSerialPort> port_;
    std::unique_ptr<FrmMain> window_;
    RScreenPicture* picture_ = nullptr;
    QList<QImage> painted_;  ///< each picture that was painted, once
};

void TestFullSpeed::init() {
    ports_ = std::make_unique<QTemporaryDir>();
    terminal_ = std::make_unique<TerminalPair>();
    QVERIFY(QFile::link(terminal_->path(), ports_->filePath("COM1")));
    qputenv("QUORVEX_PORTS", ports_->path().toLocal8Bit());
    store_ = std::make_unique<FakeStore>(journal_);
    loop_ = std::make_unique<QtEventLoop>();
    port_ = std::make_unique<QtSerialPort>();
    window_ = std::make_unique<FrmMain>(Machine{*port_, *loop_, *store_});
    window_->show();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    window_->load();
    QVERIFY(port_->isOpen());
    hand::clickTab(*window_->findChild<QWidget*>("SSTab1"), "R-Screen");
    picture_ = dynamic_cast<RScreenPicture*>(window_->findChild<QWidget*>("Picture1"));
    painted_.clear();
    picture_->installEventFilter(this);
    picture_->update();
}

void TestFullSpeed::cleanup() {
    window_.reset();
    port_.reset();
}

bool TestFullSpeed::eventFilter(QObject* object, QEvent* event) {
    if (object == picture_ && event->type() == QEvent::Paint) {
        const QImage image = picture_->image().convertToFormat(QImage::Format_RGB32);
        if (painted_.isEmpty() || painted_.last() != image)
            painted_.append(image);
    }
    return false;
}

void TestFullSpeed::awaitTick() {
    bool ticked = false;
    auto* timer = window_->findChild<QTimer*>("RScreenTimer");
    const auto watch = connect(timer, &QTimer::timeout, this, [&ticked] { ticked = true; });
    QTRY_VERIFY(ticked);
    disconnect(watch);
}

void TestFullSpeed::everyFrameIsShownWhole() {
    QTRY_COMPARE(painted_, QList<QImage>{ScreenPage::drawn({})});
    awaitTick();
    const FrameSender sender(terminal_->unitSide(), kFrames);
    const QImage last = ScreenPage::drawn(pictureBytes(kFrames));
    QTRY_VERIFY_WITH_TIMEOUT(painted_.last() == last, 20'000);
    QStringList seen;
    for (const QImage& image : painted_) {
        QString name = "torn";
        for (int number = 0; number <= kFrames; ++number) {
            if (image == ScreenPage::drawn(number == 0 ? QByteArray() : pictureBytes(number)))
                name = QString::number(number);
        }
        seen << name;
    }
    QStringList expected;
    for (int number = 0; number <= kFrames; ++number)
        expected << QString::number(number);
    QCOMPARE(seen, expected);
}

void TestFullSpeed::keysAreAnswered() {
    auto* field = window_->findChild<QLineEdit*>("ScreenDumpFName");
    field->clear();
    QList<milliseconds> answers;
    const FrameSender sender(terminal_->unitSide(), kFrames);
    Typist typist(*field, kKeys);
    connect(field, &QLineEdit::textChanged, this, [&](const QString& text) {
        const Moment pressed = typist.pressedAt(static_cast<std::size_t>(text.size() - 1));
        answers.append(std::chrono::duration_cast<milliseconds>(now() - pressed));
    });
    QTRY_COMPARE_WITH_TIMEOUT(answers.size(), qsizetype{kKeys}, 20'000);
    QVERIFY2(painted_.size() > kFrames / 2, "no frames were received meanwhile");
    const milliseconds slowest = *std::max_element(answers.begin(), answers.end());
    QVERIFY2(slowest <= kAnswerLimit, qPrintable(QString::number(slowest.count()) + " ms"));
    field->disconnect(this);
}

// The timer goes on while a frame is received, so the part that has come is seen when the unit falls silent.
void TestFullSpeed::stalledFrameIsShown() {
    constexpr milliseconds kPatience{4000};
    const QByteArray bits = pictureBytes(3);
    const QImage part = ScreenPage::drawn(bits.first(100));
    const auto shown = [this] { return picture_->image().convertToFormat(QImage::Format_RGB32); };
    bool isPartSeen = false;
    QTimer unit;  // the program receives until the frame is whole, so the rest must come from inside its wait
    const Moment start = now();
    connect(&unit, &QTimer::timeout, this, [&] {
        isPartSeen = shown() == part;
        if (!isPartSeen && now() - start < kPatience)
            return;
        unit.stop();
        TerminalPair::send(terminal_->unitSide(), bits.sliced(100));
    });
    TerminalPair::send(terminal_->unitSide(), frameOf(bits).first(104));
    unit.start(20);
    QTRY_COMPARE_WITH_TIMEOUT(shown(), ScreenPage::drawn(bits), 10'000);
    QVERIFY(isPartSeen);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestFullSpeed, QApplication)
#include "test_full_speed.moc"
