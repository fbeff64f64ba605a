// The floor that the log puts under a run: appends LINES lines of BYTES
// bytes each (the timestamp included) to FILE, opening and closing it for
// each line with the same streams and timestamp formatting as the log.
//   log_floor FILE LINES BYTES
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <string>

namespace {

std::string timestamp()
{
    const std::time_t now = std::time(nullptr);
    char buffer[30] = {};
    std::strftime(buffer, sizeof buffer, "[%Y-%m-%d %H:%M:%S] ", std::localtime(&now));
    return buffer;
}

}  // namespace

int main(int argc, char* argv[])
{
    if (argc != 4) {
        std::cerr << "usage: log_floor FILE LINES BYTES\n";
        return 2;
    }
    const std::string path = argv[1];
    const unsigned long lines = std::strtoul(argv[2], nullptr, 10);
    const std::size_t bytes = std::strtoul(argv[3], nullptr, 10);
    const std::string text(bytes > 23 ? bytes - 23 : 0, 'x');
    for (unsigned long i = 0; i < lines; ++i) {
        std::ofstream log(path, std::ios::out | std::ios::app);
        log << timestamp() + text << std::endl;
    }
    return 0;
}
