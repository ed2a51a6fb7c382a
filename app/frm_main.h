#pragma once

#include <QMainWindow>

#include "app/antenna_page.h"
#include "app/beltpack_page.h"
#include "app/port_label.h"
#include "app/startup.h"
#include "beltpack/settings_image.h"
#include "beltpack/transfer_log.h"
#include "calibration/calib_run.h"
#include "calibration/form_rf_module.h"
#include "calibration/rf_module.h"
#include "form/qt_console.h"
#include "link/command_link.h"
#include "link/port_choice.h"
#include "link/settings_store.h"

namespace quorvex {

/// What the window needs of the machine.
struct Machine {
    SerialPort& port;
    EventLoop& loop;
    SettingsStore& store;
};

/// The main window: owns the state that its pages share, and wires the pages to it.
class FrmMain : public QMainWindow, private PortWindow, private CalibNeighbours {
public:
    explicit FrmMain(Machine machine);

    /// Start-up: the stored radio module and the stored port. Shows boxes and the port dialog on a failure.
    void load();
    /// The open port's device went away.
    void portLost();
    /// The line that the window's operations share.
    CommandLink& link() { return link_; }
    /// What becomes of reads and writes of Beltpacks.
    TransferLog& transfers() { return transfers_; }
    /// The port last opened, "COM1"; empty before.
    std::string portName() const;
    /// The program ends: a unit in calibration mode is told to leave it first.
    void closePort() { link_.closePort(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void showPortLabel(const std::string& text) override;
    /// Which device the port is, and why it is not open.
    QString portHover() const;
    void showPortDialog() override;
    std::unique_ptr<CalibDialog> createDialog(CalResult& result) override;
    void buildMenus();
    QWidget* buildBottomLine();
    void mnuAbout_Click();

    SerialPort& port_;
    SettingsStore& store_;
    StatusLine* statusLine_;
    PortLabel* labelComPort_;
    QtConsole console_;
    CommandLink link_;
    PortChoice portChoice_;
    SettingsImage image_;
    TransferLog transfers_;
    BeltpackPage* beltpackPage_;
    AntennaPage* antennaPage_;
    RfModule rfModule_;
    FormRfModulePicker rfModulePicker_;
    Startup startup_;
    CalibRun calibRun_;
};

}  // namespace quorvex
