#include "platform/platform.h"
#include "run/run_state.h"
