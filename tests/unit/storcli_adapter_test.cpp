#include "storcli/StorcliAdapter.h"

#include "test_support.h"

class StorcliAdapterTest : public ScratchTest {
protected:
    static StorcliAdapter parsed(const std::string& report)
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
};

TEST_F(StorcliAdapterTest, ShowCommandHasOneBlankBehindTheProgramAndEndsInABlank)
{
    EXPECT_EQ(build_show_command("0", 0), ".\\storcli64.exe /c0 show ");
    EXPECT_EQ(build_show_command("999", 1), ".\\storcli64.exe /c999 show all ");
}

TEST_F(StorcliAdapterTest, ReadsTheFourKeysAnywhereInALine)
{
    const StorcliAdapter adapter = parsed("Basics :\r\n"
                                          "======\r\n"
                                          "   Product Name = ABC 9500   \r\n"
                                          "\tSubVendor Id = 0x1F3A \t\r\n"
                                          "SubDevice Id =   0x00A1\r\n"
                                          "Driver Name =abc\r\n"
                                          "product name = lower\r\n");
    EXPECT_EQ(adapter.productName, "ABC 9500   ");
    EXPECT_EQ(adapter.SVID, "0x1F3A");
    EXPECT_EQ(adapter.SDID, "0x00A1");
    EXPECT_EQ(adapter.driverName, "abc");
    EXPECT_EQ(adapter.adapterType, 0);
    EXPECT_TRUE(
        log_has_run({"**********parse_adapter_info Begin ******* ", "Open file = show_0_log",
                     "line: = Basics :", "line: = ======", "line: =    Product Name = ABC 9500   ",
                     "product name = ABC 9500   "}));
    EXPECT_TRUE(log_has_run({"SVID = 0x1F3A"}));
    EXPECT_TRUE(log_has_run({"SDID = 0x00A1"}));
    EXPECT_TRUE(log_has_run({"DRIVER_NAME:  = abc", "line: = product name = lower",
                             "**********parse_adapter_info End ******* "}));
}

TEST_F(StorcliAdapterTest, LaterLinesOverwriteAndTheFirstKeyOfALineSettlesIt)
{
    const StorcliAdapter adapter = parsed("Product Name = First\n"
                                          "SubVendor Id = 0x1F3A\n"
                                          "Driver Name =abc\n"
                                          "SubVendor Id =\n"
                                          "Driver Name =\n"
                                          "SubDevice Id = 7 Product Name = Second\n"
                                          "SubVendor Id = 1 SubDevice Id = 2");
    // "SubVendor Id =" without its blank is no key, so the value stays.
    EXPECT_EQ(adapter.SVID, "1 SubDevice Id = 2");
    EXPECT_EQ(adapter.productName, "Second");
    EXPECT_EQ(adapter.SDID, "");
    EXPECT_EQ(adapter.driverName, "");
}

TEST_F(StorcliAdapterTest, AReportWithoutKeysOrWithoutFile)
{
    EXPECT_EQ(parsed("").SVID, "");
    EXPECT_EQ(parsed(std::string("\0\x01\xff\r\r\n", 6)).SVID, "");

    StorcliAdapter adapter;
    EXPECT_EQ(parse_adapter_info("show_7_log", adapter), 1);
    EXPECT_TRUE(log_has_run({"Open file = show_7_log", "open file fail file =  = show_7_log",
                             "**********parse_adapter_info End ******* "}));
}

TEST_F(StorcliAdapterTest, ClassifiesByCaseSensitiveWordsInTheProductName)
{
    EXPECT_EQ(type_of("ABC HBA 9500"), ADAPTER_TYPE_HBA);
    EXPECT_TRUE(log_has_run({"**********get_adapter_type Begin ******* ", "Identify = 1",
                             "Type: = 1", "**********get_adapter_type End ******* "}));
    EXPECT_EQ(type_of("RAID 9560 HBA"), ADAPTER_TYPE_HBA);
    EXPECT_EQ(type_of("MegaRAID 9560"), ADAPTER_TYPE_RAID);
    EXPECT_TRUE(log_has_run({"Identify = 1", "Type: = 2"}));

    std::filesystem::remove("log.txt");
    EXPECT_EQ(type_of("abc hba"), ADAPTER_TYPE_RAID);
    EXPECT_TRUE(log_has_run({"Identify = 0", "Type: = 2"}));
}
