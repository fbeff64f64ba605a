// What every fuzz target shares. The readers under test open their reports
// in the working directory and append to ./log.txt there, so each target
// process works in a scratch directory of its own, feeds the reader through
// the file it opens, and empties the run's globals after each input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

// Once per process: a fresh scratch directory as working directory, the
// console into /dev/null, and no copy of the log kept in memory.
void enter_scratch(const char* target);

// Writes the input byte for byte into `name` in the working directory.
void write_input(const std::string& name, const std::uint8_t* data, std::size_t size);

// The input up to the first zero byte, and what follows it (empty when
// there is no zero byte): two texts from one input.
std::string head(const std::uint8_t* data, std::size_t size);
std::string tail(const std::uint8_t* data, std::size_t size);

// Empties every global of the run, freeing what the lists own, and removes
// the log so that it does not grow across inputs.
void reset_run_state();

// Stops the fuzzer with a crash report when a property does not hold.
void check(bool property);

}  // namespace fuzz
