#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "lab.h"
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
    "enclosure eid=2 product=ABC36X version=1.2.3 psoc=0.9 slots=36 pd=12 port=\"C0 & C1 x8\"\n"
    "enclosure eid=69 product=SGPIO slots=8 sim=1\n"
    "storcli-controller product=\"Tarvex 9560-8i RAID\" subvendor=0x1F3A subdevice=0x4212 "
    "driver=tvraid6\n"
    "enclosure eid=62 product=ABC24X version=1.1.0 psoc=0.8 psoc-mode=5\n"
    "image file=fw.rom version=1.2.4\n"
    "image file=psoc.rom version=1.0 kind=psoc\n"
    "image file=gone.rom version=9.9 missing\n";

struct Row {
  std::string eid, version;
};

// Reads the enclosure report the way the utility does: rows between the
// second rule after "Properties :" and a rule in column 0; the first word
// is the enclosure id, all behind the product id is the version.
std::vector<Row> utility_rows(const std::string& report, const std::string& productId) {
  std::vector<Row> rows;
  int rules = 0;
  bool inProperties = false, inTable = false;
  for (const std::string& line : lines_of(report)) {
    if (inTable && line.compare(0, 10, "----------") == 0) break;
    if (inTable && line.find(productId) != std::string::npos) {
      std::string rest = line.substr(line.find(productId) + productId.size());
      rows.push_back({lab::split_words(line)[0], lab::trim(rest)});
    }
    if (!inTable && line.find("Properties :") != std::string::npos) inProperties = true;
    if (inProperties && !inTable && line.find("----------") != std::string::npos)
      inTable = ++rules == 2;
  }
  return rows;
}

class Storcli : public lab_test::LabTest {
 protected:
  void SetUp() override {
    LabTest::SetUp();
    write_scenario(kServer);
    write_file("fw.rom", 1000);
    write_file("psoc.rom", 300);
    write_file("gone.rom", 10);
    write_file("stranger.rom", 10);
  }

  std::string installed(std::size_t controller, const std::string& productId) {
    std::vector<Row> rows =
        utility_rows(storcli("/c" + std::to_string(controller) + "/eall show").output, productId);
    return rows.size() == 1 ? rows[0].version : "rows: " + std::to_string(rows.size());
  }
};

TEST_F(Storcli, ControllerCountAndHeader) {
  lab::ToolRun run = storcli("show ctrlcount");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(only_value(run.output, "Controller Count = "), "2");
  for (const char* line : {"Status Code = 0", "Status = Success", "Description = None"})
    EXPECT_TRUE(has_line(run.output, line)) << line;
  EXPECT_EQ(lines_of(run.output)[0].rfind("CLI Version = ", 0), 0u);
  EXPECT_EQ(lines_of(run.output)[1].rfind("Operating system = ", 0), 0u);
}

TEST_F(Storcli, ControllerReportHoldsEachKeyOnce) {
  lab::ToolRun run = storcli("/c1 show");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(only_value(run.output, "Product Name = "), "Tarvex 9560-8i RAID");
  EXPECT_EQ(only_value(run.output, "SubVendor Id = "), "0x1F3A");
  EXPECT_EQ(only_value(run.output, "SubDevice Id = "), "0x4212");
  EXPECT_EQ(only_value(run.output, "Driver Name ="), " tvraid6");
  EXPECT_TRUE(has_line(run.output, "Controller = 1"));
  EXPECT_EQ(storcli("/c1 show all").output, run.output);
}

TEST_F(Storcli, EnclosureTableHasTheToolsShape) {
  std::vector<std::string> lines = lines_of(storcli("/c0/eall show").output);
  auto properties = std::find(lines.begin(), lines.end(), "Properties :");
  ASSERT_NE(properties, lines.end());
  EXPECT_EQ(*(properties + 1), std::string(12, '='));
  auto top = std::find_if(properties, lines.end(),
                          [](const std::string& l) { return l.rfind("---", 0) == 0; });
  ASSERT_GE(lines.end() - top, 6);
  const std::string rule = *top;
  EXPECT_EQ(rule.find_first_not_of('-'), std::string::npos);
  EXPECT_EQ(*(top + 1),
            "EID State Slots PD PS Fans TSs Alms SIM Port#      ProdID VendorSpecific ");
  EXPECT_EQ(*(top + 2), rule);
  EXPECT_EQ(*(top + 3),
            "  2 OK       36 12  0    0   0    0   0 C0 & C1 x8 ABC36X 1.2.3          ");
  EXPECT_EQ(*(top + 4),
            " 69 OK        8  0  0    0   0    0   1 -          SGPIO                 ");
  EXPECT_EQ(*(top + 5), rule);
  for (int i = 1; i <= 4; ++i)
    EXPECT_EQ((top + i)->size(), rule.size()) << "row " << i << " is as wide as the rules";
  EXPECT_NE(std::find(top + 6, lines.end(),
                      "EID=Enclosure Device ID | PD=Physical drive count | PS=Power Supply count"),
            lines.end());
}

