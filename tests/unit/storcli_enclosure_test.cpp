#include "storcli/StorcliExpander.h"

#include "run/run_state.h"
#include "test_support.h"

namespace {

const std::string RULE = "------------------------------------------------------------";

SupportProfile profile_for(const std::string& product_id)
{
    SupportProfile profile;
    profile.productId = product_id;
    profile.targetVersion = "1.2.3";
    return profile;
}

// A report as the tool writes it: banner, "Properties :", headings between
// two rules, the rows, a closing rule and a legend.
std::string report_with_rows(const std::string& rows)
{
    return "CLI Version = 007.1017.0000.0000 May 10, 2021\r\n"
           "Controller = 3\r\n"
           "Status = Success\r\n"
           "\r\n"
           "Properties :\r\n"
           "==========\r\n"
           "\r\n" +
        RULE + "\r\nEID State Slots PD PS Fans TSs Alms SIM Port# ProdID VendorSpecific\r\n" +
        RULE + "\r\n" + rows + RULE +
        "\r\n\r\nEID=Enclosure Device ID |PD=Physical drive count\r\n";
}

}  // namespace

class StorcliEnclosureTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        adapter_.adapterIndex = "3";
    }

    std::int32_t parse(const std::string& report)
    {
        write_file("show_eall_3_log", report);
        return parse_eall_output("show_eall_3_log", &adapter_);
    }

    StorcliAdapter adapter_;
};

TEST_F(StorcliEnclosureTest, MatchedRowsBecomeExpandersInTableOrder)
{
    Profiles = {profile_for("NOPE"), profile_for("ABC36X")};
    ASSERT_EQ(parse(report_with_rows(" 62 OK       36  12  0 -     ABC36X   1.2.3 \r\n"
                                     " 63 OK       24   0  0 -     OTHER    x\r\n"
                                     "  2 OK       36  12  0 -     ABC36X   2.0.1 rev B\r\n")),
              0);
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
                     "line: = CLI Version = 007.1017.0000.0000 May 10, 2021"}));
    EXPECT_TRUE(log_has_run({"line: = Properties :", "after properties, line: = ==========",
                             "after properties, line: = ", "after properties, line: = " + RULE}));
    EXPECT_TRUE(log_has_run({"after properties, line: = " + RULE, "enclouser line starts",
                             "line: =  62 OK       36  12  0 -     ABC36X   1.2.3 "}));
    EXPECT_TRUE(log_has_run({"line: = " + RULE, "enclouser line end", "expander lines num = 3",
                             "Vector line: =  62 OK       36  12  0 -     ABC36X   1.2.3 ",
                             " find  = ABC36X", "**********parse_expanderinfo_line Begin ******* ",
                             "tmpPstr = 2", "**********parse_expanderinfo_line. End ******* "}));
    EXPECT_TRUE(log_has_run({"Vector line: =  63 OK       24   0  0 -     OTHER    x",
                             "Vector line: =   2 OK       36  12  0 -     ABC36X   2.0.1 rev B"}));
    EXPECT_TRUE(log_has_run({"Expander found: = 2", "**********parse_eall_output End ******* "}));
    // Nothing behind the closing rule is read.
    EXPECT_FALSE(log_has_run({"line: = EID=Enclosure Device ID |PD=Physical drive count"}));
}

TEST_F(StorcliEnclosureTest, OnlyARuleOfTenHyphensInColumnZeroClosesTheTable)
{
    Profiles = {profile_for("ABC")};
    const std::string second_section =
        "Properties :\n" + RULE + "\nheading\n" + RULE + "\n9 ABC 9.9\n";
    // An indented or a short rule is a row; the table then runs on.
    parse("Properties :\n" + RULE + "\nEID\n" + RULE + "\n1 ABC 1.0\n  " + RULE + "\n---------\n" +
          "2 ABC 2.0\n" + RULE + "\n" + second_section);
    ASSERT_EQ(Expanders.size(), 2u);
    EXPECT_EQ(Expanders[1]->enclosureId, "2");
    EXPECT_TRUE(log_has_run({"expander lines num = 4"}));

    // A report that ends inside the table gives the same expanders.
    reset_run_state();
    Profiles = {profile_for("ABC")};
    parse("Properties :\n" + RULE + "\nEID\n" + RULE + "\n1 ABC 1.0\n2 ABC 2.0");
    ASSERT_EQ(Expanders.size(), 2u);
    EXPECT_EQ(Expanders[1]->installedVersion, "2.0");
}

