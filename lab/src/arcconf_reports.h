// The reports of the arcconf.exe stand-in.
#pragma once

#include <string>

#include "lab.h"
#include "reply.h"

namespace lab {

Reply arcconf_failure(int status, const std::string& description);
Reply arcconf_success(const std::vector<std::string>& lines);
Reply list_report(const Lab& lab);
Reply physical_device_report(const Lab& lab, std::size_t controllerNumber);
// The hex line comes last and has no line end.
Reply inquiry_report(const ArcconfDevice& device, const std::string& version, std::size_t length);

}  // namespace lab
