#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace quorvex {

/// The one file that settings are loaded from and saved to. A fault while reading or writing leaves it
/// open, and every later opening is then a fault too, until the program is restarted; that is intended.
class FileNumberOne {
public:
    FileNumberOne() = default;
    ~FileNumberOne();
    FileNumberOne(const FileNumberOne&) = delete;
    FileNumberOne& operator=(const FileNumberOne&) = delete;

    // Each throws RuntimeFault when the file is still open or cannot be opened; it is not open then, or
    // stays the file it was.
    void openForInput(const std::filesystem::path& path);
    void openForOutput(const std::filesystem::path& path);

    /// Whether no character is left to read.
    bool atEnd();
    /// The next item: leading blanks are skipped; it ends at a comma or at the end of the line (carriage
    /// return, line feed or both); a double-quoted one is taken without its quotes. Of an item that goes on
    /// for longer than any setting, only the beginning is returned. Throws RuntimeFault when nothing is
    /// left or the file cannot be read.
    std::string readItem();
    /// The next line whole, commas, quotes and blanks too, cut like an item. Throws as readItem does.
    std::string readLine();
    /// Writes `text` and carriage return, line feed, at once. Throws RuntimeFault when that fails.
    void writeLine(std::string_view text);

    /// Throws RuntimeFault when the system tells only now that it could not keep what was written; closed all
    /// the same.
    void close();

private:
    void open(const std::filesystem::path& path, const char* mode);
    int peek();
    int take();
    void skipLineEnd();
    std::string takeUntil(std::string_view ends);

    std::FILE* file_ = nullptr;
};

}  // namespace quorvex
