#include "platform/platform.h"
#include "run/log_copy.h"

#include "test_support.h"

#include "diagnostics/text.h"

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

class PlatformTest : public ScratchTest { };

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

TEST_F(PlatformTest, OnlyARegularFileOpens)
{
    std::filesystem::create_directory("folder");
    EXPECT_FALSE(platform::is_regular_file("folder"));
    EXPECT_FALSE(platform::TextFile("folder").is_open());
    std::int64_t size = 0;
    EXPECT_EQ(get_file_size("folder", size), 1);
    if (platform::run_shell("mkfifo fifo 2>/dev/null") != 0)
        GTEST_SKIP() << "no FIFOs here";
    // Opening a FIFO would wait for a writer that never comes.
    EXPECT_FALSE(platform::TextFile("fifo").is_open());
    EXPECT_EQ(get_file_size("fifo", size), 1);
}

TEST_F(PlatformTest, TheLogCopyNeverGoesToAFileOfTheRun)
{
    write_file("profile.txt", "ABC36X,aux,1.2.4,fw.rom,aux,sub/psoc.rom,E,2,0\n");
    write_file("notes.txt", "to do\n");
    write_file("old.log", "[2022-04-06 10:15:02] **********parseArgs Begin ******* \n");
    write_file("empty.log", "");
    write_file("odd.log", "[2022-04-06 10:15] **********parseArgs Begin ******* \n");
    std::filesystem::create_directory("sub");
    const std::string RUN_FILE = "log copy refused, a file the run reads or writes";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"profile.txt", RUN_FILE},
        {"sub/../Profile.TXT", RUN_FILE},
        {"log.txt", RUN_FILE},
        {"./log.txt", RUN_FILE},
        {"fw.rom", RUN_FILE},
        {"sub/psoc.rom", RUN_FILE},
        {"ctrlcount.rst", RUN_FILE},
        {"./show_0_log", RUN_FILE},
        {"sub/../show_eall_12_log", RUN_FILE},
        {"SHOW_1_LOG", RUN_FILE},
        {"fw_download_log_0_2", RUN_FILE},
        {"psoc_download_log_0_2_t1", RUN_FILE},
        {"arrconf_list.log", RUN_FILE},
        {"getconfigpd_1", RUN_FILE},
        {"inq_1_2_0", RUN_FILE},
        {"write_buffer_1_2_0", RUN_FILE},
        {"expanderupgrade_1_2_0", RUN_FILE},
        {"sub", "log copy refused, not a regular file"},
        {"notes.txt", "log copy refused, the file holds no log"},
        {"odd.log", "log copy refused, the file holds no log"},
        {"run.log", ""},
        {"old.log", ""},
        {"empty.log", ""},
        {"sub/show_0_log", ""},
        {"show_x_log", ""},
        {"psoc.rom", ""},
    };
    for (const auto& [name, refusal] : cases)
        EXPECT_EQ(log_copy_refusal(name, "profile.txt"), refusal) << name;
    EXPECT_EQ(log_copy_refusal("fw.rom", ""), "");
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
