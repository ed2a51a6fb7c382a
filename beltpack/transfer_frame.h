#pragma once

#include <QAbstractButton>
#include <QWidget>

namespace quorvex {

class BeltpackRead;
class BeltpackWrite;
class SettingsFile;
class SettingsImage;

/// The column of buttons that move a Beltpack's settings: read, write, file, summary.
class TransferFrame : public QWidget {
public:
    TransferFrame(const SettingsImage& image, QWidget* parent = nullptr);

    void connectTo(BeltpackRead& read, BeltpackWrite& write, SettingsFile& file);
    /// Enables saving, the summary and writing.
    void enableSettingsButtons();

private:
    void CommandSummary_Click();

    const SettingsImage& image_;
    QAbstractButton *commandRdSettingsBp_, *commandWrite_, *commandRead_, *commandSave_, *commandSummary_;
};

}  // namespace quorvex
