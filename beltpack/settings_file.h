#pragma once

#include <string>

#include "beltpack/file_number_one.h"
#include "beltpack/settings_image.h"
#include "link/command_link.h"
#include "link/controls.h"

namespace quorvex {

/// Asking the operator for a file.
class FileDialog {
public:
    static constexpr int kCancelled = 32755;

    struct Settings {
        std::string filter;  ///< description and pattern in turn, separated by bars
        std::string title;
        std::string proposedName;  ///< empty for none
    };
    struct Choice {
        int error = 0;            ///< 0: a file was chosen; kCancelled; else what went wrong
        std::string description;  ///< of the error
        std::string path;         ///< full path, UTF-8
    };

    virtual ~FileDialog() = default;
    /// Asks before a file that exists is taken.
    virtual Choice chooseForSaving(const Settings& settings) = 0;
    /// Takes only a file that exists.
    virtual Choice chooseForLoading(const Settings& settings) = 0;
};

/// What loading a file needs of its neighbours.
class SettingsFileNeighbours {
public:
    virtual ~SettingsFileNeighbours() = default;
    /// Shows a PARK B of 10 characters in the System ID fields.
    virtual void showSystemId(const std::string& parkB) = 0;
    /// Enables saving, the summary and writing.
    virtual void enableSettingsButtons() = 0;
};

/// The fields that a load fills or clears.
struct SettingsFileFields {
    TextField& beltpackId;
    TextField& rfCarriers;
    TextField& fmDeviation;
    TextField& freqAccuracy;
    TextField& freqAccuracyRx;
    TextField& freqAccuracyTx;
};

/// Beltpack settings files: the signature and the value fields of the image, a line each.
class SettingsFile {
public:
    SettingsFile(CommandLink& link, SettingsImage& image, FileDialog& dialog, SettingsFileFields fields,
                 SettingsFileNeighbours& neighbours);

    void CommandSave_Click();
    void CommandRead_Click();

private:
    /// False when there is no file to go on with; the operator knows why.
    bool isChosen(const FileDialog::Choice& choice);
    void save(const std::string& path);
    void load(const std::string& path);
    void readValues();
    void refreshWindow();

    CommandLink& link_;
    SettingsImage& image_;
    FileDialog& dialog_;
    SettingsFileFields fields_;
    SettingsFileNeighbours& neighbours_;
    FileNumberOne file_;
};

}  // namespace quorvex
