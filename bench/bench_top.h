#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/child_process.h"

namespace quorvex::bench {

/// A technician's bench for one measurement: a folder of ports with simulated units, and settings that hold
/// nothing yet. This process and those it starts use them while the object lives; there is one at a time.
class BenchTop {
public:
    BenchTop();
    ~BenchTop();
    BenchTop(const BenchTop&) = delete;
    BenchTop& operator=(const BenchTop&) = delete;

    /// Puts a simulated Beltpack on COM`number`. `options` are the simulator's own.
    void addBeltpack(int number, const std::string& module, std::vector<std::string> options = {});
    /// Makes COM`number` a device that is there already.
    void addDevice(int number, const std::string& devicePath);

    std::string portPath(int number) const;

private:
    std::filesystem::path folder_;
    std::vector<std::unique_ptr<ChildProcess>> units_;
};

/// Path of a program that was built with this one.
std::string builtProgram(const std::string& name);

}  // namespace quorvex::bench
