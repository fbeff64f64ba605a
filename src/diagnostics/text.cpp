#include "diagnostics/text.h"

#include "diagnostics/log.h"
#include "platform/platform.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdio>
#include <iostream>
#include <sstream>

namespace {

// isspace() gets the byte as a signed char, as the parsers always did:
// a byte above 127 is negative and so never white space.
bool is_space(char c)
{
    return c >= 0 && std::isspace(static_cast<unsigned char>(c));
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

void trace_remove_spaces(const std::string& text)
{
    std::cout << "remove spaces, string=**" << text << "**,size=" << text.size()
              << ";length=" << text.length() << std::endl;
}

}  // namespace

std::string trim(std::string text)
{
    std::size_t begin = 0;
    while (begin < text.size() && is_space(text[begin]))
        ++begin;
    std::size_t end = text.size();
    while (end > begin && is_space(text[end - 1]))
        --end;
    return text.substr(begin, end - begin);
}

std::string remove_spaces(std::string text, std::int32_t debug)
{
    if (debug != 0)
        trace_remove_spaces(text);
    if (!text.empty()) {
        text.erase(0, text.find_first_not_of(' '));
        text.erase(text.find_last_not_of(' ') + 1);
    }
    if (debug != 0)
        trace_remove_spaces(text);
    return text;
}

std::vector<std::string> split(const std::string& text, const std::string& delimiter)
{
    std::vector<std::string> fields;
    if (text.empty())
        return fields;
    const std::string work = text + delimiter;
    std::size_t position = 0;
    while (position < work.size()) {
        const std::size_t found = work.find(delimiter, position);
        if (found == std::string::npos)
            break;
        fields.push_back(work.substr(position, found - position));
        position = found + delimiter.size();
    }
    return fields;
}

std::int32_t parse_int32(const std::string& text)
{
    std::size_t i = 0;
    while (i < text.size() && is_space(text[i]))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        negative = text[i++] == '-';
    const std::int64_t limit = negative ? -static_cast<std::int64_t>(INT32_MIN) : INT32_MAX;
    std::int64_t magnitude = 0;
    for (; i < text.size() && is_digit(text[i]); ++i)
        magnitude = std::min<std::int64_t>(magnitude * 10 + (text[i] - '0'), limit);
    return static_cast<std::int32_t>(negative ? -magnitude : magnitude);
}

void sleep_seconds(std::uint32_t seconds)
{
    platform::sleep_milliseconds(seconds * 1000u);
}

std::int32_t hex_to_byte(std::string digits, std::int32_t& value)
{
    if (digits.size() != 2)
        return 1;
    static const std::string table = "0123456789abcdef";
    const std::size_t high = table.find(digits[0]);
    const std::size_t low = table.find(digits[1]);
    if (high == std::string::npos || low == std::string::npos) {
        logMessage("invalid chrachter");
        return 1;
    }
    value = static_cast<std::int32_t>(high * 16 + low);
    return 0;
}

std::string byte_to_hex(std::uint32_t value)
{
    std::ostringstream digits;
    digits << std::hex << value;
    const std::string text = digits.str();
    return text.size() == 1 ? "0" + text : text;
}

std::int32_t get_file_size(std::string path, std::int64_t& size)
{
    if (!platform::is_regular_file(path))
        return 1;
    FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return 1;
    std::fseek(file, 0, SEEK_END);
    // The size is a 32-bit position on every platform.
    size = static_cast<std::int32_t>(std::ftell(file));
    std::fclose(file);
    return 0;
}
