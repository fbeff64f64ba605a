#include "arcconf/ARCCONF_UTL.h"
#include "arcconf/flash_fw_mchp.h"

#include "diagnostics/text.h"
#include "run/run_state.h"
#include "arcconf_device_test.h"

#include <algorithm>
#include <chrono>

namespace {

const std::string UPGRADE_COMMAND = "Command: = arcconf.exe  expanderupgrade 1 enclosure 0 2 0 "
                                    "expander fw.bin E noprompt > expanderupgrade_1_2_0 2>&1";
const std::string MAIN_IMAGE_WRITTEN = " Start to download expander firmware image...\n"
                                       " Firmware image download success.\n";
const std::string POWER_CYCLE = " Power cycle system is required to activate downloaded FW.\n";

std::string versions_shown(const std::string& installed)
{
    return " Expander Product ID:X100\n Installed FW Vesion:" + installed +
           "\n Target FW Version  :1.2.3\n";
}

// The hexadecimal answer of an inquiry whose bytes 36 to 55 are `field`
// (20 bytes) and whose byte 56 is a letter that must never be taken.
std::string inquiry_answer(const std::string& field)
{
    const std::string data = std::string(36, 'I') + field + "Z";
    std::string text;
    for (unsigned char byte : data)
        text += (text.empty() ? "" : " ") + byte_to_hex(byte);
    return text;
}

std::string padded(const std::string& text, char pad)
{
    return text + std::string(20 - text.size(), pad);
}

bool log_mentions(const std::vector<std::string>& lines, const std::string& part)
{
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return line.find(part) != std::string::npos; });
}

}  // namespace

class ArcconfFlashTest : public ArcconfDeviceTest {
protected:
    void SetUp() override
    {
        ArcconfDeviceTest::SetUp();
        device_->model = "X100";
        device_->firmware = "1.2.3";
        profile_.productId = "X100";
        profile_.targetVersion = "1.2.3";
        profile_.fwImage = "fw.bin";
        profile_.psocImage = "psoc.bin";
        profile_.mode = "E";
        profile_.bufferID = "2";
        write_file("inq_1_2_0", inquiry_answer(padded("  9.9", ' ')));
    }

    std::int32_t flash(std::string& console)
    {
        std::filesystem::remove("log.txt");
        testing::internal::CaptureStdout();
        const std::int32_t result = flash_fw_mchp(device_, &profile_);
        console = testing::internal::GetCapturedStdout();
        return result;
    }

    SupportProfile profile_;
};

TEST_F(ArcconfFlashTest, FwLocationZeroComparesTheReportedFirmware)
{
    std::string console;
    EXPECT_EQ(flash(console), MCHP_FLASH_UP_TO_DATE);
    EXPECT_EQ(console, versions_shown("1.2.3") + " FW version is up-to-date.\n");
    EXPECT_EQ(device_->installedVersion, "1.2.3");
    EXPECT_TRUE(log_has_run({"**********flash_fw_mchp Begin ******* "}));
    EXPECT_TRUE(log_has_run({"**********MCHP_DEVICE::scsi_inquery End ******* ", "inq data length = 57",
                             "**********compare_version Begin ******* "}));
    EXPECT_TRUE(log_has_run({"**********compare_version End ******* ",
                             "**********flash_fw_mchp End ******* "}));
    EXPECT_FALSE(log_mentions(log_lines(), "installed version:"));
    EXPECT_FALSE(log_mentions(log_lines(), "expanderupgrade"));

    device_->firmware = "1.10";
    EXPECT_EQ(flash(console), MCHP_FLASH_UP_TO_DATE);

    device_->firmware = "1.2";
    EXPECT_EQ(flash(console), MCHP_FLASH_WRITTEN);
    EXPECT_EQ(console, versions_shown("1.2") + MAIN_IMAGE_WRITTEN + POWER_CYCLE);
    EXPECT_TRUE(log_has_run({"**********MCHP_DEVICE::download_fw Begin ******* ", UPGRADE_COMMAND}));
}

TEST_F(ArcconfFlashTest, AnyOtherFwLocationTakesTheInquiryVersion)
{
    for (std::uint32_t location : {1u, 7u}) {
        profile_.fwLocation = location;
        std::string console;
        EXPECT_EQ(flash(console), MCHP_FLASH_UP_TO_DATE) << location;
        EXPECT_EQ(console, versions_shown("9.9") + " FW version is up-to-date.\n");
        EXPECT_EQ(device_->installedVersion, "9.9");
        EXPECT_TRUE(log_has_run({"inq data length = 57", "installed version: = 9.9"}));
    }

    // All 20 bytes non-zero: the version stops at byte 55.
    std::string console;
    write_file("inq_1_2_0", inquiry_answer("1.2.3.4.5.6.7.8.9.10"));
    EXPECT_EQ(flash(console), MCHP_FLASH_UP_TO_DATE);
    EXPECT_EQ(device_->installedVersion, "1.2.3.4.5.6.7.8.9.10");

    // A zero byte ends the text; lower than the target, so the main image goes.
    write_file("inq_1_2_0", inquiry_answer(padded(std::string("1.0\0" "9.9", 7), '\0')));
    EXPECT_EQ(flash(console), MCHP_FLASH_WRITTEN);
    EXPECT_EQ(console, versions_shown("1.0") + MAIN_IMAGE_WRITTEN + POWER_CYCLE);
    EXPECT_TRUE(log_has_run({"installed version: = 1.0"}));
    EXPECT_TRUE(log_has_run({UPGRADE_COMMAND}));

    // No answer at all leaves the buffer zeroed: an empty version.
    std::filesystem::remove("inq_1_2_0");
    EXPECT_EQ(flash(console), MCHP_FLASH_WRITTEN);
    EXPECT_EQ(device_->installedVersion, "");
    EXPECT_TRUE(log_has_run({"inq data length = 0", "installed version: = "}));
}

TEST_F(ArcconfFlashTest, AMissingPsocImageFailsAfterTheMainImage)
{
    device_->firmware = "1.0";
    PSOC_UPDATE_FLAG = true;
    std::string console;
    EXPECT_EQ(flash(console), MCHP_FLASH_PSOC_FAILED);
    EXPECT_EQ(console, versions_shown("1.0") + MAIN_IMAGE_WRITTEN +
                           " Start to download psoc firmware image...\n"
                           " PSOC image download Fail.\n");
    EXPECT_TRUE(log_has_run({UPGRADE_COMMAND}));
    EXPECT_TRUE(log_has_run({"get fw image filesize fail", "**********MCHP_DEVICE::scsi_write_buffer End ******* "}));
}

TEST_F(ArcconfFlashTest, TheWaitStandsBeforeThePsocImageOnly)
{
    device_->firmware = "1.0";
    write_file("psoc.bin", "1234");
    std::string console;
    WAIT_SECONDS = 30;
    auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(flash(console), MCHP_FLASH_WRITTEN);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));

    PSOC_UPDATE_FLAG = true;
    WAIT_SECONDS = 1;
    start = std::chrono::steady_clock::now();
    EXPECT_EQ(flash(console), MCHP_FLASH_WRITTEN);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}
