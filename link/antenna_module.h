#pragma once

namespace quorvex {

/// A register of an Active Antenna on the wire.
struct AntennaRegister {
    const char* readLine;
    const char* reply;  ///< what the line contains that answers it
};

/// The registers of one of its radio modules.
struct AntennaModule {
    AntennaRegister fmDeviation, freqAccuracy, freqAdjustRx, freqAdjustTx;
};

inline constexpr AntennaModule kAntennaModuleA{
    {"# 0101", "# 0281"}, {"# 0105", "# 0285"}, {"# 0107", "# 0287"}, {"# 0109", "# 0289"}};
// The last one is asked for in lower case and answered in upper.
inline constexpr AntennaModule kAntennaModuleB{
    {"# 0102", "# 0282"}, {"# 0106", "# 0286"}, {"# 0108", "# 0288"}, {"# 010a", "# 028A"}};

}  // namespace quorvex
