// An expander behind an arcconf controller: an enclosure services device of
// the physical device report, addressed by controller, channel and device.
#pragma once

#include "arcconf/MCHP_ADAPTER.h"

#include <cstdint>
#include <string>

class MCHP_DEVICE {
public:
    MCHP_DEVICE(std::string channel, std::string deviceIndex, std::string deviceType);
    ~MCHP_DEVICE();

    // Standard inquiry data into `buffer` (512 bytes at most): the runner's
    // status, so 0 means the tool ended well, not that data came back.
    std::int32_t scsi_inquery(unsigned char* buffer);
    // The PSoC image by SCSI WRITE BUFFER: the runner's status, or 1 when the
    // image's size cannot be had or does not fit the block's three length bytes.
    std::int32_t scsi_write_buffer(std::string image, std::string mode, std::string bufferID);
    // The main image by the tool's expanderupgrade command: the runner's status.
    std::int32_t download_fw(std::string image, std::string target, std::string mode);

    std::string state;
    std::string channel;      // one character or empty
    std::string deviceIndex;  // one character or empty
    std::string connectorId;
    std::string expanderId;
    std::string deviceType;
    std::string vendor;
    std::string model;
    std::string firmware;
    std::string installedVersion;
    std::string diskName;
    MCHP_ADAPTER* adapter = nullptr;  // not owned

private:
    // The output file of a command to this device: the stem, then controller,
    // channel and device joined by "_".
    std::string output_file(const std::string& stem) const;
};
