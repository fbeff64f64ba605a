#include "test_support.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

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

void ScratchTest::start_row()
{
    reset_run_state();
    empty_scratch_dir();
}

void ScratchTest::empty_scratch_dir()
{
    for (const fs::directory_entry& entry : fs::directory_iterator(fs::current_path()))
        fs::remove_all(entry.path());
}

void ScratchTest::place_fixture(const std::string& fixture, const std::string& name)
{
    const fs::path path = fs::path(SASFWCTL_FIXTURES) / fixture;
    // A misspelt fixture would otherwise pass for an empty report.
    if (!fs::is_regular_file(path))
        ADD_FAILURE() << "no fixture " << path;
    write_file(name, read_file(path));
}

std::vector<std::string> ScratchTest::logged()
{
    return log_lines(read_file("log.txt"));
}

bool ScratchTest::log_has_run(const std::vector<std::string>& expected)
{
    const std::vector<std::string> lines = logged();
    return std::search(lines.begin(), lines.end(), expected.begin(), expected.end()) != lines.end();
}
