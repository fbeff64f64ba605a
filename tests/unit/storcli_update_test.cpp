// The update sequence and the run loop under -T, where every command is held
// back and gives 0. Failing tools are the lab's business: see tests/e2e.
#include "storcli/run_loop.h"
#include "storcli/update.h"

#include "run/run_state.h"
#include "test_support.h"

#include <chrono>

namespace {

const std::string UP_TO_DATE = "Firmware version is up-to-date.\n";
const std::string WRITTEN =
    "Start to download firmware image, please wait....\n"
    "Image download success.\n"
    "Start to download PSoc firmware image, please wait...\n"
    "Image download success.\n";

std::string shown(const std::string& installed)
{
    return "Product ID: ABC36X\nEID:        2\nInstalled Version:" + installed +
           "\nTarget Version:   1.2.3\n";
}

double seconds_since(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

class StorcliUpdateTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        adapter_.adapterIndex = "0";
        adapter_.adapterType = ADAPTER_TYPE_HBA;
        profile_ = {"ABC36X", "", "1.2.3", "fw.rom", "", "psoc.rom", "E", "2", 0};
        expander_ = {"ABC36X", "0", &adapter_, "2", 0, 0, "1.0", &profile_};
    }

    std::int32_t update_with_console(std::string& console)
    {
        testing::internal::CaptureStdout();
        const std::int32_t result = update(expander_);
        console = testing::internal::GetCapturedStdout();
        return result;
    }

    StorcliAdapter adapter_;
    SupportProfile profile_;
    StorcliExpander expander_;
};

TEST_F(StorcliUpdateTest, AnEqualOrHigherVersionIsUpToDateWithoutAnyCommand)
{
    for (const char* installed : {"1.2.3", "1.10", "2"}) {
        std::filesystem::remove("log.txt");
        expander_.installedVersion = installed;
        std::string console;
        EXPECT_EQ(update_with_console(console), 163) << installed;
        EXPECT_EQ(console, shown(installed) + UP_TO_DATE);
        EXPECT_EQ(expander_.flashState, FLASH_NOT_TRIED);
        EXPECT_TRUE(log_has_run({"**********update Begin ******* ", "force = 0",
                                 "**********compare_version Begin ******* "}));
        EXPECT_TRUE(log_has_run({"**********compare_version End ******* ", "**********flash End ******* "}));
        EXPECT_FALSE(log_has_run({"need to download FW"}));
    }
}

TEST_F(StorcliUpdateTest, HeldBackALowerOrForcedVersionIsWrittenWithOneWaitAndNoFile)
{
    Options.test = true;
    WAIT_SECONDS = 1;
    const auto start = std::chrono::steady_clock::now();
    std::string console;
    EXPECT_EQ(update_with_console(console), 0);
    // The wait stands between the images only, not after the PSoC image.
    const double waited = seconds_since(start);
    EXPECT_GE(waited, 1.0);
    EXPECT_LT(waited, 2.0);
    EXPECT_EQ(console, shown("1.0") + WRITTEN);
    EXPECT_EQ(expander_.needDownload, 1u);
    EXPECT_EQ(expander_.flashState, FLASH_WRITTEN);
    EXPECT_TRUE(log_has_run({"installed: = 1.0", "target: = 1.2.3", "need to download FW"}));
    EXPECT_TRUE(log_has_run({"Exec Command = .\\storcli64.exe  /c0/e2 download src=psoc.rom mode=E "
                             "offline bufferid=2 >psoc_download_log_0_2_t0 2>&1",
                             "Exec result = 0", "**********exec_command End ******* ",
                             "**********flash End ******* "}));
    EXPECT_FALSE(std::filesystem::exists("fw_download_log_0_2"));

    std::filesystem::remove("log.txt");
    WAIT_SECONDS = 0;
    Options.force = true;
    expander_.installedVersion = "9.9";
    EXPECT_EQ(update_with_console(console), 0);
    EXPECT_TRUE(log_has_run({"force = 1", "installed: = 9.9", "target: = 1.2.3"}));
    EXPECT_FALSE(log_has_run({"**********compare_version Begin ******* "}));
}

class StorcliRunLoopTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        write_file("profile.txt", "ABC36X,aux,1.2.3,fw.rom,aux,psoc.rom,E,2,0\n");
        Options.profile_file = "profile.txt";
        Options.test = true;
    }

    // A controller that passes the gate, with one enclosure row.
    static void write_controller(std::uint32_t index, const std::string& installed)
    {
        const std::string i = std::to_string(index);
        const std::string rule = "----------------------------------------------\r\n";
        write_file("show_" + i + "_log", "Product Name = ABC HBA 9500\r\nSubVendor Id = 0x1F3A\r\n");
        write_file("show_eall_" + i + "_log", "Properties :\r\n" + rule + "EID State ProdID Rev\r\n" + rule +
                                                  "  2 OK      ABC36X   " + installed + "\r\n" + rule);
    }

    static std::int32_t run(std::string& console)
    {
        testing::internal::CaptureStdout();
        const std::int32_t result = ProcessStorcliAdapters();
        console = testing::internal::GetCapturedStdout();
        return result;
    }
};

TEST_F(StorcliRunLoopTest, ControllersThatFailTheGateLeaveTheConsoleSilent)
{
    ADAPTER_COUNT = 3;
    write_controller(0, "1.0");
    write_file("show_0_log", "SubVendor Id = 0x1f3a\n");
    write_file("show_1_log", "SubVendor Id = 0x1F3A0\n");
    std::string console;
    EXPECT_EQ(run(console), 171);
    EXPECT_EQ(console, "");
    EXPECT_TRUE(Adapters.empty());
    EXPECT_TRUE(log_has_run({"Exec Command = .\\storcli64.exe /c2 show  >show_2_log 2>&1"}));
    EXPECT_FALSE(log_has_run({"**********get_adapter_type Begin ******* "}));
    EXPECT_FALSE(log_has_run({"**********Process End ******* "}));
    EXPECT_NE(read_file("log.txt").find("  SVID is not match Tarvex SVID, Not Supported adapter.["),
              std::string::npos);
}

TEST_F(StorcliRunLoopTest, RowsBeforeAShortProfileLineStillServe)
{
    ADAPTER_COUNT = 1;
    write_controller(0, "1.0");
    write_file("profile.txt", "ABC36X,aux,1.2.3,fw.rom,aux,psoc.rom,E,2,0\nshort\n");
    std::string console;
    EXPECT_EQ(run(console), 0);
    EXPECT_EQ(console,
              "Invalid support file format.\n"
              "Profile information is not supported.\n"
              "1 Expander(s) Found.\n\n\n"
              "------------------------------------\n" +
                  shown("1.0") + WRITTEN +
                  "------------------------------------\n\n"
                  "All expander(s) firmware download success.\n"
                  "System power cycle is required to activate the download firmware images\n");
    ASSERT_EQ(Adapters.size(), 1u);
    EXPECT_EQ(Expanders[0]->adapter, Adapters[0]);
}

TEST_F(StorcliRunLoopTest, AtMostAThousandControllersAreServed)
{
    const std::string above = "Controller count above 1000, controllers from 1000 on are not served";
    ADAPTER_COUNT = 1000;
    std::string console;
    EXPECT_EQ(run(console), 171);
    EXPECT_TRUE(log_has_run({"Exec Command = .\\storcli64.exe /c999 show  >show_999_log 2>&1"}));
    EXPECT_FALSE(log_has_run({above}));

    std::filesystem::remove("log.txt");
    ADAPTER_COUNT = 4294967295u;
    write_controller(999, "1.2.3");
    EXPECT_EQ(run(console), 0);
    EXPECT_TRUE(log_has_run({above}));
    EXPECT_FALSE(log_has_run({"Exec Command = .\\storcli64.exe /c1000 show  >show_1000_log 2>&1"}));
    ASSERT_EQ(Expanders.size(), 1u);
    EXPECT_EQ(Expanders[0]->adapterIndex, "999");
}
