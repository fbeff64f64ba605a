// What a failing arcconf.exe does to each step. The tool is a POSIX shell
// script found on PATH, so these cases need /bin/sh as the command processor.
#include "arcconf/ARCCONF_UTL.h"
#include "arcconf/flash_fw_mchp.h"
#include "arcconf/run_loop.h"

#include "run/run_state.h"
#include "test_support.h"

#include <cstdio>
#include <cstdlib>

namespace {

// Under Wine "/bin/sh" exists too, but commands go to the Windows command
// processor, which COMSPEC names.
bool has_posix_shell()
{
    return std::getenv("COMSPEC") == nullptr && std::filesystem::exists("/bin/sh");
}

// putenv keeps the very text it is given, so the text lives on here.
void set_path(const std::string& value)
{
    static char setting[16384];
    std::snprintf(setting, sizeof setting, "PATH=%s", value.c_str());
    putenv(setting);
}

// Records each call and answers by its verb; a verb's status is read from
// "<verb>.code" (0 when absent) and a report from "<verb>.out".
const char* const TOOL = "#!/bin/sh\n"
                         "echo \"$*\" >> calls.txt\n"
                         "code() { cat \"$1.code\" 2>/dev/null || echo 0; }\n"
                         "case \"$1 $5\" in\n"
                         "  list*) cat list.out; exit $(code list);;\n"
                         "  getconfig*) cat \"getconfig$2.out\"; exit $(code \"getconfig$2\");;\n"
                         "  'PASSTHROUGH read') printf '%s' \"$(cat inquiry.out)\"; exit $(code inquiry);;\n"
                         "  'PASSTHROUGH write') exit $(code write);;\n"
                         "  expanderupgrade*) exit $(code upgrade);;\n"
                         "esac\n"
                         "exit 99\n";

const std::string EXPANDER = "Channel #2:\nDevice #0\n Device is an Enclosure Services Device\n"
                             " Model : X100\n Firmware : 1.0\n"
                             " Reported Location : Connector 0, Device 0\n";

}  // namespace

class ArcconfToolFailureTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        if (!has_posix_shell())
            GTEST_SKIP() << "needs /bin/sh as the command processor";
        const char* path = std::getenv("PATH");
        previous_path_ = path == nullptr ? "" : path;
        set_path(std::filesystem::current_path().string() + ":" + previous_path_);
        write_file("arcconf.exe", TOOL);
        std::filesystem::permissions("arcconf.exe", std::filesystem::perms::owner_all);
        write_file("profile.csv", "X100,a,1.2.3,fw.bin,a,psoc.bin,E,2,1\n");
        write_file("psoc.bin", "psoc");
        Options.profile_file = "profile.csv";
        PSOC_UPDATE_FLAG = true;
        profile_.targetVersion = "1.2.3";
        profile_.fwImage = "fw.bin";
        profile_.psocImage = "psoc.bin";
        profile_.mode = "E";
        profile_.bufferID = "2";
        profile_.fwLocation = 1;
    }

    void TearDown() override
    {
        if (has_posix_shell())
            set_path(previous_path_);
        ScratchTest::TearDown();
    }

    // One device of controller 1, channel 2, device 0, as discovery leaves it.
    static MCHP_DEVICE* discovered_device()
    {
        ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(1));
        auto* device = new MCHP_DEVICE("2", "0", "expander");
        device->adapter = ARCCONF_UTL::adapters[0];
        device->model = "X100";
        device->firmware = "1.0";
        device->connectorId = "0";
        ARCCONF_UTL::expanders.push_back(device);
        return device;
    }

    std::int32_t flash(MCHP_DEVICE* device, std::string& console)
    {
        testing::internal::CaptureStdout();
        const std::int32_t result = flash_fw_mchp(device, &profile_);
        console = testing::internal::GetCapturedStdout();
        return result;
    }

    SupportProfile profile_;

private:
    std::string previous_path_;
};

