// Where the copy of the run's log (-l) may go. The copy is appended to line
// by line while the run goes on, so it must never land in a file that the
// run itself reads or writes: a report being read would grow without end,
// a profile would gain rows.
#pragma once

#include <string>

// Why `name` may not take the copy, or an empty text when it may. Refused
// are the profile at `profile_path`, ./log.txt, an image that the profile
// names, a name of the tools' output files in the working directory (paths
// resolved before they are compared), anything that is there but is no
// regular file, and a file whose first line is no log line.
std::string log_copy_refusal(const std::string& name, const std::string& profile_path);
