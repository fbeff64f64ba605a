#include "text.h"

#include <algorithm>
#include <cctype>

namespace lab {

namespace {

bool is_blank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

}  // namespace

std::string trim(const std::string& text)
{
    auto first = std::find_if_not(text.begin(), text.end(), is_blank);
    auto last = std::find_if_not(text.rbegin(), text.rend(), is_blank).base();
    return first < last ? std::string(first, last) : std::string();
}

std::string to_lower(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

bool equals_ci(const std::string& a, const std::string& b)
{
    return to_lower(a) == to_lower(b);
}

bool starts_with_ci(const std::string& text, const std::string& prefix)
{
    return text.size() >= prefix.size() && equals_ci(text.substr(0, prefix.size()), prefix);
}

std::vector<std::string> split_words(const std::string& text)
{
    std::vector<std::string> words;
    std::string word;
    for (char c : text) {
        if (!is_blank(c)) {
            word += c;
        } else if (!word.empty()) {
            words.push_back(word);
            word.clear();
        }
    }
    if (!word.empty())
        words.push_back(word);
    return words;
}

bool glob_match(const std::string& pattern, const std::string& text)
{
    // Iterative matcher that backtracks only to the last '*'.
    std::size_t p = 0, t = 0, star = std::string::npos, resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = t;
        } else if (star != std::string::npos) {
            p = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p == pattern.size();
}

std::string join_args(const std::vector<std::string>& args)
{
    std::string line;
    for (const std::string& arg : args) {
        if (!line.empty())
            line += ' ';
        bool quote = arg.empty() || arg.find(' ') != std::string::npos;
        line += quote ? '"' + arg + '"' : arg;
    }
    return line;
}

bool is_decimal(const std::string& text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return std::isdigit(static_cast<unsigned char>(c)) != 0;
    });
}

std::string pad_right(const std::string& text, std::size_t width)
{
    return text.size() >= width ? text : text + std::string(width - text.size(), ' ');
}

std::string pad_left(const std::string& text, std::size_t width)
{
    return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

}  // namespace lab
