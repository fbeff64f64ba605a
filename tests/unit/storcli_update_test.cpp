#include "storcli/update.h"

#include "run/run_state.h"
#include "test_support.h"

#include <chrono>
#include <cstdlib>

namespace {

// Under Wine "/bin/sh" exists too, but commands go to the Windows command
// processor, which COMSPEC names.
bool has_posix_shell()
{
    return std::getenv("COMSPEC") == nullptr && std::filesystem::exists("/bin/sh");
}

const std::string SHOWN = "Product ID: ABC36X\n"
                          "EID:        2\n"
                          "Installed Version:1.0\n"
                          "Target Version:   1.2.3\n";
const std::string MAIN_START = "Start to download firmware image, please wait....\n";
const std::string PSOC_START = "Start to download PSoc firmware image, please wait...\n";
const std::string SUCCESS = "Image download success.\n";
const std::string FAIL = "Image download fail.\n";

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
        profile_.productId = "ABC36X";
        profile_.targetVersion = "1.2.3";
        profile_.fwImage = "fw.rom";
        profile_.psocImage = "psoc.rom";
        profile_.mode = "E";
        profile_.bufferID = "2";
        expander_.productId = "ABC36X";
        expander_.adapterIndex = "0";
        expander_.enclosureId = "2";
        expander_.installedVersion = "1.0";
        expander_.adapter = &adapter_;
        expander_.profile = &profile_;
    }

    std::int32_t update_with_console(std::string& console)
    {
        testing::internal::CaptureStdout();
        const std::int32_t result = update(expander_);
        console = testing::internal::GetCapturedStdout();
        return result;
    }

    // A storcli64.exe that records its arguments, prints them into its output
    // file, and exits with the status held in main.code, first.code or
    // retry.code, by the image and form that it is asked for.
    static void write_tool(const std::string& main_code, const std::string& first_code,
                           const std::string& retry_code)
    {
        write_file("storcli64.exe",
                   "#!/bin/sh\n"
                   "echo \"$*\" >> calls.txt\n"
                   "echo \"$*\"\n"
                   "case \"$*\" in\n"
                   "  *src=fw.rom*) exit $(cat main.code);;\n"
                   "  *'forceActivate mode=5'*) exit $(cat retry.code);;\n"
                   "  *) exit $(cat first.code);;\n"
                   "esac\n");
        std::filesystem::permissions("storcli64.exe", std::filesystem::perms::owner_all);
        write_file("main.code", main_code);
        write_file("first.code", first_code);
        write_file("retry.code", retry_code);
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
        EXPECT_EQ(console,
                  "Product ID: ABC36X\nEID:        2\nInstalled Version:" + std::string(installed) +
                      "\nTarget Version:   1.2.3\nFirmware version is up-to-date.\n");
        EXPECT_EQ(expander_.needDownload, 0u);
        EXPECT_EQ(expander_.flashState, FLASH_NOT_TRIED);
        EXPECT_TRUE(log_has_run({"**********update Begin ******* ", "force = 0",
                                 "**********compare_version Begin ******* "}));
        EXPECT_TRUE(log_has_run(
            {"**********compare_version End ******* ", "**********flash End ******* "}));
        EXPECT_FALSE(log_has_run({"need to download FW"}));
        EXPECT_FALSE(log_has_run({"installed: = " + std::string(installed)}));
    }
}

TEST_F(StorcliUpdateTest, HeldBackALowerVersionIsWrittenWithoutAnyFile)
{
    Options.test = true;
    std::string console;
    EXPECT_EQ(update_with_console(console), 0);
    EXPECT_EQ(console, SHOWN + MAIN_START + SUCCESS + PSOC_START + SUCCESS);
    EXPECT_EQ(expander_.needDownload, 1u);
    EXPECT_EQ(expander_.flashState, FLASH_WRITTEN);
    EXPECT_TRUE(log_has_run({"installed: = 1.0", "target: = 1.2.3", "need to download FW"}));
    EXPECT_TRUE(log_has_run({"Exec Command = .\\storcli64.exe  /c0/e2 download src=fw.rom mode=E "
                             "offline bufferid=0 >fw_download_log_0_2 2>&1"}));
    EXPECT_TRUE(log_has_run({"Exec Command = .\\storcli64.exe  /c0/e2 download src=psoc.rom mode=E "
                             "offline bufferid=2 >psoc_download_log_0_2_t0 2>&1",
                             "Exec result = 0", "**********exec_command End ******* ",
                             "**********flash End ******* "}));
    EXPECT_FALSE(std::filesystem::exists("fw_download_log_0_2"));
    EXPECT_FALSE(std::filesystem::exists("psoc_download_log_0_2_t0"));
}

