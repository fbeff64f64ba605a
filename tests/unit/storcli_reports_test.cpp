#include "storcli/StorcliAdapter.h"
#include "storcli/StorcliExpander.h"

#include "run/run_state.h"
#include "test_support.h"

namespace {

const std::string RULE = "------------------------------------------------------------\n";

SupportProfile profile_for(const std::string& product_id)
{
    SupportProfile profile;
    profile.productId = product_id;
    return profile;
}

// "Properties :" and the headings between two rules, then the rows.
std::string table_of(const std::string& rows)
{
    return "Properties :\n==========\n\n" + RULE + "EID State ProdID VendorSpecific\n" + RULE +
        rows;
}

}  // namespace

class StorcliReportsTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        adapter_.adapterIndex = "3";
    }

    static StorcliAdapter controller(const std::string& report)
    {
        write_file("show_0_log", report);
        StorcliAdapter adapter;
        EXPECT_EQ(parse_adapter_info("show_0_log", adapter), 0);
        return adapter;
    }

    static std::int32_t type_of(const std::string& product_name)
    {
        StorcliAdapter adapter;
        adapter.productName = product_name;
        get_adapter_type(adapter);
        return adapter.adapterType;
    }

    // Parses the enclosure report with a fresh expander list.
    void enclosures(const std::string& report)
    {
        for (StorcliExpander* expander : Expanders)
            delete expander;
        Expanders.clear();
        write_file("show_eall_3_log", report);
        EXPECT_EQ(parse_eall_output("show_eall_3_log", &adapter_), 0);
    }

    StorcliAdapter adapter_;
};

TEST_F(StorcliReportsTest, ControllerReportKeysAreFoundAnywhereAndTheLastOneWins)
{
    EXPECT_EQ(build_show_command("0", 0), ".\\storcli64.exe /c0 show ");
    EXPECT_EQ(build_show_command("999", 1), ".\\storcli64.exe /c999 show all ");

    StorcliAdapter adapter = controller("Basics :\r\n"
                                        "   Product Name = ABC 9500   \r\n"
                                        "\tSubVendor Id = 0x1F3A \t\r\n"
                                        "SubDevice Id =   0x00A1\r\n"
                                        "Driver Name =abc\r\n"
                                        "product name = lower\r\n");
    EXPECT_EQ(adapter.productName, "ABC 9500   ");
    EXPECT_EQ(adapter.SVID, "0x1F3A");
    EXPECT_EQ(adapter.SDID, "0x00A1");
    EXPECT_EQ(adapter.driverName, "abc");
    EXPECT_TRUE(
        log_has_run({"**********parse_adapter_info Begin ******* ", "Open file = show_0_log",
                     "line: = Basics :", "line: =    Product Name = ABC 9500   ",
                     "product name = ABC 9500   "}));
    EXPECT_TRUE(log_has_run({"SVID = 0x1F3A"}));
    EXPECT_TRUE(log_has_run({"DRIVER_NAME:  = abc", "line: = product name = lower",
                             "**********parse_adapter_info End ******* "}));

    // "SubVendor Id =" without its blank is no key; the first key of the
    // table settles a line, and its value runs to the line's end.
    adapter = controller("SubVendor Id = 0x1F3A\nDriver Name =abc\nSubVendor Id =\nDriver Name =\n"
                         "SubDevice Id = 7 Product Name = Second\n"
                         "SubVendor Id = 1 SubDevice Id = 2");
    EXPECT_EQ(adapter.SVID, "1 SubDevice Id = 2");
    EXPECT_EQ(adapter.productName, "Second");
    EXPECT_EQ(adapter.SDID, "");
    EXPECT_EQ(adapter.driverName, "");

    EXPECT_EQ(controller(std::string("\0\x01\xff\r\r\n", 6)).SVID, "");
    EXPECT_EQ(parse_adapter_info("show_7_log", adapter), 1);
    EXPECT_TRUE(log_has_run({"Open file = show_7_log", "open file fail file =  = show_7_log",
                             "**********parse_adapter_info End ******* "}));
}

