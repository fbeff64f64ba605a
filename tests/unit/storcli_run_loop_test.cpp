#include "storcli/run_loop.h"

#include "run/run_state.h"
#include "test_support.h"

#include <cstdlib>

namespace {

// Under Wine "/bin/sh" exists too, but commands go to the Windows command
// processor, which COMSPEC names.
bool has_posix_shell()
{
    return std::getenv("COMSPEC") == nullptr && std::filesystem::exists("/bin/sh");
}

const std::string DASHES = "------------------------------------\n";
const std::string RULE = "----------------------------------------------\n";

std::string shown(const std::string& eid, const std::string& installed)
{
    return "Product ID: ABC36X\nEID:        " + eid + "\nInstalled Version:" + installed +
        "\nTarget Version:   1.2.3\n";
}

const std::string UP_TO_DATE = "Firmware version is up-to-date.\n";
const std::string WRITTEN = "Start to download firmware image, please wait....\n"
                            "Image download success.\n"
                            "Start to download PSoc firmware image, please wait...\n"
                            "Image download success.\n";
const std::string MAIN_FAILED = "Start to download firmware image, please wait....\n"
                                "Image download fail.\n";
const std::string PSOC_FAILED = "Start to download firmware image, please wait....\n"
                                "Image download success.\n"
                                "Start to download PSoc firmware image, please wait...\n"
                                "Image download fail.\n";

}  // namespace

class StorcliRunLoopTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        write_file("profile.txt", "ABC36X,aux,1.2.3,fw.rom,aux,psoc.rom,E,2,0\n");
        Options.profile_file = "profile.txt";
    }

    // The two reports of a controller that passes the gate, with the
    // enclosure rows given as "EID version" pairs.
    static void write_controller(std::uint32_t index,
                                 const std::vector<std::pair<std::string, std::string>>& rows)
    {
        const std::string i = std::to_string(index);
        write_file("show_" + i + "_log", report_of_controller(index));
        write_file("show_eall_" + i + "_log", enclosure_report(rows));
    }

    static std::string report_of_controller(std::uint32_t index)
    {
        return "Controller = " + std::to_string(index) +
            "\r\nProduct Name = ABC HBA 9500\r\nSubVendor Id = 0x1F3A\r\nSubDevice Id = 0x00A1\r\n";
    }

    static std::string
    enclosure_report(const std::vector<std::pair<std::string, std::string>>& rows)
    {
        std::string report =
            "Properties :\r\n==========\r\n" + RULE + "EID State ProdID Rev\r\n" + RULE;
        for (const auto& [eid, version] : rows)
            report += " " + eid + " OK      ABC36X   " + version + "\r\n";
        return report + RULE;
    }

    // A storcli64.exe that answers "/cN show" and "/cN/eall show" with the
    // prepared reports rep_cN and rep_cN_eall, and exits with the status held
    // in code_cN, code_cN_eall or, for a download, code_cN_eM_<image>; 0
    // where no such file is.
    static void write_tool()
    {
        write_file("storcli64.exe",
                   "#!/bin/sh\n"
                   "name=$(echo \"$1\" | tr / _)\n"
                   "case \"$2\" in\n"
                   "  download) code=\"code${name}_${3#src=}\";;\n"
                   "  *) code=\"code${name}\"; [ -f \"rep${name}\" ] && cat \"rep${name}\";;\n"
                   "esac\n"
                   "[ -f \"$code\" ] && exit $(cat \"$code\")\n"
                   "exit 0\n");
        std::filesystem::permissions("storcli64.exe", std::filesystem::perms::owner_all);
    }

    static void write_tool_controller(std::uint32_t index,
                                      const std::vector<std::pair<std::string, std::string>>& rows)
    {
        const std::string i = std::to_string(index);
        write_file("rep_c" + i, report_of_controller(index));
        write_file("rep_c" + i + "_eall", enclosure_report(rows));
    }

    static std::int32_t run(std::string& console)
    {
        testing::internal::CaptureStdout();
        const std::int32_t result = ProcessStorcliAdapters();
        console = testing::internal::GetCapturedStdout();
        return result;
    }

    // The console of a run: the found line, each expander's lines behind a
    // blank line and dashes, the closing dashes and blank line, the ending.
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
    write_file("show_0_log", "SubVendor Id = 0x1f3a\n");
    write_file("show_eall_0_log", enclosure_report({{"2", "1.0"}}));
    write_file("show_1_log", "SubVendor Id = 0x1F3A0\n");
    std::string console;
    EXPECT_EQ(run(console), 171);
    EXPECT_EQ(console, "");
    EXPECT_TRUE(Adapters.empty());
    EXPECT_TRUE(log_has_run({"**********Process Begin ******* "}));
    EXPECT_FALSE(log_has_run({"**********Process End ******* "}));
    EXPECT_TRUE(log_has_run({"Exec Command = .\\storcli64.exe /c0 show  >show_0_log 2>&1"}));
    EXPECT_TRUE(log_has_run({"Exec Command = .\\storcli64.exe /c2 show  >show_2_log 2>&1"}));
    EXPECT_FALSE(
        log_has_run({"Exec Command = .\\storcli64.exe /c0/eall show  >show_eall_0_log 2>&1"}));
    const std::string log = read_file("log.txt");
    EXPECT_NE(log.find("  SVID is not match Tarvex SVID, Not Supported adapter.["),
              std::string::npos);
}

