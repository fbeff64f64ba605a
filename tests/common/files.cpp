#include "files.h"

#include <fstream>
#include <sstream>

namespace {

constexpr std::size_t TIMESTAMP_LENGTH = 22;

}  // namespace

std::string read_file(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

void write_file(const std::filesystem::path& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

std::vector<std::string> text_lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> log_lines(const std::string& log)
{
    std::vector<std::string> lines = text_lines(log);
    for (std::string& line : lines)
        line = line.size() >= TIMESTAMP_LENGTH ? line.substr(TIMESTAMP_LENGTH) : line;
    return lines;
}
