// The built programs as the utility meets them: started by the command
// processor with their output redirected into files.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "lab.h"
#include "support.h"

namespace fs = std::filesystem;

namespace {

using lab_test::has_line;

const char* const kServer =
    "line-ends crlf\n"
    "storcli-controller product=\"Tarvex 9500-16i HBA\" subvendor=0x1F3A subdevice=0x4110 "
    "driver=tvsas3\n"
    "enclosure eid=2 product=ABC36X version=1.2.3 psoc=0.9\n"
    "arcconf-controller model=\"Tarvex SmartHBA 2100-8i\"\n"
    "expander channel=2 device=0 vendor=TARVEX model=X100 firmware=1.00 connector=0 expander-id=7\n"
    "image file=fw.rom version=1.2.4\n"
    "fail match=\"/c0/e2 download src=fw.rom\" status=4 once\n";

// putenv keeps the text it is given on some platforms, so it stays in one place.
void set_scenario_variable(const std::string& path) {
  static char setting[4096];
  std::snprintf(setting, sizeof setting, "SASFWCTL_LAB_SCENARIO=%s", path.c_str());
  putenv(setting);
}

// std::system gives a wait status on POSIX (code in the second byte) and the
// exit code itself on Windows; the lab's codes are all below 256.
int exit_code(int raw) {
  return (raw & 0xff) == 0 ? raw >> 8 : raw;
}

class Programs : public lab_test::LabTest {
 protected:
  void SetUp() override {
    LabTest::SetUp();
    previous_ = fs::current_path();
    fs::current_path(dir);
    set_scenario_variable("");
    write_scenario(kServer);
    write_file("fw.rom", 100);
  }

  void TearDown() override { fs::current_path(previous_); }

  // Runs a program in the scratch folder, its streams going to "out" and "err".
  int run(const char* program, const std::string& args) {
    std::string command =
        fs::absolute(program).make_preferred().string() + " " + args + " > out 2> err";
    return exit_code(std::system(command.c_str()));
  }

 private:
  fs::path previous_;
};

TEST_F(Programs, ReportReachesTheFileByteForByte) {
  ASSERT_EQ(run(LAB_STORCLI, "/c0/eall show"), 0);
  std::string written = read_file("out");
  EXPECT_EQ(written, storcli("/c0/eall show").output);
  EXPECT_EQ(written.find("\r\r"), std::string::npos);
  EXPECT_EQ(written.substr(written.size() - 2), "\r\n");
}

TEST_F(Programs, InquiryFileEndsWithTheDataLine) {
  ASSERT_EQ(run(LAB_ARCCONF, "PASSTHROUGH 1 2 0 read 512 [ 12 00 00 02 00 00 ] rawhex noprompt"),
            0);
  std::string written = read_file("out");
  ASSERT_GT(written.size(), 512u * 3);
  EXPECT_EQ(written.substr(written.size() - 3), " 00") << "no line end after the data";
}

TEST_F(Programs, InjectedStatusIsTheExitStatus) {
  EXPECT_EQ(run(LAB_STORCLI, "/c0/e2 download src=fw.rom"), 4);
  EXPECT_TRUE(has_line(read_file("out"), "Status = Failure"));
  EXPECT_EQ(run(LAB_STORCLI, "/c0/e2 download src=fw.rom"), 0) << "the failure was once only";
}

TEST_F(Programs, FaultyScenarioIsToldOnStandardError) {
  write_scenario("line-ends crlf\nenclosure eid=2 product=ABC36X\n");
  EXPECT_EQ(run(LAB_ARCCONF, "list"), 2);
  EXPECT_EQ(read_file("out"), "");
  EXPECT_NE(
      read_file("err").find("lab.scenario:2: enclosure: needs a storcli-controller line above it"),
      std::string::npos)
      << read_file("err");
}

TEST_F(Programs, ScenarioNamedByTheEnvironment) {
  fs::create_directories("elsewhere");
  fs::rename("lab.scenario", "elsewhere/server.scenario");
  set_scenario_variable((fs::current_path() / "elsewhere" / "server.scenario").string());
  EXPECT_EQ(lab::find_scenario_path(),
            (fs::current_path() / "elsewhere" / "server.scenario").string());
  ASSERT_EQ(run(LAB_STORCLI, "show ctrlcount"), 0);
  EXPECT_TRUE(has_line(read_file("out"), "Controller Count = 1"));
  EXPECT_TRUE(fs::exists("elsewhere/server.scenario.calls"));
  EXPECT_FALSE(fs::exists("lab.scenario.calls"));
  set_scenario_variable("");
  EXPECT_EQ(lab::find_scenario_path(), "lab.scenario");
}

TEST_F(Programs, LabctlPowerCycleBringsTheStagedVersion) {
  ASSERT_EQ(run(LAB_STORCLI, "/c0/e2 download src=fw.rom"), 4);
  ASSERT_EQ(run(LAB_STORCLI, "/c0/e2 download src=fw.rom"), 0);
  ASSERT_EQ(run(LAB_LABCTL, "powercycle"), 0);
  ASSERT_EQ(run(LAB_STORCLI, "/c0/eall show"), 0);
  EXPECT_NE(read_file("out").find(" ABC36X 1.2.4 "), std::string::npos) << read_file("out");
  EXPECT_EQ(run(LAB_LABCTL, "restart"), 2);
}

}  // namespace
