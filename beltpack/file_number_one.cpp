#include "beltpack/file_number_one.h"

#include <cerrno>

#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr std::size_t kItemLimit = 256;  ///< far more than any item means; the rest is passed over

RuntimeFault alreadyOpen() {
    return {55, "File already open"};
}

RuntimeFault pastEnd() {
    return {62, "Input past end of file"};
}

RuntimeFault accessFault() {
    switch (errno) {
        case ENOENT:
            return {53, "File not found"};
        case ENOSPC:
            return {61, "Disk full"};
        case EACCES:
        case EROFS:
            return {70, "Permission denied"};
        default:
            return {75, "Path/File access error"};
    }
}

}  // namespace

FileNumberOne::~FileNumberOne() {
    if (file_)
        std::fclose(file_);
}

void FileNumberOne::open(const std::filesystem::path& path, const char* mode) {
    errno = 0;
#ifdef _WIN32
    file_ = _wfopen(path.c_str(), std::filesystem::path(mode).c_str());
#else
    file_ = std::fopen(path.c_str(), mode);
#endif
    if (!file_)
        throw accessFault();
}

void FileNumberOne::openForInput(const std::filesystem::path& path) {
    if (file_)
        throw alreadyOpen();
    std::error_code ignored;
    errno = 0;
    // A folder, a pipe or a device opens well enough and then never ends, or never answers.
    if (std::filesystem::exists(path, ignored) && !std::filesystem::is_regular_file(path, ignored))
        throw accessFault();
    open(path, "rb");
    writing_ = false;
}

void FileNumberOne::openForOutput(const std::filesystem::path& path) {
    if (file_)
        throw alreadyOpen();
    std::error_code ignored;
    errno = 0;
    if (std::filesystem::is_fifo(path, ignored))  // would wait for a reader without end
        throw accessFault();
    open(path, "wb");
    writing_ = true;
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
        throw accessFault();
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
        throw pastEnd();
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

void FileNumberOne::writeLine(std::string_view text) {
    errno = 0;
    const bool written = std::fwrite(text.data(), 1, text.size(), file_) == text.size() &&
                         std::fputs("\r\n", file_) >= 0 && std::fflush(file_) == 0;
    if (!written)
        throw accessFault();
}

void FileNumberOne::close() {
    errno = 0;
    if (writing_ && std::fflush(file_) != 0)
        throw accessFault();
    const int closed = std::fclose(file_);
    file_ = nullptr;
    if (closed != 0)
        throw accessFault();
}

}  // namespace quorvex
