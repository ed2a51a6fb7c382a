#include "simulator/options.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

#include "simulator/active_antenna.h"
#include "simulator/beltpack.h"
#include "simulator/hex.h"

namespace quorvex::sim {

namespace {

constexpr int kFrameBits = 516 * 10;
constexpr int kRecordBits = 22 * 10;  // a record of type 07 and its share of the others

[[noreturn]] void refuse(const std::string& sentence) {
    throw std::invalid_argument(sentence);
}

int readRegister(const std::string& option, const std::string& digits) {
    const std::optional<int> number = parseHex(digits);
    if (digits.size() != 2 || !number)
        refuse(option + ": \"" + digits + "\" is no register number (two hexadecimal digits).");
    return *number;
}

RfModule readModule(const std::string& name) {
    if (name == "rm5")
        return RfModule::kRm5;
    if (name == "kirk")
        return RfModule::kKirk;
    refuse("--module: \"" + name + "\" is neither \"rm5\" nor \"kirk\".");
}

std::pair<int, std::string> readValue(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos)
        refuse("--set: \"" + text + "\" is not of the form NN=HEX.");
    return {readRegister("--set", text.substr(0, equals)), text.substr(equals + 1)};
}

/// What an option goes with.
enum class With { kUnit, kReplayToo };

struct Option {
    std::string_view name;
    std::string_view argument;  ///< its name in the help; empty: the option takes none
    std::string_view help;
    std::function<void(Options&, const std::string&)> apply;
    With with = With::kUnit;
};

const std::vector<Option>& optionTable() {
    using Text = const std::string&;
    static const std::vector<Option> table{
        {"--link", "PATH", "where the program finds the port; a link to the pseudo-terminal (required)",
         [](Options& o, Text text) { o.linkPath = text; }, With::kReplayToo},
        {"--module", "rm5|kirk", "the radio module that the unit carries; kirk unless said otherwise",
         [](Options& o, Text text) { o.module = readModule(text); }},
        {"--pace", "BAUD", "let bytes take their time on the line, 300 to 1000000; without it, none",
         [](Options& o, Text text) { o.baud = parseNumber("--pace", text, 300, 1'000'000); },
         With::kReplayToo},
        {"--set", "NN=HEX", "the unit holds these digits in register NN; may be repeated",
         [](Options& o, Text text) { o.values.push_back(readValue(text)); }},
        {"--unavailable", "NN", "the unit does not answer for register NN; may be repeated",
         [](Options& o, Text text) { o.unavailable.push_back(readRegister("--unavailable", text)); }},
        {"--version-text", "TEXT", "the DECT firmware version",
         [](Options& o, Text text) { o.version = text; }},
        {"--version-lines", "N", "unrelated lines before the version line, 0 to 100",
         [](Options& o, Text text) { o.linesBeforeVersion = parseNumber("--version-lines", text, 0, 100); }},
        {"--answer-writes", "", "answer writes, which the units do not do by themselves",
         [](Options& o, Text) { o.answersWrites = true; }},
        {"--refuse-kirk-reads", "",
         "antenna with rm5: answer reads of 07 to 0B by \"# 01BF\" instead of not at all",
         [](Options& o, Text) { o.refusesKirkReads = true; }},
        {"--no-carrier", "", "kirk: calibration hears no test set (DC balance 0)",
         [](Options& o, Text) { o.carrierPresent = false; }},
        {"--stream-rate", "N", "kirk: calibration records a second, 1 to 50; 2 unless said otherwise",
         [](Options& o, Text text) { o.recordsPerSecond = parseNumber("--stream-rate", text, 1, 50); }},
        {"--display-rate", "N", "beltpack: copies of its display a second, 1 to 50; none unless said",
         [](Options& o, Text text) { o.framesPerSecond = parseNumber("--display-rate", text, 1, 50); }},
        {"--fault", "FAULT", "a fault, see below; may be repeated",
         [](Options& o, Text text) { o.faults.push_back(parseFault(text)); }},
        {"--dump", "FILE", "write what the unit holds to FILE at the end and on SIGUSR1",
         [](Options& o, Text text) { o.dumpPath = text; }},
        {"--traffic", "", "print every line received and sent, with its time in seconds",
         [](Options& o, Text) { o.traffic = true; }, With::kReplayToo},
        {"--help", "", "print this and end", [](Options& o, Text) { o.help = true; }},
    };
    return table;
}

constexpr const char* kSayWhich = "Say which unit: beltpack or antenna.";

void readUnit(Options& options, const std::string& word) {
    if (word == "beltpack")
        options.unit = Options::UnitKind::kBeltpack;
    else if (word == "antenna")
        options.unit = Options::UnitKind::kActiveAntenna;
    else
        refuse("\"" + word + "\" is neither \"beltpack\" nor \"antenna\".");
}

/// The words that are no options: what to play.
void readWords(Options& options, const std::vector<std::string>& words) {
    if (words.empty())
        refuse(kSayWhich);
    if (words[0] != "replay" && words[0] != "bench") {
        readUnit(options, words[0]);
        if (words.size() != 1)
            refuse(kSayWhich);
        return;
    }
    if (words.size() != 2)
        refuse("Say which file: " + words[0] + " FILE.");
    options.play = words[0] == "replay" ? Options::Play::kReplay : Options::Play::kBench;
    options.file = words[1];
}

/// A stream that the line cannot carry would only pile up.
void checkPace(const Options& options) {
    if (options.baud == 0)
        return;
    const int bits = options.framesPerSecond * kFrameBits +
                     (options.module == RfModule::kKirk ? options.recordsPerSecond * kRecordBits : 0);
    if (bits > options.baud)
        refuse("--pace: " + std::to_string(options.baud) + " baud cannot carry the streams, which need " +
               std::to_string(bits) + ".");
}

void checkGiven(const Options& options, const std::vector<const Option*>& given) {
    for (const Option* option : given) {
        if (options.play == Options::Play::kBench)
            refuse(std::string(option->name) + " stands in the bench's file, with the unit it is for.");
        if (options.play == Options::Play::kReplay && option->with != With::kReplayToo)
            refuse(std::string(option->name) + " is not for a replay.");
    }
}

void check(const Options& options) {
    if (options.play == Options::Play::kBench)
        return;
    if (options.linkPath.empty())
        refuse("Say where the port is to be found: --link PATH.");
    const bool rm5Antenna =
        options.unit == Options::UnitKind::kActiveAntenna && options.module == RfModule::kRm5;
    if (options.refusesKirkReads && !rm5Antenna)
        refuse("--refuse-kirk-reads is for an antenna with --module rm5.");
    if (options.framesPerSecond > 0 && options.unit != Options::UnitKind::kBeltpack)
        refuse("--display-rate is for a beltpack.");
    if (options.play == Options::Play::kUnit)
        checkPace(options);
}

std::string padded(std::string_view text, std::size_t width) {
    std::string line(text);
    line.resize(std::max(width, line.size() + 1), ' ');
    return line;
}

std::string faultForm(const FaultRule& rule) {
    std::string form(rule.name);
    if (rule.number == FaultRule::Number::kRequired)
        form += "=NN";
    else if (rule.number == FaultRule::Number::kOptional)
        form += "[=NN]";
    if (rule.takesAmount)
        form += "[:N]";
    return form;
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    std::vector<std::string> words;
    std::vector<const Option*> given;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (!word.starts_with("-")) {
            words.push_back(word);
            continue;
        }
        const auto option = std::ranges::find(optionTable(), word, &Option::name);
        if (option == optionTable().end())
            refuse("There is no option " + word + ".");
        const bool takesArgument = !option->argument.empty();
        if (takesArgument && ++i == arguments.size())
            refuse(word + " needs " + std::string(option->argument) + " after it.");
        option->apply(options, takesArgument ? arguments[i] : std::string());
        given.push_back(&*option);
    }
    if (options.help)
        return options;
    readWords(options, words);
    checkGiven(options, given);
    check(options);
    return options;
}

