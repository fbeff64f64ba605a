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
    const auto& devices = parsed("Controllers found: 1\r\n----\r\nChannel #2:\r\n" +
                                 expander_block("0", "X100"));
    ASSERT_EQ(devices.size(), 1u);
    const MCHP_DEVICE& device = *devices[0];
    EXPECT_EQ(device.channel, "2");
    EXPECT_EQ(device.deviceIndex, "0");
    EXPECT_EQ(device.connectorId, "1");
    EXPECT_EQ(device.state, "Ready");
    EXPECT_EQ(device.vendor, "ACME");
    EXPECT_EQ(device.model, "X100");
    EXPECT_EQ(device.firmware, "1.00");
    EXPECT_EQ(device.expanderId, "7");
    EXPECT_EQ(device.deviceType, "expander");
    EXPECT_EQ(device.diskName, "");
    EXPECT_EQ(device.installedVersion, "");
    EXPECT_EQ(device.adapter, adapter(0));

    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::parse_getconfig_pd Begin ******* ",
                             "line = Controllers found: 1", "line = ----",
                             "line = Channel #2:", "channel number line. channel = 2",
                             "line =       Device #0", "device id = 0", "an expected device",
                             "**********MCHP_DEVICE::MCHP_DEVICE Begin ******* ",
                             "Device Channel = 2", "Device index = 0",
                             "**********MCHP_DEVICE::MCHP_DEVICE End ******* ",
                             "line =          State                              : Ready"}));
    // The marker line is consumed by the device step, never logged as a line.
    EXPECT_FALSE(log_has_run({"line = " + MARKER.substr(0, MARKER.size() - 2)}));
    EXPECT_TRUE(log_has_run({"connecter id = 1", "**********ARCCONF_UTL::get_connectorid End ******* ",
                             "**********ARCCONF_UTL::parse_getconfig_pd End ******* "}));
}

TEST_F(ArcconfExpanderDiscoveryTest, OnlyOneCharacterOfAChannelOrDeviceNumberIsTaken)
{
    const auto& devices = parsed("Channel #10:\nDevice #12\n" + MARKER + "Channel #\nDevice #\n" +
                                 MARKER);
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_EQ(devices[0]->channel, "1");
    EXPECT_EQ(devices[0]->deviceIndex, "1");
    EXPECT_EQ(devices[1]->channel, "");
    EXPECT_EQ(devices[1]->deviceIndex, "");
    EXPECT_TRUE(log_has_run({"line = Channel #", "channel number line. channel = "}));
}

TEST_F(ArcconfExpanderDiscoveryTest, TheChannelCarriesOverDevicesButNotOverReports)
{
    const auto& devices = parsed(expander_block("0", "A") + "Channel #3:\n" +
                                 expander_block("1", "B") + expander_block("2", "C"));
    ASSERT_EQ(devices.size(), 3u);
    EXPECT_EQ(devices[0]->channel, "");
    EXPECT_EQ(devices[1]->channel, "3");
    EXPECT_EQ(devices[2]->channel, "3");
    EXPECT_EQ(devices[2]->adapter, devices[1]->adapter);

    write_file("report2", expander_block("5", "D"));
    ARCCONF_UTL::parse_getconfig_pd(adapter(1), "report2");
    ASSERT_EQ(devices.size(), 4u);
    EXPECT_EQ(devices[3]->channel, "");
    EXPECT_EQ(devices[3]->adapter, adapter(1));
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
}

TEST_F(ArcconfExpanderDiscoveryTest, OtherDevicesEndTheBlockButChannelLinesDoNot)
{
    const auto& devices = parsed("Channel #0:\n" + expander_block("0", "X100") + HARD_DRIVE +
                                 expander_block("2", "X200") + "Channel #1:\n" +
                                 "Model : LATE\n" + HARD_DRIVE);
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_EQ(devices[0]->model, "X100");
    EXPECT_EQ(devices[0]->state, "Ready");
    EXPECT_EQ(devices[0]->firmware, "1.00");
    EXPECT_EQ(devices[0]->diskName, "");
    // The line behind the channel line still belongs to the second expander.
    EXPECT_EQ(devices[1]->model, "LATE");
    EXPECT_EQ(devices[1]->channel, "0");
    EXPECT_EQ(devices[1]->vendor, "ACME");
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
    EXPECT_EQ(devices[0]->model, "M1");
    EXPECT_EQ(devices[0]->vendor, "");
    EXPECT_EQ(devices[0]->state, "");
    EXPECT_EQ(devices[0]->diskName, "D1");
    EXPECT_EQ(devices[0]->firmware, "2.0");
    EXPECT_EQ(devices[0]->expanderId, "E1");
    EXPECT_EQ(devices[0]->connectorId, "2");
    EXPECT_EQ(devices[0]->channel, "");
    EXPECT_TRUE(log_has_run({"channel number line. channel = 4"}));
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::get_value Begin ******* ",
                             "ERROR line, no : charachter",
                             "**********ARCCONF_UTL::get_value End ******* "}));
}

TEST_F(ArcconfExpanderDiscoveryTest, ADeviceLineAtTheEndOfTheReportMakesNoRecord)
{
    EXPECT_TRUE(parsed("Channel #0:\nDevice #0").empty());
    EXPECT_TRUE(parsed("Channel #0:\nDevice #0\n").empty());
    EXPECT_TRUE(parsed("Channel #0:\r\nDevice #0\r\n").empty());
    EXPECT_TRUE(parsed("Device #0 Device is an Enclosure Services Device").empty());
    EXPECT_TRUE(parsed("").empty());
    EXPECT_TRUE(log_has_run({"device id = 0", "**********ARCCONF_UTL::parse_getconfig_pd End ******* "}));
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
