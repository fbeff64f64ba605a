#include "platform/platform.h"

#include <cstdlib>
#include <windows.h>

namespace platform {

// The command processor's exit status is already the command's exit code.
int run_shell(const std::string& line)
{
    return std::system(line.c_str());
}

void sleep_milliseconds(std::uint32_t milliseconds)
{
    Sleep(milliseconds);
}

}  // namespace platform
