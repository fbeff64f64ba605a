// What the simulated server has been through since the last reset: images
// staged by downloads, versions that power cycles made current, and the
// once-only failures that have fired. Kept apart from the scenario file,
// which only the operator writes.
#pragma once

#include <map>
#include <set>
#include <string>

#include "scenario.h"

namespace lab {

struct StagedImage {
    std::string file;
    std::string version;
};

struct ExpanderState {
    std::map<ImageKind, std::string> installed;
    std::map<ImageKind, StagedImage> staged;
};

struct LabState {
    std::map<std::string, ExpanderState> expanders;  // by expander key, see lab.h
    std::set<int> spentFailures;                     // scenario lines of fired once-only rules
};

LabState parse_state(const std::string& text, const std::string& file);
std::string format_state(const LabState& state);

// A missing state file is a fresh lab.
LabState load_state(const std::string& path);
void save_state(const std::string& path, const LabState& state);

}  // namespace lab
