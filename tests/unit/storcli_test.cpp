// The storcli family where the lab's servers never take it: odd report
// layouts, limits, every download command form, the wait between images.
#include "storcli/StorcliAdapter.h"
#include "storcli/StorcliExpander.h"
#include "storcli/adapter_count.h"
#include "storcli/download_command.h"
#include "storcli/run_loop.h"
#include "storcli/update.h"

#include "run/run_state.h"
#include "test_support.h"

#include <chrono>
#include <cstdlib>
#include <sstream>

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

namespace {

// Profile rows with these product ids, separated by commas.
void fill_profiles(const std::string& product_ids)
{
    std::istringstream ids(product_ids);
    for (std::string id; std::getline(ids, id, ',');) {
        Profiles.emplace_back();
        Profiles.back().productId = id;
    }
}

// Each expander as "enclosure id|product id|installed version|profile row; ".
std::string expanders_found()
{
    std::string found;
    for (const StorcliExpander* e : Expanders)
        found += e->enclosureId + "|" + e->productId + "|" + e->installedVersion + "|" +
                 std::to_string(e->profile - Profiles.data()) + "; ";
    return found;
}

}  // namespace

class StorcliTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        adapter_.adapterIndex = "0";
        expander_ = {"ABC36X", "0", &adapter_, "2", 0, FLASH_NOT_TRIED, "1.0", &profile_};
    }

    // Controllers 0 .. count-1 under -T, each with the reports placed for it.
    static std::int32_t run_loop(std::uint32_t count, std::string& console)
    {
        Options.test = true;
        Options.profile_file = "profile.txt";
        ADAPTER_COUNT = count;
        testing::internal::CaptureStdout();
        const std::int32_t result = ProcessStorcliAdapters();
        console = testing::internal::GetCapturedStdout();
        return result;
    }

    StorcliAdapter adapter_;
    SupportProfile profile_{"ABC36X", "", "1.2.3", "fw.rom", "", "psoc.rom", "E", "2", 0};
    StorcliExpander expander_;
};

TEST_F(StorcliTest, ControllerCountReports)
{
    struct Case {
        std::string fixture;  // empty: no report at all
        std::uint32_t count;
        Lines log;  // behind "Count return code = 0"
    };
    const Lines found = {"found = 1", "**********getAdapterCount End ******* "};
    const Lines none = {"found = 0", found[1]};
    const Lines out_of_range = {"Controller count out of range", "found = 0", found[1]};
    // A character that is no digit ends the count without closing lines.
    const Lines abandoned = {};
    const std::vector<Case> cases = {
        {"first-of-two-counts-crlf", 2, found},
        {"leading-zeros-no-line-end", 7, found},
        {"largest", 4294967295u, found},
        {"key-needs-its-blank", 4, found},
        {"zero", 0, found},
        {"lower-case-key", 0, none},
        {"", 0, none},
        {"digit-then-letter", 0, abandoned},
        {"minus-sign", 0, abandoned},
        {"plus-sign", 0, abandoned},
        {"blank-between-digits", 0, abandoned},
        {"tab-behind", 0, abandoned},
        {"high-byte", 0, abandoned},
        {"one-above-32-bits", 0, out_of_range},
        {"twenty-nines", 0, out_of_range},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fixture);
        start_row();
        if (!c.fixture.empty())
            place_fixture("ctrlcount/" + c.fixture, "ctrlcount.rst");
        EXPECT_EQ(getAdapterCount(true, 0), c.count);
        Lines expected = {"**********getAdapterCount Begin ******* ",
                          "command = .\\storcli64.exe  show ctrlcount  >ctrlcount.rst",
                          "Count return code = 0"};
        expected.insert(expected.end(), c.log.begin(), c.log.end());
        EXPECT_EQ(logged(), expected);
    }
}

TEST_F(StorcliTest, DebugTracesTheCountOnTheConsole)
{
    place_fixture("ctrlcount/debug-trace-crlf", "ctrlcount.rst");
    place_fixture("console/ctrlcount-debug-trace", "expected");
    testing::internal::CaptureStdout();
    EXPECT_EQ(getAdapterCount(true, 1), 0u);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), read_file("expected"));
}

TEST_F(StorcliTest, TheCountReportIsReadOnlyWhenTheToolEndedWell)
{
    // Under Wine "/bin/sh" exists too, but commands go to cmd.exe.
    if (std::getenv("COMSPEC") != nullptr)
        GTEST_SKIP() << "needs a POSIX shell";
    write_file("storcli64.exe",
               "#!/bin/sh\necho \"$@\" > args.txt\ncat answer\nexit $(cat code)\n");
    fs::permissions("storcli64.exe", fs::perms::owner_all);
    place_fixture("ctrlcount/leading-zeros-no-line-end", "answer");
    write_file("code", "0");
    EXPECT_EQ(getAdapterCount(false, 0), 7u);
    EXPECT_EQ(read_file("args.txt"), "show ctrlcount\n");
    write_file("code", "1");
    EXPECT_EQ(getAdapterCount(false, 0), 0u);
    EXPECT_TRUE(log_has_run({"Count return code = 1", "found = 0"}));
}

