#pragma once

#include <string>

namespace quorvex::sim {

/// The file that is told what the unit holds. A reader finds the whole of it or none: it is written aside and
/// renamed.
class DumpFile {
public:
    /// Throws std::runtime_error with a sentence if no file can be written at `path`. Nothing is changed
    /// there.
    explicit DumpFile(std::string path);

    /// Replaces what is there. Throws std::runtime_error with a sentence if that fails; what is there then
    /// stays.
    void write(const std::string& text) const;

private:
    [[noreturn]] void fail(const std::string& reason) const;

    std::string path_;
    std::string aside_;
};

}  // namespace quorvex::sim
