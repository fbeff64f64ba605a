#include <iostream>

#include "lab.h"
#include "labctl.h"

int main(int argc, char** argv)
{
    return lab::run_labctl(std::vector<std::string>(argv + 1, argv + argc),
                           lab::find_scenario_path(), std::cout, std::cerr);
}
