#include "support.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "text.h"

namespace fs = std::filesystem;

namespace lab_test {

void LabTest::SetUp() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  fs::path path =
      fs::current_path() / "scratch" / (std::string(info->test_suite_name()) + "." + info->name());
  fs::remove_all(path);
  fs::create_directories(path);
  dir = path.string();
  scenario = (path / "lab.scenario").string();
}

void LabTest::write_scenario(const std::string& text) {
  std::ofstream(scenario, std::ios::binary) << text;
}

void LabTest::write_file(const std::string& name, std::size_t size) const {
  std::ofstream(fs::path(dir) / name, std::ios::binary) << std::string(size, 'x');
}

std::string LabTest::read_file(const std::string& name) const {
  std::ifstream in(fs::path(dir) / name, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

lab::ToolRun LabTest::storcli(const std::string& argLine) const {
  return lab::run_tool(lab::Tool::Storcli, scenario, dir, lab::split_words(argLine));
}

lab::ToolRun LabTest::arcconf(const std::string& argLine) const {
  return lab::run_tool(lab::Tool::Arcconf, scenario, dir, lab::split_words(argLine));
}

std::vector<std::string> lines_of(const std::string& output) {
  std::vector<std::string> lines;
  std::istringstream in(output);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

bool has_line(const std::string& output, const std::string& line) {
  for (const std::string& l : lines_of(output))
    if (l == line) return true;
  return false;
}

std::string only_value(const std::string& output, const std::string& key) {
  std::vector<std::string> found;
  for (const std::string& line : lines_of(output))
    if (line.find(key) != std::string::npos)
      found.push_back(line.substr(line.find(key) + key.size()));
  EXPECT_EQ(found.size(), 1u) << "lines holding '" << key << "'";
  return found.empty() ? std::string() : found.front();
}

}  // namespace lab_test
