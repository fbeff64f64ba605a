#include "run/log_copy.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "platform/platform.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace {

// The profile's image columns, as the run will name them in its commands.
constexpr std::size_t FW_IMAGE_COLUMN = 3;
constexpr std::size_t PSOC_IMAGE_COLUMN = 5;

// The names the tool runners give their output files in the working
// directory: whole names, names with a controller number between a head and
// a tail, and heads that the rest of a device's address follows.
const std::vector<std::string> OUTPUT_FILES = {"ctrlcount.rst", "arrconf_list.log"};
const std::vector<std::pair<std::string, std::string>> NUMBERED_OUTPUT_FILES = {
    {"show_", "_log"}, {"show_eall_", "_log"}, {"getconfigpd_", ""}};
const std::vector<std::string> OUTPUT_FILE_HEADS = {"fw_download_log_", "psoc_download_log_",
                                                    "inq_", "write_buffer_", "expanderupgrade_"};

// "#" stands for a digit.
const std::string LOG_TIMESTAMP_SHAPE = "[####-##-## ##:##:##] ";

bool is_digit(char c)
{
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

bool starts_with(const std::string& text, const std::string& head)
{
    return text.compare(0, head.size(), head) == 0;
}

bool number_between(const std::string& name, const std::string& head, const std::string& tail)
{
    if (name.size() <= head.size() + tail.size() || !starts_with(name, head) ||
        name.compare(name.size() - tail.size(), tail.size(), tail) != 0)
        return false;
    return std::all_of(name.begin() + head.size(), name.end() - tail.size(), is_digit);
}

bool has_shape(const std::string& text, const std::string& shape)
{
    return text.size() >= shape.size() &&
           std::equal(shape.begin(), shape.end(), text.begin(),
                      [](char s, char c) { return s == '#' ? is_digit(c) : s == c; });
}

bool is_output_file_name(const std::string& name)
{
    return std::find(OUTPUT_FILES.begin(), OUTPUT_FILES.end(), name) != OUTPUT_FILES.end() ||
           std::any_of(NUMBERED_OUTPUT_FILES.begin(), NUMBERED_OUTPUT_FILES.end(),
                       [&](const auto& parts) {
                           return number_between(name, parts.first, parts.second);
                       }) ||
           std::any_of(OUTPUT_FILE_HEADS.begin(), OUTPUT_FILE_HEADS.end(),
                       [&](const std::string& head) { return starts_with(name, head); });
}

// Case is folded: on Windows two names that differ in case are one file.
std::string resolved(const std::string& path)
{
    std::error_code error;
    std::string text = fs::weakly_canonical(fs::absolute(path, error), error).string();
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool same_file(const std::string& a, const std::string& b)
{
    std::error_code error;
    return fs::equivalent(a, b, error) || resolved(a) == resolved(b);
}

std::vector<std::string> images_named_by(const std::string& profile_path)
{
    std::vector<std::string> images;
    platform::TextFile profile(profile_path);
    std::string line;
    while (profile.is_open() && profile.read_line(line)) {
        const std::vector<std::string> fields = split(line, ",");
        for (std::size_t column : {FW_IMAGE_COLUMN, PSOC_IMAGE_COLUMN})
            if (fields.size() > column && !fields[column].empty())
                images.push_back(fields[column]);
    }
    return images;
}

bool is_output_file(const std::string& name)
{
    const fs::path path = resolved(name);
    return path.parent_path() == fs::path(resolved(".")) &&
           is_output_file_name(path.filename().string());
}

bool is_run_file(const std::string& name, const std::string& profile_path)
{
    if (same_file(name, LogFilePath) || is_output_file(name))
        return true;
    if (!profile_path.empty() && same_file(name, profile_path))
        return true;
    const std::vector<std::string> images = images_named_by(profile_path);
    return std::any_of(images.begin(), images.end(),
                       [&](const std::string& image) { return same_file(name, image); });
}

// An empty file is taken as a log that has no line yet.
bool starts_like_a_log(const std::string& name)
{
    platform::TextFile file(name);
    std::string line;
    return !file.read_line(line) || has_shape(line, LOG_TIMESTAMP_SHAPE);
}

}  // namespace

std::string log_copy_refusal(const std::string& name, const std::string& profile_path)
{
    std::error_code error;
    if (is_run_file(name, profile_path))
        return "log copy refused, a file the run reads or writes";
    if (!fs::exists(name, error))
        return "";
    if (!platform::is_regular_file(name))
        return "log copy refused, not a regular file";
    if (!starts_like_a_log(name))
        return "log copy refused, the file holds no log";
    return "";
}
