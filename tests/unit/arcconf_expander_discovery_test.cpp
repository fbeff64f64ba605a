#include "arcconf/ARCCONF_UTL.h"

#include "test_support.h"

namespace {

const std::string MARKER = "         Device is an Enclosure Services Device\r\n";

// The block of one enclosure services device as the report indents it.
std::string expander_block(const std::string& device, const std::string& model)
{
    return "      Device #" + device + "\r\n" + MARKER +
           "         State                              : Ready\r\n"
           "         Vendor                             : ACME\r\n"
           "         Model                              : " + model + "\r\n"
           "         Firmware                           : 1.00\r\n"
           "         Expander ID                        : 7\r\n"
           "         Reported Location                  : Connector 1, Device 2\r\n";
}

using Fields = std::vector<std::string>;

// channel, deviceIndex, connectorId, state, vendor, model, firmware,
// expanderId, deviceType, installedVersion, diskName
Fields fields(const MCHP_DEVICE& device)
{
    return {device.channel,    device.deviceIndex, device.connectorId,      device.state,
            device.vendor,     device.model,       device.firmware,         device.expanderId,
            device.deviceType, device.installedVersion, device.diskName};
}

const std::string HARD_DRIVE = "      Device #1\r\n"
                               "         Device is a Hard drive\r\n"
                               "         State                              : Online\r\n"
                               "         Vendor                             : DISKCO\r\n"
                               "         Model                              : HD1000\r\n"
                               "         Firmware                           : 9.9\r\n"
                               "         Disk Name                          : PhysicalDrive1\r\n";

}  // namespace

class ArcconfExpanderDiscoveryTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        ARCCONF_UTL::test_mode = true;
        ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(1));
        ARCCONF_UTL::adapters.push_back(new MCHP_ADAPTER(2));
    }

    static MCHP_ADAPTER* adapter(std::size_t place) { return ARCCONF_UTL::adapters.at(place); }

    // The devices that one report of controller 1 yields.
    static const std::vector<MCHP_DEVICE*>& parsed(const std::string& report)
    {
        write_file("report", report);
        ARCCONF_UTL::parse_getconfig_pd(adapter(0), "report");
        return ARCCONF_UTL::expanders;
    }
};

TEST_F(ArcconfExpanderDiscoveryTest, AnEnclosureServicesDeviceBlockFillsItsRecord)
{
    const auto& devices = parsed("Controllers found: 1\r\nChannel #2:\r\n" +
                                 expander_block("0", "X100"));
    ASSERT_EQ(devices.size(), 1u);
    EXPECT_EQ(fields(*devices[0]), (Fields{"2", "0", "1", "Ready", "ACME", "X100", "1.00", "7",
                                           "expander", "", ""}));
    EXPECT_EQ(devices[0]->adapter, adapter(0));
    // The marker line is consumed by the device step and never logged as a line.
    EXPECT_TRUE(log_has_run({"line = Channel #2:", "channel number line. channel = 2",
                             "line =       Device #0", "device id = 0", "an expected device",
                             "**********MCHP_DEVICE::MCHP_DEVICE Begin ******* ",
                             "Device Channel = 2", "Device index = 0",
                             "**********MCHP_DEVICE::MCHP_DEVICE End ******* ",
                             "line =          State                              : Ready"}));
    EXPECT_TRUE(log_has_run({"connecter id = 1", "**********ARCCONF_UTL::get_connectorid End ******* ",
                             "**********ARCCONF_UTL::parse_getconfig_pd End ******* "}));
}

TEST_F(ArcconfExpanderDiscoveryTest, NumbersGiveOneCharacterAndTheChannelCarriesOver)
{
    const auto& devices = parsed("Channel #10:\nDevice #12\n" + MARKER + "Channel #\nDevice #\n" +
                                 MARKER + "Channel #3:\n" + expander_block("1", "B") +
                                 expander_block("2", "C"));
    ASSERT_EQ(devices.size(), 4u);
    EXPECT_EQ(devices[0]->channel + devices[0]->deviceIndex, "11");
    EXPECT_EQ(devices[1]->channel + devices[1]->deviceIndex, "");
    EXPECT_EQ(devices[3]->channel + devices[3]->deviceIndex, "32");

    // Each report starts without a channel.
    write_file("report2", expander_block("5", "D"));
    ARCCONF_UTL::parse_getconfig_pd(adapter(1), "report2");
    ASSERT_EQ(devices.size(), 5u);
    EXPECT_EQ(devices[4]->channel, "");
    EXPECT_EQ(devices[4]->adapter, adapter(1));
}

TEST_F(ArcconfExpanderDiscoveryTest, TheMarkerCountsOnlyOnTheVeryNextLine)
{
    const std::string unmarked = "Device #0\n\n" + MARKER + "Model : A\n" +
                                 "Device #1 Device is an Enclosure Services Device\nModel : B\n" +
                                 // The device right behind is swallowed as the marker line.
                                 "Device #2\nDevice #3\n" + MARKER + "Model : C\n" +
                                 "Device #4\nChannel #5:\n" + MARKER;
    EXPECT_TRUE(parsed(unmarked).empty());
    EXPECT_FALSE(log_has_run({"device id = 3"}));
    EXPECT_FALSE(log_has_run({"channel number line. channel = 5"}));

    // A "Device #" line at the end of the report reads no marker.
    for (const char* report : {"Device #0", "Device #0\n", "Device #0\r\n",
                               "Device #0 Device is an Enclosure Services Device"})
        EXPECT_TRUE(parsed(report).empty()) << report;
}

