#include "beltpack/file_number_one.h"

#include <utility>

#include "link/open_file.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr std::uintmax_t kLargestFile = 1 << 20;  ///< a whole file of settings has 259 characters
constexpr std::size_t kItemLimit = 256;           ///< far more than any item means; the rest is passed over

}  // namespace

FileNumberOne::~FileNumberOne() {
    if (file_)
        std::fclose(file_);
}

void FileNumberOne::open(const std::filesystem::path& path, const char* mode) {
    file_ = openFile(path, mode);
    if (!file_)
        throw RuntimeFault::fileAccess();
}

void FileNumberOne::openForInput(const std::filesystem::path& path) {
    if (file_)
        throw RuntimeFault::fileAccess();
    std::error_code ignored;
    // A folder, a pipe or a device opens well enough and then never ends, or never answers.
    if (std::filesystem::exists(path, ignored) && (!std::filesystem::is_regular_file(path, ignored) ||
                                                   std::filesystem::file_size(path, ignored) > kLargestFile))
        throw RuntimeFault::fileAccess();
    open(path, "rb");
}

void FileNumberOne::openForOutput(const std::filesystem::path& path) {
    if (file_)
        throw RuntimeFault::fileAccess();
    std::error_code ignored;
    if (std::filesystem::is_fifo(path, ignored))  // would wait for a reader without end
        throw RuntimeFault::fileAccess();
    open(path, "wb");
}

int FileNumberOne::peek() {
    const int c = take();
    if (c != EOF)
        std::ungetc(c, file_);
    return c;
}

int FileNumberOne::take() {
    const int c = std::getc(file_);
    if (c == EOF && std::ferror(file_))
        throw RuntimeFault::fileAccess();
    return c;
}

bool FileNumberOne::atEnd() {
    return peek() == EOF;
}

void FileNumberOne::skipLineEnd() {
    if (take() == '\r' && peek() == '\n')
        take();
}

std::string FileNumberOne::takeUntil(std::string_view ends) {
    std::string text;
    int c = take();
    for (; c != EOF && ends.find(static_cast<char>(c)) == std::string_view::npos; c = take()) {
        if (text.size() < kItemLimit)
            text += static_cast<char>(c);
    }
    if (c != EOF)
        std::ungetc(c, file_);
    return text;
}

std::string FileNumberOne::readItem() {
    static constexpr std::string_view kItemEnds{",\r\n"};
    if (atEnd())
        throw RuntimeFault::fileAccess();
    while (peek() == ' ')
        take();
    std::string item;
    if (peek() == '"') {
        take();
        item = takeUntil("\"\r\n");
        takeUntil(kItemEnds);  // the closing quote, and whatever follows it
    } else {
        item = takeUntil(kItemEnds);
    }
    if (peek() == ',')
        take();
    else if (peek() != EOF)
        skipLineEnd();
    return item;
}

std::string FileNumberOne::readLine() {
    if (atEnd())
        throw RuntimeFault::fileAccess();
    std::string line = takeUntil("\r\n");
    if (peek() != EOF)
        skipLineEnd();
    return line;
}

void FileNumberOne::writeLine(std::string_view text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), file_) == text.size() &&
                         std::fputs("\r\n", file_) >= 0 && std::fflush(file_) == 0;
    if (!written)
        throw RuntimeFault::fileAccess();
}

void FileNumberOne::close() {
    if (std::fclose(std::exchange(file_, nullptr)) != 0)
        throw RuntimeFault::fileAccess();
}

}  // namespace quorvex
