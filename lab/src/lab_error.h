// A fault in the lab's own files (scenario or state), told as "file:line: what".
#pragma once

#include <stdexcept>
#include <string>

namespace lab {

class LabError : public std::runtime_error {
public:
    LabError(const std::string& file, int line, const std::string& what)
        : std::runtime_error(file + (line > 0 ? ":" + std::to_string(line) : std::string()) + ": " +
                             what)
    {
    }
};

}  // namespace lab
