#include "platform/platform.h"

#include <cerrno>
#include <cstdlib>
#include <sys/wait.h>
#include <time.h>

namespace platform {

namespace {

std::string posix_command(const std::string& line)
{
    if (line.compare(0, 2, ".\\") == 0)
        return "./" + line.substr(2);
    return line;
}

int exit_code_of(int status)
{
    if (status == -1)
        return -1;
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        return 128 + WTERMSIG(status);
    return status;
}

}  // namespace

int run_shell(const std::string& line)
{
    return exit_code_of(std::system(posix_command(line).c_str()));
}

void sleep_milliseconds(std::uint32_t milliseconds)
{
    timespec wait{static_cast<time_t>(milliseconds / 1000),
                  static_cast<long>(milliseconds % 1000) * 1000000L};
    // A signal may cut the wait short; go on with what is left of it.
    while (nanosleep(&wait, &wait) == -1 && errno == EINTR) { }
}

}  // namespace platform
