#include "beltpack/settings_image.h"

#include "link/number_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

struct TableRow {
    std::int16_t number;
    std::int16_t length;
    const char* name;
};

constexpr std::array<TableRow, SettingsImage::kParameters> kTable{{
    {0x01, 6, "Beltpack PSN/ID"},
    {0x02, 2, "System Id Length"},
    {0x03, 6, "System Id"},
    {0x04, 2, "Headset Limit"},
    {0x05, 2, "RSSI Warning Alarm"},
    {0x06, 2, "Low Battery Alarm"},
    {0x07, 2, "Headset Mic Type"},
    {0x08, 2, "Headset Mic Gain"},
    {0x09, 2, "Headphone Off Level"},
    {0x0A, 2, "Sidetone Volume"},
    {0x0B, 2, "Master Volume"},
    {0x0C, 2, "Programming Mode"},
    {0x0D, 2, "PTT Switch"},
    {0x0E, 6, "RD Carrier Mask"},
    {0x0F, 2, "Page Change Mode"},
    {0x10, 2, "FCC Enabled"},
    {0x11, 2, "Keylock"},
    {0x12, 2, "Vibrator Enabled"},
    {0x13, 2, "Mic Noise Gate Enabled"},  // 22 characters: the field cuts it to 20, as intended
    {0x14, 2, "Keytap Mode"},
    {0x15, 2, "Feature Map"},
}};

constexpr int kWriteBit = 0x40;
constexpr std::size_t kReplyHead = 6;

}  // namespace

std::string dataDigits(const std::string& reply) {
    return reply.size() > kReplyHead ? reply.substr(kReplyHead) : std::string();
}

std::string Parameter::readLine() const {
    return "# 01" + HexPad(number, 2);
}

std::string Parameter::writeLine() const {
    // The whole value field goes out, its trailing blanks too.
    return "# " + HexPad(length, 2) + HexPad(number | kWriteBit, 2) + value.str();
}

void Parameter::storeReply(const std::string& reply) {
    value = quorvex::dataDigits(reply);
}

SettingsImage::SettingsImage() {
    for (std::size_t i = 0; i < kTable.size(); ++i) {
        records_[i].number = kTable[i].number;
        records_[i].length = kTable[i].length;
        records_[i].name = kTable[i].name;
    }
}

Parameter& SettingsImage::operator[](int index) {
    if (index < 0 || index >= kRecords)
        throw RuntimeFault::subscriptOutOfRange();
    return records_[static_cast<std::size_t>(index)];
}

const Parameter& SettingsImage::operator[](int index) const {
    return const_cast<SettingsImage&>(*this)[index];
}

std::string SettingsImage::psnText() const {
    return std::to_string(hexValue(middle((*this)[kPsn].value.str(), 6)));
}

void SettingsImage::clearValues() {
    for (int i = 0; i < kParameters; ++i)
        (*this)[i].value = "";
}

}  // namespace quorvex
