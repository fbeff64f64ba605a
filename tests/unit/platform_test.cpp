#include "platform/platform.h"

#include "test_support.h"

#include <cstdlib>

namespace {

std::vector<std::string> lines_of(const std::string& path, std::string& after_last)
{
    platform::TextFile file(path);
    std::vector<std::string> lines;
    std::string line;
    while (file.read_line(line))
        lines.push_back(line);
    after_last = line;
    return lines;
}

// Under Wine "/bin/sh" exists too, but commands go to the Windows command
// processor, which COMSPEC names.
bool has_posix_shell()
{
    return std::getenv("COMSPEC") == nullptr;
}

}  // namespace

class PlatformTest : public ScratchTest {};

TEST_F(PlatformTest, CrLfReadsLikeLfAndALoneCrStays)
{
    write_file("crlf", "a\r\nb \r\n\r\nc\rd\r\n");
    std::string after;
    EXPECT_EQ(lines_of("crlf", after), (std::vector<std::string>{"a", "b ", "", "c\rd"}));
}

TEST_F(PlatformTest, TheLastLineEndDecidesWhatAFailingReadLeaves)
{
    std::string after;
    write_file("ended", "x\nlast\n");
    EXPECT_EQ(lines_of("ended", after), (std::vector<std::string>{"x", "last"}));
    EXPECT_EQ(after, "");

    write_file("unended", "x\r\nlast");
    EXPECT_EQ(lines_of("unended", after), (std::vector<std::string>{"x", "last"}));
    EXPECT_EQ(after, "last");

    write_file("empty", "");
    EXPECT_TRUE(lines_of("empty", after).empty());
}

TEST_F(PlatformTest, ReadWriteAccessNeedsAnExistingFile)
{
    EXPECT_FALSE(platform::TextFile("missing", platform::TextFile::Access::read_write).is_open());
    write_file("there", "1");
    EXPECT_TRUE(platform::TextFile("there", platform::TextFile::Access::read_write).is_open());
    EXPECT_FALSE(platform::TextFile("missing").is_open());
}

TEST_F(PlatformTest, ShellGivesThePlainExitCode)
{
    EXPECT_EQ(platform::run_shell("exit 0"), 0);
    EXPECT_EQ(platform::run_shell("exit 3"), 3);
    EXPECT_EQ(platform::run_shell("exit 255"), 255);
}

TEST_F(PlatformTest, PosixShellRunsDotBackslashToolsAndDecodesSignals)
{
    if (!has_posix_shell())
        GTEST_SKIP() << "needs a POSIX shell";
    write_file("tool.exe", "#!/bin/sh\necho \"$@\" > args.txt\nexit 7\n");
    std::filesystem::permissions("tool.exe", std::filesystem::perms::owner_all);
    EXPECT_EQ(platform::run_shell(".\\tool.exe  a b"), 7);
    EXPECT_EQ(read_file("args.txt"), "a b\n");
    EXPECT_EQ(platform::run_shell("kill -9 $$"), 128 + 9);
    EXPECT_EQ(platform::run_shell("no-such-tool-here 2>/dev/null"), 127);
}
