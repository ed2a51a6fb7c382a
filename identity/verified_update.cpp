#include "identity/verified_update.h"

#include "beltpack/transfer_log.h"
#include "link/number_text.h"

namespace quorvex {

std::optional<std::string> writeAndReadBack(CommandLink& link, const SettingsImage& image, int record,
                                            std::string_view sending, std::string_view data) {
    const Parameter& parameter = image[record];
    Operation operation(link, image.untilReplaced());
    Transfer transfer(operation, image, Transfer::Kind::write,
                      "set " + std::string(trimmedRight(parameter.name.str())));
    operation.hourglass();
    link.status(sending, kBlack);
    transfer.writes(record, data);
    operation.serialSendString(parameter.writeLine(data));
    std::string reply = operation.exchange(parameter.readLine(), parameter.replyLength());
    if (operation.isOver())
        return std::nullopt;
    if (reply != kError) {
        transfer.answered(record, reply);
        transfer.done();
    }
    return reply;
}

void reportNotReadBack(CommandLink& link, std::string_view status) {
    link.console().beep();
    link.console().messageBox("Value could not read back from Beltpack!", Icon::critical);
    link.status(status, kBlack);
}

}  // namespace quorvex
