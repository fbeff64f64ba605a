#include "diagnostics/log.h"

#include "test_support.h"

#include <regex>

class LogTest : public ScratchTest {};

TEST_F(LogTest, LineShapesAndValueForms)
{
    write_file("log.txt", "earlier run\n");
    logBegin("parseArgs");
    logEnd("flash");
    logValue("signed", std::int32_t{-1});
    logValue("unsigned", static_cast<std::uint32_t>(-1));
    logValue("size", std::uint64_t{18446744073709551615u});
    logValue("psoc update:%d", true);
    logValue("text", std::string("a\nb"));
    logValue("literal", "x");
    logMessage("No any adapters found.");
    EXPECT_EQ(log_lines(), (std::vector<std::string>{
                               "earlier run",
                               "**********parseArgs Begin ******* ",
                               "**********flash End ******* ",
                               "signed = -1",
                               "unsigned = 4294967295",
                               "size = 18446744073709551615",
                               "psoc update:%d = 1",
                               "text = a",
                               "b",
                               "literal = x",
                               "No any adapters found.",
                           }));
}

TEST_F(LogTest, TimestampIsLocalTimeInBracketsEndingInABlank)
{
    const std::regex shape(R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\] )");
    EXPECT_TRUE(std::regex_match(logTimestamp(), shape)) << logTimestamp();
}

TEST_F(LogTest, PrintfLeavesTheLineOpenForTheNextLine)
{
    logPrintf("get controller info fail");
    logValue("Exec result", std::int32_t{0});
    const std::string log = read_file("log.txt");
    const std::regex shape(R"(\[[^\]]+\]  get controller info fail\[[^\]]+\] Exec result = 0\r?\n)");
    EXPECT_TRUE(std::regex_match(log, shape)) << log;
}

// The lines before the first decision are a matter of the whole process,
// and are checked by running the program.
TEST_F(LogTest, ACopyGetsEveryLineByteForByte)
{
    logAlsoTo("run.log");
    logBegin("parseArgs");
    logPrintf("open ");
    logMessage("after");
    EXPECT_EQ(read_file("run.log"), read_file("log.txt"));
    std::filesystem::remove("run.log");
    logAlsoTo("");
    logMessage("not copied");
    EXPECT_FALSE(std::filesystem::exists("run.log"));
}

TEST_F(LogTest, ACopyOntoTheLogItselfWritesEachLineOnce)
{
    logMessage("one");
    logAlsoTo("./log.txt");
    logMessage("two");
    logAlsoTo("");
    EXPECT_EQ(log_lines(), (std::vector<std::string>{"one", "two"}));
}

TEST_F(LogTest, AnUnwritableLogIsNoFailure)
{
    std::filesystem::create_directory("log.txt");
    logBegin("x");
    logPrintf("y");
    logAlsoTo("no/such/dir/run.log");
    logMessage("z");
    EXPECT_TRUE(std::filesystem::is_directory("log.txt"));
}
