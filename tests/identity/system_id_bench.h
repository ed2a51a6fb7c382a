#pragma once

#include "identity/system_id.h"
#include "tests/identity/update_bench.h"

namespace quorvex {

struct SystemIdBench : UpdateBench {
    void fill(const QString& newParkB, const QString& newEic, const QString& newFpn, const QString& newFps) {
        parkB.type(newParkB.toStdString());
        eic.type(newEic.toStdString());
        fpn.type(newFpn.toStdString());
        fps.type(newFps.toStdString());
    }

    FakeField parkB{journal, "TextParkB"};
    FakeField eic{journal, "TextEic"};
    FakeField fpn{journal, "TextFpn"};
    FakeField fps{journal, "TextFps"};
    SystemId systemId{link, image, {parkB, eic, fpn, fps}};
};

inline const QString kIncomplete = "box critical: EIC, FPN or FPS were not entered correctly! []";

}  // namespace quorvex
