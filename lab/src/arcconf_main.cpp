#include "tool_run.h"

int main(int argc, char** argv)
{
    return lab::tool_main(lab::Tool::Arcconf, argc, argv);
}
