// Files as every test reads them: whole and byte for byte, and the log's
// lines without their timestamps.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

std::string read_file(const std::filesystem::path& path);
void write_file(const std::filesystem::path& path, const std::string& content);

// The lines of a text, a CR before a line end dropped.
std::vector<std::string> text_lines(const std::string& text);

// The lines of a log text, a CR before a line end dropped, each with its
// "[date time] " stamp cut off.
std::vector<std::string> log_lines(const std::string& log);
