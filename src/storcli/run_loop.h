// The storcli family's whole run.
#pragma once

#include <cstdint>

// Reads the profile, gates and discovers the controllers and their expanders,
// updates each expander, and sums up: 0, 1, 171, or a failing command's status
// (163 when the last expander was up to date).
std::int32_t ProcessStorcliAdapters();
