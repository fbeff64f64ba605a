#include "statement.h"

#include "lab_error.h"
#include "text.h"

namespace lab {

namespace {

// Cuts a line into words; quotes group blanks into a word and are dropped.
std::vector<std::string> tokenize(const std::string& text, int line, const std::string& file)
{
    std::vector<std::string> words;
    std::string word;
    bool inWord = false, quoted = false;
    for (char c : text) {
        if (quoted) {
            if (c == '"')
                quoted = false;
            else
                word += c;
        } else if (c == '"') {
            quoted = inWord = true;
        } else if (c == ' ' || c == '\t' || c == '\r') {
            if (inWord)
                words.push_back(word);
            word.clear();
            inWord = false;
        } else if (c == '#' && !inWord) {
            break;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (quoted)
        throw LabError(file, line, "a double quote is not closed");
    if (inWord)
        words.push_back(word);
    return words;
}

}  // namespace

bool parse_statement(const std::string& text, int line, const std::string& file, Statement& out)
{
    std::vector<std::string> words = tokenize(text, line, file);
    if (words.empty())
        return false;
    out = Statement();
    out.line = line;
    out.keyword = words.front();
    for (std::size_t i = 1; i < words.size(); ++i) {
        std::size_t eq = words[i].find('=');
        if (eq == std::string::npos) {
            out.words.push_back(words[i]);
            continue;
        }
        std::string key = words[i].substr(0, eq);
        if (!out.values.emplace(key, words[i].substr(eq + 1)).second)
            throw LabError(file, line, "'" + key + "' is given twice");
    }
    return true;
}

Attributes::Attributes(const Statement& statement, const std::string& file)
    : statement_(statement), file_(file)
{
}

void Attributes::fail(const std::string& what) const
{
    throw LabError(file_, statement_.line, statement_.keyword + ": " + what);
}

std::string Attributes::required(const std::string& key)
{
    auto it = statement_.values.find(key);
    if (it == statement_.values.end())
        fail("'" + key + "=' is missing");
    taken_.insert(key);
    return it->second;
}

std::string Attributes::optional(const std::string& key, const std::string& fallback)
{
    return statement_.values.count(key) ? required(key) : fallback;
}

std::string Attributes::required_word(const std::string& key)
{
    std::string value = required(key);
    if (value.empty() || split_words(value).size() != 1)
        fail("'" + key + "' must be one word without blanks");
    return value;
}

std::string Attributes::required_number(const std::string& key)
{
    std::string value = required(key);
    if (!is_decimal(value))
        fail("'" + key + "' must be a decimal number, not '" + value + "'");
    return value;
}

std::string Attributes::optional_number(const std::string& key, const std::string& fallback)
{
    return statement_.values.count(key) ? required_number(key) : fallback;
}

int Attributes::required_int(const std::string& key)
{
    std::string value = required(key);
    if (!is_decimal(value) || value.size() > 6)
        fail("'" + key + "' must be a decimal number, not '" + value + "'");
    return std::stoi(value);
}

bool Attributes::flag(const std::string& word)
{
    for (const std::string& w : statement_.words) {
        if (w == word) {
            taken_.insert(word);
            return true;
        }
    }
    return false;
}

void Attributes::finish() const
{
    for (const auto& value : statement_.values)
        if (!taken_.count(value.first))
            fail("unknown attribute '" + value.first + "'");
    for (const std::string& word : statement_.words)
        if (!taken_.count(word))
            fail("unexpected word '" + word + "'");
}

}  // namespace lab
