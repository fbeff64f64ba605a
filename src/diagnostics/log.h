// The diagnostic log ./log.txt: one line per call, opened and closed for each
// line, appended to across runs. Nothing reads it back, and a log that cannot
// be written is no failure of the run.
#pragma once

#include <cstdint>
#include <string>

extern const std::string LogFileDir;
extern const std::string LogFileName;
extern const std::string LogFilePath;

// "[YYYY-mm-dd HH:MM:SS] " in local time; the text ends in a blank.
std::string logTimestamp();

// "**********name Begin ******* " and "**********name End ******* ".
void logBegin(const std::string& name);
void logEnd(const std::string& name);

// "name = value", the value in one of five forms.
void logValue(const std::string& name, std::int32_t value);
void logValue(const std::string& name, std::uint32_t value);
void logValue(const std::string& name, std::uint64_t value);
void logValue(const std::string& name, bool value);
void logValue(const std::string& name, std::string value);
// Keeps a literal value from choosing the boolean form.
void logValue(const std::string& name, const char* value);

void logMessage(const std::string& text);

// Writes the timestamp, a blank and the formatted text, and leaves the line
// open: the next log line joins it on the same line of the file.
void logPrintf(const char* format, ...);

// The per-run log of "-l": from now on every log line is also appended to
// `path`, and so are the lines this run wrote before the call. An empty path
// ends the copying; lines of the run are kept for a copy only until the first
// call. A path that cannot be opened copies nothing.
void logAlsoTo(const std::string& path);
