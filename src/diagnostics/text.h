// Small text and number functions that every parser of the tools' reports
// shares. None holds state; texts are narrow strings of bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Strips leading and trailing white space as isspace() of the "C" locale
// sees it; a byte above 127 is never white space.
std::string trim(std::string text);

// Strips leading and trailing blanks only (not tabs, not CRs). With `debug`
// set, prints the text before and after on the console.
std::string remove_spaces(std::string text, std::int32_t debug);

// Cuts `text` at every occurrence of `delimiter`, keeping empty fields:
// n delimiters give n + 1 fields; the empty text gives no field at all.
std::vector<std::string> split(const std::string& text, const std::string& delimiter);

// Reads a number the way atoi() does: white space, an optional sign, then
// decimal digits up to the first other character; no digits gives 0, and
// values stop at the limits of a signed 32-bit integer.
std::int32_t parse_int32(const std::string& text);

// Waits `seconds` times 1000 milliseconds, the product taken in 32 bits.
void sleep_seconds(std::uint32_t seconds);

// Two lower-case hexadecimal digits to their value: 0 for good, 1 for bad,
// and `value` is left alone on bad input.
std::int32_t hex_to_byte(std::string digits, std::int32_t& value);

// A byte as two lower-case hexadecimal digits: 10 gives "0a".
std::string byte_to_hex(std::uint32_t value);

// The size of a file in bytes: 0 for good, 1 when it cannot be opened, and
// `size` is left alone then.
std::int32_t get_file_size(std::string path, std::int64_t& size);
