#include "platform/binary_stdout.h"

namespace lab {

// POSIX streams never translate line ends.
void set_stdout_binary()
{
}

}  // namespace lab
