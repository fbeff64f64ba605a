// Standard SCSI inquiry data of a simulated device, and its rawhex form.
#pragma once

#include <string>
#include <vector>

#include "scenario.h"

namespace lab {

constexpr std::size_t INQUIRY_LENGTH = 512;

// 512 bytes: device type, vendor at 8, model at 16, the version both as the
// revision at 32 and in the vendor-specific bytes 36..55, blank-padded.
std::vector<unsigned char> inquiry_data(const ArcconfDevice& device, const std::string& version);

// Two lower-case hex digits per byte, separated by single blanks.
std::string raw_hex(const std::vector<unsigned char>& bytes);

}  // namespace lab
