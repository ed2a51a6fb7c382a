#include "tests/faults/faults.h"

#include <cctype>

#include "tests/rscreen/frames.h"

namespace quorvex {

namespace {

using Place = FaultyPort::Place;
using Promise = TestedFault::Promise;
using Struck = FaultyPort::Struck;
using Tick = FaultyPort::Tick;

constexpr Tick kJabberMs = 20'000;
constexpr Tick kSoonPickedMs = 500;
constexpr Tick kPickedAgainMs = 5'000;
constexpr std::size_t kRegisterAt = 4, kDataAt = 6;
constexpr const char* kOtherLine = "! 0211E7\r\n";
constexpr const char* kOtherRecord = "! 0212E7\r\n";

std::string whole(const Struck& struck) {
    return struck.body + struck.end;
}

std::string mapped(const Struck& struck, std::size_t from, char (*change)(char)) {
    std::string body = struck.body;
    for (std::size_t i = from; i < body.size(); ++i)
        body[i] = change(body[i]);
    return body + struck.end;
}

std::string withInside(const Struck& struck, char extra) {
    std::string body = struck.body;
    body.insert(body.size() / 2, 1, extra);
    return body + struck.end;
}

std::string ofOtherRegister(const Struck& struck) {
    std::string body = struck.body;
    return (body.size() < kDataAt ? body : body.replace(kRegisterAt, 2, "7E")) + struck.end;
}

char inverted(char c) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const std::size_t digit = kDigits.find(c);
    return digit == std::string_view::npos ? c : kDigits[kDigits.size() - 1 - digit];
}

std::string times(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

/// A fault that says something else than the unit.
TestedFault says(const char* name, std::string (*what)(const Struck&), Promise promise = Promise::none) {
    return {name, Place::reply, [what](FaultyPort& port, const Struck& struck) { port.say(what(struck)); },
            promise};
}

/// The same at a moment: `pastLimitMs` after the program gives the reply up.
TestedFault late(const char* name, Tick pastLimitMs, Promise promise) {
    return {name, Place::reply,
            [pastLimitMs](FaultyPort& port, const Struck& struck) {
                port.say(whole(struck), struck.limitMs + pastLimitMs);
            },
            promise};
}

std::vector<TestedFault> absences() {
    return {
        {"no reply", Place::reply, [](FaultyPort&, const Struck&) {}, Promise::noMixture},
        late("reply 1 ms under the limit", -1, Promise::harmlessAlone),
        late("reply 1 ms over the limit", 1, Promise::none),
        {"line lost on the way", Place::line, [](FaultyPort&, const Struck&) {}, Promise::none},
    };
}

std::vector<TestedFault> shapes() {
    return {
        says("half a reply, then nothing",
             [](const Struck& s) { return s.body.substr(0, s.body.size() / 2); }),
        says("half a reply and its line end",
             [](const Struck& s) { return s.body.substr(0, s.body.size() / 2) + s.end; }),
        says("one byte fewer", [](const Struck& s) { return s.body.substr(0, s.body.size() - 2) + s.end; }),
        says("one byte more", [](const Struck& s) { return s.body + "5A" + s.end; }),
        says("no line end", [](const Struck& s) { return s.body; }),
        says("reply twice", [](const Struck& s) { return whole(s) + whole(s); }),
    };
}

std::vector<TestedFault> contents() {
    return {
        says("another register's number", ofOtherRegister),
        says("another value", [](const Struck& s) { return mapped(s, kDataAt, inverted); }),
        says("no hexadecimal digits",
             [](const Struck& s) { return mapped(s, kDataAt, [](char) { return 'Z'; }); }),
        says("lower case",
             [](const Struck& s) {
                 return mapped(s, 0, [](char c) {
                     return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
                 });
             }),
        says(
            "NUL in front", [](const Struck& s) { return std::string(1, '\0') + whole(s); },
            Promise::harmless),
        says("NUL inside", [](const Struck& s) { return withInside(s, '\0'); }),
        says(
            "byte E9 in front", [](const Struck& s) { return "\xE9" + whole(s); }, Promise::harmless),
        says("byte E9 inside", [](const Struck& s) { return withInside(s, '\xE9'); }),
    };
}

std::vector<TestedFault> company() {
    TestedFault echo =
        says("echo of the command in front", [](const Struck& s) { return s.line + "\r\n" + whole(s); });
    echo.fitsStream = false;
    return {
        echo,
        says("2 other lines in front", [](const Struck& s) { return times(2, kOtherLine) + whole(s); }),
        says("12 other lines in front", [](const Struck& s) { return times(12, kOtherLine) + whole(s); }),
        says("a record of another type instead", [](const Struck&) { return std::string(kOtherRecord); }),
        says("stray \"#\" in front", [](const Struck& s) { return "#" + whole(s); }),
        says("stray \"!\" in front", [](const Struck& s) { return "!" + whole(s); }),
        says("a blank display frame in front",
             [](const Struck& s) { return "sync" + std::string(kFrameBytes, '\0') + whole(s); }),
        says("a display frame with every byte in front",
             [](const Struck& s) { return frame(0).toStdString() + whole(s); }),
        says("a display frame with every byte behind",
             [](const Struck& s) { return whole(s) + frame(0).toStdString(); }),
    };
}

/// A unit that sends without end: for a while, or until the port is picked again.
TestedFault jabber(const char* name, const char* begin, const char* pattern, bool pickedAgain) {
    return {name, Place::reply,
            [begin, pattern, pickedAgain](FaultyPort& port, const Struck&) {
                port.say(begin);
                port.jabber(pattern, kJabberMs);
                if (pickedAgain)
                    port.pickAgainIn(kPickedAgainMs);
            },
            Promise::none, false};
}

std::vector<TestedFault> floods() {
    return {
        jabber("a line without end, for 20 s", "#", "A", false),
        jabber("a line without end, port picked again after 5 s", "#", "A", true),
        jabber("lines without end, for 20 s", "", kOtherLine, false),
        jabber("lines without end, port picked again after 5 s", "", kOtherLine, true),
    };
}

std::vector<TestedFault> losses() {
    constexpr int kCharactersBefore = 3;
    TestedFault closed{"port closed from the start", Place::none, {}, Promise::noMixture, false, false, true};
    return {
        {"cable pulled as a line goes out", Place::line, [](FaultyPort& port, const Struck&) { port.pull(); },
         Promise::noMixture, false},
        {"cable pulled in a reply", Place::reply,
         [](FaultyPort& port, const Struck& struck) {
             port.say(whole(struck));
             port.pullAfterReads(kCharactersBefore);
         },
         Promise::noMixture, false},
        {"cable pulled as a line goes out, port picked again after 0.5 s", Place::line,
         [](FaultyPort& port, const Struck&) {
             port.pull();
             port.pickAgainIn(kSoonPickedMs);
         },
         Promise::noMixture, false},
        {"no reply, port picked again after 0.5 s", Place::reply,
         [](FaultyPort& port, const Struck&) { port.pickAgainIn(kSoonPickedMs); }, Promise::noMixture, false},
        closed,
    };
}

}  // namespace

const std::vector<TestedFault>& testedFaults() {
    static const std::vector<TestedFault> faults = [] {
        std::vector<TestedFault> all;
        for (const auto& some : {absences(), shapes(), contents(), company(), floods(), losses()})
            all.insert(all.end(), some.begin(), some.end());
        return all;
    }();
    return faults;
}

}  // namespace quorvex
