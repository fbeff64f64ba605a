#include "storcli.h"

#include "images.h"
#include "storcli_reports.h"
#include "text.h"

namespace lab {

namespace {

constexpr int FAILURE = 1;

// The object word of a command: /cN, /cN/eall or /cN/eM.
struct ObjectPath {
    bool valid = false;
    std::size_t controller = 0;
    bool enclosure = false;  // an /e part is there
    std::string eid;         // "all" or the enclosure id
};

ObjectPath parse_object(const std::string& word)
{
    ObjectPath path;
    std::string text = to_lower(word);
    if (text.compare(0, 2, "/c") != 0)
        return path;
    std::size_t slash = text.find('/', 2);
    std::string number = text.substr(2, slash == std::string::npos ? std::string::npos : slash - 2);
    if (!is_decimal(number) || number.size() > 4)
        return path;
    path.controller = std::stoul(number);
    if (slash == std::string::npos) {
        path.valid = true;
        return path;
    }
    path.enclosure = text.compare(slash, 2, "/e") == 0;
    path.eid = text.substr(slash + 2);
    path.valid = path.enclosure && (path.eid == "all" || is_decimal(path.eid));
    return path;
}

const StorcliEnclosure* find_enclosure(const StorcliController& controller, const std::string& eid)
{
    for (const StorcliEnclosure& enclosure : controller.enclosures)
        if (enclosure.eid == eid)
            return &enclosure;
    return nullptr;
}

// The words behind "download": src=FILE and the options of the download forms.
struct DownloadForm {
    std::string src;
    bool hasSrc = false, hasMode = false, hasBuffer = false, offline = false, forceActivate = false;
    std::string mode, bufferId;
};

// Takes "prefix" followed by a value, case aside, into the field.
bool take_value(const std::string& word, const std::string& prefix, bool& given, std::string& value)
{
    if (!starts_with_ci(word, prefix))
        return false;
    given = true;
    value = word.substr(prefix.size());
    return true;
}

bool take_flag(const std::string& word, const std::string& name, bool& given)
{
    if (!equals_ci(word, name))
        return false;
    given = true;
    return true;
}

bool read_download_word(const std::string& word, DownloadForm& form)
{
    return take_value(word, "src=", form.hasSrc, form.src) ||
           take_value(word, "mode=", form.hasMode, form.mode) ||
           take_value(word, "bufferid=", form.hasBuffer, form.bufferId) ||
           take_flag(word, "offline", form.offline) ||
           take_flag(word, "forceActivate", form.forceActivate);
}

// The tool takes a plain download, an offline download with a mode and a
// buffer id, or a forced activation in mode 5 with a buffer id.
bool form_is_valid(const DownloadForm& form)
{
    bool plain = !form.hasMode && !form.hasBuffer && !form.offline && !form.forceActivate;
    bool offline = form.offline && form.hasMode && form.hasBuffer;
    bool mode5 =
        !form.offline && form.forceActivate && form.hasMode && form.mode == "5" && form.hasBuffer;
    return form.hasSrc && (plain || offline || mode5);
}

std::string download_problem(const StorcliEnclosure& enclosure, const DownloadForm& form,
                             const Image& image)
{
    if (image.kind != ImageKind::Psoc)
        return std::string();
    if (!form.hasBuffer)
        return "Image " + image.file + " is a PSoC image and needs a mode and a buffer id";
    if (!enclosure.psocMode.empty() && form.mode != enclosure.psocMode)
        return "Download mode " + form.mode + " is not supported by the PSoC of enclosure " +
               enclosure.eid;
    return std::string();
}

Reply download(Lab& lab, const std::string& cwd, const ObjectPath& path,
               const std::vector<std::string>& args)
{
    std::string subject = controller_subject(path.controller);
    const StorcliEnclosure* enclosure =
        find_enclosure(lab.scenario.storcli[path.controller], path.eid);
    if (!enclosure)
        return storcli_failure(subject, FAILURE, "Enclosure " + path.eid + " not found");
    DownloadForm form;
    for (std::size_t i = 2; i < args.size(); ++i)
        if (!read_download_word(args[i], form))
            return storcli_failure(subject, FAILURE, "Syntax error at '" + args[i] + "'");
    if (!form_is_valid(form))
        return storcli_failure(subject, FAILURE, "Invalid download options");
    ImageLookup lookup = find_image(lab.scenario, cwd, form.src);
    if (!lookup.image)
        return storcli_failure(subject, FAILURE, lookup.problem);
    std::string problem = download_problem(*enclosure, form, *lookup.image);
    if (!problem.empty())
        return storcli_failure(subject, FAILURE, problem);
    stage_image(lab, storcli_key(path.controller, enclosure->eid), *lookup.image);
    return download_report(path.controller, enclosure->eid, *lookup.image);
}

bool is_show(const std::vector<std::string>& args)
{
    return (args.size() == 2 || (args.size() == 3 && equals_ci(args[2], "all"))) &&
           equals_ci(args[1], "show");
}

Reply controller_command(Lab& lab, const std::string& cwd, const ObjectPath& path,
                         const std::vector<std::string>& args)
{
    if (path.controller >= lab.scenario.storcli.size())
        return storcli_failure(controller_subject(path.controller), FAILURE,
                               "Controller " + std::to_string(path.controller) + " not found");
    if (!path.enclosure && is_show(args))
        return controller_report(lab, path.controller);
    if (path.eid == "all" && args.size() == 2 && equals_ci(args[1], "show"))
        return enclosure_report(lab, path.controller);
    if (path.enclosure && path.eid != "all" && args.size() > 1 && equals_ci(args[1], "download"))
        return download(lab, cwd, path, args);
    return storcli_failure(controller_subject(path.controller), FAILURE, "Invalid command");
}

}  // namespace

Reply storcli_answer(Lab& lab, const std::string& cwd, const std::vector<std::string>& args)
{
    if (args.size() == 2 && equals_ci(args[0], "show") && equals_ci(args[1], "ctrlcount"))
        return ctrlcount_report(lab);
    ObjectPath path = args.empty() ? ObjectPath() : parse_object(args[0]);
    if (!path.valid)
        return storcli_failure(status_subject(FAILURE), FAILURE, "Invalid command");
    return controller_command(lab, cwd, path, args);
}

Reply storcli_injected_failure(const std::vector<std::string>& args, int status,
                               const std::string& description)
{
    ObjectPath path = args.empty() ? ObjectPath() : parse_object(args[0]);
    return storcli_failure(path.valid ? controller_subject(path.controller)
                                      : status_subject(status),
                           status, description);
}

}  // namespace lab
