#include "storcli/download_command.h"

#include "run/run_state.h"
#include "test_support.h"

class StorcliDownloadCommandTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        adapter_.adapterType = ADAPTER_TYPE_HBA;
        profile_ = {"ABC36X", "", "1.2.3", "fw.rom", "", "psoc.rom", "E", "2", 0};
        expander_.adapterIndex = "0";
        expander_.enclosureId = "2";
        expander_.adapter = &adapter_;
        expander_.profile = &profile_;
    }

    // The text behind the common head, which is checked on the way.
    std::string tail(std::int32_t psoc_image, std::int32_t retry_form) const
    {
        const std::string head = ".\\storcli64.exe  /c0/e2 download src=";
        const std::string command = build_download_command(expander_, psoc_image, retry_form);
        EXPECT_EQ(command.substr(0, head.size()), head);
        return command.substr(head.size());
    }

    StorcliAdapter adapter_;
    SupportProfile profile_;
    StorcliExpander expander_;
};

TEST_F(StorcliDownloadCommandTest, TheThreeCommandsOfAnUpdateBehindAnHba)
{
    FORCE_ACTIVATE_FLAG = true;
    EXPECT_EQ(build_download_command(expander_, 0, 0),
              ".\\storcli64.exe  /c0/e2 download src=fw.rom mode=E offline bufferid=0");
    EXPECT_EQ(
        build_download_command(expander_, 1, 0),
        ".\\storcli64.exe  /c0/e2 download src=psoc.rom mode=E offline forceActivate bufferid=2");
    EXPECT_EQ(build_download_command(expander_, 1, 1),
              ".\\storcli64.exe  /c0/e2 download src=psoc.rom forceActivate mode=5 bufferid=2");
}

TEST_F(StorcliDownloadCommandTest, TheMainImageDependsOnTheAdapterTypeAlone)
{
    profile_.mode = "5";
    profile_.bufferID = "7";
    FORCE_ACTIVATE_FLAG = true;
    EXPECT_EQ(tail(0, 1), "fw.rom mode=E offline bufferid=0");
    // The HBA note leaves its log line open.
    EXPECT_EQ(read_file("log.txt").substr(21), "  HBA adapter, add mode E");

    std::filesystem::remove("log.txt");
    for (const std::int32_t type : {ADAPTER_TYPE_RAID, 0}) {
        adapter_.adapterType = type;
        EXPECT_EQ(tail(0, 0), "fw.rom");
    }
    EXPECT_FALSE(std::filesystem::exists("log.txt"));
}

TEST_F(StorcliDownloadCommandTest, ThePsocFormsByModeAndForceActivation)
{
    profile_.mode = "5";
    EXPECT_EQ(tail(1, 0), "psoc.rom forceActivate mode=5 bufferid=2");
    EXPECT_EQ(tail(1, 1), "psoc.rom mode=E offline bufferid=2");
    FORCE_ACTIVATE_FLAG = true;
    EXPECT_EQ(tail(1, 0), "psoc.rom forceActivate mode=5 bufferid=2");
    EXPECT_EQ(tail(1, 1), "psoc.rom mode=E offline forceActivate bufferid=2");

    // Any other mode goes in as it is, and its retry is the mode 5 form;
    // any non-zero flag counts.
    FORCE_ACTIVATE_FLAG = false;
    for (const char* mode : {"E", "e", "", "05"}) {
        profile_.mode = mode;
        EXPECT_EQ(tail(1, 0), "psoc.rom mode=" + std::string(mode) + " offline bufferid=2");
        EXPECT_EQ(tail(7, -1), "psoc.rom forceActivate mode=5 bufferid=2");
    }
}

TEST_F(StorcliDownloadCommandTest, ProfileTextsGoInUnquotedAndUnchecked)
{
    adapter_.adapterType = ADAPTER_TYPE_RAID;
    profile_.fwImage = " fw two.rom";
    profile_.psocImage = "";
    profile_.bufferID = "";
    expander_.adapterIndex = "999";
    expander_.enclosureId = "";
    EXPECT_EQ(build_download_command(expander_, 0, 0),
              ".\\storcli64.exe  /c999/e download src= fw two.rom");
    EXPECT_EQ(build_download_command(expander_, 1, 0),
              ".\\storcli64.exe  /c999/e download src= mode=E offline bufferid=");
}
