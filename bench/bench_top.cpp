#include "bench/bench_top.h"

#include <stdlib.h>

#include <QCoreApplication>
#include <cerrno>
#include <system_error>

namespace quorvex::bench {

BenchTop::BenchTop() {
    std::string name = std::filesystem::temp_directory_path() / "quorvex-bench-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), "Cannot make " + name);
    folder_ = name;
    std::filesystem::create_directory(folder_ / "ports");
    std::filesystem::create_directory(folder_ / "config");
    ::setenv("QUORVEX_PORTS", (folder_ / "ports").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (folder_ / "config").c_str(), 1);
}

BenchTop::~BenchTop() {
    units_.clear();  // they remove their links themselves
    std::error_code none;
    std::filesystem::remove_all(folder_, none);
}

void BenchTop::addBeltpack(int number, const std::string& module, std::vector<std::string> options) {
    options.insert(options.begin(), {"beltpack", "--module", module, "--link", portPath(number)});
    units_.push_back(std::make_unique<ChildProcess>(builtProgram("quorvex-simulator"), std::move(options)));
    units_.back()->readLine();  // printed once the port is there
}

void BenchTop::addDevice(int number, const std::string& devicePath) {
    std::filesystem::create_symlink(devicePath, portPath(number));
}

std::string BenchTop::portPath(int number) const {
    return folder_ / "ports" / ("COM" + std::to_string(number));
}

std::string builtProgram(const std::string& name) {
    return std::filesystem::path(QCoreApplication::applicationDirPath().toStdString()) / name;
}

}  // namespace quorvex::bench
