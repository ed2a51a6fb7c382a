#pragma once

#include <functional>
#include <string>

namespace quorvex {

/// Runs a handler of the window. The toolkit carries no exceptions, so every slot passes through here: a
/// fault that the handler leaves uncaught is shown in a critical box and ends the program with status 1.
/// An operation that was refused has told so, and the handler just ends.
void guarded(const std::function<void()>& handler);

/// Ends the program at once with `status`; the windows are not unloaded.
void endProgram(int status);

/// What endProgram does; the program closes its port there. Tests put something else in its place.
void setProgramEnd(std::function<void(int status)> end);

}  // namespace quorvex
