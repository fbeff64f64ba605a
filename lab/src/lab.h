// One simulated server at work: its scenario, its state, and where they live.
#pragma once

#include <string>
#include <vector>

#include "scenario.h"
#include "state.h"

namespace lab {

struct Lab {
    Scenario scenario;
    LabState state;
};

// SASFWCTL_LAB_SCENARIO when set, else lab.scenario in the working directory.
std::string find_scenario_path();
std::string state_path(const std::string& scenario);
std::string calls_path(const std::string& scenario);

Lab load_lab(const std::string& scenario);
void save_lab(const std::string& scenario, const Lab& lab);

const char* tool_name(Tool tool);

// One line per call: tool, working directory and arguments, separated by tabs.
void record_call(const std::string& scenario, Tool tool, const std::string& cwd,
                 const std::vector<std::string>& args);

// Expanders are known to the state by these keys.
std::string storcli_key(std::size_t controller, const std::string& eid);
std::string arcconf_key(std::size_t controllerNumber, const ArcconfDevice& device);

// The version an expander runs: the scenario's until a power cycle brings a staged one.
std::string installed_version(const Lab& lab, const std::string& key, ImageKind kind,
                              const std::string& scenarioVersion);
void stage_image(Lab& lab, const std::string& key, const Image& image);

// Makes every staged image current, as a power cycle does, and tells what changed.
std::vector<std::string> power_cycle(LabState& state);

}  // namespace lab
