#include "inquiry.h"

#include <cstdio>

namespace lab {

namespace {

constexpr unsigned char ENCLOSURE_SERVICES = 0x0d;
constexpr unsigned char DIRECT_ACCESS = 0x00;
constexpr unsigned char ENC_SERV_BIT = 0x40;

void put_text(std::vector<unsigned char>& bytes, std::size_t offset, std::size_t length,
              const std::string& text)
{
    for (std::size_t i = 0; i < length; ++i)
        bytes[offset + i] = static_cast<unsigned char>(i < text.size() ? text[i] : ' ');
}

}  // namespace

std::vector<unsigned char> inquiry_data(const ArcconfDevice& device, const std::string& version)
{
    std::vector<unsigned char> bytes(INQUIRY_LENGTH, 0);
    bool enclosure = device.kind != DeviceKind::HardDrive;
    bytes[0] = enclosure ? ENCLOSURE_SERVICES : DIRECT_ACCESS;
    bytes[2] = 0x06;  // SPC-4
    bytes[3] = 0x02;  // response data format
    bytes[4] = 0x5b;  // additional length of the 96-byte standard data
    bytes[6] = enclosure ? ENC_SERV_BIT : 0;
    bytes[7] = 0x02;  // command queueing
    put_text(bytes, 8, 8, device.vendor);
    put_text(bytes, 16, 16, device.model);
    put_text(bytes, 32, 4, version);
    put_text(bytes, 36, 20, version);
    return bytes;
}

std::string raw_hex(const std::vector<unsigned char>& bytes)
{
    std::string text;
    char token[4];
    for (unsigned char byte : bytes) {
        std::snprintf(token, sizeof token, "%02x", byte);
        text += (text.empty() ? "" : " ") + std::string(token);
    }
    return text;
}

}  // namespace lab