// "RAID" is looked for only where "HBA" is missing, case and all.
TEST_F(StorcliTest, ControllerReports)
{
    struct Case {
        std::string fixture;  // empty: no report at all
        std::int32_t result;
        std::string fields;  // product name|SVID|SDID|driver name
        std::int32_t type;
    };
    const std::int32_t HBA = ADAPTER_TYPE_HBA;
    const std::int32_t RAID = ADAPTER_TYPE_RAID;
    const std::vector<Case> cases = {
        {"keys-anywhere-crlf", 0, "Tarvex TX-1600 HBA   |0x1F3A|0x00A1|tvsas3", HBA},
        {"first-key-settles-a-line", 0, "Second|1 SubDevice Id = 2||", RAID},
        {"raid-inside-a-word", 0, "Tarvex TX-2400 RAIDline|0x1F3A||", RAID},
        {"longer-vendor-id", 0, "RAID TX-2400 HBA|0x1F3A0||", HBA},
        {"lower-case-vendor-id", 0, "tarvex tx-1600 hba|0x1f3a||", RAID},
        {"", 1, "|||", RAID},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fixture);
        if (!c.fixture.empty())
            place_fixture("controller_report/" + c.fixture, "show_" + c.fixture);
        StorcliAdapter a;
        EXPECT_EQ(parse_adapter_info("show_" + c.fixture, a), c.result);
        EXPECT_EQ(a.productName + "|" + a.SVID + "|" + a.SDID + "|" + a.driverName, c.fields);
        get_adapter_type(a);
        EXPECT_EQ(a.adapterType, c.type);
    }
}

TEST_F(StorcliTest, EnclosureReports)
{
    struct Case {
        std::string fixture;  // empty: no report at all
        std::string product_ids;
        std::uint64_t rows;     // table rows read
        std::string expanders;  // see expanders_found
    };
    const std::vector<Case> cases = {
        {"crlf-legend-behind-rule", "NOPE,ABC36X", 3,
         "62|ABC36X|1.2.3|1; 2|ABC36X|2.0.1 rev B|1; "},
        // Indented and short rules are rows; behind the closing rule nothing is read.
        {"second-table-unread", "ABC", 4, "1|ABC|1.0|0; 2|ABC|2.0|0; "},
        {"ends-inside-table", "ABC", 2, "1|ABC|1.0|0; 2|ABC|2.0|0; "},
        // Rules count only behind "Properties :"; a second one shuts the table.
        {"rules-before-properties", "ABC", 1, "1|ABC|1.0|0; "},
        {"no-properties", "ABC", 0, ""},
        // The first profile row found in a row wins, at its first place.
        {"ids-inside-rows", "36,ABC36X,ABC", 5, "62|36|ABC36X 1.2.3|0; 63|ABC|1.0|2; 65|ABC||2; "},
        {"ids-inside-rows", "ABC,ABC36X", 5, "62|ABC|36X 1.2.3|0; 63|ABC|1.0|0; 65|ABC||0; "},
        // An empty product id matches every row, the blank one too.
        {"ids-inside-rows", ",ABC", 5,
         "62||62 OK 36 ABC36X 1.2.3|0; 63||63 OK ABC 1.0|0; 64||64 OK abc 1.0|0; "
         "65||65 OK ABC|0; |||0; "},
        // The enclosure id ends at the first blank, not at a tab.
        {"tab-separated-rows", "ABC", 3, "62|ABC|1.0|0; 62\tOK|ABC|1.0|0; 63\tABC|ABC||0; "},
        {"empty", "ABC", 0, ""},
        {"", "ABC", 0, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fixture + " with " + c.product_ids);
        start_row();
        fill_profiles(c.product_ids);
        if (!c.fixture.empty())
            place_fixture("enclosure_report/" + c.fixture, "show_eall_0_log");
        EXPECT_EQ(parse_eall_output("show_eall_0_log", &adapter_), c.fixture.empty() ? 1 : 0);
        EXPECT_EQ(expanders_found(), c.expanders);
        EXPECT_EQ(log_has_run({"expander lines num = " + std::to_string(c.rows)}),
                  !c.fixture.empty());
    }
}

TEST_F(StorcliTest, ALargeEnclosureReportIsReadWhole)
{
    fill_profiles("ABC36X");
    place_fixture("enclosure_report/table-head", "show_eall_0_log");
    std::string rows;
    for (int i = 0; i < 1000; ++i)
        rows += std::to_string(i) + " OK OTHER 1.0\n";
    const std::string version(1 << 20, '7');
    write_file("show_eall_0_log",
               read_file("show_eall_0_log") + rows + "1000 OK ABC36X " + version);
    parse_eall_output("show_eall_0_log", &adapter_);
    EXPECT_EQ(expanders_found(), "1000|ABC36X|" + version + "|0; ");
}