TEST_F(StorcliEnclosureTest, RulesCountOnlyBehindPropertiesAndATableIsEnteredOnce)
{
    Profiles = {profile_for("ABC")};
    // Rules before "Properties :" don't count; rules after it are found
    // anywhere in their line.
    parse(RULE + "\n0 ABC 0.0\n" + RULE + "\nProperties :\n  " + RULE + "\nEID\n\t" + RULE +
          "\n1 ABC 1.0\nProperties :\n" + RULE + "\nEID\n" + RULE + "\n2 ABC 2.0\n");
    ASSERT_EQ(Expanders.size(), 1u);
    EXPECT_EQ(Expanders[0]->enclosureId, "1");
    EXPECT_TRUE(log_has_run({"line: = 0 ABC 0.0"}));
    EXPECT_TRUE(log_has_run({"after properties, line: = 2 ABC 2.0", "expander lines num = 1"}));

    // Without "Properties :" there is no table at all.
    reset_run_state();
    Profiles = {profile_for("ABC")};
    EXPECT_EQ(parse(RULE + "\nEID\n" + RULE + "\n1 ABC 1.0\n" + RULE + "\n"), 0);
    EXPECT_TRUE(Expanders.empty());
    EXPECT_TRUE(log_has_run({"expander lines num = 0", "Expander found: = 0"}));
}

TEST_F(StorcliEnclosureTest, TheFirstProfileOccurringInARowWinsAtItsFirstPlace)
{
    Profiles = {profile_for("36"), profile_for("ABC36X"), profile_for("ABC")};
    parse(report_with_rows("62 OK 36 ABC36X 1.2.3\n"
                           "63 OK ABC 1.0\n"
                           "64 OK ABC 1.1\n"));
    ASSERT_EQ(Expanders.size(), 3u);
    // "36" stands first in the profile and first in the row's third column.
    EXPECT_EQ(Expanders[0]->productId, "36");
    EXPECT_EQ(Expanders[0]->installedVersion, "ABC36X 1.2.3");
    EXPECT_EQ(Expanders[0]->profile, &Profiles[0]);
    EXPECT_EQ(Expanders[1]->productId, "ABC");
    EXPECT_EQ(Expanders[1]->installedVersion, "1.0");
    EXPECT_EQ(Expanders[2]->enclosureId, "64");

    // A shorter id standing first takes the longer product's rows, and its
    // version starts with the rest of the longer name; the match is
    // case-sensitive.
    reset_run_state();
    Profiles = {profile_for("ABC"), profile_for("ABC36X")};
    parse(report_with_rows("62 OK ABC36X 1.2.3\n63 OK abc36x 1.0\n"));
    ASSERT_EQ(Expanders.size(), 1u);
    EXPECT_EQ(Expanders[0]->productId, "ABC");
    EXPECT_EQ(Expanders[0]->installedVersion, "36X 1.2.3");

    // A product id that ends the row leaves no version.
    reset_run_state();
    Profiles = {profile_for("ABC36X")};
    parse(report_with_rows("62 OK ABC36X\n"));
    ASSERT_EQ(Expanders.size(), 1u);
    EXPECT_EQ(Expanders[0]->installedVersion, "");
}

