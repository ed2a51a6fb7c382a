#include "beltpack/settings_file.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <utility>

#include "beltpack/settings_check.h"
#include "beltpack/settings_summary.h"
#include "fuzz/input.h"
#include "fuzz/plain_window.h"
#include "fuzz/scripted_line.h"
#include "identity/system_id.h"
#include "link/number_text.h"

// Loading a settings file whole, saving it again and loading that. Input: the file.

namespace quorvex::fuzz {

namespace {

namespace fs = std::filesystem;

/// A file that goes with the process, in memory where there is such a folder.
class ScratchFile {
public:
    ScratchFile() {
        const fs::path folder = fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path();
        path_ = folder / ("quorvex-fuzz-" + std::to_string(std::random_device()()) + ".bpc");
    }
    ~ScratchFile() {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    std::string path() const { return path_.string(); }
    void fill(std::string_view bytes) const {
        std::ofstream(path_, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

private:
    fs::path path_;
};

class SameFile : public FileDialog {
public:
    explicit SameFile(std::string path) : path_(std::move(path)) {}
    Choice chooseForSaving(const Settings& /*settings*/) override { return {0, "", path_}; }
    Choice chooseForLoading(const Settings& /*settings*/) override { return {0, "", path_}; }

private:
    std::string path_;
};

/// The part of the window that a settings file reaches.
struct Window : SettingsFileNeighbours {
    explicit Window(const std::string& path) : dialog(path) {}
    std::string showSystemId(const std::string& digits) override { return systemId.showParkB(digits); }
    void enableSettingsButtons() override {}

    ScriptedLine line{""};
    QuietConsole console;
    CommandLink link{line, line, console};
    SettingsImage image;
    PlainField parkB, eic, fpn, fps, psn, carriers, calibration[4];
    SystemId systemId{link, image, {parkB, eic, fpn, fps}};
    SameFile dialog;
    SettingsFileFields fields{
        psn, carriers, {calibration[0], calibration[1], calibration[2], calibration[3]}};
    SettingsFile file{link, image, dialog, fields, *this};
};

std::string values(const SettingsImage& image) {
    std::string text;
    for (int i = 0; i < SettingsImage::kRecords; ++i) {
        require(image[i].value.str().size() == 10, "a value has 10 characters");
        text += image[i].value.str();
    }
    return text;
}

void checkFields(const Window& window) {
    require(summaryText(window.image).size() == summaryText(SettingsImage()).size(), "all rows of one width");
    require(!window.image.isBeingFilled(), "a file is loaded at once");
    require(window.parkB.text().empty() || window.parkB.text().size() == 10, "a whole System ID or none");
    require(window.eic.text().empty() == window.fps.text().empty(), "all its parts or none");
    require(window.psn.text().size() <= 7, "five digits of a serial number");
}

/// Whether an item of these characters is read as it was written.
bool survives(const SettingsImage& image) {
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        const std::string& value = image[i].value.str();
        if (value.find_first_of(",\"") != std::string::npos ||
            (value.front() == ' ' && !image[i].value.isBlank()))
            return false;
    }
    return true;
}

/// What the check finds nothing wrong with has been loaded as it stands.
void checkDefects(const std::string& path, const SettingsImage& loaded) {
    try {
        if (!checkSettingsFile(path).empty())
            return;
    } catch (const RuntimeFault&) {
        return;  // cannot be read
    }
    require(loaded.isFilled(), "a file without a defect is loaded");
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        const std::string_view value = trimmedRight(loaded[i].value.str());
        require(value == kNotAvailable || static_cast<int>(value.size()) == loaded[i].digits(),
                "each value has its digits");
    }
}

}  // namespace

void tryInput(Input input) {
    static const ScratchFile file;
    file.fill(input.rest());
    Window first(file.path());
    first.file.CommandRead_Click();
    const std::string loaded = values(first.image);
    checkFields(first);
    checkDefects(file.path(), first.image);

    first.file.CommandSave_Click();
    Window second(file.path());
    second.file.CommandRead_Click();
    checkFields(second);
    const std::string again = values(second.image);
    // A file that could not be loaded stays open, so nothing was saved then.
    if (first.image.isFilled() && survives(first.image) && input.rest().starts_with("K4700\r\n"))
        require(again == loaded, "a saved file reads back as it was");
}

}  // namespace quorvex::fuzz
