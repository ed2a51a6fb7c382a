#include "rscreen/rscreen_frame.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <chrono>

#include "form/guard.h"
#include "form/make.h"
#include "link/whole_file.h"

namespace quorvex {

namespace {
constexpr std::chrono::milliseconds kTick{250};
}

RScreenFrame::RScreenFrame(CommandLink& link, QWidget* parent)
    : QWidget(parent),
      picture_(new RScreenPicture(this)),
      bezel_(new ScreenBezel(picture_, this)),
      screenDump_(makeField(this, "screenDump", 40)),
      screenDumpFName_(makeField(this, "ScreenDumpFName", 24)),
      autoIncrementOption_(makeCaptioned<QCheckBox>(this, "AutoIncrementOption", "Auto Increment")),
      autoIncValText_(makeField(this, "autoIncValText", 4)),
      commandScreenDump_(makeButton(this, "CommandScreenDump", "Save")),
      saved_(new QLabel(this)),
      timer_(new QTimer(this)),
      screen_(link, *this, {rootDir_, fileName_, counter_, autoIncrement_}) {
    // Where a picture without a folder goes.
    screenDump_->setPlaceholderText(QDir::toNativeSeparators(QDir::currentPath() + QLatin1Char('/')));
    screenDumpFName_->setText(QStringLiteral("Grab1"));
    autoIncValText_->setText(QStringLiteral("0"));
    autoIncValText_->setAccessibleName(QStringLiteral("Auto Increment, next number"));

    connect(autoIncValText_, &QLineEdit::textChanged, this,
            [this] { guarded([this] { screen_.autoIncValText_Change(); }); });
    onClick(commandScreenDump_, [this] { screen_.CommandScreenDump_Click(); });
    timer_->setObjectName(QStringLiteral("RScreenTimer"));
    timer_->setInterval(kTick);
    // Queued, for a timer stands still until what it calls directly has returned, and a capture may wait.
    connect(
        timer_, &QTimer::timeout, this, [this] { guarded([this] { RScreenTimer_Timer(); }); },
        Qt::QueuedConnection);
    timer_->start();

    place();
    setTabChain({screenDump_, screenDumpFName_, autoIncrementOption_, autoIncValText_, commandScreenDump_});
}

void RScreenFrame::place() {
    saved_->setTextFormat(Qt::PlainText);
    // It keeps its place while it is hidden, and a long path must not widen the window.
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    saved_->setSizePolicy(policy);
    saved_->hide();

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(bezel_, 0, 0, 1, 4);
    grid->setRowMinimumHeight(1, fontMetrics().height() / 2);
    grid->addWidget(makeLabel(this, "Label5", "Root Dir:", screenDump_), 2, 0);
    grid->addWidget(screenDump_, 2, 1, 1, 3);
    grid->addWidget(makeLabel(this, "Label6", "Filename:", screenDumpFName_), 3, 0);
    grid->addWidget(screenDumpFName_, 3, 1, 1, 3);
    grid->addWidget(autoIncrementOption_, 4, 1, Qt::AlignLeft);
    grid->addWidget(autoIncValText_, 4, 2);
    grid->addWidget(commandScreenDump_, 4, 3, Qt::AlignRight);
    grid->addWidget(saved_, 5, 0, 1, 4);
    grid->setColumnStretch(3, 1);
}

void RScreenFrame::RScreenTimer_Timer() {
    // Frames that follow each other closely take longer than a tick: counted from the end of one, the next
    // tick falls into the middle of the next and never on its marker.
    if (screen_.RScreenTimer_Timer())
        timer_->start();
}

const void* RScreenFrame::inFront() const {
    return QApplication::activeModalWidget();
}

std::string RScreenFrame::savePicture(const std::string& path) {
    const QString name = QString::fromStdString(path);
    const QString problem = write(name);
    saved_->setVisible(problem.isEmpty());
    if (!problem.isEmpty())
        return (name + QStringLiteral("\r\n") + problem).toStdString();
    tellSaved(QDir::toNativeSeparators(QFileInfo(name).absoluteFilePath()));
    bezel_->flash();
    return {};
}

void RScreenFrame::tellSaved(const QString& path) {
    const QString text = QStringLiteral("Saved as ") + path;
    saved_->setText(fontMetrics().elidedText(text, Qt::ElideMiddle, saved_->width()));
    saved_->setToolTip(path);
}

QString RScreenFrame::write(const QString& path) const {
    QBuffer bitmap;
    picture_->image().save(&bitmap, "BMP");
    return replaceFile(path, bitmap.data(), QStringLiteral("picture"));
}

}  // namespace quorvex
