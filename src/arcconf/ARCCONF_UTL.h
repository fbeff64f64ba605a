// The arcconf family's operations and its process-wide lists. A scope
// without instances.
#pragma once

#include "arcconf/MCHP_ADAPTER.h"
#include "arcconf/MCHP_DEVICE.h"

#include <cstdint>
#include <string>
#include <vector>

// The tool's name as every command starts with it: its trailing blank and the
// leading blank of each verb put two blanks behind the name.
inline const std::string ARCCONF_TOOL = "arcconf.exe ";

class ARCCONF_UTL {
public:
    ARCCONF_UTL() = delete;

    // Owned; deleted by clear().
    static std::vector<MCHP_ADAPTER*> adapters;
    static std::vector<MCHP_DEVICE*> expanders;
    // Set from -T just before the family is asked; holds exec_cmd back.
    static bool test_mode;

    // Runs "command > output_file 2>&1": the command's exit status, 0 when
    // held back by test_mode.
    static std::int32_t exec_cmd(std::string command, std::string output_file);

    // Fills `adapters` with controllers 1..N from the tool's listing.
    static void getAdapterList();
    // The count behind the last "Controllers found:" of the listing, 0 when
    // negative; `count` is left alone when the file cannot be opened.
    static void parse_list(std::string file, std::uint32_t& count);

    // Fills `expanders` from each controller's physical device report.
    static void getExpanderList();
    // Appends each enclosure services device of one controller's report.
    static void parse_getconfig_pd(MCHP_ADAPTER* adapter, std::string file);
    // The trimmed text behind the first ':' of a report line.
    static std::string get_value(std::string line);
    // "Connector 1, Device 2" gives "1".
    static std::string get_connectorid(std::string location);

    // The hexadecimal answer of a passthrough: the file's last line, empty
    // when the file ends with a line end.
    static void read_passthru_rawhex(std::string file, std::string& text);
    // Blank-separated two-digit tokens into at most `maximum` bytes.
    static void parse_rawHex_to_binary(std::string text, unsigned char* buffer,
                                       std::uint32_t maximum);

    // Deletes every device, then every controller.
    static void clear();
};
