// The arcconf.exe stand-in: the commands it understands and what they do.
#pragma once

#include <string>
#include <vector>

#include "lab.h"
#include "reply.h"

namespace lab {

Reply arcconf_answer(Lab& lab, const std::string& cwd, const std::vector<std::string>& args);

}  // namespace lab
