#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

#include "beltpack/settings_file.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_controls.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/journal.h"

namespace quorvex {

/// A person who chooses a file, gives up, or meets an error of the dialog.
class FakeFileDialog : public FileDialog {
public:
    explicit FakeFileDialog(Journal& journal) : journal_(journal) {}

    Choice chooseForSaving(const Settings& settings) override { return choose("save", settings); }
    Choice chooseForLoading(const Settings& settings) override { return choose("load", settings); }

    Choice choice;

private:
    Choice choose(const std::string& purpose, const Settings& settings) {
        journal_.note(purpose + ": " + settings.title + "; " + settings.filter + "; " +
                      settings.proposedName);
        return choice;
    }

    Journal& journal_;
};

class FakeFileNeighbours : public SettingsFileNeighbours {
public:
    explicit FakeFileNeighbours(Journal& journal) : journal_(journal) {}

    std::string showSystemId(const std::string& parkB) override {
        journal_.note("System ID: " + parkB);
        if (onShowSystemId)
            onShowSystemId();
        return systemIdProblem;
    }
    void enableSettingsButtons() override { journal_.note("settings buttons enabled"); }

    std::string systemIdProblem;
    std::function<void()> onShowSystemId;

private:
    Journal& journal_;
};

/// Saving and loading real files in a folder of the test's own.
struct FileBench {
    FileBench() { port.holdOpen(); }
    FileBench(const FileBench&) = delete;
    FileBench& operator=(const FileBench&) = delete;

    QString pathOf(const QString& name) const { return folder.filePath(name); }
    /// A file in the folder, and its path.
    QString make(const QByteArray& content, const QString& name = "made.bpc") const {
        QFile to(pathOf(name));
        if (!to.open(QIODevice::WriteOnly) || to.write(content) != content.size())
            qFatal("no room for %s", qPrintable(name));
        return to.fileName();
    }
    static QByteArray content(const QString& path) {
        QFile from(path);
        return from.open(QIODevice::ReadOnly) ? from.readAll() : QByteArray("cannot be read");
    }
    void choose(const QString& path) { dialog.choice = {0, "", path.toStdString()}; }
    /// What the journal holds after a save or a load, without the dialog itself.
    QStringList save(const QString& path) {
        choose(path);
        journal.take();
        file.CommandSave_Click();
        return journal.take().mid(1);
    }
    QStringList load(const QString& path) {
        choose(path);
        journal.take();
        file.CommandRead_Click();
        return journal.take().mid(1);
    }
    QStringList values() const {
        QStringList all;
        for (int i = 0; i <= 20; ++i)
            all << fromLatin1(image[i].value.str());
        return all;
    }

    QTemporaryDir folder;
    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    SettingsImage image;
    FakeFileDialog dialog{journal};
    FakeField beltpackId{journal, "TextBeltpackId"};
    FakeField rfCarriers{journal, "TextRfCarrs"};
    FakeField fmDeviation{journal, "TextFMDev"};
    FakeField freqAccuracy{journal, "TextFreqAccr"};
    FakeField freqAccuracyRx{journal, "TextFreqAccrRx"};
    FakeField freqAccuracyTx{journal, "TextFreqAccrTx"};
    FakeFileNeighbours neighbours{journal};
    SettingsFile file{link,
                      image,
                      dialog,
                      {beltpackId, rfCarriers, {fmDeviation, freqAccuracy, freqAccuracyRx, freqAccuracyTx}},
                      neighbours};
};

inline const QString kSaved = "status black: Betpack settings saved to file successfully.";
inline const QString kLoaded = "status black: Beltpack settings read from file successfully.";
inline const QStringList kNotSaved{"box critical: Error writing Beltpack settings to file! []",
                                   "status black: Error while writing file."};
inline const QStringList kNotLoaded{"box critical: Error reading from file! []",
                                    "status black: Error while reading Beltpack settings from file."};

/// What a load shows of an image with these values.
inline QStringList refreshed(const QString& psn, const QString& systemId, const QString& carriers) {
    return {"TextFMDev = ",
            "TextFreqAccr = ",
            "TextFreqAccrTx = ",
            "TextFreqAccrRx = ",
            "TextBeltpackId = " + psn,
            "System ID: " + systemId,
            "TextRfCarrs = " + carriers,
            "settings buttons enabled"};
}

// A whole file, byte for byte.
inline const QByteArray kWholeFile =
    "K4700\r\n"
    "00443186A0\r\n"
    "1F        \r\n"
    "100ECE1000\r\n"
    "30        \r\n"
    "01        \r\n"
    "00        \r\n"
    "02        \r\n"
    "03        \r\n"
    "04        \r\n"
    "05        \r\n"
    "13        \r\n"
    "06        \r\n"
    "N/A       \r\n"
    "03FF00000F\r\n"
    "07        \r\n"
    "0A        \r\n"
    "08        \r\n"
    "09        \r\n"
    "0B        \r\n"
    "0C        \r\n"
    "02        \r\n";
inline const QStringList kWholeValues{
    "00443186A0", "1F        ", "100ECE1000", "30        ", "01        ", "00        ", "02        ",
    "03        ", "04        ", "05        ", "13        ", "06        ", "N/A       ", "03FF00000F",
    "07        ", "0A        ", "08        ", "09        ", "0B        ", "0C        ", "02        "};

}  // namespace quorvex
