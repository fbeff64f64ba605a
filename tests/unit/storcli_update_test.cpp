#include "storcli/run_loop.h"
#include "storcli/update.h"

#include "run/run_state.h"
#include "test_support.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;  // enclosure id, version

const std::string DASHES = "------------------------------------\n";
const std::string UP_TO_DATE = "Firmware version is up-to-date.\n";
const std::string MAIN_START = "Start to download firmware image, please wait....\n";
const std::string PSOC_START = "Start to download PSoc firmware image, please wait...\n";
const std::string SUCCESS = "Image download success.\n";
const std::string FAIL = "Image download fail.\n";
const std::string WRITTEN = MAIN_START + SUCCESS + PSOC_START + SUCCESS;
const std::string POWER_CYCLE = "All expander(s) firmware download success.\n"
                                "System power cycle is required to activate the download "
                                "firmware images\n";

std::string shown(const std::string& eid, const std::string& installed)
{
    return "Product ID: ABC36X\nEID:        " + eid + "\nInstalled Version:" + installed +
        "\nTarget Version:   1.2.3\n";
}

// The tool's arguments for the three downloads of an expander behind
// controller 0, as an HBA with the profile below gets them.
std::string main_args(const std::string& eid)
{
    return "/c0/e" + eid + " download src=fw.rom mode=E offline bufferid=0";
}
std::string psoc_args(const std::string& eid)
{
    return "/c0/e" + eid + " download src=psoc.rom mode=E offline bufferid=2";
}
std::string retry_args(const std::string& eid)
{
    return "/c0/e" + eid + " download src=psoc.rom forceActivate mode=5 bufferid=2";
}

double seconds_since(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

class StorcliToolTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        write_file("profile.txt", "ABC36X,aux,1.2.3,fw.rom,aux,psoc.rom,E,2,0\n");
        Options.profile_file = "profile.txt";
    }

    // Under Wine "/bin/sh" exists too, but commands go to cmd.exe.
    static bool has_posix_shell()
    {
        return std::getenv("COMSPEC") == nullptr && std::filesystem::exists("/bin/sh");
    }

    // A storcli64.exe that appends its arguments to calls.txt, prints the
    // prepared reply for them (or else the arguments), and exits with the
    // prepared status for them, 0 when there is none.
    static void write_tool()
    {
        write_file("storcli64.exe",
                   "#!/bin/sh\n"
                   "echo \"$*\" >> calls.txt\n"
                   "key=$(echo \"$*\" | tr ' /=' '___')\n"
                   "if [ -f \"rep$key\" ]; then cat \"rep$key\"; else echo \"$*\"; fi\n"
                   "[ -f \"code$key\" ] && exit $(cat \"code$key\")\n"
                   "exit 0\n");
        std::filesystem::permissions("storcli64.exe", std::filesystem::perms::owner_all);
    }

    static std::string key_of(std::string args)
    {
        std::replace_if(
            args.begin(), args.end(), [](char c) { return c == ' ' || c == '/' || c == '='; }, '_');
        return args;
    }

    static void fail(const std::string& args, const std::string& status)
    {
        write_file("code" + key_of(args), status);
    }

    // A controller that passes the gate, its reports both prepared for -T
    // and as the tool's replies.
    static void write_controller(std::uint32_t index, const Rows& rows)
    {
        const std::string i = std::to_string(index);
        const std::string show = "Controller = " + i + "\r\nProduct Name = ABC HBA 9500\r\n" +
            "SubVendor Id = 0x1F3A\r\n";
        const std::string rule = "----------------------------------------------\r\n";
        std::string eall =
            "Properties :\r\n==========\r\n" + rule + "EID State ProdID Rev\r\n" + rule;
        for (const auto& [eid, version] : rows)
            eall += " " + eid + " OK      ABC36X   " + version + "\r\n";
        eall += rule;
        write_file("show_" + i + "_log", show);
        write_file("rep" + key_of("/c" + i + " show"), show);
        write_file("show_eall_" + i + "_log", eall);
        write_file("rep" + key_of("/c" + i + "/eall show"), eall);
    }
};

