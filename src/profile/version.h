// The one ordering of firmware versions: dotted parts compared as numbers.
#pragma once

#include <cstdint>
#include <string>

// 1 when `installed` is the higher version, 0 when equal, -1 when lower.
// With all common parts equal, the version with more parts is the higher.
std::int32_t compare_version(std::string installed, std::string target);
