#include "e2e_support.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/wait.h>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t TIMESTAMP_LENGTH = 22;

std::string env(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

bool under_wine()
{
    return !env("SASFWCTL_RUNNER").empty();
}

// Wine sees the Linux root as drive Z:.
std::string windows_path(const fs::path& path)
{
    std::string text = "Z:" + fs::absolute(path).string();
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

std::string without_cr_before_lf(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (!(text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n'))
            result += text[i];
    return result;
}

std::string read_all(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

int exit_code_of(int status)
{
    if (status != -1 && WIFEXITED(status))
        return WEXITSTATUS(status);
    return -1;
}

}  // namespace

const std::string BANNER =
    "\n"
    "***************************************\n"
    " Tarvex Expander Firmware Update Utilty\n"
    " Version:2.3[April 6th, 2022]\n"
    "***************************************\n"
    "\n";

void E2ETest::SetUp()
{
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    fs::path root = env("SASFWCTL_E2E_ROOT");
    if (root.empty())
        root = fs::temp_directory_path() / "sasfwctl-e2e";
    dir_ = root / (std::string(test->test_suite_name()) + "." + test->name());
    fs::remove_all(dir_);
    fs::create_directories(dir_);
    ASSERT_FALSE(env("SASFWCTL_BIN").empty()) << "SASFWCTL_BIN names no utility";
}

void E2ETest::TearDown()
{
    // A failing case keeps its directory for a look at what it left.
    if (!HasFailure()) {
        fs::permissions(dir_, fs::perms::owner_all, fs::perm_options::add);
        fs::remove_all(dir_);
    }
}

void E2ETest::put_file(const std::string& name, const std::string& content) const
{
    std::ofstream(dir_ / name, std::ios::binary) << content;
}

std::string E2ETest::file(const std::string& name) const
{
    return read_all(dir_ / name);
}

bool E2ETest::exists(const std::string& name) const
{
    return fs::exists(dir_ / name);
}

void E2ETest::install_storcli() const
{
    fs::copy_file(fs::path(env("SASFWCTL_LAB_BIN")) / "storcli64.exe", dir_ / "storcli64.exe",
                  fs::copy_options::overwrite_existing);
}

RunResult E2ETest::run(const std::string& arguments) const
{
    const fs::path lab = env("SASFWCTL_LAB_BIN");
    std::string path_setting;
    if (arcconf_on_path_ && under_wine())
        path_setting = "WINEPATH=" + quoted(windows_path(lab)) + " ";
    else if (arcconf_on_path_)
        path_setting = "PATH=" + quoted(lab.string()) + ":\"$PATH\" ";

    const std::string command = "cd " + quoted(dir_.string()) + " && " + path_setting +
                                "WINEDEBUG=-all " + env("SASFWCTL_RUNNER") + " " +
                                quoted(env("SASFWCTL_BIN")) + " " + arguments +
                                " >../" + dir_.filename().string() + ".out 2>../" +
                                dir_.filename().string() + ".err </dev/null";
    RunResult result;
    result.exit_code = exit_code_of(std::system(command.c_str()));
    result.console = without_cr_before_lf(read_all(dir_.parent_path() / (dir_.filename().string() + ".out")));
    result.errors = read_all(dir_.parent_path() / (dir_.filename().string() + ".err"));
    return result;
}

std::string E2ETest::labctl(const std::string& arguments) const
{
    const fs::path output = dir_.parent_path() / (dir_.filename().string() + ".labctl");
    const std::string command = "cd " + quoted(dir_.string()) + " && " +
                                quoted(env("SASFWCTL_LABCTL")) + " " + arguments + " >" +
                                quoted(output.string()) + " 2>&1";
    EXPECT_EQ(exit_code_of(std::system(command.c_str())), 0) << "labctl " << arguments;
    return read_all(output);
}

std::vector<std::string> E2ETest::log_lines() const
{
    std::vector<std::string> lines;
    std::istringstream log(without_cr_before_lf(file("log.txt")));
    std::string line;
    while (std::getline(log, line))
        lines.push_back(line.size() >= TIMESTAMP_LENGTH ? line.substr(TIMESTAMP_LENGTH) : line);
    return lines;
}

std::vector<std::string> E2ETest::calls() const
{
    std::vector<std::string> calls;
    std::istringstream record(file("lab.scenario.calls"));
    std::string line;
    while (std::getline(record, line)) {
        const std::size_t tool_end = line.find('\t');
        const std::size_t cwd_end = line.find('\t', tool_end + 1);
        calls.push_back(line.substr(0, tool_end) + " " + line.substr(cwd_end + 1));
    }
    return calls;
}

bool has_run(const std::vector<std::string>& lines, const std::vector<std::string>& expected)
{
    return std::search(lines.begin(), lines.end(), expected.begin(), expected.end()) != lines.end();
}
