// Unit tests run each in a fresh scratch directory, as the utility runs in
// its working directory: the log and the reports land there.
#pragma once

#include "files.h"
#include "run_state_reset.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class ScratchTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Starts the next row of a table afresh: an empty scratch directory and
    // a fresh run state.
    virtual void start_row();
    // Empties the scratch directory alone, for rows that keep the run state.
    static void empty_scratch_dir();

    // Copies tests/fixtures/<fixture> into the scratch directory as `name`,
    // the file the reader under test opens.
    static void place_fixture(const std::string& fixture, const std::string& name);

    // The lines of ./log.txt without their timestamps.
    static std::vector<std::string> logged();
    // Whether `expected` stands in the log as consecutive lines.
    static bool log_has_run(const std::vector<std::string>& expected);

private:
    std::filesystem::path previous_;
    std::filesystem::path scratch_;
};