TEST_F(Storcli, UtilityReadsEnclosureIdAndVersion) {
  std::vector<Row> rows = utility_rows(storcli("/c0/eall show").output, "ABC36X");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].eid, "2");
  EXPECT_EQ(rows[0].version, "1.2.3");
  EXPECT_EQ(installed(1, "ABC24X"), "1.1.0");
}

TEST_F(Storcli, FailuresReportStatusAndDescription) {
  struct Case {
    std::string args, description;
  } cases[] = {
      {"/c2 show", "Controller 2 not found"},
      {"/c0/e7 download src=fw.rom", "Enclosure 7 not found"},
      {"/c0/e2 download src=nothere.rom", "Image file nothere.rom not found"},
      {"/c0/e2 download src=gone.rom", "Image file gone.rom not found"},
      {"/c0/e2 download src=stranger.rom", "Image file stranger.rom is not a valid firmware image"},
      {"/c0/e2 download src=fw.rom mode=E bufferid=0", "Invalid download options"},
      {"/c0/e2 download src=psoc.rom mode=5 bufferid=2", "Invalid download options"},
      {"/c0/e2 download src=fw.rom speed=2", "Syntax error at 'speed=2'"},
      {"/c0/e2 download src=psoc.rom",
       "Image psoc.rom is a PSoC image and needs a mode and a buffer id"},
      {"/c1/e62 download src=psoc.rom mode=E offline bufferid=2",
       "Download mode E is not supported by the PSoC of enclosure 62"},
      {"/c0/eall download src=fw.rom", "Invalid command"},
      {"show all", "Invalid command"},
  };
  for (const Case& c : cases) {
    lab::ToolRun run = storcli(c.args);
    EXPECT_EQ(run.status, 1) << c.args;
    EXPECT_TRUE(has_line(run.output, "Status = Failure")) << c.args;
    EXPECT_EQ(only_value(run.output, "Description = "), c.description) << c.args;
  }
  EXPECT_EQ(lab::load_state(scenario + ".state").expanders.size(), 0u)
      << "a failed download stages nothing";
}

TEST_F(Storcli, EveryDownloadFormStagesTheImage) {
  const char* forms[] = {
      "/c1/e62 download src=fw.rom",
      "/c0/e2 download src=fw.rom mode=E offline bufferid=0",
      "/c0/e2 download src=psoc.rom mode=E offline bufferid=2",
      "/c0/e2 download src=psoc.rom mode=E offline forceActivate bufferid=2",
      "/c1/e62 download src=psoc.rom forceActivate mode=5 bufferid=2",
  };
  for (const char* form : forms) {
    lab::ToolRun run = storcli(form);
    EXPECT_EQ(run.status, 0) << form;
    EXPECT_TRUE(has_line(run.output, "Status = Success")) << form;
  }
  lab::LabState state = lab::load_state(scenario + ".state");
  EXPECT_EQ(state.expanders["storcli/c0/e2"].staged[lab::ImageKind::Main].version, "1.2.4");
  EXPECT_EQ(state.expanders["storcli/c0/e2"].staged[lab::ImageKind::Psoc].file, "psoc.rom");
  EXPECT_EQ(state.expanders["storcli/c1/e62"].staged[lab::ImageKind::Main].version, "1.2.4");
  EXPECT_EQ(state.expanders["storcli/c1/e62"].staged[lab::ImageKind::Psoc].version, "1.0");
}

TEST_F(Storcli, PsocFirstFormFailsAndRetryFormWorks) {
  // Enclosure 62 takes its PSoC image in mode 5 only, as a profile with mode E meets it.
  EXPECT_EQ(storcli("/c1/e62 download src=psoc.rom mode=E offline bufferid=2").status, 1);
  EXPECT_EQ(storcli("/c1/e62 download src=psoc.rom forceActivate mode=5 bufferid=2").status, 0);
}

TEST_F(Storcli, StagedImageShowsOnlyAfterPowerCycle) {
  ASSERT_EQ(storcli("/c0/e2 download src=fw.rom mode=E offline bufferid=0").status, 0);
  EXPECT_EQ(installed(0, "ABC36X"), "1.2.3");
  std::ostringstream out, err;
  ASSERT_EQ(lab::run_labctl({"powercycle"}, scenario, out, err), 0);
  EXPECT_EQ(installed(0, "ABC36X"), "1.2.4");
  EXPECT_EQ(installed(1, "ABC24X"), "1.1.0") << "other expanders keep their version";
}

}  // namespace
