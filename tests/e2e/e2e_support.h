// End-to-end cases run the built utility as an operator would: in a fresh
// working directory, with the lab's stand-in tools where a case wants them.
// The same cases run against the native build and, under Wine, against the
// Windows build: the environment names the binary and its lab.
//   SASFWCTL_BIN       the utility under test
//   SASFWCTL_RUNNER    a command to run it with ("wine"), or empty
//   SASFWCTL_LAB_BIN   the folder of the stand-ins built for the same platform
//   SASFWCTL_LABCTL    the lab control program (native)
//   SASFWCTL_E2E_ROOT  where the scratch directories go
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

// The banner every run starts with.
extern const std::string BANNER;

struct RunResult {
    int exit_code = -1;
    std::string console;  // standard output, CR LF read as LF
    std::string errors;   // standard error
};

class E2ETest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    const std::filesystem::path& dir() const { return dir_; }

    void put_file(const std::string& name, const std::string& content) const;
    std::string file(const std::string& name) const;
    bool exists(const std::string& name) const;

    // Copies the stand-in storcli64.exe into the working directory, where the
    // utility calls it as .\storcli64.exe.
    void install_storcli() const;
    // Puts the stand-in arcconf.exe on the utility's path.
    void arcconf_on_path() { arcconf_on_path_ = true; }

    // Runs the utility with `arguments` (a shell-quoted text) in dir().
    RunResult run(const std::string& arguments) const;

    // Runs the lab control program on this directory's scenario.
    std::string labctl(const std::string& arguments) const;

    // The lab's record of the tool calls, one "tool args" text per call.
    std::vector<std::string> calls() const;

    // The log's lines without their timestamps, CR LF read as LF.
    std::vector<std::string> log_lines() const;

private:
    std::filesystem::path dir_;
    bool arcconf_on_path_ = false;
};

// Where `expected` appears as consecutive lines of `lines`.
bool has_run(const std::vector<std::string>& lines, const std::vector<std::string>& expected);
