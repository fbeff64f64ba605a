"""The roll-out's reading of a run, for the cases that the simulated fleet
does not meet: a Windows console (CR LF), the codes 163 and 176, and runs
that never started. The consoles are those of real runs against the lab."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2]
                       / "deploy/ansible/roles/sasfwctl/filter_plugins"))
from sasfwctl_result import sasfwctl_result  # noqa: E402

BANNER = """
***************************************
 Tarvex Expander Firmware Update Utilty
 Version:2.3[April 6th, 2022]
***************************************
"""

ARCCONF_WRITTEN = BANNER + """
 Expander Product ID:X100
 Installed FW Vesion:1.02
 Target FW Version  :1.04
 Start to download expander firmware image...
 Firmware image download success.
 Power cycle system is required to activate downloaded FW.
 Expander Product ID:X200
 Installed FW Vesion:2.10
 Target FW Version  :2.10
 FW version is up-to-date.
------------------------------------

All expander(s) firmware download success.
System power cycle is required to activate the download firmware images
"""

# Storcli expanders as the console shows them, each behind a dash line.
ABC36X_FAILED = """
------------------------------------
Product ID: ABC36X
EID:        2
Installed Version:1.2.3
Target Version:   1.2.4
Start to download firmware image, please wait....
Image download fail.
"""

ABC24X_UP_TO_DATE = """
------------------------------------
Product ID: ABC24X
EID:        3
Installed Version:1.2.4
Target Version:   1.2.4
Firmware version is up-to-date.
"""


def storcli_run_with_one_failure(*expanders):
    return (BANNER + "\n%d Expander(s) Found.\n\n" % len(expanders) + "".join(expanders)
            + "------------------------------------\n\n1 expander(s) firmware download fail.\n")


STORCLI_FAILED_LAST_UP_TO_DATE = storcli_run_with_one_failure(ABC36X_FAILED, ABC24X_UP_TO_DATE)
STORCLI_LAST_FAILED = storcli_run_with_one_failure(ABC36X_FAILED)

BAD_COMMAND_LINE = BANNER + """
Parameters are missing or incorrect.
Usage:
sasfwctl.exe -p profile.txt [-32i] [-36i] [ -l logfile]
"""


class ReadingARun(unittest.TestCase):
    def test_windows_console_with_cr_lf_counts_the_same(self):
        result = sasfwctl_result({"rc": 0, "stdout": ARCCONF_WRITTEN.replace("\n", "\r\n")})
        self.assertEqual(result, {"outcome": "changed", "exit_code": 0,
                                  "meaning": "images written, power cycle required",
                                  "found": 2, "written": 1, "failed": 0})

    def test_failure_behind_an_up_to_date_expander_is_163(self):
        result = sasfwctl_result({"rc": 163, "stdout": STORCLI_FAILED_LAST_UP_TO_DATE})
        self.assertEqual(result["outcome"], "failed")
        self.assertEqual(result["meaning"],
                         "failures, nothing written, the last expander was up to date")
        self.assertEqual((result["found"], result["written"], result["failed"]), (2, 0, 1))

    def test_bad_command_line_is_176(self):
        result = sasfwctl_result({"rc": 176, "stdout": BAD_COMMAND_LINE})
        self.assertEqual((result["outcome"], result["meaning"]),
                         ("failed", "the command line is bad"))

    def test_windows_status_above_255_is_the_failing_tool_commands(self):
        result = sasfwctl_result({"rc": 3221225477, "stdout": STORCLI_LAST_FAILED})
        self.assertEqual(result["meaning"], "failures, nothing written, the last expander"
                                            " failed: status 3221225477 of its tool command")
        self.assertEqual((result["found"], result["written"], result["failed"]), (1, 0, 1))

    def test_utility_that_did_not_start_gives_ansibles_message_on_one_line(self):
        result = sasfwctl_result({"rc": 2, "stdout": "",
                                  "msg": "[Errno 2] No such file\nor directory | x"})
        self.assertEqual(result["outcome"], "failed")
        self.assertEqual(result["meaning"], "did not run: [Errno 2] No such file or directory / x")

    def test_server_without_a_run_is_failed(self):
        result = sasfwctl_result({})
        self.assertEqual((result["outcome"], result["exit_code"], result["found"]),
                         ("failed", "-", 0))


if __name__ == "__main__":
    unittest.main()
