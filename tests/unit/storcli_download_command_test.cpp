#include "storcli/download_command.h"

#include "run/run_state.h"
#include "test_support.h"

class StorcliDownloadCommandTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        adapter_.adapterIndex = "0";
        adapter_.adapterType = ADAPTER_TYPE_HBA;
        profile_.fwImage = "fw.rom";
        profile_.psocImage = "psoc.rom";
        profile_.mode = "E";
        profile_.bufferID = "2";
        expander_.adapterIndex = "0";
        expander_.enclosureId = "2";
        expander_.adapter = &adapter_;
        expander_.profile = &profile_;
    }

    std::string main_image() const { return build_download_command(expander_, 0, 0); }
    std::string psoc_first() const { return build_download_command(expander_, 1, 0); }
    std::string psoc_retry() const { return build_download_command(expander_, 1, 1); }

    static constexpr const char* HEAD = ".\\storcli64.exe  /c0/e2 download src=";

    StorcliAdapter adapter_;
    SupportProfile profile_;
    StorcliExpander expander_;
};

TEST_F(StorcliDownloadCommandTest, TheThreeCommandsOfAnUpdateBehindAnHba)
{
    FORCE_ACTIVATE_FLAG = true;
    EXPECT_EQ(main_image(),
              ".\\storcli64.exe  /c0/e2 download src=fw.rom mode=E offline bufferid=0");
    EXPECT_EQ(
        psoc_first(),
        ".\\storcli64.exe  /c0/e2 download src=psoc.rom mode=E offline forceActivate bufferid=2");
    EXPECT_EQ(psoc_retry(),
              ".\\storcli64.exe  /c0/e2 download src=psoc.rom forceActivate mode=5 bufferid=2");
}

TEST_F(StorcliDownloadCommandTest, TheMainImageDependsOnTheAdapterTypeAlone)
{
    profile_.mode = "5";
    profile_.bufferID = "7";
    FORCE_ACTIVATE_FLAG = true;
    EXPECT_EQ(build_download_command(expander_, 0, 1),
              std::string(HEAD) + "fw.rom mode=E offline bufferid=0");
    // The HBA note leaves its log line open.
    EXPECT_EQ(read_file("log.txt").substr(21), "  HBA adapter, add mode E");

    std::filesystem::remove("log.txt");
    for (const std::int32_t type : {ADAPTER_TYPE_RAID, 0}) {
        adapter_.adapterType = type;
        EXPECT_EQ(main_image(), std::string(HEAD) + "fw.rom");
    }
    EXPECT_FALSE(std::filesystem::exists("log.txt"));
}

TEST_F(StorcliDownloadCommandTest, ModeFiveActivatesFirstAndRetriesWithModeE)
{
    profile_.mode = "5";
    profile_.bufferID = "3";
    EXPECT_EQ(psoc_first(), std::string(HEAD) + "psoc.rom forceActivate mode=5 bufferid=3");
    EXPECT_EQ(psoc_retry(), std::string(HEAD) + "psoc.rom mode=E offline bufferid=3");
    FORCE_ACTIVATE_FLAG = true;
    EXPECT_EQ(psoc_first(), std::string(HEAD) + "psoc.rom forceActivate mode=5 bufferid=3");
    EXPECT_EQ(psoc_retry(), std::string(HEAD) + "psoc.rom mode=E offline forceActivate bufferid=3");
}

TEST_F(StorcliDownloadCommandTest, AnyOtherModeGoesInAsItIsAndRetriesWithModeFive)
{
    for (const char* mode : {"E", "e", "", "05"}) {
        profile_.mode = mode;
        EXPECT_EQ(psoc_first(),
                  std::string(HEAD) + "psoc.rom mode=" + mode + " offline bufferid=2");
        EXPECT_EQ(psoc_retry(), std::string(HEAD) + "psoc.rom forceActivate mode=5 bufferid=2");
    }
    // Any non-zero flag counts.
    EXPECT_EQ(build_download_command(expander_, 7, -1), psoc_retry());
}

TEST_F(StorcliDownloadCommandTest, ProfileTextsGoInUnquotedAndUnchecked)
{
    adapter_.adapterType = ADAPTER_TYPE_RAID;
    profile_.fwImage = " fw two.rom";
    profile_.psocImage = "";
    profile_.bufferID = "";
    expander_.adapterIndex = "999";
    expander_.enclosureId = "";
    EXPECT_EQ(main_image(), ".\\storcli64.exe  /c999/e download src= fw two.rom");
    EXPECT_EQ(psoc_first(), ".\\storcli64.exe  /c999/e download src= mode=E offline bufferid=");
}
