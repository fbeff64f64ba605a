#include "failures.h"

#include "text.h"

namespace lab {

namespace {

bool applies(const LabState& state, const FailureRule& rule, Tool tool, const std::string& argLine)
{
    if (!rule.anyTool && rule.tool != tool)
        return false;
    if (rule.once && state.spentFailures.count(rule.line))
        return false;
    return glob_match(rule.pattern, argLine);
}

}  // namespace

const FailureRule* fire_failure(Lab& lab, Tool tool, const std::vector<std::string>& args)
{
    std::string argLine = join_args(args);
    for (const FailureRule& rule : lab.scenario.failures) {
        if (!applies(lab.state, rule, tool, argLine))
            continue;
        if (rule.once)
            lab.state.spentFailures.insert(rule.line);
        return &rule;
    }
    return nullptr;
}

}  // namespace lab
