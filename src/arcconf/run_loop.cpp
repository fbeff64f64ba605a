#include "arcconf/run_loop.h"

#include "run/exit_codes.h"

std::int32_t ProcessArcconfAdapters()
{
    return RESULT_NO_EXPANDER;
}
