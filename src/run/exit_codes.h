// The process exit codes of a run. A failing storcli download may also end
// the run with the tool's own non-zero status (see ProcessStorcliAdapters).
#pragma once

#include <cstdint>

// Every expander worked on is up to date or was written.
constexpr std::int32_t RESULT_OK = 0;
// Storcli: some failed and one or more were written. Arcconf: one or more failed.
constexpr std::int32_t RESULT_SOME_FAILED = 1;
// The profile has a line with too few fields behind good lines (arcconf loop).
constexpr std::int32_t RESULT_PROFILE_SHORT_LINE = 161;
// The profile gave no row at all (arcconf loop).
constexpr std::int32_t RESULT_PROFILE_EMPTY = 162;
// Storcli: nothing written, failures, and the last expander was up to date.
constexpr std::int32_t RESULT_UP_TO_DATE = 163;
// No expander to work on.
constexpr std::int32_t RESULT_NO_EXPANDER = 171;
// The profile file cannot be opened (arcconf loop).
constexpr std::int32_t RESULT_PROFILE_UNREADABLE = 174;
// The command line is bad.
constexpr std::int32_t RESULT_BAD_COMMAND_LINE = 176;
