"""Reads a run of sasfwctl, as Ansible registered it, for the fleet summary:
the outcome, the meaning of the exit code and the expanders the console
names. The console texts are the utility's own, for both tool families."""

import re

BANNER = "Expander Firmware Update Utilty"
# Either one on a run that ends in 0 means images were written.
WRITTEN = ("All expander(s) firmware download success.",
           " Power cycle system is required to activate downloaded FW.")

MEANINGS = {
    1: "some expanders failed (storcli: and at least one was written)",
    161: "the profile has a line with too few fields behind good lines",
    162: "the profile gave no row",
    163: "failures, nothing written, the last expander was up to date",
    171: "no expander to work on",
    174: "the profile file cannot be opened",
    176: "the command line is bad",
}


def _count(pattern, text):
    match = re.search(pattern, text, re.MULTILINE)
    return int(match.group(1)) if match else 0


def _meaning(outcome, code):
    if outcome == "ok":
        return "every expander up to date"
    if outcome == "changed":
        return "images written, power cycle required"
    return MEANINGS.get(code, "failures, nothing written, the last expander failed:"
                              " status %s of its tool command" % code)


def sasfwctl_result(run):
    """Outcome, exit code, meaning and counts of one registered run; a run
    that never started (no banner) is failed with Ansible's message."""
    console = run.get("stdout", "")
    if BANNER not in console:
        reason = " ".join(str(run.get("msg", "the roll-out stopped before the run")).split())
        return {"outcome": "failed", "exit_code": run.get("rc", "-"),
                "meaning": "did not run: " + reason.replace("|", "/"),
                "found": 0, "written": 0, "failed": 0}

    code = run["rc"]
    found = console.count("Product ID:")
    failed = _count(r"^(\d+) expander\(s\) firmware download fail\.", console)
    written = _count(r"^(\d+) expander\(s\) firmware download success\.", console)
    if WRITTEN[0] in console:
        # The all-success ending gives no number: the rest were up to date.
        written = found - len(re.findall(r"(Firmware|FW) version is up-to-date\.", console))

    if code != 0:
        outcome = "failed"
    elif any(text in console for text in WRITTEN):
        outcome = "changed"
    else:
        outcome = "ok"
    return {"outcome": outcome, "exit_code": code, "meaning": _meaning(outcome, code),
            "found": found, "written": written, "failed": failed}


class FilterModule:
    def filters(self):
        return {"sasfwctl_result": sasfwctl_result}
