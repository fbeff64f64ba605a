#include "tool_run.h"

#include <filesystem>
#include <iostream>

#include "arcconf.h"
#include "arcconf_reports.h"
#include "failures.h"
#include "lab.h"
#include "lab_error.h"
#include "platform/binary_stdout.h"
#include "storcli.h"

namespace lab {

namespace {

constexpr int LAB_FAULT = 2;

Reply answer(Tool tool, Lab& lab, const std::string& cwd, const std::vector<std::string>& args)
{
    if (const FailureRule* rule = fire_failure(lab, tool, args))
        return tool == Tool::Storcli ? storcli_injected_failure(args, rule->status, rule->message)
                                     : arcconf_failure(rule->status, rule->message);
    return tool == Tool::Storcli ? storcli_answer(lab, cwd, args) : arcconf_answer(lab, cwd, args);
}

}  // namespace

ToolRun run_tool(Tool tool, const std::string& scenario, const std::string& cwd,
                 const std::vector<std::string>& args)
{
    Lab lab = load_lab(scenario);
    record_call(scenario, tool, cwd, args);
    Reply reply = answer(tool, lab, cwd, args);
    save_lab(scenario, lab);
    return ToolRun{reply.status, render(reply, lab.scenario.crlf)};
}

int tool_main(Tool tool, int argc, char** argv)
{
    try {
        ToolRun run = run_tool(tool, find_scenario_path(), std::filesystem::current_path().string(),
                               std::vector<std::string>(argv + 1, argv + argc));
        set_stdout_binary();
        std::cout << run.output << std::flush;
        return run.status;
    } catch (const LabError& error) {
        std::cerr << tool_name(tool) << " (lab): " << error.what() << std::endl;
        return LAB_FAULT;
    }
}

}  // namespace lab
