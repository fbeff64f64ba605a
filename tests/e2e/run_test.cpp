// The run as a whole: the command line, the ending when no family has
// anything to do, and the log across runs.
#include "e2e_support.h"

#include <chrono>
#include <fstream>

namespace {

const std::string USAGE =
    "Parameters are missing or incorrect.\n"
    "Usage:\n"
    "sasfwctl.exe -p profile.txt [-32i] [-36i] [ -l logfile]\n";

const std::string NOTHING_FOUND = "No expander devices found.\n\n\n";

// Makes the working directory refuse new files; where that cannot be had
// (root ignores permissions), a directory in the log's place makes the log
// just as unwritable.
void refuse_log(const std::filesystem::path& dir)
{
    namespace fs = std::filesystem;
    fs::permissions(dir, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                             fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec);
    if (std::ofstream(dir / "probe").is_open()) {
        fs::remove(dir / "probe");
        fs::permissions(dir, fs::perms::owner_all, fs::perm_options::add);
        fs::create_directory(dir / "log.txt");
    }
}

}  // namespace

class RunTest : public E2ETest {};

TEST_F(RunTest, ABadCommandLineShowsUsageAndEnds176)
{
    RunResult run = this->run("");
    EXPECT_EQ(run.exit_code, 176);
    EXPECT_EQ(run.console, BANNER + USAGE);
    EXPECT_EQ(log_lines(), std::vector<std::string>{"**********parseArgs Begin ******* "});

    run = this->run("-f -p");
    EXPECT_EQ(run.exit_code, 176);
    EXPECT_EQ(run.console, BANNER + USAGE);
    const std::vector<std::string> log = log_lines();
    EXPECT_TRUE(has_run(log, {"**********parseArgs Begin ******* ", "Profile name paramters are lost",
                              "force = 1"}));
    // Nothing was discovered, so nothing is cleaned up.
    EXPECT_EQ(log.back(), "force = 1");
}

TEST_F(RunTest, NoToolsAndNoControllersEnd171)
{
    const RunResult run = this->run("-p profile.txt -32i -36i");
    EXPECT_EQ(run.exit_code, 171);
    EXPECT_EQ(run.console, BANNER + NOTHING_FOUND);
    const std::vector<std::string> log = log_lines();
    EXPECT_TRUE(has_run(log, {"adapters count = 0", "**********ARCCONF_UTL::getAdapterList Begin ******* "}));
    EXPECT_TRUE(has_run(log, {"**********ARCCONF_UTL::getAdapterList End ******* ", "adapters count = 0",
                              "No any adapters found.", "**********ARCCONF_UTL::clear Begin ******* ",
                              "**********ARCCONF_UTL::clear End ******* "}));
    EXPECT_EQ(log.back(), "**********ARCCONF_UTL::clear End ******* ");
}

TEST_F(RunTest, TheLogGrowsAcrossRunsAndMayBeKeptPerRun)
{
    put_file("log.txt", "kept from before\n");
    run("-p a.txt");
    const std::vector<std::string> first = log_lines();
    EXPECT_EQ(first.front(), "kept from before");

    const RunResult run = this->run("-l run1.log -p a.txt");
    EXPECT_EQ(run.exit_code, 171);
    const std::vector<std::string> both = log_lines();
    EXPECT_EQ(both.size(), 2 * first.size() - 1);
    EXPECT_TRUE(std::equal(first.begin(), first.end(), both.begin()));

    // The per-run log holds this run's lines only, byte for byte as ./log.txt.
    const std::string log = file("log.txt");
    const std::string per_run = file("run1.log");
    ASSERT_FALSE(per_run.empty());
    EXPECT_EQ(log.substr(log.size() - per_run.size()), per_run);
    EXPECT_EQ(per_run.find("**********parseArgs Begin ******* "), 22u);
}

TEST_F(RunTest, AnUnwritableLogChangesNeitherConsoleNorExitCode)
{
    refuse_log(dir());
    const RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 171);
    EXPECT_EQ(run.console, BANNER + NOTHING_FOUND);
    EXPECT_FALSE(std::filesystem::is_regular_file(dir() / "log.txt"));

    const RunResult bad = this->run("-p");
    EXPECT_EQ(bad.exit_code, 176);
    EXPECT_EQ(bad.console, BANNER + USAGE);
}

TEST_F(RunTest, OutOfRangeWaitsAndOddSwitchValuesNeverHang)
{
    const auto start = std::chrono::steady_clock::now();
    const RunResult run = this->run("-s 99999999999 --psoc 99999999999 -p '' -l");
    EXPECT_EQ(run.exit_code, 176);
    const RunResult other = this->run("-s -5 -p ''");
    EXPECT_EQ(other.exit_code, 171);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    EXPECT_TRUE(has_run(log_lines(), {"wait seconds out of range, no wait", "param, wait seconds:%d = 0"}));
}
