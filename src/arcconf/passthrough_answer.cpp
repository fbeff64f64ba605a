#include "arcconf/ARCCONF_UTL.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "platform/platform.h"

#include <algorithm>

void ARCCONF_UTL::read_passthru_rawhex(std::string file, std::string& text)
{
    logBegin("ARCCONF_UTL::read_passthru_rawhex");
    platform::TextFile answer(file, platform::TextFile::Access::read_write);
    if (answer.is_open()) {
        // The failing read decides: it empties the text after a final line
        // end and leaves an unterminated last line in place.
        std::string line;
        while (answer.read_line(line)) { }
        logValue("line:", line);
        text = line;
    }
    logEnd("ARCCONF_UTL::read_passthru_rawhex");
}

void ARCCONF_UTL::parse_rawHex_to_binary(std::string text, unsigned char* buffer,
                                         std::uint32_t maximum)
{
    logBegin("ARCCONF_UTL::parse_rawHex_to_binary");
    const std::vector<std::string> tokens = split(text, " ");
    const std::uint32_t count =
        static_cast<std::uint32_t>(std::min<std::uint64_t>(tokens.size(), maximum));
    logValue("str length", static_cast<std::uint64_t>(tokens.size()));
    logValue("num", count);
    // A refused token leaves the value alone, so its place repeats the byte
    // before it, or 0 at the start.
    std::int32_t value = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        hex_to_byte(tokens[i], value);
        buffer[i] = static_cast<unsigned char>(value & 0xff);
    }
}
