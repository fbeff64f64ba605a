#include "arcconf/ARCCONF_UTL.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "platform/platform.h"

namespace {

const std::string LISTING_FILE = "arrconf_list.log";
const std::string COUNT_KEY = "Controllers found:";
// No server has more; a listing that says so would have the run make a
// record and run a report command for each of billions of controllers.
constexpr std::uint32_t MAX_CONTROLLERS = 1000;

// A line that holds the key replaces the count text with what follows the
// key's first occurrence; any other line leaves it alone.
void take_count_text(const std::string& line, std::string& text)
{
    const std::size_t key = line.find(COUNT_KEY);
    if (key != std::string::npos)
        text = trim(line.substr(key + COUNT_KEY.size()));
}

// A negative count would read as billions of controllers; none is listed.
std::uint32_t count_of(const std::string& text)
{
    const std::int32_t number = parse_int32(text);
    if (number < 0) {
        logMessage("Controller count is negative, no controller listed");
        return 0;
    }
    return static_cast<std::uint32_t>(number);
}

std::uint32_t controllers_to_list(std::uint32_t count)
{
    if (count <= MAX_CONTROLLERS)
        return count;
    logMessage("Controller count above 1000, controllers from 1001 on are not listed");
    return MAX_CONTROLLERS;
}

}  // namespace

void ARCCONF_UTL::getAdapterList()
{
    logBegin("ARCCONF_UTL::getAdapterList");
    if (exec_cmd(ARCCONF_TOOL + " list", LISTING_FILE) == 0) {
        std::uint32_t count = 0;
        parse_list(LISTING_FILE, count);
        const std::uint32_t listed = controllers_to_list(count);
        for (std::uint32_t i = 0; i < listed; ++i)
            adapters.push_back(new MCHP_ADAPTER(i + 1));
    }
    logEnd("ARCCONF_UTL::getAdapterList");
}

void ARCCONF_UTL::parse_list(std::string file, std::uint32_t& count)
{
    logBegin("ARCCONF_UTL::parse_list");
    platform::TextFile listing(file);
    if (listing.is_open()) {
        // The last matching line decides.
        std::string text;
        std::string line;
        while (listing.read_line(line)) {
            logValue("lineStr:%s", line);
            take_count_text(line, text);
        }
        logValue("num", text);
        count = count_of(text);
    } else {
        logMessage("Open log file fail.");
    }
    logEnd("ARCCONF_UTL::parse_list");
}
