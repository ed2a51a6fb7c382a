#pragma once

#include <string>
#include <string_view>

#include "beltpack/settings_image.h"
#include "link/command_link.h"
#include "link/controls.h"

namespace quorvex {

/// The four fields of the System ID, all hexadecimal text.
struct SystemIdFields {
    TextField& parkB;  ///< PARK B, 10 digits
    TextField& eic;    ///< Equipment Installer's Code, 4 digits
    TextField& fpn;    ///< system number, 4 characters of which the 2nd and 4th count
    TextField& fps;    ///< matrix system number, 1 digit
};

/// The System ID: its PARK B and the components EIC, FPN and FPS, kept in step both ways; the PARI that
/// follows from the components; and writing the System ID to a Beltpack.
class SystemId {
public:
    SystemId(CommandLink& link, SettingsImage& image, SystemIdFields fields);

    // After every change of a component.
    void TextEic_Change() { composeParkB(); }
    void TextFpn_Change() { composeParkB(); }
    void TextFps_Change() { composeParkB(); }
    /// After every key release in the PARK B field: splits a PARK B of exactly 10 characters.
    void TextParkB_KeyUp();

    /// Shows a PARK B of 10 characters in the three component fields; blanks count as 0. One whose EIC or
    /// FPS is not hexadecimal empties all four fields. What the operator must know of such a one; empty where
    /// there is nothing to tell, also for the "N/A" of a unit without a System ID.
    std::string showParkB(const std::string& parkB);

    /// The PARI of the components, 10 characters; empty when they are incomplete or the EIC or the FPS is
    /// not hexadecimal.
    std::string pari() const;

    void CommandDefault_Click();
    void CommandHpPari_Click();
    void CommandSetSysID_Click();

private:
    /// Builds the PARK B from the components once they are complete. Keeps the first and the last two
    /// characters of a PARK B of 10 characters.
    void composeParkB();
    void setComponents(std::string_view eic, std::string_view fpn, std::string_view fps);
    void reportIncomplete();

    CommandLink& link_;
    SettingsImage& image_;
    SystemIdFields fields_;
};

}  // namespace quorvex
