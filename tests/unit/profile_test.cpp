// The support profile's columns and limits, and the ordering of versions.
#include "profile/SupportProfile.h"
#include "profile/version.h"

#include "run/run_state.h"
#include "test_support.h"

using Lines = std::vector<std::string>;

namespace {

const std::string INVALID = "Invalid support file format.\n";

// product id|aux 1|target|image|aux 4|PSoC image|mode|buffer id|location
std::string row_of(const SupportProfile& row)
{
    return row.productId + "|" + row.auxField1 + "|" + row.targetVersion + "|" + row.fwImage + "|" +
           row.auxField4 + "|" + row.psocImage + "|" + row.mode + "|" + row.bufferID + "|" +
           std::to_string(row.fwLocation);
}

}  // namespace

class ProfileTest : public ScratchTest { };

TEST_F(ProfileTest, ProfileFiles)
{
    struct Case {
        std::string fixture;
        std::int32_t result;
        std::string console;
        Lines rows;  // see row_of
    };
    const std::vector<Case> cases = {
        // Columns 0 to 5 stand as they are, 6 to 8 are trimmed, as is every line, in the
        // C locale, where a byte above 127 is no white space. Blank lines are skipped.
        {"crlf-columns",
         0,
         "",
         {"ABC36X|aux|1.2.3|fw.rom|aux|psoc.rom|E|2|0",
          "XYZ| a1 |2.0| fw two.rom |a4| p.rom |5|3|12", "\240X|a|1|f|a|p|\240E\240|2|7",
          "ABC36X|dup|9|f|a|p|E|2|4294967295"}},
        {"eight-fields", 0, "", {"|a|1.0|f|a|p|E|2|0", "P|a|1.0|f|a|p|E|2|0"}},
        {"short-line-behind-a-row", 161, INVALID, {"ABC36X|aux|1.2.3|fw.rom|aux|psoc.rom|E|2|0"}},
        {"blank-lines", 162, INVALID, {}},
        // A short first line is told, and then the empty profile too.
        {"short-first-line", 162, INVALID + INVALID, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fixture);
        start_row();
        place_fixture("profile/" + c.fixture, "profile.txt");
        testing::internal::CaptureStdout();
        EXPECT_EQ(read_profiles("profile.txt"), c.result);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), c.console);
        Lines rows;
        for (const SupportProfile& row : Profiles)
            rows.push_back(row_of(row));
        EXPECT_EQ(rows, c.rows);
    }
}

// -V logs each line as it stands; the parameter columns are logged untrimmed.
TEST_F(ProfileTest, VerboseLogsEachRawLine)
{
    Options.verbose = 1;
    place_fixture("profile/crlf-columns", "profile.txt");
    ASSERT_EQ(read_profiles("profile.txt"), 0);
    EXPECT_TRUE(
        log_has_run({"lineStr: = ABC36X,aux,1.2.3,fw.rom,aux,psoc.rom,E,2,0", "mode = E",
                     "bufferID, = 2", "FW Location, = 0", "lineStr: = ", "lineStr: =  \t ",
                     "lineStr: = XYZ, a1 ,2.0, fw two.rom ,a4, p.rom , 5 , 3 , 12abc ,extra,more",
                     "mode =  5 ", "bufferID, =  3 ", "FW Location, = 12"}));
}

// Each pair is compared both ways. Parts read like atoi, up to the first
// character that is no digit, within 32 bits.
TEST_F(ProfileTest, VersionsOrderPartByPartAsNumbers)
{
    struct Case {
        std::string first;
        std::string second;
        std::int32_t order;  // compare_version(first, second)
    };
    const std::vector<Case> cases = {
        {"1.9", "1.10", -1},   // numbers, not text
        {"1.2", "1.2.0", -1},  // a further part counts even when it is 0
        {"1.9.9", "2.0", -1},  // the first difference decides
        {"", "0", -1},         // one part against none
        {"1.2", "1.2.", -1},   // a trailing dot makes an empty third part
        {"-1", "0", -1},       // a sign counts
        {"1.2.3", "1.2.4", -1},
        {"", "1.2.3", -1},
        {"-99999999999", "-2147483647", -1},
        {"1.2.3", "1.2.3", 0},
        {"01.002", "1.2", 0},
        {"1..2", "1.0.2", 0},
        {"1.2.", "1.2.0", 0},
        {"1.2a", "1.2", 0},
        {"1.x", "1.0", 0},
        {"x2.0", "0.0", 0},
        {"1.2.3 foo", "1.2.3", 0},
        {" 1. 2", "1.2", 0},
        {"", "", 0},
        {"+3", "3", 0},
        {"- 3", "0", 0},
        {"\2405", "0", 0},  // \240 is no blank
        {"99999999999", "2147483647", 0},
        {"-99999999999", "-2147483648", 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.first + " against " + c.second);
        EXPECT_EQ(compare_version(c.first, c.second), c.order);
        EXPECT_EQ(compare_version(c.second, c.first), -c.order);
    }
}