TEST_F(StorcliEnclosureTest, AnEmptyProductIdMatchesEveryRowBlankOnesToo)
{
    Profiles = {profile_for(""), profile_for("ABC")};
    parse(report_with_rows("62 OK ABC 1.0\n\n   \n"));
    ASSERT_EQ(Expanders.size(), 3u);
    EXPECT_EQ(Expanders[0]->productId, "");
    EXPECT_EQ(Expanders[0]->enclosureId, "62");
    EXPECT_EQ(Expanders[0]->installedVersion, "62 OK ABC 1.0");
    EXPECT_EQ(Expanders[1]->enclosureId, "");
    EXPECT_EQ(Expanders[1]->installedVersion, "");
    EXPECT_EQ(Expanders[2]->enclosureId, "");
    EXPECT_TRUE(log_has_run({"tmpPstr = 18446744073709551615"}));
}

TEST_F(StorcliEnclosureTest, TheEnclosureIdEndsAtTheFirstBlankOnly)
{
    StorcliExpander expander;
    parse_expanderinfo_line(" \t 62 OK 36", expander);
    EXPECT_EQ(expander.enclosureId, "62");
    EXPECT_TRUE(log_has_run({"tmpPstr = 2"}));
    parse_expanderinfo_line("62\tOK ABC", expander);
    EXPECT_EQ(expander.enclosureId, "62\tOK");
    parse_expanderinfo_line("62\tOK", expander);
    EXPECT_EQ(expander.enclosureId, "62\tOK");
    parse_expanderinfo_line("", expander);
    EXPECT_EQ(expander.enclosureId, "");
}

TEST_F(StorcliEnclosureTest, NothingMatchesWithoutProfilesOrWithoutAReport)
{
    parse(report_with_rows("62 OK ABC 1.0\n"));
    EXPECT_TRUE(Expanders.empty());
    EXPECT_TRUE(log_has_run(
        {"expander lines num = 1", "Vector line: = 62 OK ABC 1.0", "Expander found: = 0"}));

    Profiles = {profile_for("ABC")};
    EXPECT_EQ(parse_eall_output("show_eall_9_log", &adapter_), 1);
    EXPECT_TRUE(Expanders.empty());
    EXPECT_TRUE(
        log_has_run({"Open file = show_eall_9_log", "open file fail file =  = show_eall_9_log",
                     "**********parse_eall_output End ******* "}));

    EXPECT_EQ(parse(""), 0);
    EXPECT_EQ(parse(std::string("Properties :\0\xff\r\r\n", 17) + RULE + "\n\x01" + RULE), 0);
    EXPECT_TRUE(Expanders.empty());
}

TEST_F(StorcliEnclosureTest, ExpandersOfEveryControllerGoIntoOneList)
{
    Profiles = {profile_for("ABC")};
    parse(report_with_rows("1 ABC 1.0\n2 ABC 1.0\n"));
    StorcliAdapter second;
    second.adapterIndex = "4";
    write_file("show_eall_4_log", report_with_rows("7 ABC 2.0\n"));
    parse_eall_output("show_eall_4_log", &second);
    ASSERT_EQ(Expanders.size(), 3u);
    EXPECT_EQ(Expanders[2]->adapterIndex, "4");
    EXPECT_EQ(Expanders[2]->adapter, &second);
    EXPECT_TRUE(log_has_run({"Expander found: = 3"}));
}

TEST_F(StorcliEnclosureTest, ALargeTableWithAHugeRowIsReadWhole)
{
    Profiles = {profile_for("ABC")};
    std::string rows;
    for (int i = 0; i < 10000; ++i)
        rows += std::to_string(i) + " OK OTHER 1.0\n";
    rows += "10000 OK ABC " + std::string(1 << 20, '7') + "\n";
    parse(report_with_rows(rows));
    ASSERT_EQ(Expanders.size(), 1u);
    EXPECT_EQ(Expanders[0]->enclosureId, "10000");
    EXPECT_EQ(Expanders[0]->installedVersion.size(), 1u << 20);
}