TEST_F(ArcconfExpanderDiscoveryTest, OtherDevicesEndTheBlockButChannelLinesDoNot)
{
    const auto& devices = parsed("Channel #0:\n" + expander_block("0", "X100") + HARD_DRIVE +
                                 expander_block("2", "X200") + "Channel #1:\n" +
                                 "Model : LATE\n" + HARD_DRIVE);
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_EQ(fields(*devices[0]), (Fields{"0", "0", "1", "Ready", "ACME", "X100", "1.00", "7",
                                           "expander", "", ""}));
    EXPECT_EQ(fields(*devices[1]), (Fields{"0", "2", "1", "Ready", "ACME", "LATE", "1.00", "7",
                                           "expander", "", ""}));
}

TEST_F(ArcconfExpanderDiscoveryTest, KeysAreTestedInTheirOrderAndTheLastLineWins)
{
    const auto& devices = parsed("Device #0\n" + MARKER +
                                 "Firmware Model : M1\n"
                                 "Vendor State : V1\n"
                                 "Disk Name Firmware : D1\n"
                                 "Expander ID Reported Location : E1\n"
                                 "Channel #4 Device #5 Model : C1\n"
                                 "Firmware : 1.0\nFirmware : 2.0\n"
                                 "Vendor : ACME\nVendor without colon\n"
                                 "Reported Location : Enclosure 2, Slot 1\n"
                                 "model : lower\nExpander Id : lower\n");
    ASSERT_EQ(devices.size(), 1u);
    EXPECT_EQ(fields(*devices[0]),
              (Fields{"", "0", "2", "", "", "M1", "2.0", "E1", "expander", "", "D1"}));
    EXPECT_TRUE(log_has_run({"channel number line. channel = 4"}));
}

TEST_F(ArcconfExpanderDiscoveryTest, EveryControllerIsAskedAndAMissingReportAddsNothing)
{
    write_file("getconfigpd_2", "Channel #1:\n" + expander_block("0", "A") + expander_block("3", "B"));
    ARCCONF_UTL::getExpanderList();
    ASSERT_EQ(ARCCONF_UTL::expanders.size(), 2u);
    EXPECT_EQ(ARCCONF_UTL::expanders[0]->deviceIndex, "0");
    EXPECT_EQ(ARCCONF_UTL::expanders[1]->deviceIndex, "3");
    EXPECT_EQ(ARCCONF_UTL::expanders[1]->adapter, adapter(1));
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::getExpanderList Begin ******* ",
                             "Command: = arcconf.exe  getconfig 1 PD > getconfigpd_1 2>&1",
                             "Result: = 0", "**********ARCCONF_UTL::parse_getconfig_pd Begin ******* ",
                             "Open log file fail.",
                             "**********ARCCONF_UTL::parse_getconfig_pd End ******* ",
                             "Command: = arcconf.exe  getconfig 2 PD > getconfigpd_2 2>&1"}));
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::getExpanderList End ******* "}));
}

TEST_F(ArcconfExpanderDiscoveryTest, GetValueTakesAllBehindTheFirstColon)
{
    EXPECT_EQ(ARCCONF_UTL::get_value("   State    : Ready \r"), "Ready");
    EXPECT_EQ(ARCCONF_UTL::get_value("Time : 10:15:02"), "10:15:02");
    EXPECT_EQ(ARCCONF_UTL::get_value("Model :"), "");
    EXPECT_FALSE(log_has_run({"ERROR line, no : charachter"}));
    EXPECT_EQ(ARCCONF_UTL::get_value("Model = X100"), "");
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::get_value Begin ******* ",
                             "ERROR line, no : charachter",
                             "**********ARCCONF_UTL::get_value End ******* "}));
}

TEST_F(ArcconfExpanderDiscoveryTest, TheConnectorIsBehindTheFirstBlankBeforeTheFirstComma)
{
    EXPECT_EQ(ARCCONF_UTL::get_connectorid("Connector 1, Device 2"), "1");
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::get_connectorid Begin ******* ",
                             "connecter id = 1",
                             "**********ARCCONF_UTL::get_connectorid End ******* "}));
    EXPECT_EQ(ARCCONF_UTL::get_connectorid("Connector 12 , Device 2, Slot 3"), "12");
    EXPECT_EQ(ARCCONF_UTL::get_connectorid("Enclosure Connector 3, Device 2"), "Connector 3");
    EXPECT_EQ(ARCCONF_UTL::get_connectorid("Connector\t4, Device 2"), "");

    std::filesystem::remove("log.txt");
    EXPECT_EQ(ARCCONF_UTL::get_connectorid("Connector 1"), "");
    EXPECT_EQ(ARCCONF_UTL::get_connectorid("Connector1, Device 2"), "");
    EXPECT_EQ(ARCCONF_UTL::get_connectorid(""), "");
    EXPECT_FALSE(log_has_run({"connecter id = "}));
}

TEST_F(ArcconfExpanderDiscoveryTest, ClearDeletesTheDevicesBeforeTheControllers)
{
    parsed(expander_block("0", "A"));
    std::filesystem::remove("log.txt");
    ARCCONF_UTL::clear();
    EXPECT_EQ(log_lines(), (std::vector<std::string>{
                               "**********ARCCONF_UTL::clear Begin ******* ", "destruct device",
                               "**********MCHP_ADAPTER::~MCHP_ADAPTER Begin ******* ",
                               "**********MCHP_ADAPTER::~MCHP_ADAPTER End ******* ",
                               "**********MCHP_ADAPTER::~MCHP_ADAPTER Begin ******* ",
                               "**********MCHP_ADAPTER::~MCHP_ADAPTER End ******* ",
                               "**********ARCCONF_UTL::clear End ******* "}));
    // clear() leaves the pointers in the lists; nothing is freed twice here.
    ARCCONF_UTL::expanders.clear();
    ARCCONF_UTL::adapters.clear();
}
