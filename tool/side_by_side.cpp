#include "tool/side_by_side.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QMap>
#include <algorithm>
#include <array>
#include <cstdio>
#include <list>
#include <vector>

#include "identity/psn_update.h"
#include "link/stop_signals.h"
#include "tool/progress.h"
#include "tool/set_command.h"
#include "tool/side.h"

namespace quorvex::tool {

namespace {

using Sides = std::list<Side>;

/// Each line with the name of its port in front.
void print(std::FILE* where, const Side& side, const QByteArray& text, Progress& progress) {
    if (text.isEmpty())
        return;
    progress.show({});  // it may be on the same terminal
    const QByteArray port = side.share().port.name.toLocal8Bit();
    for (const QByteArray& line : (text.endsWith('\n') ? text.chopped(1) : text).split('\n'))
        std::fprintf(where, "%s: %s\n", port.constData(), line.constData());
    std::fflush(where);
}

/// Passes on what has come. True when the side has ended and its result was taken.
bool attend(Side& side, Progress& progress) {
    const bool hasEnded = !side.isRunning();
    print(stderr, side, side.takeSaid(), progress);
    if (!hasEnded)
        return false;
    side.takeResult();
    if (!side.untold().isEmpty())
        print(stderr, side, "quorvex-tool: " + side.untold().toUtf8(), progress);
    if (!side.share().request.has("--json"))
        print(stdout, side, side.text().toUtf8(), progress);
    return true;
}

void attendAll(Sides& sides) {
    Progress progress;
    std::vector<Side*> running;
    for (Side& side : sides)
        running.push_back(&side);
    while (true) {
        std::erase_if(running, [&](Side* side) { return attend(*side, progress); });
        if (running.empty())
            return;
        progress.show(
            QStringLiteral("%1 of %2 have ended").arg(sides.size() - running.size()).arg(sides.size()));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

QString wordFor(int status) {
    static const QMap<int, QString> words{
        {int(Status::done), QStringLiteral("done")},
        {int(Status::differs), QStringLiteral("differs")},
        {int(Status::wrongUse), QStringLiteral("wrong use")},
        {int(Status::noAnswer), QStringLiteral("no answer")},
        {int(Status::port), QStringLiteral("port fault")},
        {int(Status::file), QStringLiteral("file fault")},
        {int(Status::noResult), QStringLiteral("no result")},
    };
    return words.value(status, QStringLiteral("interrupted"));
}

using Cells = std::array<QString, 3>;

QString tableOf(const Sides& sides) {
    std::vector<Cells> rows{{QStringLiteral("Port"), QStringLiteral("PSN"), QStringLiteral("Outcome")}};
    for (const Side& side : sides) {
        const QJsonValue psn = side.object().value(QStringLiteral("psn"));
        rows.push_back({side.share().port.name,
                        psn.isDouble() ? QString::number(psn.toInt()) : QStringLiteral("-"),
                        wordFor(side.status())});
    }
    std::array<qsizetype, 2> widths{};
    for (const Cells& row : rows) {
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    QString text = QStringLiteral("\n");
    for (const Cells& row : rows)
        text += row[0].leftJustified(widths[0] + 2) + row[1].leftJustified(widths[1] + 2) + row[2] +
                QLatin1Char('\n');
    return text;
}

/// Where the PSN was set: the one after the highest that was given.
void tellNextPsn(Result& result, const std::vector<Share>& shares) {
    int next = 0;
    for (const Share& share : shares) {
        if (const auto psn = psnGiven(share.request))
            next = std::max(next, *psn + 1);
    }
    if (next == 0 || next > PsnUpdate::kHighest)
        return;
    result.text += QStringLiteral("Next PSN: %1\n").arg(next);
    result.object.insert(QStringLiteral("nextPsn"), next);
}

}  // namespace

Result runSideBySide(const std::vector<Share>& shares, int& stopSignal) {
    Sides sides;
    const StopSignals signals([&](int number) {
        for (Side& side : sides)
            side.interrupt(number);
    });
    for (const Share& share : shares)
        sides.emplace_back(share).start();
    attendAll(sides);

    Result result;
    QJsonArray objects;
    int worst = 0;
    for (const Side& side : sides) {
        objects.append(side.object());
        worst = std::max(worst, side.status());
    }
    result.text = tableOf(sides);
    result.object.insert(QStringLiteral("ports"), objects);
    tellNextPsn(result, shares);
    if (worst > kSignalled)
        stopSignal = worst - kSignalled;
    else
        result.status = static_cast<Status>(worst);
    return result;
}

}  // namespace quorvex::tool
