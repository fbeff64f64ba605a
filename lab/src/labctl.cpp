#include "labctl.h"

#include <filesystem>

#include "lab.h"
#include "lab_error.h"
#include "text_table.h"

namespace lab {

namespace {

constexpr int USAGE_OR_FAULT = 2;

std::string staged_text(const LabState& state, const std::string& key, ImageKind kind)
{
    auto expander = state.expanders.find(key);
    if (expander == state.expanders.end())
        return "-";
    auto staged = expander->second.staged.find(kind);
    if (staged == expander->second.staged.end())
        return "-";
    return staged->second.version + " (" + staged->second.file + ")";
}

std::string or_dash(const std::string& text)
{
    return text.empty() ? "-" : text;
}

void add_storcli_rows(const Lab& lab, TextTable& table)
{
    for (std::size_t c = 0; c < lab.scenario.storcli.size(); ++c) {
        for (const StorcliEnclosure& e : lab.scenario.storcli[c].enclosures) {
            std::string key = storcli_key(c, e.eid);
            table.add_row({key, e.productId,
                           or_dash(installed_version(lab, key, ImageKind::Main, e.mainVersion)),
                           staged_text(lab.state, key, ImageKind::Main),
                           or_dash(installed_version(lab, key, ImageKind::Psoc, e.psocVersion)),
                           staged_text(lab.state, key, ImageKind::Psoc)});
        }
    }
}

// The main version of an arcconf expander is told as its inquiry data holds
// it, with the device report's firmware beside it when the two differ.
std::string arcconf_main_text(const Lab& lab, const std::string& key, const ArcconfDevice& d)
{
    std::string inquiry = installed_version(lab, key, ImageKind::Main, d.inquiryVersion);
    std::string report = installed_version(lab, key, ImageKind::Main, d.firmware);
    return report == inquiry ? inquiry : inquiry + " (report " + report + ")";
}

void add_arcconf_rows(const Lab& lab, TextTable& table)
{
    for (std::size_t c = 0; c < lab.scenario.arcconf.size(); ++c) {
        for (const ArcconfDevice& d : lab.scenario.arcconf[c].devices) {
            if (d.kind != DeviceKind::Expander)
                continue;
            std::string key = arcconf_key(c + 1, d);
            table.add_row({key, d.model, arcconf_main_text(lab, key, d),
                           staged_text(lab.state, key, ImageKind::Main),
                           or_dash(installed_version(lab, key, ImageKind::Psoc, d.psocVersion)),
                           staged_text(lab.state, key, ImageKind::Psoc)});
        }
    }
}

void show_spent_failures(const Lab& lab, std::ostream& out)
{
    for (const FailureRule& rule : lab.scenario.failures)
        if (rule.once && lab.state.spentFailures.count(rule.line))
            out << "Once-only failure of line " << rule.line << " (" << rule.pattern
                << ") has fired.\n";
}

int show(const std::string& scenario, std::ostream& out)
{
    Lab lab = load_lab(scenario);
    out << "Scenario " << scenario << "\n\n";
    TextTable table(
        {{"Expander"}, {"Product"}, {"Main"}, {"Main staged"}, {"PSoC"}, {"PSoC staged"}});
    add_storcli_rows(lab, table);
    add_arcconf_rows(lab, table);
    for (const std::string& line : table.lines())
        out << line << '\n';
    show_spent_failures(lab, out);
    return 0;
}

int powercycle(const std::string& scenario, std::ostream& out)
{
    Lab lab = load_lab(scenario);
    std::vector<std::string> changes = power_cycle(lab.state);
    save_lab(scenario, lab);
    for (const std::string& change : changes)
        out << "Activated " << change << '\n';
    out << "Power cycle done: " << changes.size() << " staged image(s) activated.\n";
    return 0;
}

int reset(const std::string& scenario, std::ostream& out)
{
    std::error_code ignored;
    std::filesystem::remove(state_path(scenario), ignored);
    std::filesystem::remove(calls_path(scenario), ignored);
    out << "Lab state and call record of " << scenario << " removed.\n";
    return 0;
}

int usage(std::ostream& err)
{
    err << "usage: labctl show | powercycle | reset\n"
           "The scenario is $SASFWCTL_LAB_SCENARIO, or lab.scenario in the working directory.\n";
    return USAGE_OR_FAULT;
}

}  // namespace

int run_labctl(const std::vector<std::string>& args, const std::string& scenario, std::ostream& out,
               std::ostream& err)
{
    if (args.size() != 1)
        return usage(err);
    try {
        if (args[0] == "show")
            return show(scenario, out);
        if (args[0] == "powercycle")
            return powercycle(scenario, out);
        if (args[0] == "reset")
            return reset(scenario, out);
    } catch (const LabError& error) {
        err << "labctl: " << error.what() << '\n';
        return USAGE_OR_FAULT;
    }
    return usage(err);
}

}  // namespace lab
