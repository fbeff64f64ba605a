"""The roll-out's reading of a run, for the cases that the simulated fleet
does not meet: a Windows console (CR LF), code 163, a Windows status above
255, and runs that never started. The consoles are the utility's own,
abridged to the lines around what is read."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2]
                       / "deploy/ansible/roles/sasfwctl/filter_plugins"))
from sasfwctl_result import sasfwctl_result  # noqa: E402

BANNER = "\n Tarvex Expander Firmware Update Utilty\n Version:2.3[April 6th, 2022]\n"
ARCCONF_WRITTEN = BANNER + """
 Expander Product ID:X100
 Firmware image download success.
 Power cycle system is required to activate downloaded FW.
 Expander Product ID:X200
 FW version is up-to-date.
------------------------------------

All expander(s) firmware download success.
"""
DASHES = "\n------------------------------------\n"
ABC36X_FAILED = DASHES + "Product ID: ABC36X\nInstalled Version:1.2.3\nImage download fail.\n"
ABC24X_UP_TO_DATE = DASHES + "Product ID: ABC24X\nFirmware version is up-to-date.\n"


def storcli_run_with_one_failure(*expanders):
    return (BANNER + "\n%d Expander(s) Found.\n" % len(expanders) + "".join(expanders)
            + DASHES + "\n1 expander(s) firmware download fail.\n")


# A registered run and what the summary's columns show of it: outcome, exit
# code, meaning, expanders found, written, failed.
CASES = [
    ("Windows console, CR LF", {"rc": 0, "stdout": ARCCONF_WRITTEN.replace("\n", "\r\n")},
     ("changed", 0, "images written, power cycle required", 2, 1, 0)),
    ("failure behind an up-to-date expander",
     {"rc": 163, "stdout": storcli_run_with_one_failure(ABC36X_FAILED, ABC24X_UP_TO_DATE)},
     ("failed", 163, "failures, nothing written, the last expander was up to date", 2, 0, 1)),
    ("Windows status above 255",
     {"rc": 3221225477, "stdout": storcli_run_with_one_failure(ABC36X_FAILED)},
     ("failed", 3221225477, "failures, nothing written, the last expander failed:"
                            " status 3221225477 of its tool command", 1, 0, 1)),
    ("utility that did not start, Ansible's message on one line",
     {"rc": 2, "stdout": "", "msg": "[Errno 2] No such file\nor directory | x"},
     ("failed", 2, "did not run: [Errno 2] No such file or directory / x", 0, 0, 0)),
    ("server that dropped out before the run", {},
     ("failed", "-", "did not run: the roll-out stopped before the run", 0, 0, 0)),
]
FIELDS = ("outcome", "exit_code", "meaning", "found", "written", "failed")


class ReadingARun(unittest.TestCase):
    def test_cases(self):
        for what, run, expected in CASES:
            with self.subTest(what):
                result = sasfwctl_result(run)
                self.assertEqual(tuple(result[field] for field in FIELDS), expected)


if __name__ == "__main__":
    unittest.main()
