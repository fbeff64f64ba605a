// A controller served by storcli64.exe, its report and its classification.
#pragma once

#include <cstdint>
#include <string>

struct StorcliAdapter {
    std::string adapterIndex;  // counts from 0; follows "/c" in commands
    std::string SVID;
    std::string SDID;
    std::string productName;
    std::string driverName;
    std::int32_t adapterType = 0;  // 1 HBA, 2 RAID, 0 until classified
};

constexpr std::int32_t ADAPTER_TYPE_HBA = 1;
constexpr std::int32_t ADAPTER_TYPE_RAID = 2;

// ".\storcli64.exe /cN show " (and "all " when `all` is set).
std::string build_show_command(std::string adapter_index, std::int32_t all);

// Reads the controller report into `adapter`: 0 when read, 1 when the file
// cannot be opened.
std::int32_t parse_adapter_info(std::string file, StorcliAdapter& adapter);

// HBA when the product name holds "HBA", RAID otherwise.
void get_adapter_type(StorcliAdapter& adapter);
