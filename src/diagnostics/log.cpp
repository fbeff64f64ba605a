#include "diagnostics/log.h"

#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <vector>

const std::string LogFileDir = "./";
const std::string LogFileName = "log.txt";
const std::string LogFilePath = LogFileDir + LogFileName;

namespace {

// A piece of log text and whether it ends its line.
struct LogPiece {
    std::string text;
    bool line_end;
};

enum class CopyState { undecided, off, on };

CopyState copy_state = CopyState::undecided;
std::string copy_path;
std::vector<LogPiece> pieces_before_decision;

void append_line(const std::string& path, const std::string& text)
{
    std::ofstream log(path, std::ios::out | std::ios::app);
    log << text << std::endl;
}

// The stdio side of the log, for text that leaves its line open.
void append_unended(const std::string& path, const std::string& text)
{
    FILE* log = std::fopen(path.c_str(), "a+");
    if (log == nullptr)
        return;
    std::fputs(text.c_str(), log);
    std::fclose(log);
}

void copy_piece(const LogPiece& piece)
{
    if (piece.line_end)
        append_line(copy_path, piece.text);
    else
        append_unended(copy_path, piece.text);
}

void keep_for_copy(LogPiece piece)
{
    if (copy_state == CopyState::on)
        copy_piece(piece);
    else if (copy_state == CopyState::undecided)
        pieces_before_decision.push_back(std::move(piece));
}

void write_line(const std::string& text)
{
    const std::string line = logTimestamp() + text;
    append_line(LogFilePath, line);
    keep_for_copy({line, true});
}

}  // namespace

std::string logTimestamp()
{
    const std::time_t now = std::time(nullptr);
    char buffer[30] = {};
    std::strftime(buffer, sizeof buffer, "[%Y-%m-%d %H:%M:%S] ", std::localtime(&now));
    return buffer;
}

void logBegin(const std::string& name)
{
    write_line("**********" + name + " Begin ******* ");
}

void logEnd(const std::string& name)
{
    write_line("**********" + name + " End ******* ");
}

void logValue(const std::string& name, std::int32_t value)
{
    write_line(name + " = " + std::to_string(value));
}

void logValue(const std::string& name, std::uint32_t value)
{
    write_line(name + " = " + std::to_string(value));
}

void logValue(const std::string& name, std::uint64_t value)
{
    write_line(name + " = " + std::to_string(value));
}

void logValue(const std::string& name, bool value)
{
    write_line(name + " = " + (value ? "1" : "0"));
}

void logValue(const std::string& name, std::string value)
{
    write_line(name + " = " + value);
}

void logValue(const std::string& name, const char* value)
{
    logValue(name, std::string(value));
}

void logMessage(const std::string& text)
{
    write_line(text);
}

void logPrintf(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list measuring;
    va_copy(measuring, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    if (length > 0)
        std::vsnprintf(&text[0], text.size() + 1, format, arguments);
    va_end(arguments);

    const std::string piece = logTimestamp() + " " + text;
    append_unended(LogFilePath, piece);
    keep_for_copy({piece, false});
}

void logAlsoTo(const std::string& path)
{
    copy_path = path;
    copy_state = path.empty() ? CopyState::off : CopyState::on;
    if (copy_state == CopyState::on) {
        // Made even when the run has no line to copy yet.
        append_unended(copy_path, "");
        for (const LogPiece& piece : pieces_before_decision)
            copy_piece(piece);
    }
    pieces_before_decision.clear();
    pieces_before_decision.shrink_to_fit();
}
