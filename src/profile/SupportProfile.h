// The support profile: one comma-separated row per expander product, naming
// the version it must have and the images and parameters that bring it there.
#pragma once

#include <cstdint>
#include <string>

struct SupportProfile {
    std::string productId;         // column 0
    std::string auxField1;         // column 1, stored only
    std::string targetVersion;     // column 2
    std::string fwImage;           // column 3
    std::string auxField4;         // column 4, stored only
    std::string psocImage;         // column 5
    std::string mode;              // column 6, trimmed
    std::string bufferID;          // column 7, trimmed
    std::uint32_t fwLocation = 0;  // column 8, trimmed; 0 when the row has no column 8
};

// Appends the rows of the file at `path` to Profiles (never clearing it).
// Gives 0, 161 (a short line behind good rows), 162 (no row at all) or 174
// (the file cannot be opened), having said so on the console.
std::int32_t read_profiles(std::string path);
