#include "support.h"

#include "diagnostics/log.h"
#include "run_state_reset.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace fuzz {

namespace {

std::size_t head_length(const std::uint8_t* data, std::size_t size)
{
    const void* zero = std::memchr(data, 0, size);
    return zero == nullptr
               ? size
               : static_cast<std::size_t>(static_cast<const std::uint8_t*>(zero) - data);
}

// The readers print for the operator; thousands of inputs a second would
// flood the fuzzer's own report on the terminal.
void silence_console()
{
    std::fflush(stdout);
    const int null = open("/dev/null", O_WRONLY);
    if (null >= 0) {
        dup2(null, STDOUT_FILENO);
        close(null);
    }
}

}  // namespace

void enter_scratch(const char* target)
{
    static bool entered = false;
    if (entered)
        return;
    entered = true;
    // TMPDIR on a tmpfs keeps the per-line opening of the log cheap.
    const fs::path dir = fs::temp_directory_path() /
                         ("sasfwctl-fuzz-" + std::string(target) + "-" + std::to_string(getpid()));
    fs::remove_all(dir);
    fs::create_directories(dir);
    fs::current_path(dir);
    silence_console();
    reset_run_state();
}

void write_input(const std::string& name, const std::uint8_t* data, std::size_t size)
{
    std::ofstream file(name, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

std::string head(const std::uint8_t* data, std::size_t size)
{
    return std::string(reinterpret_cast<const char*>(data), head_length(data, size));
}

std::string tail(const std::uint8_t* data, std::size_t size)
{
    const std::size_t length = head_length(data, size);
    if (length == size)
        return std::string();
    return std::string(reinterpret_cast<const char*>(data) + length + 1, size - length - 1);
}

void reset_run_state()
{
    ::reset_run_state();
    std::remove(LogFileName.c_str());
}

void check(bool property)
{
    if (!property)
        std::abort();
}

}  // namespace fuzz
