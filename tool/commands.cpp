#include "tool/antenna_command.h"
#include "tool/beltpack_commands.h"
#include "tool/command.h"
#include "tool/file_commands.h"
#include "tool/ports_command.h"
#include "tool/screen_command.h"
#include "tool/set_command.h"
#include "tool/version_command.h"

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

Command read() {
    return {"read",
            "[FILE.bpc]",
            0,
            1,
            "read a Beltpack, show what it holds and save it",
            "Values are as the unit sent them, two hexadecimal digits a byte.\n"
            "N/A: the unit does not have the parameter. FILE.bpc is replaced whole or not at all.\n",
            "--port COM1 read found.bpc",
            {},
            prepareRead,
            nullptr,
            savesOfRead};
}

Command write() {
    return {"write",
            "FILE.bpc",
            1,
            1,
            "write a file's settings to a Beltpack and verify them",
            "Reads the unit first, writes what the unit has, reads it again and lists what has changed.\n"
            "PSN and System Id stay the unit's own unless --with-identity is given.\n"
            "Exit status 1: something reads back otherwise than it was written.\n",
            "--port COM1 write workshop.bpc --dry-run",
            {{"--with-identity", "", "write the file's PSN and System Id, too"},
             {"--dry-run", "", "only show what would change"}},
            prepareWrite,
            nullptr,
            nullptr,
            identitiesOfWrite};
}

Command verify() {
    return {"verify",
            "FILE.bpc",
            1,
            1,
            "compare a Beltpack with a file",
            "Names every parameter that differs. Exit status 1: there is one.\n",
            "--port COM1 verify workshop.bpc --without-identity",
            {{"--without-identity", "", "leave PSN and System Id out"}},
            prepareVerify,
            nullptr};
}

Command set() {
    return {
        "set",
        "psn|system-id|pli|rf-carriers VALUE",
        2,
        2,
        "give a Beltpack one value and read it back",
        "  psn          decimal number, 0 to 1048575\n"
        "  system-id    PARK B, 10 hexadecimal digits\n"
        "  pli          2 hexadecimal digits: 1F all antennas of a matrix, 12 all matrices, 27 one antenna\n"
        "  rf-carriers  10 hexadecimal digits\n"
        "With several ports VALUE is a list, \"100001,100002\", with one for each; or the PSN of the first "
        "one,\n"
        "from which the others count up, and pli and rf-carriers are the same for all.\n",
        "--port COM1 set psn 100001",
        {},
        prepareSet,
        nullptr,
        nullptr,
        identitiesOfSet,
        dealSet};
}

Command productionValues() {
    return {"production-values",
            "",
            0,
            0,
            "give a Beltpack the factory values of its hardware revision",
            "Reads the unit first, writes and verifies, sets the production flag, reads the unit again.\n",
            "--port COM1 production-values",
            {},
            prepareProductionValues,
            nullptr};
}

Command version() {
    return {"version",
            "beltpack|antenna",
            1,
            1,
            "ask a unit for its DECT version",
            "",
            "--port COM1 version beltpack",
            {},
            prepareVersion,
            nullptr};
}

Command antenna() {
    return {"antenna",
            "",
            0,
            0,
            "read the calibration values of an Active Antenna",
            "",
            "--port COM2 antenna",
            {{"--tbr6", "", "put it into TBR6 mode afterwards"}},
            prepareAntenna,
            nullptr};
}

Command screen() {
    return {"screen",
            "FILE.bmp",
            1,
            1,
            "save what a Beltpack's display shows",
            "With --frames the pictures are FILE0.bmp, FILE1.bmp and so on.\n",
            "--port COM1 screen display.bmp",
            {{"--frames", "N", "save N pictures, 1 to 255"}},
            prepareScreen,
            nullptr,
            savesOfScreen};
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
    static const std::vector<Command> table{
        ports(),   read(),    write(),  verify(), set(),   productionValues(),
        version(), antenna(), screen(), show(),   check(), diff()};
    return table;
}

}  // namespace quorvex::tool