std::unique_ptr<Unit> makeUnit(const Options& options) {
    std::unique_ptr<Unit> unit;
    if (options.unit == Options::UnitKind::kBeltpack) {
        auto beltpack = std::make_unique<Beltpack>(options.module);
        if (options.framesPerSecond > 0)
            beltpack->displayStream().start(0, 1000 / options.framesPerSecond);
        unit = std::move(beltpack);
    } else {
        auto antenna = std::make_unique<ActiveAntenna>(options.module);
        antenna->setRefusesKirkReads(options.refusesKirkReads);
        unit = std::move(antenna);
    }
    for (const auto& [number, digits] : options.values) {
        if (!unit->setValue(number, digits))
            refuse("--set: \"" + digits + "\" does not fit register " + hexByte(number) + " of the " +
                   describe(options) + ".");
    }
    for (const int number : options.unavailable) {
        if (!unit->holds(number))
            refuse("--unavailable: the " + describe(options) + " has no register " + hexByte(number) + ".");
        unit->setAvailable(number, false);
    }
    for (const Fault& fault : options.faults)
        unit->addFault(fault);
    if (options.version)
        unit->setVersion(*options.version);
    unit->setLinesBeforeVersion(options.linesBeforeVersion);
    unit->setAnswersWrites(options.answersWrites);
    unit->calibrationStream().setIntervalMs(1000 / options.recordsPerSecond);
    unit->calibrationStream().signal().setCarrierPresent(options.carrierPresent);
    return unit;
}

std::string describe(const Options& options) {
    if (options.play == Options::Play::kReplay)
        return "replay of " + options.file;
    const char* unit = options.unit == Options::UnitKind::kBeltpack ? "beltpack" : "antenna";
    const char* module = options.module == RfModule::kKirk ? "Kirk" : "RM5";
    return std::string(unit) + " (" + module + ")";
}

std::string helpText() {
    constexpr std::size_t kOptionWidth = 24;
    constexpr std::size_t kFaultWidth = 26;
    std::string text =
        "Usage: quorvex-simulator beltpack|antenna --link PATH [option ...]\n"
        "       quorvex-simulator replay FILE --link PATH [--pace BAUD] [--traffic]\n"
        "       quorvex-simulator bench FILE\n"
        "\n"
        "Plays a unit on a pseudo-terminal until it is interrupted. Open PATH as the serial port.\n"
        "replay: says what the unit said in a trace of the utility. bench: as many units as FILE has lines, "
        "each\n"
        "with the words of a command line; empty lines and those that begin with # count for nothing.\n"
        "Exit status: 0 at the end, 1 if the port or the dump cannot be made, 2 for a wrong command line or "
        "file.\n"
        "\n"
        "Options:\n";
    for (const Option& option : optionTable()) {
        const std::string form = std::string(option.name) + " " + std::string(option.argument);
        text += "  " + padded(form, kOptionWidth) + std::string(option.help) + "\n";
    }
    text +=
        "\n"
        "Faults, as --fault NAME[=NN][:N][,once]. NN is a register number; without it the fault strikes at\n"
        "every reply. With \",once\" it strikes the first time only.\n";
    for (const FaultRule& rule : faultTable()) {
        text += "  " + padded(faultForm(rule), kFaultWidth) + std::string(rule.help);
        if (rule.takesAmount)
            text += " (" + std::to_string(rule.amount) + ")";
        text += "\n";
    }
    return text;
}

}  // namespace quorvex::sim
