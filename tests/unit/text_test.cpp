#include "diagnostics/text.h"

#include "test_support.h"

using Fields = std::vector<std::string>;

TEST(TextTest, TrimStripsCLocaleWhiteSpaceOnlyAtTheEnds)
{
    EXPECT_EQ(trim("  a b \r\n"), "a b");
    EXPECT_EQ(trim("\t\v\f x\ty \n"), "x\ty");
    EXPECT_EQ(trim("    "), "");
    EXPECT_EQ(trim(""), "");
    // A byte above 127 is not white space, and stops the stripping.
    EXPECT_EQ(trim(" \xA0x\xA0 "), "\xA0x\xA0");
    EXPECT_EQ(trim(std::string(" \0 ", 3)), std::string("\0", 1));
}

TEST(TextTest, RemoveSpacesStripsBlanksOnly)
{
    EXPECT_EQ(remove_spaces("  12 ", 0), "12");
    EXPECT_EQ(remove_spaces("12\t", 0), "12\t");
    EXPECT_EQ(remove_spaces("\r 7 \r", 0), "\r 7 \r");
    EXPECT_EQ(remove_spaces("   ", 0), "");
}

TEST(TextTest, RemoveSpacesTracesBeforeAndAfterUnderDebug)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(remove_spaces("   ", 1), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "remove spaces, string=**   **,size=3;length=3\n"
              "remove spaces, string=****,size=0;length=0\n");
}

TEST(TextTest, SplitKeepsEveryEmptyField)
{
    EXPECT_EQ(split("", ","), Fields{});
    EXPECT_EQ(split("a", ","), Fields{"a"});
    EXPECT_EQ(split("a,b,", ","), (Fields{"a", "b", ""}));
    EXPECT_EQ(split(",a", ","), (Fields{"", "a"}));
    EXPECT_EQ(split("a,,b", ","), (Fields{"a", "", "b"}));
    EXPECT_EQ(split(",", ","), (Fields{"", ""}));
    EXPECT_EQ(split("ab  cd ", " "), (Fields{"ab", "", "cd", ""}));
    // A longer delimiter is one whole text, and occurrences don't overlap.
    EXPECT_EQ(split("a::::b", "::"), (Fields{"a", "", "b"}));
}

TEST(TextTest, ParseInt32ReadsLikeAtoiAndSaturates)
{
    EXPECT_EQ(parse_int32("12abc"), 12);
    EXPECT_EQ(parse_int32(" \t-7"), -7);
    EXPECT_EQ(parse_int32("+3"), 3);
    EXPECT_EQ(parse_int32("abc"), 0);
    EXPECT_EQ(parse_int32(""), 0);
    EXPECT_EQ(parse_int32("- 3"), 0);
    EXPECT_EQ(parse_int32("99999999999"), 2147483647);
    EXPECT_EQ(parse_int32("-99999999999"), -2147483647 - 1);
    EXPECT_EQ(parse_int32("-2147483648"), -2147483647 - 1);
}

TEST(TextTest, ByteToHexGivesTwoLowerCaseDigits)
{
    EXPECT_EQ(byte_to_hex(0), "00");
    EXPECT_EQ(byte_to_hex(5), "05");
    EXPECT_EQ(byte_to_hex(10), "0a");
    EXPECT_EQ(byte_to_hex(171), "ab");
    EXPECT_EQ(byte_to_hex(255), "ff");
}

class TextFileTest : public ScratchTest {};

TEST_F(TextFileTest, HexToByteTakesTwoLowerCaseDigitsAndLogsBadCharacters)
{
    std::int32_t value = 7;
    EXPECT_EQ(hex_to_byte("3b", value), 0);
    EXPECT_EQ(value, 59);
    EXPECT_EQ(hex_to_byte("3B", value), 1);
    EXPECT_EQ(hex_to_byte("3", value), 1);
    EXPECT_EQ(hex_to_byte("3b0", value), 1);
    EXPECT_EQ(value, 59);
    // Only the bad character is logged, not the wrong length.
    EXPECT_EQ(log_lines(), std::vector<std::string>{"invalid chrachter"});
}

TEST_F(TextFileTest, GetFileSizeMeasuresOrLeavesTheSizeAlone)
{
    write_file("image.bin", std::string(107251, 'x'));
    write_file("empty.bin", "");
    std::int64_t size = -5;
    EXPECT_EQ(get_file_size("missing.bin", size), 1);
    EXPECT_EQ(size, -5);
    EXPECT_EQ(get_file_size("image.bin", size), 0);
    EXPECT_EQ(size, 107251);
    EXPECT_EQ(get_file_size("empty.bin", size), 0);
    EXPECT_EQ(size, 0);
}