class StorcliUpdateTest : public StorcliToolTest {
protected:
    void SetUp() override
    {
        StorcliToolTest::SetUp();
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
        EXPECT_EQ(console, shown("2", installed) + UP_TO_DATE);
        EXPECT_EQ(expander_.needDownload, 0u);
        EXPECT_EQ(expander_.flashState, FLASH_NOT_TRIED);
        EXPECT_TRUE(log_has_run({"**********update Begin ******* ", "force = 0",
                                 "**********compare_version Begin ******* "}));
        EXPECT_TRUE(log_has_run(
            {"**********compare_version End ******* ", "**********flash End ******* "}));
    }
}

TEST_F(StorcliUpdateTest, HeldBackALowerVersionOrAForcedOneIsWrittenWithoutAnyFile)
{
    Options.test = true;
    WAIT_SECONDS = 1;
    const auto start = std::chrono::steady_clock::now();
    std::string console;
    EXPECT_EQ(update_with_console(console), 0);
    EXPECT_GE(seconds_since(start), 1.0);
    EXPECT_EQ(console, shown("2", "1.0") + WRITTEN);
    EXPECT_EQ(expander_.needDownload, 1u);
    EXPECT_EQ(expander_.flashState, FLASH_WRITTEN);
    EXPECT_TRUE(log_has_run({"installed: = 1.0", "target: = 1.2.3", "need to download FW"}));
    EXPECT_TRUE(log_has_run(
        {"Exec Command = .\\storcli64.exe  " + main_args("2") + " >fw_download_log_0_2 2>&1"}));
    EXPECT_TRUE(log_has_run(
        {"Exec Command = .\\storcli64.exe  " + psoc_args("2") + " >psoc_download_log_0_2_t0 2>&1",
         "Exec result = 0", "**********exec_command End ******* ",
         "**********flash End ******* "}));
    EXPECT_FALSE(std::filesystem::exists("fw_download_log_0_2"));

    std::filesystem::remove("log.txt");
    WAIT_SECONDS = 0;
    Options.force = true;
    expander_.installedVersion = "9.9";
    EXPECT_EQ(update_with_console(console), 0);
    EXPECT_EQ(expander_.flashState, FLASH_WRITTEN);
    EXPECT_TRUE(log_has_run({"force = 1", "installed: = 9.9", "target: = 1.2.3"}));
    EXPECT_FALSE(log_has_run({"**********compare_version Begin ******* "}));
}

TEST_F(StorcliUpdateTest, AFailedMainImageStopsWithItsStatusAndNoWait)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_tool();
    fail(main_args("2"), "7");
    WAIT_SECONDS = 1;
    const auto start = std::chrono::steady_clock::now();
    std::string console;
    EXPECT_EQ(update_with_console(console), 7);
    EXPECT_LT(seconds_since(start), 1.0);
    EXPECT_EQ(console, shown("2", "1.0") + MAIN_START + FAIL);
    EXPECT_EQ(expander_.flashState, FLASH_MAIN_FAILED);
    EXPECT_EQ(read_file("calls.txt"), main_args("2") + "\n");
    EXPECT_EQ(read_file("fw_download_log_0_2"), main_args("2") + "\n");
    EXPECT_TRUE(log_has_run({"Exec result = 7", "**********exec_command End ******* ",
                             "Download fw image fail", "**********flash End ******* "}));
}

TEST_F(StorcliUpdateTest, ThePsocImageIsRetriedOnceInItsSecondForm)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_tool();
    fail(psoc_args("2"), "3");
    std::string console;
    EXPECT_EQ(update_with_console(console), 0);
    EXPECT_EQ(console, shown("2", "1.0") + WRITTEN);
    EXPECT_EQ(expander_.flashState, FLASH_WRITTEN);
    EXPECT_EQ(read_file("calls.txt"),
              main_args("2") + "\n" + psoc_args("2") + "\n" + retry_args("2") + "\n");
    EXPECT_EQ(read_file("psoc_download_log_0_2_t0"), psoc_args("2") + "\n");
    EXPECT_EQ(read_file("psoc_download_log_0_2_t1"), retry_args("2") + "\n");

    // Both forms failing: the second status, after a second wait.
    fail(retry_args("2"), "255");
    WAIT_SECONDS = 1;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(update_with_console(console), 255);
    EXPECT_GE(seconds_since(start), 2.0);
    EXPECT_EQ(console, shown("2", "1.0") + MAIN_START + SUCCESS + PSOC_START + FAIL);
    EXPECT_EQ(expander_.flashState, FLASH_PSOC_FAILED);
    EXPECT_TRUE(log_has_run({"Exec result = 255", "**********exec_command End ******* ",
                             "Download fw image fail", "**********flash End ******* "}));
}

