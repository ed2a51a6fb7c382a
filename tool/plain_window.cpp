#include "tool/plain_window.h"

#include "link/number_text.h"
#include "link/qt_text.h"

namespace quorvex::tool {

PlainWindow::PlainWindow(SerialPort& port, EventLoop& eventLoop, std::function<void(const QString&)> progress)
    : port_(port), loop(eventLoop), console(std::move(progress)), link(port, eventLoop, console) {
    link.listen(&heard);
    image.keepLog(&transfers);
}

std::string PlainWindow::showSystemId(const std::string& shown) {
    found_ = image;  // all of it is there, and the editing controls come next
    return systemId.showParkB(shown);
}

QString PlainWindow::readBeltpack() {
    console.clear();
    heard.clear();
    hasRead_ = false;
    read_.CommandRdSettingsBp_Click();
    if (!hasRead_)
        return console.boxes() + QLatin1Char(' ') + heard.howFar();
    return heard.wrongReply();
}

QString PlainWindow::dectVersion() const {
    const auto& exchanges = heard.exchanges();
    const bool isTold = !exchanges.empty() && !exchanges.back().hasGivenUp && exchanges.back().reply &&
                        DectVersion::isWhereTaken(*exchanges.back().reply);
    return isTold ? fromUtf8(printable(version.text())) : QString();
}

}  // namespace quorvex::tool