TEST_F(StorcliReportsTest, ControllersAreClassifiedByCaseSensitiveWords)
{
    EXPECT_EQ(type_of("ABC HBA 9500"), ADAPTER_TYPE_HBA);
    EXPECT_TRUE(log_has_run({"**********get_adapter_type Begin ******* ", "Identify = 1",
                             "Type: = 1", "**********get_adapter_type End ******* "}));
    EXPECT_EQ(type_of("RAID 9560 HBA"), ADAPTER_TYPE_HBA);
    EXPECT_EQ(type_of("MegaRAID 9560"), ADAPTER_TYPE_RAID);
    std::filesystem::remove("log.txt");
    EXPECT_EQ(type_of("abc hba"), ADAPTER_TYPE_RAID);
    EXPECT_TRUE(log_has_run({"Identify = 0", "Type: = 2"}));
}

TEST_F(StorcliReportsTest, MatchedTableRowsBecomeExpandersInTableOrder)
{
    Profiles = {profile_for("NOPE"), profile_for("ABC36X")};
    enclosures("CLI Version = 007\r\n" +
               table_of(" 62 OK  36 ABC36X   1.2.3 \r\n"
                        " 63 OK  24 OTHER    x\r\n"
                        "  2 OK  36 ABC36X   2.0.1 rev B\r\n") +
               RULE + "\r\nEID=Enclosure Device ID\r\n");
    ASSERT_EQ(Expanders.size(), 2u);
    const StorcliExpander& first = *Expanders[0];
    EXPECT_EQ(first.productId, "ABC36X");
    EXPECT_EQ(first.enclosureId, "62");
    EXPECT_EQ(first.installedVersion, "1.2.3");
    EXPECT_EQ(first.adapterIndex, "3");
    EXPECT_EQ(first.adapter, &adapter_);
    EXPECT_EQ(first.profile, &Profiles[1]);
    EXPECT_EQ(first.needDownload, 0u);
    EXPECT_EQ(first.flashState, FLASH_NOT_TRIED);
    EXPECT_EQ(Expanders[1]->enclosureId, "2");
    EXPECT_EQ(Expanders[1]->installedVersion, "2.0.1 rev B");

    EXPECT_TRUE(
        log_has_run({"**********parse_eall_output Begin ******* ", "Open file = show_eall_3_log",
                     "line: = CLI Version = 007", "line: = Properties :",
                     "after properties, line: = ==========", "after properties, line: = "}));
    EXPECT_TRUE(log_has_run({"after properties, line: = EID State ProdID VendorSpecific",
                             "after properties, line: = " + RULE.substr(0, 60),
                             "enclouser line starts", "line: =  62 OK  36 ABC36X   1.2.3 "}));
    EXPECT_TRUE(log_has_run({"line: = " + RULE.substr(0, 60), "enclouser line end",
                             "expander lines num = 3", "Vector line: =  62 OK  36 ABC36X   1.2.3 ",
                             " find  = ABC36X", "**********parse_expanderinfo_line Begin ******* ",
                             "tmpPstr = 2", "**********parse_expanderinfo_line. End ******* "}));
    EXPECT_TRUE(log_has_run({"Vector line: =  63 OK  24 OTHER    x",
                             "Vector line: =   2 OK  36 ABC36X   2.0.1 rev B"}));
    EXPECT_TRUE(log_has_run({"Expander found: = 2", "**********parse_eall_output End ******* "}));
    EXPECT_FALSE(log_has_run({"line: = EID=Enclosure Device ID"}));
}

TEST_F(StorcliReportsTest, TheTableIsEnteredOnceAndClosedOnlyByARuleInColumnZero)
{
    Profiles = {profile_for("ABC")};
    // An indented or a short rule is a row; nothing behind the closing rule
    // is read, a second "Properties :" section included.
    enclosures(table_of("1 ABC 1.0\n  " + RULE + "---------\n2 ABC 2.0\n" + RULE) +
               table_of("9 ABC 9.9\n"));
    ASSERT_EQ(Expanders.size(), 2u);
    EXPECT_EQ(Expanders[1]->enclosureId, "2");
    EXPECT_TRUE(log_has_run({"expander lines num = 4"}));

    // A report that ends inside the table gives its rows all the same.
    enclosures(table_of("1 ABC 1.0\n2 ABC 2.0"));
    ASSERT_EQ(Expanders.size(), 2u);
    EXPECT_EQ(Expanders[1]->installedVersion, "2.0");

    // Rules count only behind "Properties :", and there anywhere in their
    // line; a "Properties :" inside the table shuts it for good.
    enclosures(RULE + "0 ABC 0.0\n" + RULE + "Properties :\n  " + RULE + "EID\n\t" + RULE +
               "1 ABC 1.0\n" + table_of("2 ABC 2.0\n"));
    ASSERT_EQ(Expanders.size(), 1u);
    EXPECT_EQ(Expanders[0]->enclosureId, "1");
    EXPECT_TRUE(log_has_run({"after properties, line: = 2 ABC 2.0", "expander lines num = 1"}));

    enclosures(RULE + "EID\n" + RULE + "1 ABC 1.0\n" + RULE);
    EXPECT_TRUE(Expanders.empty());
}

