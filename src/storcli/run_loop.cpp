#include "storcli/run_loop.h"

#include "run/exit_codes.h"

std::int32_t ProcessStorcliAdapters()
{
    return RESULT_NO_EXPANDER;
}
