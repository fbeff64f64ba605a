#include "arcconf/ARCCONF_UTL.h"

#include "arcconf_device_test.h"

#include <array>

namespace {

constexpr unsigned char UNTOUCHED = 0x5a;

// An inquiry-sized buffer with one byte more, to see what is written.
using Bytes = std::array<unsigned char, 513>;

Bytes untouched_bytes()
{
    Bytes bytes;
    bytes.fill(UNTOUCHED);
    return bytes;
}

std::string repeated_token(const std::string& token, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += (i == 0 ? "" : " ") + token;
    return text;
}

}  // namespace

class ArcconfPassthroughTest : public ArcconfDeviceTest {
protected:
    void SetUp() override
    {
        ArcconfDeviceTest::SetUp();
        std::filesystem::remove("log.txt");
    }

    static std::string rawhex_of(const std::string& content)
    {
        write_file("answer", content);
        std::string text = "before";
        ARCCONF_UTL::read_passthru_rawhex("answer", text);
        return text;
    }

    static Bytes bytes_of(const std::string& text)
    {
        Bytes bytes = untouched_bytes();
        ARCCONF_UTL::parse_rawHex_to_binary(text, bytes.data(), 512);
        return bytes;
    }
};

TEST_F(ArcconfPassthroughTest, TheAnswerIsTheLastLineOnlyWithoutALineEnd)
{
    EXPECT_EQ(rawhex_of("00 0d 05 02"), "00 0d 05 02");
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::read_passthru_rawhex Begin ******* ",
                             "line: = 00 0d 05 02",
                             "**********ARCCONF_UTL::read_passthru_rawhex End ******* "}));
    EXPECT_EQ(rawhex_of("Controllers found: 1\r\nCommand completed successfully.\r\nab cd"),
              "ab cd");
    EXPECT_EQ(rawhex_of("ab cd\n"), "");
    EXPECT_EQ(rawhex_of("ab cd\r\n"), "");
    EXPECT_EQ(rawhex_of(""), "");
    EXPECT_TRUE(log_has_run({"line: = "}));

    // A missing answer is neither created nor read.
    std::filesystem::remove("log.txt");
    std::string text = "before";
    ARCCONF_UTL::read_passthru_rawhex("missing", text);
    EXPECT_EQ(text, "before");
    EXPECT_FALSE(std::filesystem::exists("missing"));
    EXPECT_EQ(log_lines(), (std::vector<std::string>{
                               "**********ARCCONF_UTL::read_passthru_rawhex Begin ******* ",
                               "**********ARCCONF_UTL::read_passthru_rawhex End ******* "}));
}

TEST_F(ArcconfPassthroughTest, RefusedTokensRepeatTheByteBefore)
{
    Bytes bytes = bytes_of("ab  cd");
    EXPECT_EQ((std::vector<int>(bytes.begin(), bytes.begin() + 4)),
              (std::vector<int>{0xab, 0xab, 0xcd, UNTOUCHED}));

    bytes = bytes_of("ab cd ");
    EXPECT_EQ((std::vector<int>(bytes.begin(), bytes.begin() + 4)),
              (std::vector<int>{0xab, 0xcd, 0xcd, UNTOUCHED}));

    std::filesystem::remove("log.txt");
    bytes = bytes_of("AB cd 3B f 3b0 0a");
    EXPECT_EQ((std::vector<int>(bytes.begin(), bytes.begin() + 7)),
              (std::vector<int>{0x00, 0xcd, 0xcd, 0xcd, 0xcd, 0x0a, UNTOUCHED}));
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::parse_rawHex_to_binary Begin ******* ",
                             "str length = 6", "num = 6", "invalid chrachter"}));
    EXPECT_FALSE(log_has_run({"**********ARCCONF_UTL::parse_rawHex_to_binary End ******* "}));
}

TEST_F(ArcconfPassthroughTest, AtMostTheMaximumIsStored)
{
    Bytes bytes = bytes_of(repeated_token("7f", 600));
    EXPECT_EQ(bytes[511], 0x7f);
    EXPECT_EQ(bytes[512], UNTOUCHED);
    EXPECT_TRUE(log_has_run({"str length = 600", "num = 512"}));

    // 512 tokens and a blank at the end make 513; the empty last one falls away.
    bytes = bytes_of(repeated_token("00", 511) + " 11 ");
    EXPECT_EQ(bytes[511], 0x11);
    EXPECT_EQ(bytes[512], UNTOUCHED);
    EXPECT_TRUE(log_has_run({"str length = 513", "num = 512"}));

    std::filesystem::remove("log.txt");
    EXPECT_EQ(bytes_of(""), untouched_bytes());
    EXPECT_TRUE(log_has_run({"str length = 0", "num = 0"}));
    // Tokens of one character are refused from the start: zeros throughout.
    bytes = bytes_of(repeated_token("a", 600));
    EXPECT_EQ(bytes[0], 0);
    EXPECT_EQ(bytes[511], 0);
    EXPECT_EQ(bytes[512], UNTOUCHED);
}

