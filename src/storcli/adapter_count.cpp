#include "storcli/adapter_count.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "diagnostics/tool_runner.h"
#include "platform/platform.h"

#include <iostream>

namespace {

const std::string COUNT_REPORT = "ctrlcount.rst";
const std::string COUNT_KEY = "Controller Count = ";

// Standard error is not redirected: what the tool or the shell says there
// reaches the console.
std::string count_command()
{
    return std::string(".\\storcli64.exe ") + " show ctrlcount " + " >" + COUNT_REPORT;
}

bool is_decimal_digit(char c)
{
    return c >= '0' && c <= '9';
}

// The text behind the key on the first line that holds it; false when no
// line does. Blanks at both ends of a line go first, so a key with nothing
// but blanks behind it is no longer found.
bool find_value_text(std::int32_t debug, std::string& value)
{
    platform::TextFile report(COUNT_REPORT);
    std::string line;
    while (report.read_line(line)) {
        if (debug != 0)
            std::cout << "count.out line::" << line << std::endl;
        line = remove_spaces(line, debug);
        std::size_t position = line.find(COUNT_KEY);
        if (debug != 0)
            std::cout << "sPtr=" << static_cast<std::uint64_t>(position) << std::endl;
        if (position == std::string::npos)
            continue;
        position += COUNT_KEY.size();
        if (debug != 0)
            std::cout << "found count string, sPtr=" << static_cast<std::uint64_t>(position)
                      << std::endl;
        value = remove_spaces(line.substr(position), debug);
        return true;
    }
    return false;
}

// Whether every character is a digit, tracing each one under debug up to
// the first that is not.
bool all_digits(const std::string& value, std::int32_t debug)
{
    for (const char c : value) {
        if (!is_decimal_digit(c)) {
            if (debug != 0)
                std::cout << "Controller count has non-digital char:" << c << std::endl;
            return false;
        }
        if (debug != 0)
            std::cout << "Controller count has digital char:" << c << std::endl;
    }
    return true;
}

// The decimal value of a digit text; false when it exceeds 32 bits.
bool to_count(const std::string& digits, std::uint32_t& count)
{
    std::uint64_t value = 0;
    for (const char c : digits) {
        value = value * 10 + static_cast<std::uint64_t>(c - '0');
        if (value > UINT32_MAX)
            return false;
    }
    count = static_cast<std::uint32_t>(value);
    return true;
}

}  // namespace

std::uint32_t getAdapterCount(bool test, std::int32_t debug)
{
    logBegin("getAdapterCount");
    const std::string command = count_command();
    logValue("command", command);
    const std::int32_t status = run_tool_line(command, test);
    logValue("Count return code", status);

    std::int32_t found = 0;
    std::uint32_t count = 0;
    std::string value;
    if (status == 0 && find_value_text(debug, value)) {
        if (debug != 0)
            std::cout << "numStr:" << value
                      << ";length:" << static_cast<std::uint64_t>(value.size()) << std::endl;
        if (!all_digits(value, debug))
            return 0;
        if (to_count(value, count))
            found = 1;
        else
            logMessage("Controller count out of range");
    }
    logValue("found", found);
    logEnd("getAdapterCount");
    return count;
}
