// Plays one story of tests/stories (its README tells the format) and compares
// what happened with its transcript. The environment names the utility, the
// command to run it with (wine, or none), the lab's stand-ins for the same
// platform, the native labctl and a scratch root: see CMakeLists.txt.
#include "files.h"
#include "platform/platform.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

// Long runs such as a profile row's three log lines, 100,000 times over.
constexpr std::size_t LONGEST_BLOCK = 4;
constexpr std::size_t FOLDED_FROM = 10;

struct Story {
    fs::path source, work;
    bool windows = false;  // the Windows build, under Wine
    bool lab = false;      // a scenario, so the stand-ins are there
};

std::string env(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string shell_quoted(const std::string& text)
{
    std::string result = "'";
    for (char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

// Words separated by blanks; a word in double quotes may hold blanks and
// the escapes \" \\ \n \r \t.
std::vector<std::string> step_words(const std::string& line)
{
    const auto unescaped = [](char c) {
        return c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
    };
    std::vector<std::string> words;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == ' ')
            continue;
        const bool in_quotes = line[i] == '"';
        std::string word;
        for (i += in_quotes ? 1 : 0; i < line.size() && line[i] != (in_quotes ? '"' : ' '); ++i)
            word += in_quotes && line[i] == '\\' && i + 1 < line.size() ? unescaped(line[++i])
                                                                        : line[i];
        words.push_back(word);
    }
    return words;
}

// How often lines[at, at + size) stands there in a row.
std::size_t repeats(const std::vector<std::string>& lines, std::size_t at, std::size_t size)
{
    std::size_t count = 1;
    while (at + (count + 1) * size <= lines.size() &&
           std::equal(lines.begin() + at, lines.begin() + at + size,
                      lines.begin() + at + count * size))
        ++count;
    return count;
}

// "---- heading", then the text's lines with their timestamps masked, a block
// standing many times in a row shown once and counted, a missing last line
// end told.
std::string section(const std::string& heading, const std::string& text)
{
    static const std::regex timestamp(R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\])");
    const std::vector<std::string> lines =
        text_lines(std::regex_replace(text, timestamp, "[####-##-## ##:##:##]"));
    std::string result = "---- " + heading + "\n";
    for (std::size_t i = 0, size = 1; i < lines.size(); size = 1) {
        while (size < LONGEST_BLOCK && repeats(lines, i, size) < FOLDED_FROM)
            ++size;
        const std::size_t count = repeats(lines, i, size);
        if (count < FOLDED_FROM) {
            result += lines[i++] + "\n";
            continue;
        }
        for (std::size_t k = i; k < i + size; ++k)
            result += lines[k] + "\n";
        result += "... the " + std::to_string(size) + " line(s) above repeat " +
                  std::to_string(count - 1) + " more times\n";
        i += count * size;
    }
    return result + (!text.empty() && text.back() != '\n' ? "\\ no line end\n" : "");
}

// A program's output as a section with LF line ends; its heading tells when
// a line end was not CR LF where `crlf` asks for it, or not LF elsewhere.
std::string lines_section(const std::string& heading, const std::string& raw, bool crlf)
{
    std::string text;
    for (std::size_t i = 0; i < raw.size(); ++i)
        if (raw.compare(i, 2, "\r\n") != 0)
            text += raw[i];
    const auto lfs = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    const bool as_expected = raw.size() - text.size() == (crlf ? lfs : 0);
    return section(heading + (as_expected ? "" : ", line ends wrong"), text);
}

std::set<std::string> names_in(const fs::path& dir)
{
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(dir))
        names.insert(entry.path().filename().string() + (entry.is_directory() ? "/" : ""));
    return names;
}

std::string listed(const std::set<std::string>& names, const std::set<std::string>& except = {})
{
    std::string text;
    for (const std::string& name : names)
        text += except.count(name) ? "" : name + "\n";
    return text;
}

std::string set_up(const Story& story)
{
    fs::remove_all(story.work);
    fs::create_directories(story.work);
    for (const fs::directory_entry& entry : fs::directory_iterator(story.source))
        if (entry.path().filename() != "steps" && entry.path().filename() != "transcript")
            fs::copy_file(entry.path(), story.work / entry.path().filename());
    if (story.lab)
        fs::copy_file(fs::path(env("SASFWCTL_LAB_BIN")) / "storcli64.exe",
                      story.work / "storcli64.exe");
    // Each image that profile.txt names (columns 3 and 5) and the story lacks.
    for (const std::string& row : text_lines(read_file(story.work / "profile.txt"))) {
        std::istringstream fields(row);
        std::string field;
        for (int column = 0; std::getline(fields, field, ','); ++column)
            if ((column == 3 || column == 5) && !field.empty() && !fs::exists(story.work / field))
                write_file(story.work / field, "image " + field + "\n");
    }
    return "==== set up\n" + section("files", listed(names_in(story.work)));
}

std::string shell_line(const Story& story, const std::vector<std::string>& words)
{
    const bool utility = words[0] == "sasfwctl";
    const std::string lab = env("SASFWCTL_LAB_BIN");
    std::string line = "cd " + shell_quoted(story.work.string()) + " && ";
    if (utility && story.lab) {
        // Each platform reads its own path; Wine sees the Linux root as drive Z:.
        std::string wine_lab = "Z:" + lab;
        std::replace(wine_lab.begin(), wine_lab.end(), '/', '\\');
        line += "PATH=" + shell_quoted(lab) + ":\"$PATH\" WINEPATH=" + shell_quoted(wine_lab) + " ";
    }
    line += utility ? "WINEDEBUG=-all " + env("SASFWCTL_RUNNER") + " " +
                          shell_quoted(env("SASFWCTL_BIN"))
                    : shell_quoted(env("SASFWCTL_LABCTL"));
    for (std::size_t i = 1; i < words.size(); ++i)
        line += " " + shell_quoted(words[i]);
    const std::string errors = utility ? shell_quoted(story.work.string() + ".errors") : "&1";
    return line + " >" + shell_quoted(story.work.string() + ".console") + " 2>" + errors +
           " </dev/null";
}

