#include <stdexcept>
#include <string>

#include "bench/bench_top.h"
#include "bench/figures.h"
#include "bench/peers.h"
#include "bench/plain_line.h"
#include "bench/rows.h"
#include "bench/window_at_work.h"

namespace quorvex::bench {

namespace {

constexpr int kExchanges = 24;  // as many as a read of an RM5 has
constexpr int kRounds = 101;
constexpr double kMostOfPlainLoop = 3;

// Master Volume.
const std::string kCommand = "# 0102";
const std::string kReply = "# 02821F";
const std::string kLineEnd = "\r\n";

void demandReply(const std::string& reply) {
    if (reply != kReply)
        throw std::runtime_error("The peer's reply arrived as " + reply + ".");
}

double linkSeconds(CommandLink& link) {
    const double begun = nowSeconds();
    Operation operation(link);
    for (int i = 0; i < kExchanges; ++i)
        demandReply(operation.exchange(kCommand, static_cast<int>(kReply.size())));
    return nowSeconds() - begun;
}

double plainSeconds(PlainLine& line) {
    const double begun = nowSeconds();
    for (int i = 0; i < kExchanges; ++i)
        demandReply(line.exchange(kCommand + kLineEnd, kReply.size()));
    return nowSeconds() - begun;
}

}  // namespace

std::vector<Row> exchangeRows() {
    InstantPeer peerOfLink(kReply + kLineEnd);
    InstantPeer peerOfPlain(kReply + kLineEnd);
    BenchTop top;
    peerOfLink.terminal().linkAs(top.portPath());
    WindowAtWork window;
    PlainLine plain(peerOfPlain.terminal().path());

    std::vector<double> linkTimes;
    std::vector<double> plainTimes;
    for (int i = 0; i < kRounds; ++i) {  // in turns, so that other work on the machine meets both
        window.port().forget();
        window.operate([&] { linkTimes.push_back(linkSeconds(window.link())); });
        plainTimes.push_back(plainSeconds(plain));
    }
    const double took = median(linkTimes);
    const double least = median(plainTimes);
    return {ratioRow("24 exchanges with an instant peer, to a plain termios loop", took / least,
                     milliseconds(took) + " to " + milliseconds(least), kMostOfPlainLoop)};
}

}  // namespace quorvex::bench
