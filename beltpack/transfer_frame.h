#pragma once

#include <QWidget>

#include "form/button.h"

namespace quorvex {

class BeltpackRead;
class BeltpackWrite;
class SettingsFile;
class SettingsImage;

/// The buttons that move a Beltpack's settings, in the order of the work: read and write, which stand out,
/// file, summary. Reading leads until there is something to work on.
class TransferFrame : public QWidget {
public:
    TransferFrame(const SettingsImage& image, QWidget* parent = nullptr);

    void connectTo(BeltpackRead& read, BeltpackWrite& write, SettingsFile& file);
    /// Enables saving, the summary and writing.
    void enableSettingsButtons();

private:
    void CommandSummary_Click();

    const SettingsImage& image_;
    Button *commandRdSettingsBp_, *commandWrite_, *commandRead_, *commandSave_, *commandSummary_;
};

}  // namespace quorvex
