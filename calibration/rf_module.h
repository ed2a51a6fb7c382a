#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "link/radio_module.h"
#include "link/settings_store.h"

namespace quorvex {

/// A length in the window: 15 twips are one logical pixel.
struct Twips {
    int value = 0;
};

/// How the calibration controls of one frame lie for a radio module.
struct CalibLayout {
    std::string buttonCaption;
    bool kirkControls = false;  ///< transmit, receive and threshold fields and their labels are shown
    Twips midLeft, midTop;      ///< of the frequency accuracy (mid) field
    Twips labelTop;             ///< of "Frequency Accuracy:" in the Beltpack's frame
};

/// A frame with calibration controls.
class CalibFrame {
public:
    virtual ~CalibFrame() = default;
    virtual void apply(const CalibLayout& layout) = 0;
};

/// The three frames with calibration controls.
struct CalibFrames {
    CalibFrame& beltpack;
    CalibFrame& moduleA;
    CalibFrame& moduleB;
};

/// The dialog in which the operator picks the type by hand.
class RfModuleDialog {
public:
    virtual ~RfModuleDialog() = default;
    /// Shows the dialog modally with the Kirk or the RM5 selected. True when OK closed it; `kirk` is then
    /// what is selected.
    virtual bool pick(bool& kirk) = 0;
};

/// The radio module that the unit carries, kept in the settings store.
class RfModule : public RadioModule {
public:
    RfModule(SettingsStore& store, CalibFrames frames);

    /// Takes the stored type, 0 when none is stored, and lays the frames out for it. Throws as
    /// SettingsStore::number does.
    void load();
    std::int16_t type() const override { return type_; }
    void change(std::int16_t type) override;
    /// Lets the operator pick. Throws as `load` does.
    void mnuRfModule_Click(RfModuleDialog& dialog);

    /// Lays the calibration controls of the window out: 1 for a Kirk, any other type for an RM5.
    void SetupCalibLayout(std::int16_t type);

private:
    std::int16_t stored() const;

    SettingsStore& store_;
    CalibFrames frames_;
    std::int16_t type_ = 0;
};

}  // namespace quorvex
