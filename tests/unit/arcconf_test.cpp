// The arcconf family where the lab's servers never take it: odd listings and
// device reports, passthrough answers and blocks, the version an inquiry gives.
#include "arcconf/ARCCONF_UTL.h"
#include "arcconf/flash_fw_mchp.h"

#include "diagnostics/text.h"
#include "run/run_state.h"
#include "test_support.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

namespace {

// channel|device|connector|state|vendor|model|firmware|expander id|type|disk name
Lines devices_found()
{
    Lines found;
    for (const MCHP_DEVICE* d : ARCCONF_UTL::expanders)
        found.push_back(d->channel + "|" + d->deviceIndex + "|" + d->connectorId + "|" + d->state +
                        "|" + d->vendor + "|" + d->model + "|" + d->firmware + "|" + d->expanderId +
                        "|" + d->deviceType + "|" + d->diskName);
    return found;
}

std::string repeated(const std::string& token, std::size_t count)
{
    std::string text = token;
    for (std::size_t i = 1; i < count; ++i)
        text += " " + token;
    return text;
}

}  // namespace

class ArcconfTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        ARCCONF_UTL::test_mode = true;
    }

    void start_row() override
    {
        ScratchTest::start_row();
        ARCCONF_UTL::test_mode = true;
    }
};

TEST_F(ArcconfTest, ControllerListings)
{
    struct Case {
        std::string fixture;  // empty: no listing at all
        std::uint32_t listed;
        Lines log;  // the log's last lines
    };
    const std::string end = "**********ARCCONF_UTL::parse_list End ******* ";
    const std::string done = "**********ARCCONF_UTL::getAdapterList End ******* ";
    const std::string negative = "Controller count is negative, no controller listed";
    const std::string above =
        "Controller count above 1000, controllers from 1001 on are not listed";
    const std::vector<Case> cases = {
        {"words-behind-crlf", 2, {"num = 2 extra", end, done}},
        {"indented-no-line-end", 2, {"num = 2", end, done}},
        {"key-inside-a-line", 3, {"num = 3 (of 3)", end, done}},
        {"two-digits", 10, {"num = 10", end, done}},
        {"last-line-decides", 1, {"num = 1", end, done}},
        {"empty-count-behind-a-count", 0, {"num = ", end, done}},
        {"two-keys-in-a-line", 1, {"num = 1 Controllers found: 4", end, done}},
        {"near-miss-keys", 0, {"num = ", end, done}},
        {"count-in-words", 0, {"num = two", end, done}},
        {"empty", 0, {"num = ", end, done}},
        {"negative", 0, {"num = -1", negative, end, done}},
        {"below-32-bits", 0, {"num = -2147483649", negative, end, done}},
        {"thousand", 1000, {"num = 1000", end, done}},
        {"thousand-and-one", 1000, {"num = 1001", end, above, done}},
        {"", 0, {"Open log file fail.", end, done}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fixture);
        start_row();
        if (!c.fixture.empty())
            place_fixture("arcconf_list/" + c.fixture, "arrconf_list.log");
        ARCCONF_UTL::getAdapterList();
        ASSERT_EQ(ARCCONF_UTL::adapters.size(), c.listed);
        if (c.listed > 0) {
            EXPECT_EQ(ARCCONF_UTL::adapters.front()->adapterIndex, "1");
            EXPECT_EQ(ARCCONF_UTL::adapters.back()->adapterIndex, std::to_string(c.listed));
        }
        EXPECT_TRUE(log_has_run(c.log));
    }
    // A listing that cannot be opened leaves the count alone.
    std::uint32_t count = 7;
    ARCCONF_UTL::parse_list("missing.log", count);
    EXPECT_EQ(count, 7u);
}

