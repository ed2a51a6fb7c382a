#pragma once

#include <string>
#include <vector>

#include "beltpack/file_number_one.h"
#include "beltpack/settings_image.h"
#include "link/calibration_fields.h"
#include "link/command_link.h"

namespace quorvex {

/// What a settings file begins with.
inline constexpr std::string_view kSettingsSignature = "K4700";
/// The lines of a settings file.
std::vector<std::string> settingsLines(const SettingsImage& image);
/// The whole file.
std::string settingsText(const SettingsImage& image);
/// Fills the image from an open file; values that are missing are "0". False, and nothing is changed, when it
/// does not begin with the signature. Throws as FileNumberOne does.
bool readSettings(FileNumberOne& file, SettingsImage& image);

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
    /// As a read asks for it: what the operator must know, empty for nothing.
    virtual std::string showSystemId(const std::string& parkB) = 0;
    /// Enables saving, the summary and writing.
    virtual void enableSettingsButtons() = 0;
};

/// The fields that a load fills or clears.
struct SettingsFileFields {
    TextField& beltpackId;
    TextField& rfCarriers;
    CalibrationFields calibration;
};

/// Beltpack settings files: the signature and the value fields of the image, a line each.
class SettingsFile {
public:
    SettingsFile(CommandLink& link, SettingsImage& image, FileDialog& dialog, SettingsFileFields fields,
                 SettingsFileNeighbours& neighbours);

    void CommandSave_Click();
    void CommandRead_Click();

private:
    /// Tells of a dialog that failed. False when there is no file to go on with.
    bool goesOn(const FileDialog::Choice& choice);
    void save(const std::string& path);
    void load(const std::string& path);
    /// What the operator must know of the file's System ID, empty for nothing.
    std::string refreshWindow();

    CommandLink& link_;
    SettingsImage& image_;
    FileDialog& dialog_;
    SettingsFileFields fields_;
    SettingsFileNeighbours& neighbours_;
    FileNumberOne file_;
};

}  // namespace quorvex
