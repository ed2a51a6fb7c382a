#include "beltpack/settings_file.h"

#include "link/number_text.h"
#include "link/open_file.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr const char* kFilter = "Beltpack Config Files (*.bpc)|*.bpc|All Files (*.*)|*.*";

}  // namespace

std::vector<std::string> settingsLines(const SettingsImage& image) {
    std::vector<std::string> lines{std::string(kSettingsSignature)};
    for (int i = 0; i < SettingsImage::kParameters; ++i)
        lines.push_back(image[i].value.str());
    return lines;
}

std::string settingsText(const SettingsImage& image) {
    std::string text;
    for (const std::string& line : settingsLines(image))
        text += line + "\r\n";
    return text;
}

bool readSettings(FileNumberOne& file, SettingsImage& image) {
    if (file.readItem() != kSettingsSignature)
        return false;
    image.beginFile();
    for (int i = 0; i < SettingsImage::kParameters; ++i)
        image[i].value = file.atEnd() ? "0" : file.readItem();
    return true;
}

SettingsFile::SettingsFile(CommandLink& link, SettingsImage& image, FileDialog& dialog,
                           SettingsFileFields fields, SettingsFileNeighbours& neighbours)
    : link_(link), image_(image), dialog_(dialog), fields_(fields), neighbours_(neighbours) {}

bool SettingsFile::goesOn(const FileDialog::Choice& choice) {
    if (choice.error != 0 && choice.error != FileDialog::kCancelled)
        link_.console().messageBox(
            "Error " + std::to_string(choice.error) + " selecting file.\r\n" + choice.description,
            Icon::none);
    return choice.error == 0;
}

void SettingsFile::CommandSave_Click() {
    const auto choice = dialog_.chooseForSaving({kFilter, "Save settings...", fields_.beltpackId.text()});
    if (!goesOn(choice))
        return;
    try {
        save(choice.path);
    } catch (const RuntimeFault&) {
        // The file is left as it is: open, with what was written.
        link_.console().messageBox("Error writing Beltpack settings to file!", Icon::critical);
        link_.status("Error while writing file.", kBlack);
    }
}

void SettingsFile::save(const std::string& path) {
    if (image_.isBeingFilled())
        throw RuntimeFault::fileAccess();  // half of it would be blank
    file_.openForOutput(pathOfUtf8(path));
    for (const std::string& line : settingsLines(image_))
        file_.writeLine(line);
    file_.close();
    link_.status("Betpack settings saved to file successfully.", kBlack);
}

void SettingsFile::CommandRead_Click() {
    const auto choice = dialog_.chooseForLoading({kFilter, "Open File", ""});
    if (!goesOn(choice))
        return;
    try {
        load(choice.path);
    } catch (const RuntimeFault&) {
        link_.console().messageBox("Error reading from file!", Icon::critical);
        link_.status("Error while reading Beltpack settings from file.", kBlack);
    }
}

void SettingsFile::load(const std::string& path) {
    std::string systemIdProblem;
    file_.openForInput(pathOfUtf8(path));
    if (readSettings(file_, image_)) {
        systemIdProblem = refreshWindow();
    } else {
        link_.console().messageBox(path + "\r\n is not a valid QuorvexCfg file.", Icon::critical);
        link_.status("Invalid file specified.", kBlack);
    }
    file_.close();
    // Shown after a rejected file too, as intended: the box has told of the rejection.
    link_.status("Beltpack settings read from file successfully.", kBlack);
    if (!systemIdProblem.empty())
        link_.console().messageBox(systemIdProblem, Icon::critical);
}

std::string SettingsFile::refreshWindow() {
    const CalibrationFields& shown = fields_.calibration;
    for (TextField* field :
         {&shown.fmDeviation, &shown.freqAccuracy, &shown.freqAccuracyTx, &shown.freqAccuracyRx})
        field->setText("");
    fields_.beltpackId.setText(image_.psnText());
    std::string problem = neighbours_.showSystemId(image_[SettingsImage::kSystemId].value.str());
    fields_.rfCarriers.setText(image_[SettingsImage::kRfCarrierMask].value.str());
    neighbours_.enableSettingsButtons();
    return problem;
}

}  // namespace quorvex
