#include "tests/faults/fault_page.h"

#include <QRegularExpression>
#include <algorithm>
#include <utility>

namespace quorvex {

namespace {

using Place = FaultyPort::Place;
using Row = MatrixSection::Row;

constexpr const char* kHead = R"(# Faults

What becomes of every operation when something goes wrong on the line. The tests write this page from runs in virtual
time, and fail when it is not what the program does. After a change that is meant:

    QUORVEX_WRITE_FAULTS=1 build/tests/test_faults TestFaultMatrix

Each fault strikes at each line that the program sends, at each reply, and at each record or frame that the unit sends
by itself: *once*, at that one alone, or so that it *stays*, there and at all that follow. Where neither word stands
both end alike. Numbers count the lines, replies or records of a run without a fault, from 1.

%1 operations and %2 faults make %3 runs. At the end of every one the hourglass is down, no operation is under way and
no dialog open. The window had its turn all the time. The unit was sent out of calibration mode, unless the cable was
pulled first. The same operation, run again on a sound line, does all it should.

Where a reply is missing, the cable is pulled or the port is closed, no wrong value is told as a success, but for the
reply by which an antenna's radio module is told. Nowhere does it matter that a reply is late but within the limit
(while the unit sends nothing by itself), or that NUL or E9 stands in front of it.

An outcome is the last text of the status line, the boxes in their order, and what became of the values in the image,
the fields and the unit: *complete*, as without a fault; *unchanged*; *in part*, some taken and some not; *gaps*, some
blank or "N/A"; *wrong values*, some that are neither the ones before nor the unit's. Only the worst of these is told.
Most replies are told by their length alone, so that other characters in their place are taken for values.
)";

QString placeWord(Place place) {
    switch (place) {
        case Place::none:
            return "the start";
        case Place::line:
            return "line";
        case Place::reply:
            return "reply";
        case Place::stream:
            break;
    }
    return "record";
}

/// Whether they are at least four, each two above the one before.
bool isEverySecond(const std::vector<qsizetype>& numbers) {
    constexpr std::size_t kFewest = 4;
    return numbers.size() >= kFewest &&
           std::adjacent_find(numbers.begin(), numbers.end(),
                              [](qsizetype a, qsizetype b) { return b != a + 2; }) == numbers.end();
}

/// Numbers counted from 0 as "1, 3-5", or "1, 3 ... 41".
QString ranges(const std::vector<qsizetype>& numbers) {
    if (isEverySecond(numbers))
        return QString("%1, %2 ... %3").arg(numbers[0] + 1).arg(numbers[1] + 1).arg(numbers.back() + 1);
    QStringList all;
    for (std::size_t i = 0; i < numbers.size();) {
        std::size_t last = i;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1)
            ++last;
        const QString first = QString::number(numbers[i] + 1);
        all << (last == i ? first
                          : first + (last == i + 1 ? ", " : "-") + QString::number(numbers[last] + 1));
        i = last + 1;
    }
    return all.join(", ");
}

/// "1: read; complete / 2-5: ..." in the order of the first of each; the outcome alone where there is only
/// one.
QString folded(const QStringList& outcomes) {
    QStringList seen = outcomes;
    seen.removeDuplicates();
    if (seen.size() == 1)
        return seen.first();
    QStringList all;
    for (const QString& outcome : seen) {
        std::vector<qsizetype> at;
        for (qsizetype i = 0; i < outcomes.size(); ++i) {
            if (outcomes[i] == outcome)
                at.push_back(i);
        }
        all << ranges(at) + ": " + outcome;
    }
    return all.join(" / ");
}

/// The faults of one outcome.
struct Group {
    Place place;
    QString outcome;
    QStringList faults;
};

void add(std::vector<Group>& groups, const Group& one) {
    const auto same = std::find_if(groups.begin(), groups.end(), [&](const Group& group) {
        return group.place == one.place && group.outcome == one.outcome;
    });
    if (same == groups.end())
        groups.push_back(one);
    else
        same->faults += one.faults;
}

QString tableOf(const MatrixSection& section) {
    std::vector<Group> groups;
    const std::vector<Row>& rows = section.rows();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        QString outcome = folded(rows[i].outcomes);
        const bool mayStay = i + 1 < rows.size() && !rows[i + 1].once;
        if (mayStay && rows[i + 1].outcomes != rows[i].outcomes)
            outcome = "*once* " + outcome + "<br>*stays* " + folded(rows[i + 1].outcomes);
        add(groups, {rows[i].place, outcome, {rows[i].fault}});
        i += mayStay ? 1 : 0;
    }
    QString table = "| At | What goes wrong | How it ends |\n|---|---|---|\n";
    for (const Group& group : groups)
        table +=
            "| " + placeWord(group.place) + " | " + group.faults.join("; ") + " | " + group.outcome + " |\n";
    return table;
}

/// The lines of a run, as a list item.
QString linesOf(const MatrixSection& section) {
    const CleanRun& clean = section.clean();
    QStringList lines;
    for (const std::string& line : clean.lines())
        lines << "`" + QString::fromStdString(line).trimmed() + "`";
    QString text = lines.isEmpty() ? QString("- Sends nothing") : "- Sends " + lines.join(' ');
    if (const int replies = clean.count(Place::reply))
        text += QString("; %1 replied to").arg(replies);
    if (const int streamed = clean.count(Place::stream))
        text += QString("; %1 records or frames").arg(streamed);
    return text + ". Without a fault: " + clean.outcome().text() +
           QString(". At most %1 s.").arg((section.longestMs() + 999) / 1000);
}

/// An entry of the journal without what only a test needs.
QString plain(QString entry) {
    return entry.replace(QRegularExpression("(\\r\\n)+"), " ")
        .remove(" []")
        .remove(QRegularExpression("^(status|box) "));
}

QString legend(const char* title, const std::vector<EndText>& texts) {
    QString all = QString("| %1 | |\n|---|---|\n").arg(title);
    for (const EndText& text : texts)
        all += QString("| %1 | %2 |\n").arg(text.word, plain(text.entry));
    return all;
}

/// Those with the same table together, in the order of the first of each.
std::vector<std::vector<const MatrixSection*>> foldedSections(
    const std::vector<const MatrixSection*>& sections) {
    std::vector<std::vector<const MatrixSection*>> all;
    for (const MatrixSection* section : sections) {
        const QString table = tableOf(*section);
        const auto same = std::find_if(all.begin(), all.end(),
                                       [&](const auto& other) { return tableOf(*other.front()) == table; });
        if (same == all.end())
            all.push_back({section});
        else
            same->push_back(section);
    }
    return all;
}

}  // namespace

QString faultPage(const std::vector<const MatrixSection*>& sections) {
    int cells = 0;
    for (const MatrixSection* section : sections)
        cells += section->cells();
    QString page = QString(kHead).arg(sections.size()).arg(testedFaults().size()).arg(cells);
    page += "\n" + legend("Status line", statusTexts()) + "\n" + legend("Box", boxTexts());
    for (const auto& alike : foldedSections(sections)) {
        QStringList names, lines;
        for (const MatrixSection* section : alike) {
            names << QString::fromStdString(section->clean().operation().name);
            lines << linesOf(*section);
        }
        page += "\n## " + names.join("; ") + "\n\n" + lines.join('\n') + "\n\n" + tableOf(*alike.front());
    }
    return page;
}

}  // namespace quorvex
