#include "identity/verified_update.h"

namespace quorvex {

std::optional<std::string> writeAndReadBack(CommandLink& link, const SettingsImage& image, int record,
                                            std::string_view sending, std::string_view data) {
    const Parameter& parameter = image[record];
    Operation operation(link, image.untilReplaced());
    operation.hourglass();
    link.status(sending, kBlack);
    operation.serialSendString(parameter.writeLine(data));
    std::string reply = operation.exchange(parameter.readLine(), parameter.replyLength());
    if (operation.isOver())
        return std::nullopt;
    return reply;
}

void reportNotReadBack(CommandLink& link, std::string_view status) {
    link.console().beep();
    link.console().messageBox("Value could not read back from Beltpack!", Icon::critical);
    link.status(status, kBlack);
}

}  // namespace quorvex
