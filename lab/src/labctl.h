// The lab's control program: power cycle, show, reset.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace lab {

// Exit status 0 on success, 2 for a wrong command line or a faulty lab.
int run_labctl(const std::vector<std::string>& args, const std::string& scenario, std::ostream& out,
               std::ostream& err);

}  // namespace lab