TEST_F(StorcliRunLoopTest, AllUpToDateEndsInZeroNot163)
{
    Options.test = true;
    ADAPTER_COUNT = 1;
    write_controller(0, {{"2", "1.2.3"}, {"3", "1.3"}});
    std::string console;
    EXPECT_EQ(run(console), 0);
    EXPECT_EQ(console,
              console_of({shown("2", "1.2.3") + UP_TO_DATE, shown("3", "1.3") + UP_TO_DATE},
                         "All expanders' firmware are up-to-date.\n"));
    ASSERT_EQ(Adapters.size(), 1u);
    EXPECT_EQ(Adapters[0]->adapterType, ADAPTER_TYPE_HBA);
    EXPECT_TRUE(
        log_has_run({"Exec Command = .\\storcli64.exe /c0/eall show  >show_eall_0_log 2>&1"}));
    EXPECT_TRUE(log_has_run({"result = 0", "**********Process End ******* "}));
}

TEST_F(StorcliRunLoopTest, OneUpToDateAndOneWrittenIsASuccessWithThePowerCycleLine)
{
    Options.test = true;
    ADAPTER_COUNT = 2;
    write_controller(0, {{"2", "1.2.3"}});
    write_controller(1, {{"5", "1.0"}});
    std::string console;
    EXPECT_EQ(run(console), 0);
    EXPECT_EQ(
        console,
        console_of({shown("2", "1.2.3") + UP_TO_DATE, shown("5", "1.0") + WRITTEN},
                   "All expander(s) firmware download success.\n"
                   "System power cycle is required to activate the download firmware images\n"));
    EXPECT_EQ(Expanders[1]->adapterIndex, "1");
    EXPECT_EQ(Expanders[1]->adapter, Adapters[1]);
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
    reset_run_state();
    Options.test = true;
    write_file("profile.txt", "ABC36X,aux,1.2.3,fw.rom,aux,psoc.rom,E,2,0\nshort\n");
    Options.profile_file = "profile.txt";
    ADAPTER_COUNT = 1;
    EXPECT_EQ(run(console), 0);
    EXPECT_EQ(console,
              "Invalid support file format.\nProfile information is not supported.\n" +
                  console_of({shown("2", "1.0") + WRITTEN},
                             "All expander(s) firmware download success.\n"
                             "System power cycle is required to activate the download "
                             "firmware images\n"));
}

