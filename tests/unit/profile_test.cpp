#include "profile/SupportProfile.h"

#include "run/run_state.h"
#include "test_support.h"

namespace {

// read_profiles with its console text.
std::int32_t read_with_console(const std::string& path, std::string& console)
{
    testing::internal::CaptureStdout();
    const std::int32_t result = read_profiles(path);
    console = testing::internal::GetCapturedStdout();
    return result;
}

}  // namespace

class ProfileTest : public ScratchTest {};

TEST_F(ProfileTest, ReadsRowsInFileOrderWithTheirColumnTreatment)
{
    write_file("profile.txt",
               "ABC36X,aux,1.2.3,fw.rom,aux,psoc.rom,E,2,0\r\n"
               "\r\n"
               " \t \r\n"
               "XYZ, a1 ,2.0, fw two.rom ,a4, p.rom , 5 , 3 , 12abc ,extra,more\r\n"
               "ABC36X,dup,9,f,a,p,E,2,-1");
    std::string console;
    ASSERT_EQ(read_with_console("profile.txt", console), 0);
    EXPECT_EQ(console, "");
    ASSERT_EQ(Profiles.size(), 3u);

    const SupportProfile& first = Profiles[0];
    EXPECT_EQ(first.productId, "ABC36X");
    EXPECT_EQ(first.targetVersion, "1.2.3");
    EXPECT_EQ(first.fwImage, "fw.rom");
    EXPECT_EQ(first.psocImage, "psoc.rom");
    EXPECT_EQ(first.mode, "E");
    EXPECT_EQ(first.bufferID, "2");
    EXPECT_EQ(first.fwLocation, 0u);

    // Columns 0 to 5 keep their blanks; 6 to 8 are trimmed.
    const SupportProfile& second = Profiles[1];
    EXPECT_EQ(second.auxField1, " a1 ");
    EXPECT_EQ(second.fwImage, " fw two.rom ");
    EXPECT_EQ(second.psocImage, " p.rom ");
    EXPECT_EQ(second.mode, "5");
    EXPECT_EQ(second.bufferID, "3");
    EXPECT_EQ(second.fwLocation, 12u);

    EXPECT_EQ(Profiles[2].auxField1, "dup");
    EXPECT_EQ(Profiles[2].fwLocation, 4294967295u);

    EXPECT_TRUE(log_has_run({"mode =  5 ", "bufferID, =  3 ", "FW Location, = 12"}));
    EXPECT_TRUE(log_has_run({"profiles number: = 3", "**********read_profiles End ******* "}));
}

TEST_F(ProfileTest, EightFieldsMakeARowAtLocationZeroAndAnEmptyProductMatchesAnything)
{
    write_file("profile.txt", ",a,1.0,f,a,p,E,2\nP,a,1.0,f,a,p,E,2,\n");
    std::string console;
    ASSERT_EQ(read_with_console("profile.txt", console), 0);
    ASSERT_EQ(Profiles.size(), 2u);
    EXPECT_EQ(Profiles[0].productId, "");
    EXPECT_EQ(Profiles[0].fwLocation, 0u);
    EXPECT_EQ(Profiles[1].fwLocation, 0u);
}

TEST_F(ProfileTest, AShortLineStopsTheReadingBehindGoodRows)
{
    write_file("profile.txt", "A,a,1,f,a,p,E,2,0\n# a comment,is a row\nB,a,1,f,a,p,E,2,0\n");
    std::string console;
    EXPECT_EQ(read_with_console("profile.txt", console), 161);
    EXPECT_EQ(console, "Invalid support file format.\n");
    ASSERT_EQ(Profiles.size(), 1u);
    EXPECT_TRUE(log_has_run({"profiles number: = 1", "**********read_profiles End ******* "}));

    // A second reading appends the same row again, and the code repeats.
    EXPECT_EQ(read_with_console("profile.txt", console), 161);
    EXPECT_EQ(Profiles.size(), 2u);
}

TEST_F(ProfileTest, NoRowAtAllIs162AndAShortFirstLineSaysSoTwice)
{
    write_file("blank.txt", "\n  \n\t\n");
    std::string console;
    EXPECT_EQ(read_with_console("blank.txt", console), 162);
    EXPECT_EQ(console, "Invalid support file format.\n");

    write_file("short.txt", "A,a,1,f,a,p,E\nB,a,1,f,a,p,E,2,0\n");
    EXPECT_EQ(read_with_console("short.txt", console), 162);
    EXPECT_EQ(console, "Invalid support file format.\nInvalid support file format.\n");
    EXPECT_TRUE(Profiles.empty());
    const std::vector<std::string> log = log_lines();
    EXPECT_EQ(log.back(), "profiles number: = 0");
}

TEST_F(ProfileTest, AnUnopenableFileIs174WithItsPath)
{
    std::string console;
    EXPECT_EQ(read_with_console("missing.txt", console), 174);
    EXPECT_EQ(console, "ERROR: Could not open profile file missing.txt!\n");
    EXPECT_EQ(read_with_console("", console), 174);
    EXPECT_EQ(console, "ERROR: Could not open profile file !\n");
    EXPECT_EQ(log_lines(), (std::vector<std::string>(2, "**********read_profiles Begin ******* ")));
}

TEST_F(ProfileTest, VerboseLogsEachRawLine)
{
    Options.verbose = 1;
    write_file("profile.txt", " A,a,1,f,a,p,E,2,0 \r\n\n");
    std::string console;
    ASSERT_EQ(read_with_console("profile.txt", console), 0);
    EXPECT_TRUE(log_has_run({"lineStr: =  A,a,1,f,a,p,E,2,0 ", "mode = E"}));
    EXPECT_TRUE(log_has_run({"lineStr: = ", "profiles number: = 1"}));
}

TEST_F(ProfileTest, BinaryBytesAndHugeInputsAreRowsOrFailuresNeverCrashes)
{
    std::string binary;
    for (int i = 0; i < 4096; ++i)
        binary.push_back(static_cast<char>(i * 37));
    write_file("binary.txt", binary);
    std::string console;
    const std::int32_t result = read_with_console("binary.txt", console);
    EXPECT_TRUE(result == 161 || result == 162) << result;

    std::string many;
    for (int i = 0; i < 20000; ++i)
        many += "P" + std::to_string(i) + ",a,1.0,f,a,p,E,2,1\n";
    many += std::string(1 << 20, 'x') + ",a,1,f,a,p,E,2,0\n";
    write_file("many.txt", many);
    Profiles.clear();
    EXPECT_EQ(read_with_console("many.txt", console), 0);
    EXPECT_EQ(Profiles.size(), 20001u);
    EXPECT_EQ(Profiles.back().productId.size(), 1u << 20);
}
