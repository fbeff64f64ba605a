#include <fcntl.h>
#include <io.h>

#include <cstdio>

#include "platform/binary_stdout.h"

namespace lab {

// Text mode would turn each LF into CR LF and double the CR of a CR LF.
void set_stdout_binary()
{
    _setmode(_fileno(stdout), _O_BINARY);
}

}  // namespace lab
