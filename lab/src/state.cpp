#include "state.h"

#include <fstream>
#include <sstream>
#include <vector>

#include "lab_error.h"
#include "text.h"

namespace lab {

namespace {

const char* kind_name(ImageKind kind)
{
    return kind == ImageKind::Psoc ? "psoc" : "main";
}

ImageKind kind_from_name(const std::string& name, const std::string& file, int line)
{
    if (name == "main")
        return ImageKind::Main;
    if (name == "psoc")
        return ImageKind::Psoc;
    throw LabError(file, line, "image kind must be main or psoc, not '" + name + "'");
}

void read_state_line(LabState& state, const std::vector<std::string>& words,
                     const std::string& file, int line)
{
    if (words[0] == "installed" && words.size() == 4) {
        state.expanders[words[1]].installed[kind_from_name(words[2], file, line)] = words[3];
    } else if (words[0] == "staged" && words.size() == 5) {
        state.expanders[words[1]].staged[kind_from_name(words[2], file, line)] =
            StagedImage{words[3], words[4]};
    } else if (words[0] == "spent" && words.size() == 2 && is_decimal(words[1])) {
        state.spentFailures.insert(std::stoi(words[1]));
    } else {
        throw LabError(file, line, "not a state line; 'labctl reset' starts afresh");
    }
}

}  // namespace

LabState parse_state(const std::string& text, const std::string& file)
{
    LabState state;
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        std::vector<std::string> words = split_words(line);
        if (words.empty() || words[0][0] == '#')
            continue;
        read_state_line(state, words, file, number);
    }
    return state;
}

std::string format_state(const LabState& state)
{
    std::ostringstream out;
    out << "# Lab state, kept by the stand-ins and labctl; 'labctl reset' forgets it.\n";
    for (const auto& [key, expander] : state.expanders) {
        for (const auto& [kind, version] : expander.installed)
            out << "installed " << key << ' ' << kind_name(kind) << ' ' << version << '\n';
        for (const auto& [kind, image] : expander.staged)
            out << "staged " << key << ' ' << kind_name(kind) << ' ' << image.file << ' '
                << image.version << '\n';
    }
    for (int line : state.spentFailures)
        out << "spent " << line << '\n';
    return out.str();
}

LabState load_state(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return LabState();
    std::ostringstream text;
    text << in.rdbuf();
    return parse_state(text.str(), path);
}

void save_state(const std::string& path, const LabState& state)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << format_state(state);
    if (!out)
        throw LabError(path, 0, "cannot write the state file");
}

}  // namespace lab
