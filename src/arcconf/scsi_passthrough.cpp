#include "arcconf/ARCCONF_UTL.h"
#include "arcconf/MCHP_DEVICE.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"

namespace {

constexpr std::uint32_t INQUIRY_LENGTH = 512;
// The write buffer's parameter list length has three bytes.
constexpr std::int64_t WRITE_BUFFER_LIMIT = std::int64_t{1} << 24;

std::string passthrough_head(const MCHP_DEVICE& device)
{
    return ARCCONF_TOOL + " PASSTHROUGH " + device.adapter->adapterIndex + " " + device.channel +
           " " + device.deviceIndex;
}

// The image size as the block's three length bytes, high byte first.
std::string length_bytes(std::int64_t size)
{
    return byte_to_hex(static_cast<std::uint32_t>((size >> 16) & 0xff)) + " " +
           byte_to_hex(static_cast<std::uint32_t>((size >> 8) & 0xff)) + " " +
           byte_to_hex(static_cast<std::uint32_t>(size & 0xff));
}

// Refuses an image that is missing or that the length bytes cannot express.
std::int32_t write_buffer_length(const std::string& image, std::int64_t& size)
{
    if (get_file_size(image, size) != 0) {
        logMessage("get fw image filesize fail");
        return 1;
    }
    if (size < 0 || size >= WRITE_BUFFER_LIMIT) {
        logMessage("fw image too large for the write buffer length");
        return 1;
    }
    return 0;
}

}  // namespace

std::int32_t MCHP_DEVICE::scsi_inquery(unsigned char* buffer)
{
    logBegin("MCHP_DEVICE::scsi_inquery");
    const std::string answer = output_file("inq_");
    const std::int32_t result = ARCCONF_UTL::exec_cmd(
        passthrough_head(*this) + " read 512 [ 12 00 00 02 00 00 ] rawhex noprompt", answer);
    if (result == 0) {
        std::string text;
        ARCCONF_UTL::read_passthru_rawhex(answer, text);
        ARCCONF_UTL::parse_rawHex_to_binary(text, buffer, INQUIRY_LENGTH);
    }
    logValue("Result", static_cast<std::uint32_t>(result));
    logEnd("MCHP_DEVICE::scsi_inquery");
    return result;
}

std::int32_t MCHP_DEVICE::scsi_write_buffer(std::string image, std::string mode,
                                            std::string bufferID)
{
    logBegin("MCHP_DEVICE::scsi_write_buffer");
    std::int64_t size = 0;
    std::int32_t result = write_buffer_length(image, size);
    if (result == 0) {
        // mode and bufferID are taken for single hexadecimal digits.
        const std::string block =
            " write [ 3B 0" + mode + " 0" + bufferID + " 00 00 00 " + length_bytes(size) + " 00 ] ";
        result = ARCCONF_UTL::exec_cmd(passthrough_head(*this) + block + image + " noprompt",
                                       output_file("write_buffer_"));
    }
    logEnd("MCHP_DEVICE::scsi_write_buffer");
    return result;
}