// What a file that only grows gained, or all of it when it started anew.
std::string added(const std::string& before, const std::string& after)
{
    const bool grew = after.compare(0, before.size(), before) == 0;
    return grew ? after.substr(before.size()) : "(started anew)\n" + after;
}

// The lab's call record without its working directory column.
std::string calls(const fs::path& record)
{
    static const std::regex directory_column("\t[^\t\n]*\t");
    return std::regex_replace(read_file(record), directory_column, " ");
}

std::string run_program(const Story& story, const std::vector<std::string>& words)
{
    const fs::path log = story.work / "log.txt", record = story.work / "lab.scenario.calls";
    const std::string log_before = read_file(log), calls_before = calls(record);
    const std::set<std::string> names_before = names_in(story.work);
    const int status = platform::run_shell(shell_line(story, words));
    const bool crlf = story.windows && words[0] == "sasfwctl";
    return lines_section("console", read_file(story.work.string() + ".console"), crlf) +
           "---- exit code " + std::to_string(status) + "\n" +
           lines_section("log.txt", added(log_before, read_file(log)), crlf) +
           section("tool calls", added(calls_before, calls(record))) +
           section("new files", listed(names_in(story.work), names_before));
}

// "timed MIN MAX sasfwctl ...": the run must take MIN s or more, less than MAX.
std::string timed_run(const Story& story, const std::vector<std::string>& words)
{
    const auto start = std::chrono::steady_clock::now();
    const std::string run = run_program(story, {words.begin() + 3, words.end()});
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const bool in_time = seconds >= std::stod(words[1]) && seconds < std::stod(words[2]);
    return run + "---- took " +
           (in_time ? "between " + words[1] + " and " + words[2] : std::to_string(seconds)) +
           " s\n";
}

std::string run_step(const Story& story, const std::string& line)
{
    const std::vector<std::string> words = step_words(line);
    const std::string& verb = words.at(0);
    const fs::path file = story.work / (words.size() > 1 ? words[1] : "");
    const std::string heading = "==== " + line + "\n";
    static const std::regex crlf("\r\n");
    if (verb == "sasfwctl" || verb == "labctl")
        return heading + run_program(story, words);
    if (verb == "timed" && words.size() > 3)
        return heading + timed_run(story, words);
    if (verb == "cat" && words.size() == 2)
        return heading + section("content", std::regex_replace(read_file(file), crlf, "\n"));
    if ((verb == "write" || verb == "append") && words.size() > 2) {
        std::ofstream out(file,
                          std::ios::binary | (verb == "append" ? std::ios::app : std::ios::trunc));
        for (int i = words.size() > 3 ? std::stoi(words[3]) : 1; i > 0; --i)
            out << words[2];
    } else if (verb == "remove" && words.size() == 2) {
        fs::remove_all(file);
    } else if (verb == "mkdir" && words.size() == 2) {
        fs::create_directory(file);
    } else {
        throw std::runtime_error("not a step: " + line);
    }
    return heading;
}

std::string played(const Story& story)
{
    std::string transcript = set_up(story);
    for (const std::string& line : text_lines(read_file(story.source / "steps")))
        if (!line.empty())
            transcript += line[0] == '#' ? line + "\n" : run_step(story, line);
    // The status of a command that the command processor cannot find is 127
    // from sh and 9009 from cmd; both read "<not found>".
    const std::regex not_found(story.windows ? " = 9009\n" : " = 127\n");
    return std::regex_replace(transcript, not_found, " = <not found>\n");
}

int verdict(const Story& story, const std::string& transcript)
{
    const fs::path golden = story.source / "transcript",
                   actual = story.work.string() + ".transcript";
    if (read_file(golden) != transcript && env("SASFWCTL_STORY_UPDATE") != "1") {
        write_file(actual, transcript);
        std::cout << std::flush;
        platform::run_shell("diff -u " + shell_quoted(golden.string()) + " " +
                            shell_quoted(actual.string()));
        std::cout << "The working directory stays: " << story.work.string() << std::endl;
        return 1;
    }
    if (read_file(golden) != transcript)
        write_file(golden, transcript);
    fs::remove_all(story.work);
    return 0;
}

}  // namespace

int main(int argc, char* argv[])
{
    if (argc != 2 || env("SASFWCTL_BIN").empty() || env("SASFWCTL_STORY_ROOT").empty()) {
        std::cerr << "usage: story_runner STORY-FOLDER, with the environment of "
                     "tests/e2e/CMakeLists.txt\n";
        return 2;
    }
    const fs::path source = fs::canonical(argv[1]);
    const Story story{source, fs::absolute(env("SASFWCTL_STORY_ROOT")) / source.filename(),
                      !env("SASFWCTL_RUNNER").empty(), fs::exists(source / "lab.scenario")};
    try {
        return verdict(story, played(story));
    } catch (const std::exception& error) {
        std::cerr << story.source.string() << ": " << error.what() << "\n";
        return 2;
    }
}