TEST_F(StorcliTest, DownloadCommandForms)
{
    struct Case {
        std::int32_t adapter_type;
        std::string mode;
        bool force_activate;
        std::int32_t psoc_image;
        std::int32_t retry_form;
        std::string tail;  // behind ".\storcli64.exe  /c0/e2 download src="
    };
    const std::int32_t HBA = ADAPTER_TYPE_HBA;
    const std::int32_t RAID = ADAPTER_TYPE_RAID;
    const std::vector<Case> cases = {
        // The main image goes by the adapter type alone.
        {HBA, "5", true, 0, 1, "fw.rom mode=E offline bufferid=0"},
        {RAID, "E", true, 0, 0, "fw.rom"},
        {0, "E", false, 0, 0, "fw.rom"},
        // Mode 5 always carries forced activation; its retry is the offline form.
        {HBA, "5", false, 1, 0, "psoc.rom forceActivate mode=5 bufferid=2"},
        {HBA, "5", false, 1, 1, "psoc.rom mode=E offline bufferid=2"},
        {HBA, "5", true, 1, 0, "psoc.rom forceActivate mode=5 bufferid=2"},
        {HBA, "5", true, 1, 1, "psoc.rom mode=E offline forceActivate bufferid=2"},
        // Any other mode goes in as it stands, and any non-zero flag counts.
        {RAID, "E", true, 1, 0, "psoc.rom mode=E offline forceActivate bufferid=2"},
        {RAID, "e", false, 1, 0, "psoc.rom mode=e offline bufferid=2"},
        {RAID, "", false, 1, 0, "psoc.rom mode= offline bufferid=2"},
        {RAID, "05", false, 7, -1, "psoc.rom forceActivate mode=5 bufferid=2"},
        {RAID, "e", true, 7, 1, "psoc.rom forceActivate mode=5 bufferid=2"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.adapter_type << ", mode '" << c.mode
                                        << "', FA " << c.force_activate << ", psoc " << c.psoc_image
                                        << ", retry " << c.retry_form);
        adapter_.adapterType = c.adapter_type;
        profile_.mode = c.mode;
        FORCE_ACTIVATE_FLAG = c.force_activate;
        EXPECT_EQ(build_download_command(expander_, c.psoc_image, c.retry_form),
                  ".\\storcli64.exe  /c0/e2 download src=" + c.tail);
    }
}

// Under -T every command gives 0 and leaves no file.
TEST_F(StorcliTest, TheWaitStandsBetweenTheImagesOnly)
{
    Options.test = true;
    WAIT_SECONDS = 1;
    testing::internal::CaptureStdout();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(update(expander_), 0);
    const std::chrono::duration<double> waited = std::chrono::steady_clock::now() - start;
    testing::internal::GetCapturedStdout();
    EXPECT_GE(waited.count(), 1.0);
    EXPECT_LT(waited.count(), 2.0);
    EXPECT_EQ(expander_.flashState, FLASH_WRITTEN);
    EXPECT_FALSE(fs::exists("fw_download_log_0_2"));
}

TEST_F(StorcliTest, RowsBeforeAShortProfileLineStillServe)
{
    place_fixture("profile/short-line-behind-a-row", "profile.txt");
    place_fixture("controller_report/keys-anywhere-crlf", "show_0_log");
    place_fixture("enclosure_report/crlf-legend-behind-rule", "show_eall_0_log");
    std::string console;
    EXPECT_EQ(run_loop(1, console), 0);
    const std::string head = "Invalid support file format.\n"
                             "Profile information is not supported.\n"
                             "2 Expander(s) Found.\n";
    EXPECT_EQ(console.substr(0, head.size()), head);
}

// Only "0x1F3A" passes the gate, silently for the others.
TEST_F(StorcliTest, TheVendorIdGateIsExactAndSilent)
{
    place_fixture("profile/crlf-columns", "profile.txt");
    place_fixture("controller_report/lower-case-vendor-id", "show_0_log");
    place_fixture("controller_report/longer-vendor-id", "show_1_log");
    place_fixture("enclosure_report/crlf-legend-behind-rule", "show_eall_0_log");
    place_fixture("enclosure_report/crlf-legend-behind-rule", "show_eall_1_log");
    std::string console;
    EXPECT_EQ(run_loop(2, console), 171);
    EXPECT_EQ(console, "");
}

TEST_F(StorcliTest, AtMostAThousandControllersAreServed)
{
    place_fixture("profile/crlf-columns", "profile.txt");
    place_fixture("controller_report/keys-anywhere-crlf", "show_999_log");
    place_fixture("enclosure_report/crlf-legend-behind-rule", "show_eall_999_log");
    std::string console;
    EXPECT_EQ(run_loop(4294967295u, console), 0);
    EXPECT_TRUE(
        log_has_run({"Controller count above 1000, controllers from 1000 on are not served"}));
    EXPECT_FALSE(log_has_run({"Exec Command = .\\storcli64.exe /c1000 show  >show_1000_log 2>&1"}));
    ASSERT_EQ(Adapters.size(), 1u);
    EXPECT_EQ(Adapters[0]->adapterIndex, "999");
}
