#pragma once

#include <cstdio>
#include <functional>
#include <memory>
#include <string>

namespace quorvex {

/// The file that a trace goes to, line by line; each is with the system before the next one comes.
class TraceFile {
public:
    /// Adds to the file `path` (UTF-8), and begins with a line that has the date. `tell` gets a sentence for
    /// the operator, once, when it is no ordinary file, cannot be opened or takes no more; lines are dropped
    /// then.
    TraceFile(const std::string& path, std::function<void(const std::string&)> tell);

    void line(const std::string& text);

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::string path_;
    std::function<void(const std::string&)> tell_;
    std::unique_ptr<std::FILE, Closer> file_;
};

}  // namespace quorvex
