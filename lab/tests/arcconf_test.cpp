#include <gtest/gtest.h>

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

const char* const kServer =
    "arcconf-controller model=\"Tarvex SmartHBA 2100-8i\"\n"
    "drive channel=0 device=0 vendor=SEAGATE model=ST1200 firmware=ST31 disk=PhysicalDrive0\n"
    "expander channel=2 device=0 vendor=TARVEX model=X100 firmware=1.00 inquiry=1.02 psoc=0.9 "
    "connector=0 "
    "expander-id=7 disk=Scsi2\n"
    "drive channel=2 device=1 vendor=HGST model=HUH7212 firmware=A3Z0\n"
    "expander channel=2 device=2 vendor=TARVEX model=X100 firmware=1.00 connector=1 expander-id=8 "
    "state=Degraded\n"
    "virtual-enclosure channel=2 device=9 vendor=TARVEX model=\"Virtual SGPIO\" firmware=0001\n"
    "image file=x100_fw.bin version=1.04\n"
    "image file=x100_psoc.bin version=1.0 kind=psoc\n";

struct Device {
  std::string channel, device, model, diskName, firmware, vendor, state, expanderId, connector;
};

std::string value_of(const std::string& line) {
  std::size_t colon = line.find(':');
  return colon == std::string::npos ? std::string() : lab::trim(line.substr(colon + 1));
}

std::string connector_of(const std::string& location) {
  std::string part = location.substr(0, location.find(','));
  std::size_t blank = part.find(' ');
  return location.find(',') == std::string::npos || blank == std::string::npos
             ? std::string()
             : lab::trim(part.substr(blank + 1));
}

std::string char_after(const std::string& line, const std::string& key) {
  std::size_t at = line.find(key) + key.size();
  return at < line.size() ? line.substr(at, 1) : std::string();
}

void fill(Device& d, const std::string& line) {
  const std::pair<const char*, std::string Device::*> keys[] = {
      {"Model", &Device::model},       {"Disk Name", &Device::diskName},
      {"Firmware", &Device::firmware}, {"Vendor", &Device::vendor},
      {"State", &Device::state},       {"Expander ID", &Device::expanderId}};
  for (const auto& [key, member] : keys) {
    if (line.find(key) != std::string::npos) {
      d.*member = value_of(line);
      return;
    }
  }
  if (line.find("Reported Location") != std::string::npos)
    d.connector = connector_of(value_of(line));
}

// Reads the physical device report the way the utility does: substring keys
// in a fixed order, and an expander only where the line right after
// "Device #" names an enclosure services device.
std::vector<Device> utility_devices(const std::string& report) {
  std::vector<std::string> lines = lines_of(report);
  std::vector<Device> devices;
  std::string channel;
  bool inBlock = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    if (line.find("Channel #") != std::string::npos) {
      channel = char_after(line, "Channel #");
    } else if (line.find("Device #") != std::string::npos) {
      std::string device = char_after(line, "Device #");
      inBlock = ++i < lines.size() &&
                lines[i].find("Device is an Enclosure Services Device") != std::string::npos;
      if (inBlock) devices.push_back(Device{channel, device, "", "", "", "", "", "", ""});
    } else if (inBlock) {
      fill(devices.back(), line);
    }
  }
  return devices;
}

std::vector<int> inquiry_bytes(const std::string& hexLine) {
  std::vector<int> bytes;
  for (const std::string& token : lab::split_words(hexLine))
    bytes.push_back(std::stoi(token, nullptr, 16));
  return bytes;
}

std::string inquiry_version(const std::string& output) {
  std::vector<int> bytes = inquiry_bytes(lines_of(output).back());
  return bytes.size() < 56 ? "short"
                           : lab::trim(std::string(bytes.begin() + 36, bytes.begin() + 56));
}

const std::string kInquiry = " read 512 [ 12 00 00 02 00 00 ] rawhex noprompt";

class Arcconf : public lab_test::LabTest {
 protected:
  void SetUp() override {
    LabTest::SetUp();
    write_scenario(kServer);
    write_file("x100_fw.bin", 2000);
    write_file("x100_psoc.bin", 107251);  // 01 a2 f3
  }

  void expect_failure(const std::string& args, const std::string& why) {
    lab::ToolRun run = arcconf(args);
    EXPECT_EQ(run.status, 1) << args;
    EXPECT_TRUE(has_line(run.output, why)) << args << "\n" << run.output;
    EXPECT_EQ(lines_of(run.output).back(), "Command aborted.") << args;
  }
};

TEST_F(Arcconf, ListCountsControllers) {
  lab::ToolRun run = arcconf("list");
  EXPECT_EQ(run.status, 0);
  std::vector<std::string> lines = lines_of(run.output);
  EXPECT_EQ(lines.front(), "Controllers found: 1");
  EXPECT_EQ(lines.back(), "Command completed successfully.");
}

TEST_F(Arcconf, UtilityFindsExpandersAndVirtualEnclosure) {
  lab::ToolRun run = arcconf("getconfig 1 PD");
  ASSERT_EQ(run.status, 0);
  EXPECT_EQ(lines_of(run.output).back(), "Command completed successfully.");
  std::vector<Device> devices = utility_devices(run.output);
  ASSERT_EQ(devices.size(), 3u) << "hard drives are no enclosure services devices";
  const Device& first = devices[0];
  EXPECT_EQ(first.channel + first.device + first.connector, "200");
  EXPECT_EQ(first.vendor + "/" + first.model + "/" + first.firmware, "TARVEX/X100/1.00");
  EXPECT_EQ(first.state + "/" + first.expanderId + "/" + first.diskName, "Ready/7/Scsi2");
  const Device& second = devices[1];
  EXPECT_EQ(second.channel + second.device + second.connector, "221");
  EXPECT_EQ(second.state + "/" + second.expanderId + "/" + second.diskName, "Degraded/8/");
  EXPECT_EQ(devices[2].model, "Virtual SGPIO");
  EXPECT_EQ(devices[2].device, "9");
}

