#pragma once

#include <QAbstractButton>
#include <QWidget>

namespace quorvex {

class BeltpackRead;

/// The column of buttons that move a Beltpack's settings: read, write, file, summary.
class TransferFrame : public QWidget {
public:
    explicit TransferFrame(QWidget* parent = nullptr);

    void connectTo(BeltpackRead& read);
    /// Enables saving, the summary and writing.
    void enableSettingsButtons();

private:
    QAbstractButton *commandRdSettingsBp_, *commandWrite_, *commandRead_, *commandSave_, *commandSummary_;
};

}  // namespace quorvex
