// The storcli family's first question: how many controllers the tool serves.
#pragma once

#include <cstdint>

// The count from "ctrlcount.rst"; every failure gives 0. Under `test` no
// tool runs and the file already there is read; `debug` traces on the console.
std::uint32_t getAdapterCount(bool test, std::int32_t debug);