TEST_F(Arcconf, InquiryHexIsTheLastLineWithoutLineEnd) {
  lab::ToolRun run = arcconf("PASSTHROUGH 1 2 0" + kInquiry);
  ASSERT_EQ(run.status, 0);
  ASSERT_FALSE(run.output.empty());
  EXPECT_NE(run.output.back(), '\n');
  std::string hexLine = lines_of(run.output).back();
  EXPECT_EQ(hexLine.size(), 512u * 3 - 1) << "two digits per byte, single blanks between";
  EXPECT_EQ(hexLine.find_first_not_of("0123456789abcdef "), std::string::npos);
  std::vector<int> bytes = inquiry_bytes(hexLine);
  EXPECT_EQ(bytes[0], 0x0d) << "enclosure services device";
  EXPECT_EQ(std::string(bytes.begin() + 8, bytes.begin() + 14), "TARVEX");
  EXPECT_EQ(inquiry_version(run.output), "1.02") << "the inquiry data holds its own version";
  EXPECT_EQ(inquiry_version(arcconf("PASSTHROUGH 1 2 2" + kInquiry).output), "1.00");
}

TEST_F(Arcconf, CommandsAgainstWrongTargetsFail) {
  expect_failure("getconfig 2 PD", "Invalid controller number.");
  expect_failure("PASSTHROUGH 1 2 5" + kInquiry, "No device found at channel 2, device 5.");
  expect_failure("PASSTHROUGH 1 2 0 read 512 [ 28 00 00 02 00 00 ] rawhex noprompt",
                 "Only INQUIRY can be read from this device.");
  expect_failure("PASSTHROUGH 1 2 1 write [ 3B 0E 02 00 00 00 01 a2 f3 00 ] x100_psoc.bin noprompt",
                 "The device is not an expander.");
  expect_failure("expanderupgrade 1 enclosure 1 2 0 expander x100_fw.bin E noprompt",
                 "No expander behind connector 1.");
  expect_failure("expanderupgrade 1 enclosure 0 2 0 cpld x100_fw.bin E noprompt",
                 "This enclosure has no cpld to upgrade.");
  // An empty connector leaves the shell one word short.
  expect_failure("expanderupgrade 1 enclosure 2 0 expander x100_fw.bin E noprompt",
                 "Invalid expanderupgrade command.");
  expect_failure("expanderupgrade 1 enclosure 0 2 0 expander x100_psoc.bin E noprompt",
                 "Image x100_psoc.bin is not an expander image.");
  expect_failure("expanderupgrade 1 enclosure 0 2 0 expander absent.bin E noprompt",
                 "Image file absent.bin not found.");
  expect_failure("expanderupgrade 1 enclosure 0 2 0 expander x100_fw.bin E",
                 "Invalid expanderupgrade command.");
}

TEST_F(Arcconf, WriteBufferChecksLengthAgainstImage) {
  expect_failure("PASSTHROUGH 1 2 0 write [ 3B 0E 02 00 00 00 01 a2 f4 00 ] x100_psoc.bin noprompt",
                 "Parameter list length 107252 does not match the 107251 bytes of x100_psoc.bin.");
  expect_failure("PASSTHROUGH 1 2 0 write [ 3B 0E 02 00 00 00 00 07 d0 00 ] x100_fw.bin noprompt",
                 "Image x100_fw.bin is not a PSoC image.");
  expect_failure("PASSTHROUGH 1 2 0 write [ 3B 0E 02 00 00 01 a2 f3 00 ] x100_psoc.bin noprompt",
                 "Invalid passthrough write command.");
  EXPECT_EQ(lab::load_state(scenario + ".state").expanders.size(), 0u)
      << "a failed write stages nothing";
  lab::ToolRun run =
      arcconf("PASSTHROUGH 1 2 0 write [ 3B 0E 02 00 00 00 01 a2 f3 00 ] x100_psoc.bin noprompt");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_EQ(lines_of(run.output).back(), "Command completed successfully.");
  EXPECT_EQ(lab::load_state(scenario + ".state")
                .expanders["arcconf/1/2/0"]
                .staged[lab::ImageKind::Psoc]
                .version,
            "1.0");
}

TEST_F(Arcconf, UpgradeTakesEffectAtPowerCycle) {
  ASSERT_EQ(arcconf("expanderupgrade 1 enclosure 0 2 0 expander x100_fw.bin E noprompt").status, 0);
  EXPECT_EQ(inquiry_version(arcconf("PASSTHROUGH 1 2 0" + kInquiry).output), "1.02");
  std::ostringstream out, err;
  ASSERT_EQ(lab::run_labctl({"powercycle"}, scenario, out, err), 0);
  EXPECT_EQ(inquiry_version(arcconf("PASSTHROUGH 1 2 0" + kInquiry).output), "1.04");
  std::vector<Device> devices = utility_devices(arcconf("getconfig 1 PD").output);
  ASSERT_EQ(devices.size(), 3u);
  EXPECT_EQ(devices[0].firmware, "1.04") << "the device report follows the new image too";
  EXPECT_EQ(devices[1].firmware, "1.00");
}

}  // namespace
