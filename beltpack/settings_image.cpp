#include "beltpack/settings_image.h"

#include "link/number_text.h"
#include "link/reply.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

struct TableRow {
    std::int16_t number;
    std::int16_t length;
    const char* name;
    int highest = -1;
};

constexpr std::array<TableRow, SettingsImage::kParameters> kTable{{
    {0x01, 6, "Beltpack PSN/ID"},
    {0x02, 2, "System Id Length"},
    {0x03, 6, "System Id"},
    {0x04, 2, "Headset Limit"},
    {0x05, 2, "RSSI Warning Alarm"},
    {0x06, 2, "Low Battery Alarm", 1},
    {0x07, 2, "Headset Mic Type", 2},
    {0x08, 2, "Headset Mic Gain"},
    {0x09, 2, "Headphone Off Level"},
    {0x0A, 2, "Sidetone Volume"},
    {0x0B, 2, "Master Volume"},
    {0x0C, 2, "Programming Mode"},
    {0x0D, 2, "PTT Switch"},
    {0x0E, 6, "RD Carrier Mask"},
    {0x0F, 2, "Page Change Mode"},
    {0x10, 2, "FCC Enabled", 2},
    {0x11, 2, "Keylock"},
    {0x12, 2, "Vibrator Enabled"},
    {0x13, 2, "Mic Noise Gate Enabled"},  // 22 characters: the field cuts it to 20, as intended
    {0x14, 2, "Keytap Mode"},
    {0x15, 2, "Feature Map", 2},
}};

constexpr int kWriteBit = 0x40;

std::size_t checked(int index) {
    if (index < 0 || index >= SettingsImage::kRecords)
        throw RuntimeFault::subscriptOutOfRange();
    return static_cast<std::size_t>(index);
}

}  // namespace

std::string Parameter::readLine() const {
    return "# 01" + HexPad(number, 2);
}

std::string Parameter::writeLine(std::string_view data) const {
    return "# " + HexPad(length, 2) + HexPad(number | kWriteBit, 2) + std::string(data);
}

bool Parameter::isAvailable() const {
    return strictNumber(available.str()) == 1;
}

void Parameter::storeReply(std::string_view reply) {
    value = dataDigits(reply);
}

SettingsImage::SettingsImage() {
    for (std::size_t i = 0; i < kTable.size(); ++i) {
        records_[i].number = kTable[i].number;
        records_[i].length = kTable[i].length;
        records_[i].name = kTable[i].name;
        records_[i].highest = kTable[i].highest;
    }
}

Parameter& SettingsImage::operator[](int index) {
    return records_[checked(index)];
}

const Parameter& SettingsImage::operator[](int index) const {
    return records_[checked(index)];
}

std::string SettingsImage::psnText() const {
    return std::to_string(hexValue(middle((*this)[kPsn].value.str(), 6)));
}

SettingsImage::Filling::Filling(SettingsImage& image) : image_(image), file_(image.files_) {
    ++image_.reads_;
    ++image_.fillings_;
    for (int i = 0; i < kParameters; ++i)
        image_[i].value = "";
}

SettingsImage::Filling::~Filling() {
    if (file_ == image_.files_)
        --image_.fillings_;
}

void SettingsImage::beginFile() {
    ++files_;
    fillings_ = 0;
}

std::function<bool()> SettingsImage::untilFile() const {
    return [this, files = files_] { return files == files_; };
}

std::function<bool()> SettingsImage::untilReplaced() const {
    return [this, files = files_, reads = reads_] { return files == files_ && reads == reads_; };
}

}  // namespace quorvex
