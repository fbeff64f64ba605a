// The only place that knows the operating system. Every other file of the
// utility is the same on Windows and on POSIX; the build picks posix.cpp or
// win32.cpp, and text_file.cpp serves both.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

namespace platform {

// Runs a command line through the command processor and blocks until it ends.
// Gives the command's plain exit code on both platforms: 128 + the signal
// number for a command killed by a signal, -1 when no shell could be started.
// On POSIX a leading ".\" (a tool in the working directory) becomes "./".
int run_shell(const std::string& line);

// Whether `path` names a regular file (links followed). A folder or a FIFO
// is no file to read: opening a FIFO would block until a writer comes.
bool is_regular_file(const std::string& path);

// Blocks the program for the given milliseconds.
void sleep_milliseconds(std::uint32_t milliseconds);

// Reads a file line by line, alike on both platforms: a CR right before a
// line end is dropped, a last line without a line end is still a line, and a
// read past a final line end empties the line while a read past an
// unterminated last line leaves it alone. Only a regular file opens.
class TextFile {
public:
    enum class Access { read, read_write };

    explicit TextFile(const std::string& path, Access access = Access::read);

    bool is_open() const;

    // Gives false when no further line can be read; see the class comment
    // for what `line` holds then.
    bool read_line(std::string& line);

private:
    std::fstream stream_;
};

}  // namespace platform
