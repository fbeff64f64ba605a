#include "profile/version.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"

#include <algorithm>
#include <vector>

std::int32_t compare_version(std::string installed, std::string target)
{
    logBegin("compare_version");
    const std::vector<std::string> installed_parts = split(installed, ".");
    const std::vector<std::string> target_parts = split(target, ".");
    logValue("installed version parts num", static_cast<std::uint64_t>(installed_parts.size()));
    logValue("profile version parts num", static_cast<std::uint64_t>(target_parts.size()));

    const std::size_t common = std::min(installed_parts.size(), target_parts.size());
    std::int32_t result = 0;
    for (std::size_t i = 0; i < common && result == 0; ++i) {
        const std::int32_t first = parse_int32(installed_parts[i]);
        const std::int32_t second = parse_int32(target_parts[i]);
        logValue("num1", first);
        logValue("num2", second);
        if (first > second)
            result = 1;
        else if (first < second)
            result = -1;
    }
    if (result == 0 && installed_parts.size() > common)
        result = 1;
    if (result == 0 && target_parts.size() > common)
        result = -1;

    logEnd("compare_version");
    return result;
}
