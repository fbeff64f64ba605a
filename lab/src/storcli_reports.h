// The reports of the storcli64.exe stand-in.
#pragma once

#include <string>

#include "lab.h"
#include "reply.h"

namespace lab {

// The subject line names the controller ("Controller = 0") or, for
// commands without one, the status code ("Status Code = 0").
std::string controller_subject(std::size_t controller);
std::string status_subject(int status);

Reply storcli_failure(const std::string& subject, int status, const std::string& description);
Reply ctrlcount_report(const Lab& lab);
Reply controller_report(const Lab& lab, std::size_t controller);
Reply enclosure_report(const Lab& lab, std::size_t controller);
Reply download_report(std::size_t controller, const std::string& eid, const Image& image);

}  // namespace lab
