#include "lab.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "lab_error.h"
#include "labctl.h"
#include "support.h"
#include "text.h"

namespace {

using lab_test::has_line;
using lab_test::lines_of;
using lab_test::only_value;

const char* const kServer =
    "storcli-controller product=\"Tarvex 9500-16i HBA\" subvendor=0x1F3A subdevice=0x4110 "
    "driver=tvsas3\n"
    "enclosure eid=2 product=ABC36X version=1.2.3 psoc=0.9\n"
    "arcconf-controller model=\"Tarvex SmartHBA 2100-8i\"\n"
    "expander channel=2 device=0 vendor=TARVEX model=X100 firmware=1.00 psoc=0.9 connector=0 "
    "expander-id=7\n"
    "image file=fw.rom version=1.2.4\n"
    "image file=psoc.rom version=1.0 kind=psoc\n";

// The words of the table row of labctl show that starts with the expander key.
std::string row_of(const std::string& shown, const std::string& key) {
  for (const std::string& line : lines_of(shown))
    if (line.rfind(key + " ", 0) == 0) return lab::join_args(lab::split_words(line));
  return "no row for " + key;
}

class Lab : public lab_test::LabTest {
 protected:
  void SetUp() override {
    LabTest::SetUp();
    write_file("fw.rom", 100);
    write_file("psoc.rom", 100);
  }

