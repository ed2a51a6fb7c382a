#pragma once

#include <functional>
#include <string>

#include "beltpack/beltpack_read.h"
#include "tests/support/journal.h"

namespace quorvex {

/// What a read of a Beltpack asks of its neighbours, noted.
class FakeNeighbours : public BeltpackReadNeighbours {
public:
    explicit FakeNeighbours(Journal& journal) : journal_(journal) {}

    int rfModuleType() const override { return type_; }
    void changeRfModuleType(int type) override {
        type_ = type;
        journal_.note("module type becomes " + std::to_string(type));
    }
    void showSystemId(const std::string& parkB) override {
        journal_.note("System ID: " + parkB);
        if (onShowSystemId)
            onShowSystemId();
    }
    void requestDectVersion() override {
        journal_.note("DECT version requested");
        if (onRequestDectVersion)
            onRequestDectVersion();
    }
    void enableSettingsButtons() override { journal_.note("settings buttons enabled"); }

    void holdType(int type) { type_ = type; }

    std::function<void()> onShowSystemId;
    std::function<void()> onRequestDectVersion;

private:
    Journal& journal_;
    int type_ = 0;
};

}  // namespace quorvex
