#include <QProcess>
#include <cstdio>

#include "tests/support/own_surroundings.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

constexpr const char* kUsage =
    "Usage: %s [--list | CLASS [ARGUMENT]...]\n\n"
    "Runs a test class; the arguments are those of Qt Test, such as a function's name. Without a class: all "
    "of\n"
    "them, each in a process of its own. --list: their names.\n";

int list() {
    for (const auto& [name, run] : testRegistry())
        std::puts(name.c_str());
    return 0;
}

int runAll(const char* program) {
    bool passed = true;
    for (const auto& [name, run] : testRegistry())
        passed &= QProcess::execute(QString::fromLocal8Bit(program), {QString::fromStdString(name)}) == 0;
    return passed ? 0 : 1;
}

int runOne(const TestRun& run, int argc, char** argv) {
    // Static, because Qt Test ends the program itself after a list of functions.
    static const OwnSurroundings surroundings;
    argv[1] = argv[0];
    return run(argc - 1, argv + 1);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2)
        return runAll(argv[0]);
    const std::string name = argv[1];
    if (name == "--list")
        return list();
    const auto found = testRegistry().find(name);
    if (found != testRegistry().end())
        return runOne(found->second, argc, argv);
    std::fprintf(stderr, kUsage, argv[0]);
    return 2;
}
