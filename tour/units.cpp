#include "tour/units.h"

namespace quorvex::tour {

QStringList Unit::arguments(const QString& ports) const {
    QStringList words{kind, "--module", module, "--link", ports + '/' + port, "--pace", "19200"};
    words << "--version-text" << version;
    for (const Held& value : values) {
        if (value.setting)
            words << "--set" << value.setting;
    }
    words << "--dump" << dump(ports);
    return words + extra;
}

const Unit& rm5Beltpack() {
    static const Unit unit{"COM1",
                           "beltpack",
                           "rm5",
                           {{"01=00443186A0", "TextBeltpackId", "100000"},
                            {"02=1F", "TextPli", "1F"},
                            {"03=1123456A00", "TextEic", "1234"},
                            {nullptr, "TextFpn", "*5*6"},
                            {nullptr, "TextFps", "A"},
                            {nullptr, "TextParkB", "1123456A00"},
                            {"06=01", "checkBattAlarm", "on"},
                            {"07=01", "optionMICUnBal", "on"},
                            {nullptr, "optionMICElectret", "off"},
                            {"0E=03FF000000", "TextRfCarrs", "03FF000000"},
                            {"10=01", "BPRegulations", "FCC - USA"},
                            {"15=02", "BPHWRevision", "MX 318825XT"},
                            {"3C=0A", "TextFreqAccr", "5"},
                            {"3D=21", "TextFMDev", "33"}},
                           "4.07"};
    return unit;
}

const Unit& kirkBeltpack() {
    static const Unit unit{"COM2",
                           "beltpack",
                           "kirk",
                           {{"01=00443F4240", "TextBeltpackId", "1000000"},
                            {"02=12", "TextPli", "12"},
                            {"03=100ECE2500", "TextEic", "00EC"},
                            {nullptr, "TextFpn", "*E*2"},
                            {nullptr, "TextFps", "5"},
                            {nullptr, "TextParkB", "100ECE2500"},
                            {"06=00", "checkBattAlarm", "off"},
                            {"07=02", "optionMICElectret", "on"},
                            {nullptr, "optionMICUnBal", "off"},
                            {"0E=0155000000", "TextRfCarrs", "0155000000"},
                            {"10=02", "BPRegulations", "JDECT - JAPAN"},
                            {"15=01", "BPHWRevision", "MX 318825"},
                            {"38=48", "TextRssiThr", "72"},
                            {"39=03", "TextFreqAccrRx", "3"},
                            {"3A=05", "TextFreqAccrTx", "5"},
                            {"3C=04", "TextFreqAccr", "4"},
                            {"3D=28", "TextFMDev", "40"}},
                           "5.21"};
    return unit;
}

const Unit& rm5Antenna() {
    static const Unit unit{"COM3",
                           "antenna",
                           "rm5",
                           {{"01=15", "TextFmDevA", "21"},
                            {"02=16", "TextFmDevB", "22"},
                            {"05=0C", "TextFreqAdjA", "3"},
                            {"06=03", "TextFreqAdjB", "-4"}},
                           "2.10"};
    return unit;
}

const Unit& kirkAntenna() {
    static const Unit unit{"COM4",
                           "antenna",
                           "kirk",
                           {{"01=1E", "TextFmDevA", "30"},
                            {"02=1F", "TextFmDevB", "31"},
                            {"05=04", "TextFreqAdjA", "4"},
                            {"07=03", "TextFreqAdjRxA", "3"},
                            {"09=02", "TextFreqAdjTxA", "2"},
                            {"06=05", "TextFreqAdjB", "5"},
                            {"08=06", "TextFreqAdjRxB", "6"},
                            {"0A=01", "TextFreqAdjTxB", "1"}},
                           "2.20"};
    return unit;
}

const Unit& displayBeltpack() {
    static const Unit unit{"COM5", "beltpack", "rm5", {}, "4.07", {"--display-rate", "2"}};
    return unit;
}

}  // namespace quorvex::tour