TEST_F(StorcliUpdateTest, ForceWritesOverAnyVersionWithoutComparing)
{
    Options.test = true;
    Options.force = true;
    expander_.installedVersion = "9.9";
    std::string console;
    EXPECT_EQ(update_with_console(console), 0);
    EXPECT_EQ(expander_.flashState, FLASH_WRITTEN);
    EXPECT_TRUE(log_has_run({"**********update Begin ******* ", "force = 1", "installed: = 9.9",
                             "target: = 1.2.3", "need to download FW"}));
    EXPECT_FALSE(log_has_run({"**********compare_version Begin ******* "}));
}

TEST_F(StorcliUpdateTest, TheWaitFollowsAGoodMainImageOnly)
{
    Options.test = true;
    WAIT_SECONDS = 1;
    const auto start = std::chrono::steady_clock::now();
    std::string console;
    EXPECT_EQ(update_with_console(console), 0);
    EXPECT_GE(seconds_since(start), 1.0);
}

TEST_F(StorcliUpdateTest, AFailedMainImageStopsWithItsStatusAndNoWait)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_tool("7", "0", "0");
    WAIT_SECONDS = 1;
    const auto start = std::chrono::steady_clock::now();
    std::string console;
    EXPECT_EQ(update_with_console(console), 7);
    EXPECT_LT(seconds_since(start), 1.0);
    EXPECT_EQ(console, SHOWN + MAIN_START + FAIL);
    EXPECT_EQ(expander_.flashState, FLASH_MAIN_FAILED);
    EXPECT_EQ(read_file("calls.txt"), "/c0/e2 download src=fw.rom mode=E offline bufferid=0\n");
    EXPECT_EQ(read_file("fw_download_log_0_2"),
              "/c0/e2 download src=fw.rom mode=E offline bufferid=0\n");
    EXPECT_TRUE(log_has_run({"Exec result = 7", "**********exec_command End ******* ",
                             "Download fw image fail", "**********flash End ******* "}));
}

TEST_F(StorcliUpdateTest, TheSecondPsocFormRepairsAFailedFirstSilently)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_tool("0", "3", "0");
    std::string console;
    EXPECT_EQ(update_with_console(console), 0);
    EXPECT_EQ(console, SHOWN + MAIN_START + SUCCESS + PSOC_START + SUCCESS);
    EXPECT_EQ(expander_.flashState, FLASH_WRITTEN);
    EXPECT_EQ(read_file("calls.txt"),
              "/c0/e2 download src=fw.rom mode=E offline bufferid=0\n"
              "/c0/e2 download src=psoc.rom mode=E offline bufferid=2\n"
              "/c0/e2 download src=psoc.rom forceActivate mode=5 bufferid=2\n");
    EXPECT_EQ(read_file("psoc_download_log_0_2_t0"),
              "/c0/e2 download src=psoc.rom mode=E offline bufferid=2\n");
    EXPECT_EQ(read_file("psoc_download_log_0_2_t1"),
              "/c0/e2 download src=psoc.rom forceActivate mode=5 bufferid=2\n");
    EXPECT_FALSE(log_has_run({"Download fw image fail"}));
}

TEST_F(StorcliUpdateTest, BothPsocFormsFailingGiveTheSecondStatusAfterASecondWait)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_tool("0", "3", "255");
    WAIT_SECONDS = 1;
    const auto start = std::chrono::steady_clock::now();
    std::string console;
    EXPECT_EQ(update_with_console(console), 255);
    EXPECT_GE(seconds_since(start), 2.0);
    EXPECT_EQ(console, SHOWN + MAIN_START + SUCCESS + PSOC_START + FAIL);
    EXPECT_EQ(expander_.needDownload, 1u);
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
              "Firmware version is up-to-date.\n" + MAIN_START + PSOC_START + SUCCESS + FAIL);
}
