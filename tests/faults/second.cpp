#include "tests/faults/second.h"

#include <set>

#include "tests/faults/operations.h"
#include "tests/support/other_file.h"

namespace quorvex {

namespace {

/// Without the module, as which a button's operation meets what is there.
std::string buttonOf(std::string name) {
    for (const std::string module : {", RM5", ", Kirk"}) {
        if (const std::size_t at = name.find(module); at != std::string::npos)
            name.erase(at, module.size());
    }
    return name;
}

std::vector<Second> events() {
    using Kind = Second::Kind;
    static const OtherFile file;
    const auto nothingTyped = [](Workshop&) {};
    return {
        {"another port", Kind::port, nothingTyped, false,
         [](Workshop& shop) { shop.portChoice.CmdOK_Click(1); }},
        {"the same port again", Kind::port, nothingTyped, false,
         [](Workshop& shop) { shop.portChoice.CmdOK_Click(0); }},
        {"a settings file", Kind::file, nothingTyped, false,
         [](Workshop& shop) { shop.loadFile(file.path()); }},
        {"the end", Kind::end, nothingTyped, false, [](Workshop& shop) { shop.link.closePort(); }},
    };
}

}  // namespace

bool Second::fits(UnitKind unit) const {
    const bool kirk = unit == UnitKind::beltpackKirk || unit == UnitKind::antennaKirk;
    const bool beltpack = unit == UnitKind::beltpackRm5 || unit == UnitKind::beltpackKirk;
    return (kirk || !kirkOnly) && (beltpack || !beltpackOnly);
}

const std::vector<Second>& seconds() {
    static const std::vector<Second> all = [] {
        std::vector<Second> found;
        std::set<std::string> seen;
        for (const TestedOperation& operation : testedOperations()) {
            const std::string button = buttonOf(operation.name);
            if (!seen.insert(button).second)
                continue;
            found.push_back({button, Second::Kind::operation, operation.fill,
                             operation.kind == TestedOperation::Kind::calibration, operation.run,
                             operation.success, operation.kind == TestedOperation::Kind::display,
                             button.find("threshold") != std::string::npos,
                             button.find("module") != std::string::npos});
        }
        for (Second& event : events())
            found.push_back(std::move(event));
        return found;
    }();
    return all;
}

}  // namespace quorvex
