// What a stand-in prints and the status it exits with.
#pragma once

#include <string>
#include <vector>

namespace lab {

struct Reply {
    int status = 0;
    std::vector<std::string> lines;
    std::string tail;  // printed last, with no line end after it

    void add(const std::string& line) { lines.push_back(line); }
    void add(const std::vector<std::string>& more)
    {
        lines.insert(lines.end(), more.begin(), more.end());
    }
};

// The exact bytes of the output; every line ends in CR LF or LF as the scenario says.
std::string render(const Reply& reply, bool crlf);

}  // namespace lab
