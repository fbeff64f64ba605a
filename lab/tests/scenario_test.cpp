#include "scenario.h"

#include <gtest/gtest.h>

#include <string>

#include "lab_error.h"

namespace {

// The message of the LabError that parsing throws, or "" when it parses.
std::string parse_error(const std::string& text) {
  try {
    lab::parse_scenario(text, "server.scenario");
  } catch (const lab::LabError& error) {
    return error.what();
  }
  return "";
}

TEST(ScenarioErrors, NameFileLineAndFault) {
  const std::string controller =
      "storcli-controller product=P subvendor=0x1F3A subdevice=0x1 driver=d\n";
  struct Case {
    std::string text, expected;
  } cases[] = {
      {"# comment\n\nfrobnicate x=1\n", "server.scenario:3: unknown keyword 'frobnicate'"},
      {"storcli-controller product=P subvendor=0x1F3A driver=d\n",
       "server.scenario:1: storcli-controller: 'subdevice=' is missing"},
      {controller + "enclosure eid=2 product=A colour=red\n",
       "server.scenario:2: enclosure: unknown attribute 'colour'"},
      {controller + "enclosure eid=2 product=A offline\n",
       "server.scenario:2: enclosure: unexpected word 'offline'"},
      {"enclosure eid=2 product=A\n",
       "server.scenario:1: enclosure: needs a storcli-controller line above it"},
      {controller + "enclosure eid=2 product=A\nenclosure eid=2 product=B\n",
       "server.scenario:3: enclosure: enclosure id 2 is already used on this controller"},
      {controller + "enclosure eid=x2 product=A\n",
       "server.scenario:2: enclosure: 'eid' must be a decimal number, not 'x2'"},
      {controller + "enclosure eid=2 product=A version=\"1 2\"\n",
       "server.scenario:2: enclosure: 'version' must be one word without blanks"},
      {"storcli-controller product=\"P subvendor=1\n",
       "server.scenario:1: a double quote is not closed"},
      {"image file=a file=b version=1\n", "server.scenario:1: 'file' is given twice"},
      {"image file=a version=1 kind=cpld\n",
       "server.scenario:1: image: 'kind' must be main or psoc"},
      {"drive channel=0 device=0 vendor=V model=M firmware=F\n",
       "server.scenario:1: drive: needs an arcconf-controller line above it"},
      {"arcconf-controller model=M\nexpander channel=2 device=0 vendor=V model=M firmware=1 "
       "connector=0 expander-id=1 "
       "inquiry=123456789012345678901\n",
       "server.scenario:2: expander: 'inquiry' holds more than 20 characters"},
      {"arcconf-controller model=M\ndrive channel=2 device=0 vendor=V model=M firmware=1\n"
       "drive channel=2 device=0 vendor=V model=M firmware=1\n",
       "server.scenario:3: drive: channel 2 device 0 is already used on this controller"},
      {"fail match=x status=0\n", "server.scenario:1: fail: 'status' must be 1 to 255"},
      {"fail match=x once always\n", "server.scenario:1: fail: say either 'once' or 'always'"},
      {"fail tool=storcli64 match=x\n",
       "server.scenario:1: fail: 'tool' must be storcli, arcconf or any"},
      {"line-ends dos\n", "server.scenario:1: line-ends: say either 'crlf' or 'lf'"},
  };
  for (const Case& c : cases) EXPECT_EQ(parse_error(c.text), c.expected) << c.text;
}

TEST(ScenarioErrors, MissingFileIsNamed) {
  try {
    lab::load_scenario("no-such.scenario");
    FAIL() << "a missing scenario must not load";
  } catch (const lab::LabError& error) {
    EXPECT_EQ(std::string(error.what()), "no-such.scenario: cannot open the scenario file");
  }
}

TEST(ScenarioReading, FillsTheServerInOrder) {
  lab::Scenario s = lab::parse_scenario(
      "line-ends crlf   # as the Windows tools write\r\n"
      "storcli-controller product=\"Tarvex 9500 HBA\" subvendor=0x1F3A subdevice=0x4110 "
      "driver=\"tv sas\"\r\n"
      "  enclosure eid=2 product=ABC36X version=1.2.3 psoc=0.9 psoc-mode=5 slots=36 port=\"C0 "
      "x4\"\r\n"
      "arcconf-controller model=\"Smart 2100\"\r\n"
      "expander channel=2 device=0 vendor=T model=X100 firmware=1.00 inquiry=1.02 connector=1 "
      "expander-id=7\r\n"
      "virtual-enclosure channel=2 device=9 vendor=T model=\"Virtual SGPIO\" firmware=0001\r\n"
      "image file=fw.rom version=1.2.4\r\n"
      "image file=psoc.rom version=1.0 kind=psoc missing\r\n"
      "fail tool=arcconf match=\"list*\" status=7 once message=\"Controller busy\"\r\n",
      "s");
  EXPECT_TRUE(s.crlf);
  ASSERT_EQ(s.storcli.size(), 1u);
  EXPECT_EQ(s.storcli[0].productName, "Tarvex 9500 HBA");
  EXPECT_EQ(s.storcli[0].driverName, "tv sas");
  ASSERT_EQ(s.storcli[0].enclosures.size(), 1u);
  const lab::StorcliEnclosure& e = s.storcli[0].enclosures[0];
  EXPECT_EQ(e.eid + e.productId + e.mainVersion + e.psocVersion + e.psocMode + e.slots + e.port,
            "2ABC36X1.2.30.9536C0 x4");
  ASSERT_EQ(s.arcconf.size(), 1u);
  ASSERT_EQ(s.arcconf[0].devices.size(), 2u);
  EXPECT_EQ(s.arcconf[0].devices[0].inquiryVersion, "1.02");
  EXPECT_EQ(s.arcconf[0].devices[1].kind, lab::DeviceKind::VirtualEnclosure);
  EXPECT_EQ(s.arcconf[0].devices[1].inquiryVersion, "0001");
  ASSERT_EQ(s.images.size(), 2u);
  EXPECT_EQ(s.images[1].kind, lab::ImageKind::Psoc);
  EXPECT_TRUE(s.images[1].missing);
  ASSERT_EQ(s.failures.size(), 1u);
  const lab::FailureRule& f = s.failures[0];
  EXPECT_FALSE(f.anyTool);
  EXPECT_EQ(f.tool, lab::Tool::Arcconf);
  EXPECT_EQ(f.line, 9);
  EXPECT_EQ(f.status, 7);
  EXPECT_TRUE(f.once);
  EXPECT_EQ(f.message, "Controller busy");
}

TEST(ScenarioReading, ShippedSamplesAreValid) {
  for (const char* name :
       {"storcli-hba-raid.scenario", "arcconf-server.scenario", "storcli-faults.scenario"})
    EXPECT_NO_THROW(lab::load_scenario(std::string(LAB_SCENARIO_DIR) + "/" + name)) << name;
}

}  // namespace