TEST_F(StorcliUpdateTest, ShowStatusKnowsFiveCodes)
{
    testing::internal::CaptureStdout();
    for (const std::int32_t code : {-1, 0, 1, 2, 3, 4, 5})
        expander_.show_status(code);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              UP_TO_DATE + MAIN_START + PSOC_START + SUCCESS + FAIL);
}

class StorcliRunLoopTest : public StorcliToolTest {
protected:
    static std::int32_t run(std::string& console)
    {
        testing::internal::CaptureStdout();
        const std::int32_t result = ProcessStorcliAdapters();
        console = testing::internal::GetCapturedStdout();
        return result;
    }

    // The found line, each expander behind a blank line and dashes, the
    // closing dashes and blank line, the ending.
    static std::string console_of(const std::vector<std::string>& expanders,
                                  const std::string& ending)
    {
        std::string console = std::to_string(expanders.size()) + " Expander(s) Found.\n\n";
        for (const std::string& expander : expanders)
            console += "\n" + DASHES + expander;
        return console + DASHES + "\n" + ending;
    }
};

TEST_F(StorcliRunLoopTest, ControllersThatFailTheGateLeaveTheConsoleSilent)
{
    Options.test = true;
    ADAPTER_COUNT = 3;
    write_controller(0, {{"2", "1.0"}});
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

TEST_F(StorcliRunLoopTest, UpToDateAndWrittenExpandersEndInZero)
{
    Options.test = true;
    ADAPTER_COUNT = 1;
    write_controller(0, {{"2", "1.2.3"}, {"3", "1.3"}});
    std::string console;
    EXPECT_EQ(run(console), 0);
    EXPECT_EQ(console,
              console_of({shown("2", "1.2.3") + UP_TO_DATE, shown("3", "1.3") + UP_TO_DATE},
                         "All expanders' firmware are up-to-date.\n"));
    EXPECT_TRUE(
        log_has_run({"Exec Command = .\\storcli64.exe /c0/eall show  >show_eall_0_log 2>&1"}));
    EXPECT_TRUE(log_has_run({"result = 0", "**********Process End ******* "}));

    reset_run_state();
    Options = {0, 0, true, false, "profile.txt", ""};
    ADAPTER_COUNT = 2;
    write_controller(1, {{"5", "1.0"}});
    EXPECT_EQ(run(console), 0);
    EXPECT_EQ(console,
              console_of({shown("2", "1.2.3") + UP_TO_DATE, shown("3", "1.3") + UP_TO_DATE,
                          shown("5", "1.0") + WRITTEN},
                         POWER_CYCLE));
    ASSERT_EQ(Adapters.size(), 2u);
    EXPECT_EQ(Expanders[2]->adapter, Adapters[1]);
}

TEST_F(StorcliRunLoopTest, AnUnusableProfileIsToldAndTheControllersAreStillAsked)
{
    Options.test = true;
    Options.profile_file = "missing.txt";
    ADAPTER_COUNT = 1;
    write_controller(0, {{"2", "1.0"}});
    std::string console;
    EXPECT_EQ(run(console), 171);
    EXPECT_EQ(console,
              "ERROR: Could not open profile file missing.txt!\n"
              "Profile information is not supported.\n");
    EXPECT_EQ(Adapters.size(), 1u);

    // Rows before a short line stay and serve.
    write_file("profile.txt", "ABC36X,aux,1.2.3,fw.rom,aux,psoc.rom,E,2,0\nshort\n");
    Options.profile_file = "profile.txt";
    EXPECT_EQ(run(console), 0);
    EXPECT_EQ(console,
              "Invalid support file format.\nProfile information is not supported.\n" +
                  console_of({shown("2", "1.0") + WRITTEN}, POWER_CYCLE));
}

TEST_F(StorcliRunLoopTest, AtMostAThousandControllersAreServed)
{
    Options.test = true;
    const std::string above =
        "Controller count above 1000, controllers from 1000 on are not served";
    ADAPTER_COUNT = 1000;
    std::string console;
    EXPECT_EQ(run(console), 171);
    EXPECT_TRUE(log_has_run({"Exec Command = .\\storcli64.exe /c999 show  >show_999_log 2>&1"}));
    EXPECT_FALSE(log_has_run({above}));

    std::filesystem::remove("log.txt");
    ADAPTER_COUNT = 4294967295u;
    write_controller(999, {{"2", "1.2.3"}});
    EXPECT_EQ(run(console), 0);
    EXPECT_TRUE(log_has_run({above}));
    EXPECT_FALSE(log_has_run({"Exec Command = .\\storcli64.exe /c1000 show  >show_1000_log 2>&1"}));
    ASSERT_EQ(Expanders.size(), 1u);
    EXPECT_EQ(Expanders[0]->adapterIndex, "999");
}

TEST_F(StorcliRunLoopTest, FailedExpandersWithNoneWrittenGiveTheLastResult)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_tool();
    ADAPTER_COUNT = 1;
    write_controller(0, {{"2", "1.0"}, {"3", "1.0"}});
    fail(main_args("2"), "5");
    fail(main_args("3"), "9");
    std::string console;
    EXPECT_EQ(run(console), 9);
    EXPECT_EQ(
        console,
        console_of({shown("2", "1.0") + MAIN_START + FAIL, shown("3", "1.0") + MAIN_START + FAIL},
                   "2 expander(s) firmware download fail.\n"));
    EXPECT_TRUE(log_has_run({"result = 9", "**********Process End ******* "}));

    // The last expander up to date leaves 163.
    reset_run_state();
    Options.profile_file = "profile.txt";
    ADAPTER_COUNT = 1;
    write_controller(0, {{"2", "1.0"}, {"3", "1.2.3"}});
    EXPECT_EQ(run(console), 163);
    EXPECT_EQ(console,
              console_of({shown("2", "1.0") + MAIN_START + FAIL, shown("3", "1.2.3") + UP_TO_DATE},
                         "1 expander(s) firmware download fail.\n"));
}

