#include "arcconf/ARCCONF_UTL.h"
#include "arcconf/run_loop.h"

#include "run/run_state.h"
#include "test_support.h"

namespace {

const std::string DASHES = "------------------------------------\n\n";

// One enclosure services device of the report, with its model and firmware.
std::string expander(const std::string& device, const std::string& model, const std::string& firmware)
{
    return "Device #" + device + "\n Device is an Enclosure Services Device\n Model : " + model +
           "\n Firmware : " + firmware + "\n Reported Location : Connector 0, Device " + device +
           "\n";
}

const std::string HARD_DRIVE = "Device #9\n Device is a Hard drive\n Model : X100\n";

}  // namespace

class ArcconfRunLoopTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        ARCCONF_UTL::test_mode = true;
        ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(1));
        Options.profile_file = "profile.csv";
        // X100 has its PSoC image, Y200's is missing, so under --psoc a Y200
        // that needs a download fails.
        write_file("profile.csv", "X100,a,1.2.3,fw.bin,a,psoc.bin,E,2,0\n"
                                  "Y200,a,2.0,fw2.bin,a,missing.bin,E,2,0\n"
                                  "X100,a,9.9,other.bin,a,psoc.bin,E,2,0\n");
        write_file("psoc.bin", "psoc");
    }

    static std::int32_t run(const std::string& report, std::string& console)
    {
        write_file("getconfigpd_1", "Channel #0:\n" + report);
        testing::internal::CaptureStdout();
        const std::int32_t result = ProcessArcconfAdapters();
        console = testing::internal::GetCapturedStdout();
        return result;
    }
};

TEST_F(ArcconfRunLoopTest, AnUnusableProfileEndsTheRunWithItsCode)
{
    const std::vector<std::pair<std::string, std::int32_t>> profiles = {
        {"", 162}, {"X100,a,1.2.3,fw.bin,a,psoc.bin,E,2,0\nshort,line\n", 161}};
    for (const auto& [content, code] : profiles) {
        reset_run_state();
        ARCCONF_UTL::test_mode = true;
        ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(1));
        Options.profile_file = "profile.csv";
        write_file("profile.csv", content);
        std::string console;
        EXPECT_EQ(run(expander("0", "X100", "1.0"), console), code);
        EXPECT_EQ(console.substr(console.size() - 38), "Profile information is not supported.\n");
        EXPECT_TRUE(ARCCONF_UTL::expanders.empty());
    }

    std::filesystem::remove("log.txt");
    Options.profile_file = "absent.csv";
    std::string console;
    EXPECT_EQ(run(expander("0", "X100", "1.0"), console), 174);
    EXPECT_EQ(console, "ERROR: Could not open profile file absent.csv!\n"
                       "Profile information is not supported.\n");
    EXPECT_TRUE(log_has_run({"**********Process Begin ******* ",
                             "**********read_profiles Begin ******* ", "result = 174",
                             "**********Process End ******* "}));
}

TEST_F(ArcconfRunLoopTest, NoDeviceOrNoMatchingModelGivesNoExpander)
{
    std::string console;
    EXPECT_EQ(run(HARD_DRIVE, console), 171);
    EXPECT_EQ(console, "");
    EXPECT_TRUE(log_has_run({"Expander number = 0", "result = 171", "**********Process End ******* "}));

    // Containing the product id, or differing in case, is no match.
    EXPECT_EQ(run(expander("0", "X1000", "1.0") + expander("1", "x100", "1.0") +
                      expander("2", "X100 B", "1.0"),
                  console),
              171);
    EXPECT_EQ(console, DASHES);
    EXPECT_FALSE(log_has_run({"**********flash_fw_mchp Begin ******* "}));
}

TEST_F(ArcconfRunLoopTest, UpToDateDevicesEndInZeroAndTheFirstRowServes)
{
    std::string console;
    // The X100 row with target 9.9 comes too late to ask for a download.
    EXPECT_EQ(run(expander("0", "X100", "1.2.3") + expander("1", "Y200", "2.0") + HARD_DRIVE +
                      expander("2", "Z300", "0.1"),
                  console),
              0);
    EXPECT_EQ(console, " Expander Product ID:X100\n Installed FW Vesion:1.2.3\n"
                       " Target FW Version  :1.2.3\n FW version is up-to-date.\n"
                       " Expander Product ID:Y200\n Installed FW Vesion:2.0\n"
                       " Target FW Version  :2.0\n FW version is up-to-date.\n" +
                           DASHES + "All expanders' firmware are up-to-date.\n");
    EXPECT_TRUE(log_has_run({"result = 0", "**********Process End ******* "}));
    EXPECT_TRUE(log_has_run({"Expander number = 3"}));
}

TEST_F(ArcconfRunLoopTest, WrittenDevicesEndInZeroWithThePowerCycleLine)
{
    PSOC_UPDATE_FLAG = true;
    std::string console;
    EXPECT_EQ(run(expander("0", "X100", "1.2.3") + expander("1", "X100", "1.0"), console), 0);
    const std::string ending = DASHES + "All expander(s) firmware download success.\n"
                                        "System power cycle is required to activate the download "
                                        "firmware images\n";
    EXPECT_EQ(console.substr(console.size() - ending.size()), ending);
}

TEST_F(ArcconfRunLoopTest, AnyFailedDeviceGivesOne)
{
    PSOC_UPDATE_FLAG = true;
    std::string console;
    EXPECT_EQ(run(expander("0", "Y200", "1.0") + expander("1", "X100", "1.0") +
                      expander("2", "Y200", "1.0"),
                  console),
              1);
    std::string ending = DASHES + "2 expander(s) firmware download fail.\n"
                                  "1 expander(s) firmware download success.\n";
    EXPECT_EQ(console.substr(console.size() - ending.size()), ending);
    EXPECT_TRUE(log_has_run({"result = 1", "**********Process End ******* "}));

    reset_run_state();
    ARCCONF_UTL::test_mode = true;
    ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(1));
    Options.profile_file = "profile.csv";
    PSOC_UPDATE_FLAG = true;
    EXPECT_EQ(run(expander("0", "Y200", "1.0") + expander("1", "X100", "1.2.3"), console), 1);
    ending = DASHES + "1 expander(s) firmware download fail.\n";
    EXPECT_EQ(console.substr(console.size() - ending.size()), ending);
    EXPECT_EQ(console.find("expander(s) firmware download success"), std::string::npos);
}
