#pragma once

#include <QWidget>
#include <memory>

#include "beltpack/beltpack_read.h"
#include "beltpack/beltpack_write.h"
#include "beltpack/editors_frame.h"
#include "beltpack/production_values.h"
#include "beltpack/qt_file_dialog.h"
#include "beltpack/settings_file.h"
#include "beltpack/transfer_frame.h"
#include "calibration/calib_frame_widget.h"
#include "identity/beltpack_id_frame.h"
#include "identity/dect_version_frame.h"
#include "identity/park_length_frame.h"
#include "identity/rf_carriers_frame.h"
#include "identity/system_id_frame.h"

namespace quorvex {

/// The page "BeltPack": places its frames, and connects the operations to what they need on this page.
class BeltpackPage : public QWidget {
public:
    BeltpackPage(CommandLink& link, SettingsImage& image, QWidget* parent = nullptr);
    ~BeltpackPage() override;

    /// Wires the operations that need the radio module type, and the calibration. Called once.
    void connectTo(RadioModule& module, CalibRun& calibRun);
    CalibFrame& calibFrame() { return *calibration_; }

private:
    class Neighbours;

    CommandLink& link_;
    SettingsImage& image_;
    TransferFrame* transfer_;
    EditorsFrame* editors_;
    BeltpackIdFrame* beltpackId_;
    SystemIdFrame* systemId_;
    ParkLengthFrame* parkLength_;
    DectVersionFrame* dectVersion_;
    RfCarriersFrame* rfCarriers_;
    CalibFrameWidget* calibration_;
    QtFileDialog fileDialog_;
    BeltpackWrite write_;
    ProductionValues production_;
    std::unique_ptr<Neighbours> neighbours_;
    std::unique_ptr<BeltpackRead> read_;
    std::unique_ptr<SettingsFile> file_;
};

}  // namespace quorvex
