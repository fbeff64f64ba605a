// The simulated server that the stand-ins answer for, as read from a scenario file.
#pragma once

#include <string>
#include <vector>

namespace lab {

struct StorcliEnclosure {
    std::string eid;
    std::string state = "OK";
    std::string slots = "0";
    std::string pd = "0";
    std::string ps = "0";
    std::string fans = "0";
    std::string tss = "0";
    std::string alms = "0";
    std::string sim = "0";
    std::string port = "-";
    std::string productId;
    std::string mainVersion;
    std::string psocVersion;
    std::string psocMode;  // empty: the PSoC takes a download in any mode
};

struct StorcliController {
    std::string productName;
    std::string subVendorId;
    std::string subDeviceId;
    std::string driverName;
    std::vector<StorcliEnclosure> enclosures;
};

enum class DeviceKind { Expander, HardDrive, VirtualEnclosure };

struct ArcconfDevice {
    DeviceKind kind = DeviceKind::Expander;
    int channel = 0;
    int device = 0;
    std::string vendor;
    std::string model;
    std::string firmware;        // what the device report shows
    std::string inquiryVersion;  // bytes 36..55 of the inquiry data
    std::string psocVersion;
    std::string connector;
    std::string expanderId;
    std::string state = "Ready";
    std::string diskName;
    std::string size;
    std::string sasAddress;
};

struct ArcconfController {
    std::string model;
    std::string serial;
    std::vector<ArcconfDevice> devices;
};

enum class ImageKind { Main, Psoc };

struct Image {
    std::string file;
    std::string version;
    ImageKind kind = ImageKind::Main;
    bool missing = false;  // the tools act as if the file were not there
};

enum class Tool { Storcli, Arcconf };

struct FailureRule {
    int line = 0;  // identifies the rule in the state file
    bool anyTool = true;
    Tool tool = Tool::Storcli;
    std::string pattern;
    int status = 1;
    bool once = false;
    std::string message;
};

struct Scenario {
    std::string file;
    bool crlf = false;
    std::vector<StorcliController> storcli;
    std::vector<ArcconfController> arcconf;
    std::vector<Image> images;
    std::vector<FailureRule> failures;
};

// Throws LabError naming the file and line of the first fault.
Scenario parse_scenario(const std::string& text, const std::string& file);
Scenario load_scenario(const std::string& path);

}  // namespace lab
