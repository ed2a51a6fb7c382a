#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "link/link_listener.h"

namespace quorvex::tool {

/// What went over the line: the lines that operations sent, each with what its readers made of the replies.
class Heard : public LinkListener {
public:
    struct Exchange {
        std::string line;
        std::optional<std::string> reply;  ///< the last whole one; a unit may send any number
        std::string spoken;                ///< the first whole one that does not count as silence
        std::string part;                  ///< of one that did not end
        std::string late;                  ///< the answer that came while a later line was under way
        bool isCutOff = false;  ///< the last one was taken by its count of characters, so that it may go on
        bool hasGivenUp = false;
    };

    void sent(std::string_view line) override;
    void gotLine(std::string_view reply) override { take(reply, false); }
    void gotCharacters(std::string_view reply) override { take(reply, true); }
    void gaveUp(std::string_view part) override;

    /// What was heard is judged no more; how far it got is kept.
    void clear();
    /// How many lines were sent in all.
    int sentLines() const { return sentLines_; }
    const std::vector<Exchange>& exchanges() const { return exchanges_; }
    /// The reply to the last `line` that was sent; empty when there was none, or no such line.
    std::string replyTo(const std::string& line) const;
    /// Names the first line that was read and answered by something else; the operations go by less than
    /// that. Empty when there is none. Silence is not meant: that is for the operation to judge.
    QString wrongReply() const;
    bool hasSent(const std::string& line) const;
    /// How far it got: which line was answered last, and which ones that set something were sent after it.
    QString howFar() const;

private:
    void take(std::string_view reply, bool isCutOff);

    std::vector<Exchange> exchanges_;
    std::string answeredBefore_;  ///< the last line that was answered before clear()
    int sentLines_ = 0;
};

}  // namespace quorvex::tool
