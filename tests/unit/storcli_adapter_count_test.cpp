#include "storcli/adapter_count.h"

#include "test_support.h"

#include <cstdlib>

class StorcliAdapterCountTest : public ScratchTest {
protected:
    // The count of a prepared report, read under -T.
    static std::uint32_t count_of(const std::string& report)
    {
        write_file("ctrlcount.rst", report);
        return getAdapterCount(true, 0);
    }
};

TEST_F(StorcliAdapterCountTest, FindsTheFirstCountBehindTheExactKey)
{
    EXPECT_EQ(
        count_of("Status = Success  \r\n  Controller Count = 2   \r\nController Count = 5\r\n"),
        2u);
    EXPECT_EQ(count_of("Controller Count = 007"), 7u);
    EXPECT_EQ(count_of("Controller Count = 4294967295\n"), 4294967295u);
    // Without the blank behind "=", or with only blanks there, the key is
    // not in the line and the search goes on.
    EXPECT_EQ(count_of("Controller Count =2\nController Count =    \nController Count = 4\n"), 4u);
    EXPECT_EQ(count_of("controller count = 2\n"), 0u);

    std::filesystem::remove("log.txt");
    EXPECT_EQ(count_of("Controller Count = 0\n"), 0u);
    EXPECT_TRUE(log_has_run({"**********getAdapterCount Begin ******* ",
                             "command = .\\storcli64.exe  show ctrlcount  >ctrlcount.rst",
                             "Count return code = 0", "found = 1",
                             "**********getAdapterCount End ******* "}));
}

TEST_F(StorcliAdapterCountTest, EveryFailureGivesZero)
{
    // A character that is no digit ends the function without closing lines.
    for (const char* value : {"2x", "-1", "1 2", "2\t", "+3", "\xB2"}) {
        std::filesystem::remove("log.txt");
        EXPECT_EQ(count_of(std::string("Controller Count = ") + value), 0u) << value;
        EXPECT_TRUE(log_has_run({"Count return code = 0"}));
        EXPECT_FALSE(log_has_run({"found = 0"})) << value;
        EXPECT_FALSE(log_has_run({"**********getAdapterCount End ******* "})) << value;
    }

    for (const std::string& digits : {std::string("4294967296"), std::string(1 << 20, '9')}) {
        std::filesystem::remove("log.txt");
        EXPECT_EQ(count_of("Controller Count = " + digits), 0u);
        EXPECT_TRUE(log_has_run({"Controller count out of range", "found = 0",
                                 "**********getAdapterCount End ******* "}));
    }

    std::filesystem::remove("ctrlcount.rst");
    std::filesystem::remove("log.txt");
    EXPECT_EQ(getAdapterCount(true, 0), 0u);
    EXPECT_TRUE(log_has_run({"found = 0", "**********getAdapterCount End ******* "}));

    // No tool in the working directory: the shell fails.
    std::filesystem::remove("log.txt");
    EXPECT_EQ(getAdapterCount(false, 0), 0u);
    EXPECT_FALSE(log_has_run({"Count return code = 0", "found = 0"}));
}

TEST_F(StorcliAdapterCountTest, DebugTracesEveryStepOnTheConsole)
{
    write_file("ctrlcount.rst", "x\r\n Controller Count = 12 \r\n");
    testing::internal::CaptureStdout();
    EXPECT_EQ(getAdapterCount(true, 1), 12u);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "count.out line::x\n"
              "remove spaces, string=**x**,size=1;length=1\n"
              "remove spaces, string=**x**,size=1;length=1\n"
              "sPtr=18446744073709551615\n"
              "count.out line:: Controller Count = 12 \n"
              "remove spaces, string=** Controller Count = 12 **,size=23;length=23\n"
              "remove spaces, string=**Controller Count = 12**,size=21;length=21\n"
              "sPtr=0\n"
              "found count string, sPtr=19\n"
              "remove spaces, string=**12**,size=2;length=2\n"
              "remove spaces, string=**12**,size=2;length=2\n"
              "numStr:12;length:2\n"
              "Controller count has digital char:1\n"
              "Controller count has digital char:2\n");

    write_file("ctrlcount.rst", "Controller Count = 1x2");
    testing::internal::CaptureStdout();
    EXPECT_EQ(getAdapterCount(true, 1), 0u);
    const std::string console = testing::internal::GetCapturedStdout();
    const std::string tail = "numStr:1x2;length:3\n"
                             "Controller count has digital char:1\n"
                             "Controller count has non-digital char:x\n";
    ASSERT_GE(console.size(), tail.size());
    EXPECT_EQ(console.substr(console.size() - tail.size()), tail);
}

TEST_F(StorcliAdapterCountTest, RunsTheToolUnlessHeldBackAndTrustsOnlyAZeroStatus)
{
    // Under Wine "/bin/sh" exists too, but commands go to cmd.exe.
    if (std::getenv("COMSPEC") != nullptr || !std::filesystem::exists("/bin/sh"))
        GTEST_SKIP() << "needs a POSIX shell";
    write_file("storcli64.exe",
               "#!/bin/sh\necho \"$@\" > args.txt\n"
               "echo 'Controller Count = 3'\nexit $(cat code.txt)\n");
    std::filesystem::permissions("storcli64.exe", std::filesystem::perms::owner_all);
    write_file("code.txt", "0");
    EXPECT_EQ(getAdapterCount(false, 0), 3u);
    EXPECT_EQ(read_file("args.txt"), "show ctrlcount\n");

    // Held back, the tool does not run and the prepared report stands.
    std::filesystem::remove("args.txt");
    EXPECT_EQ(count_of("Controller Count = 2\n"), 2u);
    EXPECT_FALSE(std::filesystem::exists("args.txt"));

    // A failing tool's report is not read, even though it holds a count.
    for (const char* code : {"1", "255"}) {
        std::filesystem::remove("log.txt");
        write_file("code.txt", code);
        EXPECT_EQ(getAdapterCount(false, 0), 0u) << code;
        EXPECT_TRUE(log_has_run({std::string("Count return code = ") + code, "found = 0"}));
    }
}