TEST_F(ArcconfTest, DeviceReports)
{
    struct Case {
        std::string fixture;
        Lines devices;  // see devices_found
    };
    const std::vector<Case> cases = {
        {"crlf-one-expander", {"2|0|1|Ready|TARVEX|X100|1.00|7|expander|"}},
        // One character counts behind "Channel #" and "Device #"; the channel carries over.
        {"one-character-numbers",
         {"1|1|||||||expander|", "||||||||expander|", "3|1|1|Ready|TARVEX|B|1.00|7|expander|",
          "3|2|1|Ready|TARVEX|C|1.00|7|expander|"}},
        // The line right behind "Device #" is the marker line, whatever it holds.
        {"marker-only-on-the-next-line", {"|6||||D|||expander|"}},
        {"marker-in-the-last-line", {}},
        // Other devices end a block, channel lines do not.
        {"other-devices-end-a-block",
         {"0|0|1|Ready|TARVEX|X100|1.00|7|expander|", "0|2|1|Ready|TARVEX|LATE|1.00|7|expander|"}},
        // An earlier key wins within a line, a later line over an earlier one.
        {"keys-in-order-last-wins", {"|0|2|S1|V1|M1|F1|E1|expander|D1"}},
        // A value is all behind the first colon; the connector is behind the
        // first blank before the first comma.
        {"reported-locations",
         {"|0|1|at 10:15:02|||||expander|", "|1|12||||||expander|", "|2|Connector 3||||||expander|",
          "|3|||||||expander|", "|4|||||||expander|", "|5|||||||expander|", "|6|||||||expander|"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fixture);
        start_row();
        ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(1));
        place_fixture("device_report/" + c.fixture, "getconfigpd_1");
        ARCCONF_UTL::parse_getconfig_pd(ARCCONF_UTL::adapters[0], "getconfigpd_1");
        EXPECT_EQ(devices_found(), c.devices);
        for (const MCHP_DEVICE* device : ARCCONF_UTL::expanders)
            EXPECT_EQ(device->adapter, ARCCONF_UTL::adapters[0]);
    }
    EXPECT_TRUE(log_has_run(
        {"**********ARCCONF_UTL::get_value Begin ******* ", "ERROR line, no : charachter"}));
}

TEST_F(ArcconfTest, EveryListedControllerIsAskedForItsReport)
{
    ARCCONF_UTL::adapters = {new MCHP_ADAPTER(1), new MCHP_ADAPTER(2)};
    place_fixture("device_report/other-devices-end-a-block", "getconfigpd_2");
    ARCCONF_UTL::getExpanderList();
    ASSERT_EQ(ARCCONF_UTL::expanders.size(), 2u);
    EXPECT_EQ(ARCCONF_UTL::expanders[1]->adapter, ARCCONF_UTL::adapters[1]);
    EXPECT_TRUE(log_has_run(
        {"Command: = arcconf.exe  getconfig 1 PD > getconfigpd_1 2>&1", "Result: = 0",
         "**********ARCCONF_UTL::parse_getconfig_pd Begin ******* ", "Open log file fail.",
         "**********ARCCONF_UTL::parse_getconfig_pd End ******* ",
         "Command: = arcconf.exe  getconfig 2 PD > getconfigpd_2 2>&1"}));
}

// Controller 1 with one expander on channel 2, device 0, connector 0.
class ArcconfDeviceTest : public ArcconfTest {
protected:
    void SetUp() override
    {
        ArcconfTest::SetUp();
        ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(1));
        device_ = new MCHP_DEVICE("2", "0", "expander");
        device_->adapter = ARCCONF_UTL::adapters[0];
        device_->connectorId = "0";
        ARCCONF_UTL::expanders.push_back(device_);
    }

    // The next row keeps the device.
    void start_row() override { empty_scratch_dir(); }

    MCHP_DEVICE* device_ = nullptr;
};

TEST_F(ArcconfDeviceTest, PassthroughAnswersAreTheirLastUnendedLine)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"no-line-end", "00 0d 05 02"},
        {"crlf-lines-before-the-answer", "ab cd"},
        {"lf-line-end", ""},
        {"crlf-line-end", ""},
        {"empty", ""},
        {"", "before"},
    };
    for (const auto& [fixture, answer] : cases) {
        SCOPED_TRACE(fixture);
        start_row();
        if (!fixture.empty())
            place_fixture("rawhex/" + fixture, "answer");
        std::string text = "before";
        ARCCONF_UTL::read_passthru_rawhex("answer", text);
        EXPECT_EQ(text, answer);
        // A missing answer is not made by reading it.
        EXPECT_EQ(fs::exists("answer"), !fixture.empty());
    }
}

TEST_F(ArcconfDeviceTest, HexTokensIntoBytes)
{
    struct Case {
        std::string text;
        std::uint64_t tokens;
        std::uint32_t stored;
        std::ptrdiff_t bad_characters;  // tokens refused for a character
        std::size_t from;               // the first byte of `bytes`
        std::string bytes;
    };
    // A refused token repeats the byte before it, or 0 at the start; 5a is untouched.
    const std::vector<Case> cases = {
        {"ab  cd", 3, 3, 0, 0, "ab ab cd 5a"},
        {"ab cd ", 3, 3, 0, 0, "ab cd cd 5a"},
        {"AB cd 3B f 3b0 0a g0 f0", 8, 8, 3, 0, "00 cd cd cd cd 0a 0a f0 5a"},
        {repeated("7f", 600), 600, 512, 0, 510, "7f 7f 5a"},
        {repeated("00", 511) + " 11 ", 513, 512, 0, 510, "00 11 5a"},
        {"", 0, 0, 0, 0, "5a"},
        {repeated("a", 600), 600, 512, 0, 510, "00 00 5a"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text.substr(0, 30));
        start_row();
        std::array<unsigned char, 513> buffer;
        buffer.fill(0x5a);
        ARCCONF_UTL::parse_rawHex_to_binary(c.text, buffer.data(), 512);
        std::string bytes;
        for (std::size_t i = c.from; i < buffer.size() && bytes.size() < c.bytes.size(); ++i)
            bytes += (bytes.empty() ? "" : " ") + byte_to_hex(buffer[i]);
        EXPECT_EQ(bytes, c.bytes);
        const Lines log = logged();
        EXPECT_EQ(std::count(log.begin(), log.end(), "invalid chrachter"), c.bad_characters);
        EXPECT_TRUE(log_has_run(
            {"str length = " + std::to_string(c.tokens), "num = " + std::to_string(c.stored)}));
    }
}

