// The hexadecimal answer of an inquiry passthrough, read and turned into
// bytes as the inquiry does, into a buffer of exactly the bytes asked for
// so that a write past them is caught.
#include "support.h"

#include "arcconf/ARCCONF_UTL.h"

#include <memory>

namespace {

constexpr std::uint32_t INQUIRY_LENGTH = 512;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::enter_scratch("rawhex");
    fuzz::write_input("inq_1_2_0", data, size);
    std::string text;
    ARCCONF_UTL::read_passthru_rawhex("inq_1_2_0", text);
    const auto buffer = std::make_unique<unsigned char[]>(INQUIRY_LENGTH);
    ARCCONF_UTL::parse_rawHex_to_binary(text, buffer.get(), INQUIRY_LENGTH);
    fuzz::reset_run_state();
    return 0;
}
