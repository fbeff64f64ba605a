// The command line: the input's zero bytes separate the words.
#include "support.h"

#include "run/command_line.h"
#include "run/run_state.h"

#include <string>
#include <vector>

namespace {

std::vector<std::string> words_of(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::string> words{"sasfwctl"};
    if (size == 0)
        return words;
    words.emplace_back();
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0)
            words.emplace_back();
        else
            words.back() += static_cast<char>(data[i]);
    }
    return words;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::enter_scratch("command_line");
    std::vector<std::string> words = words_of(data, size);
    std::vector<char*> argv;
    for (std::string& word : words)
        argv.push_back(&word[0]);
    argv.push_back(nullptr);

    const std::int32_t result = parseArgs(static_cast<int>(words.size()), argv.data(), Options);
    // Only the last word can lack its value, so at most one is missing.
    fuzz::check(result == 0 || result == 1);
    fuzz::check(WAIT_SECONDS <= static_cast<std::uint32_t>(MAX_WAIT_SECONDS));
    fuzz::reset_run_state();
    return 0;
}
