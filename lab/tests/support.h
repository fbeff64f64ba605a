// Scratch folders, fixture files and tool calls for the lab's tests.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "files.h"
#include "text.h"
#include "tool_run.h"

namespace lab_test {

// A file of lab/tests/fixtures.
inline std::string fixture(const std::string& name)
{
    std::string text = ::read_file(std::filesystem::path(LAB_FIXTURE_DIR) / name);
    EXPECT_FALSE(text.empty()) << "fixture " << name;
    return text;
}

inline bool has_line(const std::string& text, const std::string& line)
{
    for (const std::string& l : text_lines(text))
        if (l == line)
            return true;
    return false;
}

// The image files that fixtures/server.scenario names, and one it does not
// (stranger.rom). The PSoC image's size is 01 a2 f3 in a write buffer block.
const std::pair<const char*, std::size_t> IMAGE_FILES[] = {
    {"fw.rom", 1000},     {"psoc.rom", 300},     {"gone.rom", 10},
    {"stranger.rom", 10}, {"x100_fw.bin", 2000}, {"x100_psoc.bin", 0x01a2f3}};

// Each test works in a fresh folder named after it, below the working
// directory, on the server of fixtures/server.scenario with its images.
class LabTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        std::filesystem::path path = std::filesystem::current_path() / "scratch" /
                                     (std::string(info->test_suite_name()) + "." + info->name());
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
        dir = path.string();
        scenario = (path / "lab.scenario").string();
        write_scenario(fixture("server.scenario"));
        for (const auto& [name, size] : IMAGE_FILES)
            ::write_file(path / name, std::string(size, 'x'));
    }

    void write_scenario(const std::string& text) const { ::write_file(scenario, text); }

    std::string read_file(const std::string& name) const
    {
        return ::read_file(std::filesystem::path(dir) / name);
    }

    lab::ToolRun run(lab::Tool tool, const std::string& argLine) const
    {
        return lab::run_tool(tool, scenario, dir, lab::split_words(argLine));
    }

    std::string dir;
    std::string scenario;
};

}  // namespace lab_test