TEST_F(StorcliRunLoopTest, AtMostAThousandControllersAreServed)
{
    Options.test = true;
    ADAPTER_COUNT = 1000;
    std::string console;
    EXPECT_EQ(run(console), 171);
    EXPECT_TRUE(log_has_run({"Exec Command = .\\storcli64.exe /c999 show  >show_999_log 2>&1"}));
    EXPECT_FALSE(
        log_has_run({"Controller count above 1000, controllers from 1000 on are not served"}));

    std::filesystem::remove("log.txt");
    ADAPTER_COUNT = 4294967295u;
    write_controller(999, {{"2", "1.2.3"}});
    EXPECT_EQ(run(console), 0);
    EXPECT_TRUE(
        log_has_run({"Controller count above 1000, controllers from 1000 on are not served"}));
    EXPECT_TRUE(
        log_has_run({"Exec Command = .\\storcli64.exe /c999/eall show  >show_eall_999_log 2>&1"}));
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
    write_tool_controller(0, {{"2", "1.0"}, {"3", "1.0"}});
    write_file("code_c0_e2_fw.rom", "5");
    write_file("code_c0_e3_fw.rom", "9");
    std::string console;
    EXPECT_EQ(run(console), 9);
    EXPECT_EQ(console,
              console_of({shown("2", "1.0") + MAIN_FAILED, shown("3", "1.0") + MAIN_FAILED},
                         "2 expander(s) firmware download fail.\n"));
    EXPECT_TRUE(log_has_run({"result = 9", "**********Process End ******* "}));

    // The last expander up to date leaves 163.
    reset_run_state();
    Options.profile_file = "profile.txt";
    ADAPTER_COUNT = 1;
    write_tool_controller(0, {{"2", "1.0"}, {"3", "1.2.3"}});
    EXPECT_EQ(run(console), 163);
    EXPECT_EQ(console,
              console_of({shown("2", "1.0") + MAIN_FAILED, shown("3", "1.2.3") + UP_TO_DATE},
                         "1 expander(s) firmware download fail.\n"));
}

TEST_F(StorcliRunLoopTest, FailedAndWrittenExpandersGiveOneAndBothCounts)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_tool();
    ADAPTER_COUNT = 1;
    // A written main image with a failed PSoC image counts as failed.
    write_tool_controller(0, {{"2", "1.0"}, {"3", "1.0"}, {"4", "1.0"}});
    write_file("code_c0_e2_psoc.rom", "4");
    write_file("code_c0_e3_fw.rom", "6");
    std::string console;
    EXPECT_EQ(run(console), 1);
    EXPECT_EQ(console,
              console_of({shown("2", "1.0") + PSOC_FAILED, shown("3", "1.0") + MAIN_FAILED,
                          shown("4", "1.0") + WRITTEN},
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
    write_tool_controller(0, {{"2", "1.0"}});
    write_file("code_c0_eall", "2");
    write_tool_controller(1, {{"3", "1.0"}});
    write_file("code_c1", "255");
    write_tool_controller(2, {{"4", "1.0"}});
    std::string console;
    EXPECT_EQ(run(console), 0);
    EXPECT_EQ(
        console,
        console_of({shown("4", "1.0") + WRITTEN},
                   "All expander(s) firmware download success.\n"
                   "System power cycle is required to activate the download firmware images\n"));
    ASSERT_EQ(Adapters.size(), 1u);
    EXPECT_EQ(Adapters[0]->adapterIndex, "2");
    const std::string log = read_file("log.txt");
    EXPECT_NE(log.find("Exec result = 2\n"), std::string::npos);
    EXPECT_NE(log.find("  get controller info fail["), std::string::npos);
    EXPECT_NE(log.find("Exec result = 255\n"), std::string::npos);
    EXPECT_NE(log.find("get controller info fail", log.find("Exec result = 255\n")),
              std::string::npos);
}
