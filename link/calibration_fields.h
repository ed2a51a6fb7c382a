#pragma once

#include "link/controls.h"

namespace quorvex {

/// The fields with the calibration values last read from one radio module.
struct CalibrationFields {
    TextField& fmDeviation;
    TextField& freqAccuracy;  ///< "Mid" of a Kirk
    TextField& freqAccuracyRx;
    TextField& freqAccuracyTx;
};

}  // namespace quorvex
