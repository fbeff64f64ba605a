// Unit tests run each in a fresh scratch directory, as the utility runs in
// its working directory: the log and the reports land there.
#pragma once

#include "run_state_reset.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

class ScratchTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Writes `content` byte for byte (no line-end translation).
    static void write_file(const std::string& name, const std::string& content);
    static std::string read_file(const std::string& name);

    // The lines of ./log.txt with their "[date time] " stamp cut off.
    static std::vector<std::string> log_lines();
    // Whether `expected` appears in the log as consecutive lines, in order.
    static bool log_has_run(const std::vector<std::string>& expected);

private:
    std::filesystem::path previous_;
    std::filesystem::path scratch_;
};
