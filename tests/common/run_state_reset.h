// A fresh start inside one process, for a unit test or a fuzz input: every
// global of the run emptied, what the lists own freed, no copy of the log.
#pragma once

void reset_run_state();