TEST_F(StorcliReportsTest, TheFirstProfileOccurringInARowWinsAtItsFirstPlace)
{
    Profiles = {profile_for("36"), profile_for("ABC36X"), profile_for("ABC")};
    enclosures(table_of("62 OK 36 ABC36X 1.2.3\n63 OK ABC 1.0\n64 OK abc 1.0\n65 OK ABC\n"));
    ASSERT_EQ(Expanders.size(), 3u);
    EXPECT_EQ(Expanders[0]->productId, "36");
    EXPECT_EQ(Expanders[0]->installedVersion, "ABC36X 1.2.3");
    EXPECT_EQ(Expanders[1]->productId, "ABC");
    EXPECT_EQ(Expanders[1]->profile, &Profiles[2]);
    EXPECT_EQ(Expanders[2]->enclosureId, "65");
    EXPECT_EQ(Expanders[2]->installedVersion, "");

    // A shorter id standing first takes the longer product's rows.
    Profiles = {profile_for("ABC"), profile_for("ABC36X")};
    enclosures(table_of("62 OK ABC36X 1.2.3\n"));
    ASSERT_EQ(Expanders.size(), 1u);
    EXPECT_EQ(Expanders[0]->installedVersion, "36X 1.2.3");

    // An empty id matches every row, blank ones too.
    Profiles = {profile_for(""), profile_for("ABC")};
    enclosures(table_of("62 OK ABC 1.0\n\n"));
    ASSERT_EQ(Expanders.size(), 2u);
    EXPECT_EQ(Expanders[0]->productId, "");
    EXPECT_EQ(Expanders[0]->installedVersion, "62 OK ABC 1.0");
    EXPECT_EQ(Expanders[1]->enclosureId, "");
    EXPECT_TRUE(log_has_run({"tmpPstr = 18446744073709551615"}));
}

TEST_F(StorcliReportsTest, TheEnclosureIdEndsAtTheFirstBlankOnly)
{
    StorcliExpander expander;
    parse_expanderinfo_line(" \t 62 OK 36", expander);
    EXPECT_EQ(expander.enclosureId, "62");
    parse_expanderinfo_line("62\tOK ABC", expander);
    EXPECT_EQ(expander.enclosureId, "62\tOK");
    parse_expanderinfo_line("62\tOK", expander);
    EXPECT_EQ(expander.enclosureId, "62\tOK");
}

TEST_F(StorcliReportsTest, BadEnclosureReportsGiveNoExpanderAndLargeOnesAreReadWhole)
{
    enclosures(table_of("62 OK ABC 1.0\n"));
    EXPECT_TRUE(Expanders.empty());
    EXPECT_TRUE(log_has_run({"Vector line: = 62 OK ABC 1.0", "Expander found: = 0"}));

    Profiles = {profile_for("ABC")};
    EXPECT_EQ(parse_eall_output("show_eall_9_log", &adapter_), 1);
    EXPECT_TRUE(log_has_run(
        {"open file fail file =  = show_eall_9_log", "**********parse_eall_output End ******* "}));
    enclosures("");
    enclosures(std::string("Properties :\0\xff\r\r\n", 17) + RULE + "\x01" + RULE);
    EXPECT_TRUE(Expanders.empty());

    std::string rows;
    for (int i = 0; i < 10000; ++i)
        rows += std::to_string(i) + " OK OTHER 1.0\n";
    enclosures(table_of(rows + "10000 OK ABC " + std::string(1 << 20, '7') + "\n"));
    ASSERT_EQ(Expanders.size(), 1u);
    EXPECT_EQ(Expanders[0]->enclosureId, "10000");
    EXPECT_EQ(Expanders[0]->installedVersion.size(), 1u << 20);
}
