#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvex::fuzz {

/// Ends the process, so that the input is kept, when something that always holds does not.
void require(bool holds, const char* what);

/// The bytes that a target tries, taken from the front. Any bytes do.
class Input {
public:
    explicit Input(std::string_view bytes) : rest_(bytes) {}

    /// The next character; "0" past the end.
    char letter();
    /// A number below `count` (1 to 64) for the next character: 0 for "0", 1 for "1" and so on.
    int choice(int count);
    /// The characters up to the next line feed, which is passed over.
    std::string_view line();
    std::string_view rest() const { return rest_; }
    bool isEmpty() const { return rest_.empty(); }

private:
    std::string_view rest_;
};

/// What every target defines: runs its reader over one input.
void tryInput(Input input);

}  // namespace quorvex::fuzz
