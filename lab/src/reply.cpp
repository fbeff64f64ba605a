#include "reply.h"

namespace lab {

std::string render(const Reply& reply, bool crlf)
{
    const char* end = crlf ? "\r\n" : "\n";
    std::string out;
    for (const std::string& line : reply.lines)
        out += line + end;
    return out + reply.tail;
}

}  // namespace lab
