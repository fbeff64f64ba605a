#include "run/log_copy.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "platform/platform.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <regex>
#include <vector>

namespace fs = std::filesystem;

namespace {

// The profile's image columns, as the run will name them in its commands.
constexpr std::size_t FW_IMAGE_COLUMN = 3;
constexpr std::size_t PSOC_IMAGE_COLUMN = 5;

// The names the tool runners give their output files in the working directory.
const std::regex
    OUTPUT_FILE("ctrlcount\\.rst|show_[0-9]+_log|show_eall_[0-9]+_log|fw_download_log_.*|"
                "psoc_download_log_.*|arrconf_list\\.log|getconfigpd_[0-9]+|inq_.*|write_buffer_.*|"
                "expanderupgrade_.*",
                std::regex::icase);

const std::regex LOG_TIMESTAMP("\\[[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\] ");

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
           std::regex_match(path.filename().string(), OUTPUT_FILE);
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
    return !file.read_line(line) ||
           std::regex_match(line.substr(0, logTimestamp().size()), LOG_TIMESTAMP);
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