TEST_F(ArcconfToolFailureTest, AFailedListingOrReportAddsNothing)
{
    write_file("list.out", "Controllers found: 2\n");
    write_file("list.code", "1");
    ARCCONF_UTL::getAdapterList();
    EXPECT_TRUE(ARCCONF_UTL::adapters.empty());
    EXPECT_TRUE(log_has_run({"Command: = arcconf.exe  list > arrconf_list.log 2>&1", "Result: = 1",
                             "**********ARCCONF_UTL::getAdapterList End ******* "}));

    std::filesystem::remove("list.code");
    ARCCONF_UTL::getAdapterList();
    ASSERT_EQ(ARCCONF_UTL::adapters.size(), 2u);

    write_file("getconfig1.out", EXPANDER);
    write_file("getconfig1.code", "2");
    write_file("getconfig2.out", EXPANDER);
    ARCCONF_UTL::getExpanderList();
    ASSERT_EQ(ARCCONF_UTL::expanders.size(), 1u);
    EXPECT_EQ(ARCCONF_UTL::expanders[0]->adapter, ARCCONF_UTL::adapters[1]);
    EXPECT_TRUE(log_has_run({"Command: = arcconf.exe  getconfig 1 PD > getconfigpd_1 2>&1",
                             "Result: = 2",
                             "Command: = arcconf.exe  getconfig 2 PD > getconfigpd_2 2>&1"}));
}

TEST_F(ArcconfToolFailureTest, AFailedInquiryPassesItsStatusOnAndShowsNothing)
{
    MCHP_DEVICE* device = discovered_device();
    write_file("inquiry.out", "00 0d 05 02");
    write_file("inquiry.code", "7");
    std::string console;
    EXPECT_EQ(flash(device, console), 7);
    EXPECT_EQ(console, "");
    EXPECT_EQ(device->installedVersion, "");
    EXPECT_TRUE(log_has_run({"Result: = 7", "Result = 7",
                             "**********MCHP_DEVICE::scsi_inquery End ******* ",
                             "Fail to get inquery data", "**********flash_fw_mchp End ******* "}));
    EXPECT_EQ(read_file("calls.txt"),
              "PASSTHROUGH 1 2 0 read 512 [ 12 00 00 02 00 00 ] rawhex noprompt\n");

    // The run loop counts it as a failed device.
    write_file("getconfig1.out", EXPANDER);
    reset_run_state();
    Options.profile_file = "profile.csv";
    ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(1));
    testing::internal::CaptureStdout();
    EXPECT_EQ(ProcessArcconfAdapters(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "------------------------------------\n\n1 expander(s) firmware download fail.\n");
}

TEST_F(ArcconfToolFailureTest, AFailedMainImageStopsBeforeThePsocImage)
{
    MCHP_DEVICE* device = discovered_device();
    write_file("upgrade.code", "5");
    std::string console;
    EXPECT_EQ(flash(device, console), MCHP_FLASH_MAIN_FAILED);
    EXPECT_EQ(console, " Expander Product ID:X100\n Installed FW Vesion:\n Target FW Version  :1.2.3\n"
                       " Start to download expander firmware image...\n"
                       " Firmware image download Fail.\n");
    EXPECT_EQ(read_file("calls.txt"),
              "PASSTHROUGH 1 2 0 read 512 [ 12 00 00 02 00 00 ] rawhex noprompt\n"
              "expanderupgrade 1 enclosure 0 2 0 expander fw.bin E noprompt\n");
}

TEST_F(ArcconfToolFailureTest, AFailedPsocImageKeepsTheMainImageWritten)
{
    MCHP_DEVICE* device = discovered_device();
    write_file("write.code", "6");
    std::string console;
    EXPECT_EQ(flash(device, console), MCHP_FLASH_PSOC_FAILED);
    EXPECT_EQ(console.substr(console.find(" Firmware")),
              " Firmware image download success.\n"
              " Start to download psoc firmware image...\n"
              " PSOC image download Fail.\n");
    EXPECT_TRUE(log_has_run({"Result: = 6", "**********MCHP_DEVICE::scsi_write_buffer End ******* "}));
}
