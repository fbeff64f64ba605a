// The arcconf family's whole run.
#pragma once

#include <cstdint>

// Reads the profile, discovers the devices, updates each device whose model
// a profile row names, and sums up: 0, 1, 171, or the profile's 161/162/174.
std::int32_t ProcessArcconfAdapters();
