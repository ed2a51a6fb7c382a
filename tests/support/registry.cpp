#include "tests/support/registry.h"

namespace quorvex {

std::map<std::string, TestRun>& testRegistry() {
    static std::map<std::string, TestRun> registry;
    return registry;
}

bool enterTest(const std::string& name, TestRun run) {
    const std::size_t colons = name.rfind("::");
    const std::string last = colons == std::string::npos ? name : name.substr(colons + 2);
    if (!testRegistry().emplace(last, std::move(run)).second)
        qFatal("two test classes are named %s", last.c_str());
    return true;
}

}  // namespace quorvex
