#include "tool/command.h"
#include "tool/file_commands.h"
#include "tool/ports_command.h"

namespace quorvex::tool {

namespace {

Command ports() {
    return {"ports",
            "",
            0,
            0,
            "list COM1 to COM12: device, adapter, whether it can be opened, what to do if not",
            "",
            "ports",
            {},
            nullptr,
            listPorts};
}

Command show() {
    return {"show", "FILE.bpc",          1,  1,       "show what is in a settings file",
            "",     "show workshop.bpc", {}, nullptr, showFile};
}

Command check() {
    return {"check",
            "FILE.bpc",
            1,
            1,
            "name whatever is wrong with a settings file, by its line",
            "Exit status 5: something is.\n",
            "check workshop.bpc",
            {},
            nullptr,
            checkFile};
}

Command diff() {
    return {"diff",
            "A.bpc B.bpc",
            2,
            2,
            "name the parameters in which two files differ",
            "Exit status 1: there is one.\n",
            "diff found.bpc workshop.bpc",
            {},
            nullptr,
            diffFiles};
}

}  // namespace

const std::vector<Command>& commandTable() {
    static const std::vector<Command> table{ports(), show(), check(), diff()};
    return table;
}

}  // namespace quorvex::tool
