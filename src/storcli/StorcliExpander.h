// An expander behind a storcli controller: an enclosure report row in which
// a profile's product id occurs.
#pragma once

#include "profile/SupportProfile.h"
#include "storcli/StorcliAdapter.h"

#include <cstdint>
#include <string>

// Values of StorcliExpander::flashState.
constexpr std::uint32_t FLASH_NOT_TRIED = 0;
constexpr std::uint32_t FLASH_MAIN_FAILED = 1;
constexpr std::uint32_t FLASH_PSOC_FAILED = 3;
constexpr std::uint32_t FLASH_WRITTEN = 4;

// Codes of StorcliExpander::show_status.
constexpr std::int32_t STATUS_UP_TO_DATE = 0;
constexpr std::int32_t STATUS_MAIN_START = 1;
constexpr std::int32_t STATUS_PSOC_START = 2;
constexpr std::int32_t STATUS_SUCCESS = 3;
constexpr std::int32_t STATUS_FAIL = 4;

struct StorcliExpander {
    std::string productId;              // the matching profile row's
    std::string adapterIndex;           // the controller's
    StorcliAdapter* adapter = nullptr;  // not owned
    std::string enclosureId;            // first word of the row
    std::uint32_t needDownload = 0;
    std::uint32_t flashState = FLASH_NOT_TRIED;
    std::string installedVersion;       // what follows the product id, trimmed
    SupportProfile* profile = nullptr;  // not owned

    // The four lines that introduce the expander on the console.
    void show() const;
    // One console line per status code; nothing for other codes.
    void show_status(std::int32_t code) const;
};

// Reads the enclosure table of "show_eall_N_log" and appends to Expanders one
// expander per row that a profile row matches: 0 when read, 1 when the file
// cannot be opened.
std::int32_t parse_eall_output(std::string file, StorcliAdapter* adapter);

// Sets `enclosureId` to the row's first blank-separated word.
void parse_expanderinfo_line(std::string line, StorcliExpander& expander);
