#include "identity/verified_update.h"

namespace quorvex {

std::string writeAndReadBack(CommandLink& link, std::string_view sending, const std::string& writeLine,
                             const std::string& readLine, int replyLength) {
    link.console().hourglass(true);
    link.status(sending, kBlack);
    link.serialSendString(writeLine);
    link.serialSendString(readLine);
    std::string reply = link.serialGetResponseChars(limit::kReply, replyLength);
    link.console().hourglass(false);
    return reply;
}

void reportNotReadBack(CommandLink& link, std::string_view status) {
    link.console().beep();
    link.console().messageBox("Value could not read back from Beltpack!", Icon::critical);
    link.status(status, kBlack);
}

}  // namespace quorvex
