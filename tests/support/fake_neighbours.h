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

    std::string showSystemId(const std::string& parkB) override {
        journal_.note("System ID: " + parkB);
        if (onShowSystemId)
            onShowSystemId();
        return systemIdProblem;
    }
    void requestDectVersion(Operation& /*read*/) override {
        journal_.note("DECT version requested");
        if (onRequestDectVersion)
            onRequestDectVersion();
    }
    void enableSettingsButtons() override { journal_.note("settings buttons enabled"); }

    std::string systemIdProblem;
    std::function<void()> onShowSystemId;
    std::function<void()> onRequestDectVersion;

private:
    Journal& journal_;
};

}  // namespace quorvex