TEST_F(ArcconfDeviceTest, WriteBufferBlocks)
{
    struct Case {
        std::int64_t size;  // -1: no image
        std::string mode;
        std::string buffer_id;
        std::int32_t result;
        Lines log;  // between the Begin and End marks
    };
    const std::string head = "Command: = arcconf.exe  PASSTHROUGH 1 2 0 write [ 3B ";
    const std::string tail = " ] image.bin noprompt > write_buffer_1_2_0 2>&1";
    const std::vector<Case> cases = {
        // Mode and buffer id go in behind a 0 as they stand.
        {0, "e", "12", 0, {head + "0e 012 00 00 00 00 00 00 00" + tail, "Result: = 0"}},
        {16777215, "E", "2", 0, {head + "0E 02 00 00 00 ff ff ff 00" + tail, "Result: = 0"}},
        // Three length bytes cannot tell 16 MiB.
        {16777216, "E", "2", 1, {"fw image too large for the write buffer length"}},
        {-1, "E", "2", 1, {"get fw image filesize fail"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.size);
        start_row();
        if (c.size >= 0) {
            write_file("image.bin", "");
            fs::resize_file("image.bin", static_cast<std::uintmax_t>(c.size));
        }
        EXPECT_EQ(device_->scsi_write_buffer("image.bin", c.mode, c.buffer_id), c.result);
        Lines expected = {"**********MCHP_DEVICE::scsi_write_buffer Begin ******* "};
        expected.insert(expected.end(), c.log.begin(), c.log.end());
        expected.push_back("**********MCHP_DEVICE::scsi_write_buffer End ******* ");
        EXPECT_EQ(logged(), expected);
    }
}

TEST_F(ArcconfDeviceTest, TheInquiryVersionStandsInBytes36To55)
{
    struct Case {
        std::string answer;  // empty: no answer at all
        std::uint32_t location;
        std::string firmware;
        std::int32_t result;
        std::string installed;
    };
    const std::vector<Case> cases = {
        // Any location but 0 reads the inquiry.
        {"inquiry-version-blank-padded", 7, "1.0", MCHP_FLASH_UP_TO_DATE, "9.9"},
        {"inquiry-version-fills-20-bytes", 1, "1.0", MCHP_FLASH_UP_TO_DATE, "1.2.3.4.5.6.7.8.9.10"},
        {"inquiry-version-zero-ended", 1, "9.9", MCHP_FLASH_WRITTEN, "1.0"},
        {"", 1, "9.9", MCHP_FLASH_WRITTEN, ""},
    };
    SupportProfile profile{"X100", "", "1.2.3", "fw.bin", "", "psoc.bin", "E", "2", 0};
    // Without --psoc nothing waits, whatever -s says.
    WAIT_SECONDS = 5;
    const auto start = std::chrono::steady_clock::now();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.answer);
        start_row();
        if (!c.answer.empty())
            place_fixture("rawhex/" + c.answer, "inq_1_2_0");
        profile.fwLocation = c.location;
        device_->firmware = c.firmware;
        testing::internal::CaptureStdout();
        EXPECT_EQ(flash_fw_mchp(device_, &profile), c.result);
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(device_->installedVersion, c.installed);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));

    // With --psoc the wait of -s stands before the PSoC image.
    PSOC_UPDATE_FLAG = true;
    WAIT_SECONDS = 1;
    start_row();
    write_file("psoc.bin", "psoc");
    const auto psoc_start = std::chrono::steady_clock::now();
    testing::internal::CaptureStdout();
    EXPECT_EQ(flash_fw_mchp(device_, &profile), MCHP_FLASH_WRITTEN);
    testing::internal::GetCapturedStdout();
    EXPECT_GE(std::chrono::steady_clock::now() - psoc_start, std::chrono::seconds(1));
}
