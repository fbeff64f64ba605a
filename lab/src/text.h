// Small text helpers shared by the scenario reader and the stand-ins.
#pragma once

#include <string>
#include <vector>

namespace lab {

std::string trim(const std::string& text);
std::string to_lower(std::string text);
bool equals_ci(const std::string& a, const std::string& b);
bool starts_with_ci(const std::string& text, const std::string& prefix);

// Splits at runs of blanks and tabs; no empty words.
std::vector<std::string> split_words(const std::string& text);

// Whole-text match where '*' stands for any run of characters and '?' for one.
bool glob_match(const std::string& pattern, const std::string& text);

// Arguments joined by single blanks; an argument that is empty or holds a
// blank is put in double quotes so that word boundaries stay visible.
std::string join_args(const std::vector<std::string>& args);

bool is_decimal(const std::string& text);
std::string pad_right(const std::string& text, std::size_t width);
std::string pad_left(const std::string& text, std::size_t width);

}  // namespace lab