TEST_F(ArcconfPassthroughTest, TheInquiryReadsItsAnswerIntoTheBuffer)
{
    write_file("inq_1_2_0", "Controllers found: 1\r\n00 0d 05 02");
    Bytes bytes = untouched_bytes();
    EXPECT_EQ(device_->scsi_inquery(bytes.data()), 0);
    EXPECT_EQ((std::vector<int>(bytes.begin(), bytes.begin() + 5)),
              (std::vector<int>{0x00, 0x0d, 0x05, 0x02, UNTOUCHED}));
    EXPECT_TRUE(log_has_run(
        {"**********MCHP_DEVICE::scsi_inquery Begin ******* ",
         "Command: = arcconf.exe  PASSTHROUGH 1 2 0 read 512 [ 12 00 00 02 00 00 ] rawhex "
         "noprompt > inq_1_2_0 2>&1",
         "Result: = 0", "**********ARCCONF_UTL::read_passthru_rawhex Begin ******* "}));
    EXPECT_TRUE(log_has_run({"num = 4", "Result = 0", "**********MCHP_DEVICE::scsi_inquery End ******* "}));

    std::filesystem::remove("inq_1_2_0");
    bytes = untouched_bytes();
    EXPECT_EQ(device_->scsi_inquery(bytes.data()), 0);
    EXPECT_EQ(bytes, untouched_bytes());
}

TEST_F(ArcconfPassthroughTest, TheWriteBufferBlockCarriesTheImageSize)
{
    write_file("psoc.bin", std::string(107251, 'p'));
    EXPECT_EQ(device_->scsi_write_buffer("psoc.bin", "E", "2"), 0);
    EXPECT_TRUE(log_has_run({"**********MCHP_DEVICE::scsi_write_buffer Begin ******* ",
                             "Command: = arcconf.exe  PASSTHROUGH 1 2 0 write [ 3B 0E 02 00 00 00 "
                             "01 a2 f3 00 ] psoc.bin noprompt > write_buffer_1_2_0 2>&1",
                             "Result: = 0",
                             "**********MCHP_DEVICE::scsi_write_buffer End ******* "}));
    EXPECT_FALSE(std::filesystem::exists("write_buffer_1_2_0"));

    write_file("empty.bin", "");
    EXPECT_EQ(device_->scsi_write_buffer("empty.bin", "e", "12"), 0);
    EXPECT_TRUE(log_has_run({"Command: = arcconf.exe  PASSTHROUGH 1 2 0 write [ 3B 0e 012 00 00 00 "
                             "00 00 00 00 ] empty.bin noprompt > write_buffer_1_2_0 2>&1"}));

    write_file("largest.bin", "");
    std::filesystem::resize_file("largest.bin", 16777215);
    EXPECT_EQ(device_->scsi_write_buffer("largest.bin", "E", "2"), 0);
    EXPECT_TRUE(log_has_run({"Command: = arcconf.exe  PASSTHROUGH 1 2 0 write [ 3B 0E 02 00 00 00 "
                             "ff ff ff 00 ] largest.bin noprompt > write_buffer_1_2_0 2>&1"}));
}

TEST_F(ArcconfPassthroughTest, AnImageWithoutAUsableSizeRunsNothing)
{
    EXPECT_EQ(device_->scsi_write_buffer("missing.bin", "E", "2"), 1);
    EXPECT_EQ(log_lines(), (std::vector<std::string>{
                               "**********MCHP_DEVICE::scsi_write_buffer Begin ******* ",
                               "get fw image filesize fail",
                               "**********MCHP_DEVICE::scsi_write_buffer End ******* "}));

    std::filesystem::remove("log.txt");
    write_file("huge.bin", "");
    std::filesystem::resize_file("huge.bin", 16777216);
    EXPECT_EQ(device_->scsi_write_buffer("huge.bin", "E", "2"), 1);
    EXPECT_EQ(log_lines(), (std::vector<std::string>{
                               "**********MCHP_DEVICE::scsi_write_buffer Begin ******* ",
                               "fw image too large for the write buffer length",
                               "**********MCHP_DEVICE::scsi_write_buffer End ******* "}));
}

TEST_F(ArcconfPassthroughTest, TheUpgradeCommandAddressesConnectorChannelAndDevice)
{
    EXPECT_EQ(device_->download_fw("fw.bin", "expander", "E"), 0);
    EXPECT_EQ(log_lines(),
              (std::vector<std::string>{
                  "**********MCHP_DEVICE::download_fw Begin ******* ",
                  "Command: = arcconf.exe  expanderupgrade 1 enclosure 0 2 0 expander fw.bin E "
                  "noprompt > expanderupgrade_1_2_0 2>&1",
                  "Result: = 0", "**********MCHP_DEVICE::download_fw End ******* "}));

    device_->connectorId = "";
    EXPECT_EQ(device_->download_fw("my fw.bin", "Expander", "5"), 0);
    EXPECT_TRUE(log_has_run({"Command: = arcconf.exe  expanderupgrade 1 enclosure  2 0 cpld my "
                             "fw.bin 5 noprompt > expanderupgrade_1_2_0 2>&1"}));
    EXPECT_EQ(device_->download_fw("fw.bin", "", "E"), 0);
    EXPECT_TRUE(log_has_run({"Command: = arcconf.exe  expanderupgrade 1 enclosure  2 0 cpld fw.bin "
                             "E noprompt > expanderupgrade_1_2_0 2>&1"}));
}