TEST_F(StorcliRunLoopTest, FailedAndWrittenExpandersGiveOneAndBothCounts)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_tool();
    ADAPTER_COUNT = 1;
    // A written main image with a failed PSoC image counts as failed.
    write_controller(0, {{"2", "1.0"}, {"3", "1.0"}, {"4", "1.0"}});
    fail(psoc_args("2"), "4");
    fail(retry_args("2"), "4");
    fail(main_args("3"), "6");
    std::string console;
    EXPECT_EQ(run(console), 1);
    EXPECT_EQ(console,
              console_of({shown("2", "1.0") + MAIN_START + SUCCESS + PSOC_START + FAIL,
                          shown("3", "1.0") + MAIN_START + FAIL, shown("4", "1.0") + WRITTEN},
                         "2 expander(s) firmware download fail.\n"
                         "1 expander(s) firmware download success.\n"));
    EXPECT_TRUE(log_has_run({"result = 1", "**********Process End ******* "}));
}

TEST_F(StorcliRunLoopTest, AControllerWhoseCommandFailsIsLeftOutAndTheLoopGoesOn)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_tool();
    ADAPTER_COUNT = 3;
    write_controller(0, {{"2", "1.0"}});
    fail("/c0/eall show", "2");
    write_controller(1, {{"3", "1.0"}});
    fail("/c1 show", "255");
    write_controller(2, {{"4", "1.0"}});
    std::string console;
    EXPECT_EQ(run(console), 0);
    EXPECT_EQ(console, console_of({shown("4", "1.0") + WRITTEN}, POWER_CYCLE));
    ASSERT_EQ(Adapters.size(), 1u);
    EXPECT_EQ(Adapters[0]->adapterIndex, "2");
    const std::string log = read_file("log.txt");
    EXPECT_NE(log.find("Exec result = 2\n"), std::string::npos);
    EXPECT_NE(log.find("Exec result = 255\n"), std::string::npos);
    EXPECT_NE(log.find("  get controller info fail[", log.find("Exec result = 255\n")),
              std::string::npos);
}
