#include "platform/platform.h"

#include <filesystem>

namespace platform {

namespace {

std::ios::openmode open_mode(TextFile::Access access)
{
    // Binary mode, so that the runtime's own line-end translation differs
    // on neither platform; read_line does the translation itself.
    std::ios::openmode mode = std::ios::in | std::ios::binary;
    if (access == TextFile::Access::read_write)
        mode |= std::ios::out;
    return mode;
}

}  // namespace

bool is_regular_file(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

TextFile::TextFile(const std::string& path, Access access)
{
    if (is_regular_file(path))
        stream_.open(path, open_mode(access));
}

bool TextFile::is_open() const
{
    return stream_.is_open();
}

bool TextFile::read_line(std::string& line)
{
    if (!std::getline(stream_, line))
        return false;
    // A line that stopped at the end of the file had no line end, so a CR
    // there is data, as in text mode.
    const bool ended_by_newline = !stream_.eof();
    if (ended_by_newline && !line.empty() && line.back() == '\r')
        line.pop_back();
    return true;
}

}  // namespace platform
