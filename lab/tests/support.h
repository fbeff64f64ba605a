// Scratch folders, scenarios and tool calls for the lab's tests.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tool_run.h"

namespace lab_test {

// Each test works in a fresh folder named after it, below the working directory.
class LabTest : public ::testing::Test {
 protected:
  void SetUp() override;

  void write_scenario(const std::string& text);
  void write_file(const std::string& name, std::size_t size) const;
  std::string read_file(const std::string& name) const;

  lab::ToolRun storcli(const std::string& argLine) const;
  lab::ToolRun arcconf(const std::string& argLine) const;

  std::string dir;
  std::string scenario;
};

// The lines of a report, line ends cut off; a last line without an end counts.
std::vector<std::string> lines_of(const std::string& output);
bool has_line(const std::string& output, const std::string& line);
// The value behind "key" in the one line that holds it; fails the test if not exactly one.
std::string only_value(const std::string& output, const std::string& key);

}  // namespace lab_test
