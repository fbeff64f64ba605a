// One line of a scenario, cut into its keyword, key=value pairs and bare words.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace lab {

struct Statement {
    int line = 0;
    std::string keyword;
    std::map<std::string, std::string> values;
    std::vector<std::string> words;
};

// Returns false for a blank or comment line. Double quotes keep blanks
// inside a value; a '#' that starts a word begins a comment.
// Throws LabError for an unclosed quote or a key given twice.
bool parse_statement(const std::string& text, int line, const std::string& file, Statement& out);

// Hands out a statement's attributes and complains about any that nobody asked for.
class Attributes {
public:
    Attributes(const Statement& statement, const std::string& file);

    std::string required(const std::string& key);
    std::string optional(const std::string& key, const std::string& fallback = std::string());
    std::string required_word(const std::string& key);
    std::string required_number(const std::string& key);
    std::string optional_number(const std::string& key, const std::string& fallback);
    int required_int(const std::string& key);
    bool flag(const std::string& word);
    [[noreturn]] void fail(const std::string& what) const;
    void finish() const;

private:
    const Statement& statement_;
    const std::string& file_;
    std::set<std::string> taken_;
};

}  // namespace lab
