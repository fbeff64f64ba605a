#include "run/command_line.h"

#include "run/run_state.h"
#include "test_support.h"

#include <initializer_list>

namespace {

// parseArgs over the given arguments, element 0 being the program's name.
std::int32_t parse(std::initializer_list<const char*> arguments)
{
    std::vector<std::string> texts{"sasfwctl.exe"};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& text : texts)
        argv.push_back(&text[0]);
    return parseArgs(static_cast<int>(argv.size()), argv.data(), Options);
}

}  // namespace

class CommandLineTest : public ScratchTest {};

TEST_F(CommandLineTest, NoArgumentsFailsWithOnlyTheBeginMark)
{
    EXPECT_EQ(parse({}), 1);
    EXPECT_EQ(log_lines(), std::vector<std::string>{"**********parseArgs Begin ******* "});
}

TEST_F(CommandLineTest, EverySwitchSetsItsTarget)
{
    EXPECT_EQ(parse({"-d", "-32i", "-36i", "-V", "-T", "-f", "-l", "run.log", "-p", "p.txt",
                     "-s", "5x", "--psoc", "2", "--FA"}),
              0);
    EXPECT_EQ(Options.debug, 1);
    EXPECT_EQ(Options.verbose, 1);
    EXPECT_TRUE(Options.test);
    EXPECT_TRUE(Options.force);
    EXPECT_EQ(Options.log_file, "run.log");
    EXPECT_EQ(Options.profile_file, "p.txt");
    EXPECT_EQ(WAIT_SECONDS, 5u);
    EXPECT_TRUE(PSOC_UPDATE_FLAG);
    EXPECT_TRUE(FORCE_ACTIVATE_FLAG);
    EXPECT_EQ(log_lines(), (std::vector<std::string>{
                               "**********parseArgs Begin ******* ",
                               "param, wait seconds:%d = 5",
                               "psoc update:%d = 1",
                               "set FORCE_ACTIVATE_FLAG: %d = 1",
                               "force = 1",
                           }));
}

TEST_F(CommandLineTest, ValuesAreTakenAsTheyComeAndUnknownWordsSkipped)
{
    EXPECT_EQ(parse({"-p", "-T"}), 0);
    EXPECT_EQ(Options.profile_file, "-T");
    EXPECT_FALSE(Options.test);

    reset_run_state();
    EXPECT_EQ(parse({"-x", "5", "-p", "a", "b", "-P", "-ps", "-p", "c"}), 0);
    EXPECT_EQ(Options.profile_file, "c");

    reset_run_state();
    EXPECT_EQ(parse({"what", "ever"}), 0);
    EXPECT_EQ(Options.profile_file, "");
}

TEST_F(CommandLineTest, ASwitchWithoutItsValue)
{
    EXPECT_EQ(parse({"-f", "-p"}), 1);
    EXPECT_EQ(log_lines().back(), "force = 1");
    EXPECT_TRUE(log_has_run({"Profile name paramters are lost", "force = 1"}));

    reset_run_state();
    EXPECT_EQ(parse({"-l"}), 1);
    EXPECT_TRUE(log_has_run({"Log file name paramters are lost", "force = 0"}));

    // "-s" and "--psoc" without a value are no failure and set nothing.
    reset_run_state();
    EXPECT_EQ(parse({"-s"}), 0);
    EXPECT_EQ(parse({"--psoc"}), 0);
    EXPECT_EQ(WAIT_SECONDS, 0u);
    EXPECT_FALSE(PSOC_UPDATE_FLAG);
}

TEST_F(CommandLineTest, NumbersReadLikeAtoi)
{
    parse({"-s", "abc", "--psoc", "abc"});
    EXPECT_EQ(WAIT_SECONDS, 0u);
    EXPECT_FALSE(PSOC_UPDATE_FLAG);
    parse({"--psoc", "1", "--psoc", "0"});
    EXPECT_FALSE(PSOC_UPDATE_FLAG);
    parse({"--psoc", "-3"});
    EXPECT_TRUE(PSOC_UPDATE_FLAG);
    EXPECT_TRUE(log_has_run({"param, wait seconds:%d = 0", "psoc update:%d = 0"}));
}

TEST_F(CommandLineTest, WaitSecondsUpToTheBoundAreKeptBeyondItNoWait)
{
    parse({"-s", "4294967"});
    EXPECT_EQ(WAIT_SECONDS, 4294967u);
    for (const char* out_of_range : {"4294968", "99999999999", "-1"}) {
        WAIT_SECONDS = 9;
        parse({"-s", out_of_range});
        EXPECT_EQ(WAIT_SECONDS, 0u) << out_of_range;
    }
    EXPECT_TRUE(log_has_run({"wait seconds out of range, no wait", "param, wait seconds:%d = 0"}));
}

TEST(CommandLineTextTest, BannerAndUsage)
{
    testing::internal::CaptureStdout();
    show_banner();
    show_usage();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\n"
              "***************************************\n"
              " Tarvex Expander Firmware Update Utilty\n"
              " Version:2.3[April 6th, 2022]\n"
              "***************************************\n"
              "\n"
              "Usage:\n"
              "sasfwctl.exe -p profile.txt [-32i] [-36i] [ -l logfile]\n");
}
