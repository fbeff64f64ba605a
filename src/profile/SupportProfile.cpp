#include "profile/SupportProfile.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "platform/platform.h"
#include "run/exit_codes.h"
#include "run/run_state.h"

#include <iostream>
#include <vector>

namespace {

// A row needs the columns up to the buffer id; the location may be missing.
constexpr std::size_t MIN_PROFILE_FIELDS = 8;

void say_invalid_format()
{
    std::cout << "Invalid support file format." << std::endl;
}

SupportProfile row_from(const std::vector<std::string>& fields)
{
    SupportProfile row;
    row.productId = fields[0];
    row.auxField1 = fields[1];
    row.targetVersion = fields[2];
    row.fwImage = fields[3];
    row.auxField4 = fields[4];
    row.psocImage = fields[5];
    row.mode = trim(fields[6]);
    row.bufferID = trim(fields[7]);
    if (fields.size() > MIN_PROFILE_FIELDS)
        row.fwLocation = static_cast<std::uint32_t>(parse_int32(trim(fields[8])));
    return row;
}

}  // namespace

std::int32_t read_profiles(std::string path)
{
    logBegin("read_profiles");
    platform::TextFile file(path);
    if (!file.is_open()) {
        std::cout << "ERROR: Could not open profile file " << path << "!" << std::endl;
        return RESULT_PROFILE_UNREADABLE;
    }

    std::int32_t result = RESULT_OK;
    std::string line;
    while (file.read_line(line)) {
        if (Options.verbose)
            logValue("lineStr:", line);
        line = trim(line);
        if (line.empty())
            continue;
        const std::vector<std::string> fields = split(line, ",");
        if (fields.size() < MIN_PROFILE_FIELDS) {
            say_invalid_format();
            result = RESULT_PROFILE_SHORT_LINE;
            break;
        }
        const SupportProfile row = row_from(fields);
        logValue("mode", fields[6]);
        logValue("bufferID,", fields[7]);
        logValue("FW Location,", row.fwLocation);
        Profiles.push_back(row);
    }

    logValue("profiles number:", static_cast<std::uint64_t>(Profiles.size()));
    if (Profiles.empty()) {
        say_invalid_format();
        return RESULT_PROFILE_EMPTY;
    }
    logEnd("read_profiles");
    return result;
}
