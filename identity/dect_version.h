#pragma once

#include <string>
#include <string_view>

#include "link/controls.h"
#include "link/operation.h"

namespace quorvex {

/// Asking a unit for its DECT firmware version.
class DectVersion {
public:
    static constexpr const char* kBeltpackRequest = "! 0108";
    static constexpr const char* kAntennaRequest = "! 0107";

    /// Whether the version stands in `reply` where it is taken from. The request takes it from there anyway.
    static bool isWhereTaken(std::string_view reply);

    DectVersion(CommandLink& link, std::string request, TextField& version);

    /// Sends the request and shows the version of the first reply line that has one; lines before it are
    /// skipped. "Unavailable" after 2 s of silence, empty when the line is too short to hold a version.
    void request();
    /// The same as a part of `operation`.
    void request(Operation& operation);

private:
    CommandLink& link_;
    std::string request_;
    TextField& version_;
};

}  // namespace quorvex
