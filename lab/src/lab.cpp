#include "lab.h"

#include <cstdlib>
#include <fstream>

#include "lab_error.h"
#include "text.h"

namespace lab {

std::string find_scenario_path()
{
    const char* named = std::getenv("SASFWCTL_LAB_SCENARIO");
    return named && *named ? named : "lab.scenario";
}

std::string state_path(const std::string& scenario)
{
    return scenario + ".state";
}

std::string calls_path(const std::string& scenario)
{
    return scenario + ".calls";
}

Lab load_lab(const std::string& scenario)
{
    Lab lab;
    lab.scenario = load_scenario(scenario);
    lab.state = load_state(state_path(scenario));
    return lab;
}

void save_lab(const std::string& scenario, const Lab& lab)
{
    save_state(state_path(scenario), lab.state);
}

const char* tool_name(Tool tool)
{
    return tool == Tool::Arcconf ? "arcconf.exe" : "storcli64.exe";
}

void record_call(const std::string& scenario, Tool tool, const std::string& cwd,
                 const std::vector<std::string>& args)
{
    std::ofstream out(calls_path(scenario), std::ios::binary | std::ios::app);
    out << tool_name(tool) << '\t' << cwd << '\t' << join_args(args) << '\n';
    if (!out)
        throw LabError(calls_path(scenario), 0, "cannot append to the call record");
}

std::string storcli_key(std::size_t controller, const std::string& eid)
{
    return "storcli/c" + std::to_string(controller) + "/e" + eid;
}

std::string arcconf_key(std::size_t controllerNumber, const ArcconfDevice& device)
{
    return "arcconf/" + std::to_string(controllerNumber) + "/" + std::to_string(device.channel) +
           "/" + std::to_string(device.device);
}

std::string installed_version(const Lab& lab, const std::string& key, ImageKind kind,
                              const std::string& scenarioVersion)
{
    auto expander = lab.state.expanders.find(key);
    if (expander == lab.state.expanders.end())
        return scenarioVersion;
    auto installed = expander->second.installed.find(kind);
    return installed == expander->second.installed.end() ? scenarioVersion : installed->second;
}

void stage_image(Lab& lab, const std::string& key, const Image& image)
{
    lab.state.expanders[key].staged[image.kind] = StagedImage{image.file, image.version};
}

std::vector<std::string> power_cycle(LabState& state)
{
    std::vector<std::string> changes;
    for (auto& [key, expander] : state.expanders) {
        for (const auto& [kind, image] : expander.staged) {
            expander.installed[kind] = image.version;
            changes.push_back(key + (kind == ImageKind::Psoc ? " psoc " : " main ") +
                              image.version + " (" + image.file + ")");
        }
        expander.staged.clear();
    }
    return changes;
}

}  // namespace lab
