#include "test_support.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t TIMESTAMP_LENGTH = 22;

fs::path fresh_scratch_dir()
{
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    fs::path dir = fs::temp_directory_path() / "sasfwctl-unit" /
                   (std::string(test->test_suite_name()) + "." + test->name());
    fs::remove_all(dir);
    fs::create_directories(dir);
    return dir;
}

}  // namespace

void ScratchTest::SetUp()
{
    previous_ = fs::current_path();
    scratch_ = fresh_scratch_dir();
    fs::current_path(scratch_);
    reset_run_state();
}

void ScratchTest::TearDown()
{
    reset_run_state();
    fs::current_path(previous_);
    // A failing test leaves its directory behind to be looked at.
    if (!HasFailure())
        fs::remove_all(scratch_);
}

void ScratchTest::write_file(const std::string& name, const std::string& content)
{
    std::ofstream(name, std::ios::binary) << content;
}

std::string ScratchTest::read_file(const std::string& name)
{
    std::ifstream file(name, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

std::vector<std::string> ScratchTest::log_lines()
{
    std::vector<std::string> lines;
    std::istringstream log(read_file("log.txt"));
    std::string line;
    while (std::getline(log, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line.size() >= TIMESTAMP_LENGTH ? line.substr(TIMESTAMP_LENGTH) : line);
    }
    return lines;
}

bool ScratchTest::log_has_run(const std::vector<std::string>& expected)
{
    const std::vector<std::string> lines = log_lines();
    return std::search(lines.begin(), lines.end(), expected.begin(), expected.end()) != lines.end();
}