  int labctl(const std::string& command, std::string* output = nullptr) {
    std::ostringstream out, err;
    int status = lab::run_labctl({command}, scenario, out, err);
    if (output) *output = out.str() + err.str();
    return status;
  }
};

TEST_F(Lab, OnceOnlyFailureFiresOnceAndStagesNothing) {
  write_scenario(std::string(kServer) +
                 "fail tool=storcli match=\"/c0/e2 download src=fw.rom*\" status=4 once "
                 "message=\"Enclosure is busy\"\n");
  lab::ToolRun failed = storcli("/c0/e2 download src=fw.rom mode=E offline bufferid=0");
  EXPECT_EQ(failed.status, 4);
  EXPECT_TRUE(has_line(failed.output, "Controller = 0"));
  EXPECT_TRUE(has_line(failed.output, "Status = Failure"));
  EXPECT_EQ(only_value(failed.output, "Description = "), "Enclosure is busy");
  EXPECT_TRUE(lab::load_state(scenario + ".state").expanders.empty());
  EXPECT_EQ(storcli("/c0/e2 download src=fw.rom mode=E offline bufferid=0").status, 0);
  EXPECT_EQ(storcli("/c0/e2 download src=fw.rom mode=E offline bufferid=0").status, 0);
  std::string shown;
  labctl("show", &shown);
  EXPECT_NE(shown.find("Once-only failure of line 7"), std::string::npos) << shown;
}

TEST_F(Lab, AlwaysFailureFiresEveryTimeForItsToolOnly) {
  write_scenario(std::string(kServer) +
                 "fail tool=arcconf match=\"PASSTHROUGH 1 2 0 read *\" status=9 message=\"Device "
                 "not responding\"\n"
                 "fail match=\"show ctrlcount\" status=3 always\n");
  for (int call = 0; call < 2; ++call) {
    lab::ToolRun run = arcconf("PASSTHROUGH 1 2 0 read 512 [ 12 00 00 02 00 00 ] rawhex noprompt");
    EXPECT_EQ(run.status, 9);
    EXPECT_TRUE(has_line(run.output, "Device not responding"));
    EXPECT_EQ(lines_of(run.output).back(), "Command aborted.");
    lab::ToolRun count = storcli("show ctrlcount");
    EXPECT_EQ(count.status, 3);
    EXPECT_TRUE(has_line(count.output, "Status Code = 3"));
  }
  EXPECT_EQ(arcconf("getconfig 1 PD").status, 0) << "other commands are not matched";
}

TEST_F(Lab, EveryCallIsRecordedWithToolDirectoryAndArguments) {
  write_scenario(kServer);
  storcli("show ctrlcount");
  storcli("/c9 show");
  arcconf("list");
  std::vector<std::string> calls = lines_of(read_file("lab.scenario.calls"));
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_EQ(calls[0], "storcli64.exe\t" + dir + "\tshow ctrlcount");
  EXPECT_EQ(calls[1], "storcli64.exe\t" + dir + "\t/c9 show") << "failing calls are recorded too";
  EXPECT_EQ(calls[2], "arcconf.exe\t" + dir + "\tlist");
}

TEST_F(Lab, LineEndsFollowTheScenario) {
  write_scenario(std::string("line-ends crlf\n") + kServer);
  std::string crlf = storcli("/c0/eall show").output;
  std::size_t lineFeeds = 0;
  for (std::size_t i = 0; i < crlf.size(); ++i) {
    if (crlf[i] != '\n') continue;
    ++lineFeeds;
    ASSERT_TRUE(i > 0 && crlf[i - 1] == '\r') << "bare line feed at byte " << i;
  }
  EXPECT_GT(lineFeeds, 10u);
  std::string inquiry =
      arcconf("PASSTHROUGH 1 2 0 read 512 [ 12 00 00 02 00 00 ] rawhex noprompt").output;
  EXPECT_NE(inquiry.find(".\r\n0d 00"), std::string::npos)
      << "the line before the data ends in CR LF";
  EXPECT_EQ(inquiry.substr(inquiry.size() - 3), " 00") << "the data line has no line end";

  write_scenario(std::string("line-ends lf\n") + kServer);
  EXPECT_EQ(storcli("/c0/eall show").output.find('\r'), std::string::npos);
  write_scenario(kServer);
  EXPECT_EQ(storcli("/c0/eall show").output.find('\r'), std::string::npos)
      << "LF unless the scenario asks for CR LF";
}

TEST_F(Lab, LabctlShowsPowerCyclesAndResets) {
  write_scenario(kServer);
  ASSERT_EQ(storcli("/c0/e2 download src=psoc.rom mode=E offline bufferid=2").status, 0);
  ASSERT_EQ(arcconf("expanderupgrade 1 enclosure 0 2 0 expander fw.rom E noprompt").status, 0);
  std::string shown;
  ASSERT_EQ(labctl("show", &shown), 0);
  EXPECT_EQ(row_of(shown, "storcli/c0/e2"), "storcli/c0/e2 ABC36X 1.2.3 - 0.9 1.0 (psoc.rom)");
  EXPECT_EQ(row_of(shown, "arcconf/1/2/0"), "arcconf/1/2/0 X100 1.00 1.2.4 (fw.rom) 0.9 -");

  std::string cycled;
  ASSERT_EQ(labctl("powercycle", &cycled), 0);
  EXPECT_NE(cycled.find("2 staged image(s) activated"), std::string::npos) << cycled;
  labctl("show", &shown);
  EXPECT_EQ(row_of(shown, "storcli/c0/e2"), "storcli/c0/e2 ABC36X 1.2.3 - 1.0 -");
  EXPECT_EQ(row_of(shown, "arcconf/1/2/0"), "arcconf/1/2/0 X100 1.2.4 - 0.9 -");

  ASSERT_EQ(labctl("reset"), 0);
  EXPECT_FALSE(std::filesystem::exists(scenario + ".state"));
  EXPECT_FALSE(std::filesystem::exists(scenario + ".calls"));
  EXPECT_TRUE(std::filesystem::exists(scenario)) << "the operator's scenario stays";
}

TEST_F(Lab, LabctlRefusesWrongCommandsAndFaultyLabs) {
  write_scenario("storcli-controller product=P\n");
  std::string message;
  EXPECT_EQ(labctl("show", &message), 2);
  EXPECT_NE(message.find("lab.scenario:1: storcli-controller: 'subvendor=' is missing"),
            std::string::npos)
      << message;
  EXPECT_EQ(labctl("reboot", &message), 2);
  EXPECT_NE(message.find("usage: labctl show | powercycle | reset"), std::string::npos);
}

TEST_F(Lab, FaultyStateFileIsNamedWithItsLine) {
  write_scenario(kServer);
  std::ofstream(scenario + ".state") << "# state\nstaged storcli/c0/e2 main\n";
  try {
    storcli("show ctrlcount");
    FAIL() << "a faulty state file must stop the tool";
  } catch (const lab::LabError& error) {
    EXPECT_EQ(std::string(error.what()),
              scenario + ".state:2: not a state line; 'labctl reset' starts afresh");
  }
}

}  // namespace
