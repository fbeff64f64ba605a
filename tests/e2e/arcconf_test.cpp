// The arcconf family against the lab's simulated servers: reached when the
// storcli family has nothing to do, inquiry, upgrade, write buffer, summary.
#include "e2e_support.h"

#include <chrono>

namespace {

const std::string DASHES = "------------------------------------\n";
const std::string WRITTEN =
    " Start to download expander firmware image...\n"
    " Firmware image download success.\n"
    " Power cycle system is required to activate downloaded FW.\n";
const std::string WRITTEN_WITH_PSOC =
    " Start to download expander firmware image...\n"
    " Firmware image download success.\n"
    " Start to download psoc firmware image...\n"
    " PSOC image download success.\n"
    " Power cycle system is required to activate downloaded FW.\n";
const std::string UP_TO_DATE = " FW version is up-to-date.\n";
const std::string ALL_WRITTEN =
    "All expander(s) firmware download success.\n"
    "System power cycle is required to activate the download firmware images\n";
const std::string NOTHING_FOUND = "No expander devices found.\n\n\n";

// Two expanders on channel 2 with a drive between them: X100 shows 1.00 in
// the device report and 1.02 in its inquiry data, X200 2.00 and 2.10.
const std::string SERVER =
    "line-ends crlf\n"
    "arcconf-controller model=\"Tarvex SmartHBA 2100-8i\" serial=8A4711001\n"
    "drive    channel=0 device=0 vendor=SEAGATE model=ST1200MM0099 firmware=ST31 disk=PhysicalDrive0\n"
    "expander channel=2 device=0 vendor=TARVEX model=X100 firmware=1.00 inquiry=1.02 psoc=0.9 connector=0 expander-id=7\n"
    "drive    channel=2 device=1 vendor=HGST model=HUH721212AL firmware=A3Z0 disk=PhysicalDrive2\n"
    "expander channel=2 device=2 vendor=TARVEX model=X200 firmware=2.00 inquiry=2.10 psoc=1.0 connector=1 expander-id=8\n"
    "virtual-enclosure channel=2 device=9 vendor=TARVEX model=\"Virtual SGPIO\" firmware=0001\n"
    "image file=x100_fw.bin   version=1.04\n"
    "image file=x100_psoc.bin version=1.0 kind=psoc\n"
    "image file=x200_fw.bin   version=2.20\n"
    "image file=x200_psoc.bin version=1.0 kind=psoc\n";

// X100 reads its version from the inquiry data, X200 from the device report.
const std::string PROFILE =
    "X100,aux,1.04,x100_fw.bin,aux,x100_psoc.bin,E,2,1\n"
    "X200,aux,2.20,x200_fw.bin,aux,x200_psoc.bin,E,2,0\n";

std::string shown(const std::string& model, const std::string& installed, const std::string& target)
{
    return " Expander Product ID:" + model + "\n Installed FW Vesion:" + installed +
           "\n Target FW Version  :" + target + "\n";
}

double seconds_since(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

class ArcconfTest : public E2ETest {
protected:
    void server(const std::string& extra = "", const std::string& profile = PROFILE)
    {
        put_file("lab.scenario", SERVER + extra);
        put_file("profile.txt", profile);
        put_file("x100_fw.bin", std::string(1000, 'f'));
        put_file("x100_psoc.bin", std::string(107251, 'p'));
        put_file("x200_fw.bin", std::string(1000, 'f'));
        put_file("x200_psoc.bin", std::string(300, 'p'));
        arcconf_on_path();
    }
};

TEST_F(ArcconfTest, WithoutStorcliTheArcconfFamilyUpdatesBothExpandersAndFindsThemUpToDateAfterAPowerCycle)
{
    server();
    const auto start = std::chrono::steady_clock::now();
    const RunResult live = run("--psoc 1 -s 1 -p profile.txt");
    EXPECT_GE(seconds_since(start), 2.0);  // one wait per PSoC image
    const std::string written = shown("X100", "1.02", "1.04") + WRITTEN_WITH_PSOC +
                                shown("X200", "2.00", "2.20") + WRITTEN_WITH_PSOC + DASHES + "\n" +
                                ALL_WRITTEN;
    EXPECT_EQ(live.exit_code, 0);
    EXPECT_EQ(live.console, BANNER + written);
    EXPECT_EQ(calls(), (std::vector<std::string>{
                           "arcconf.exe list",
                           "arcconf.exe getconfig 1 PD",
                           "arcconf.exe PASSTHROUGH 1 2 0 read 512 [ 12 00 00 02 00 00 ] rawhex noprompt",
                           "arcconf.exe expanderupgrade 1 enclosure 0 2 0 expander x100_fw.bin E noprompt",
                           "arcconf.exe PASSTHROUGH 1 2 0 write [ 3B 0E 02 00 00 00 01 a2 f3 00 ] x100_psoc.bin noprompt",
                           "arcconf.exe PASSTHROUGH 1 2 2 read 512 [ 12 00 00 02 00 00 ] rawhex noprompt",
                           "arcconf.exe expanderupgrade 1 enclosure 1 2 2 expander x200_fw.bin E noprompt",
                           "arcconf.exe PASSTHROUGH 1 2 2 write [ 3B 0E 02 00 00 00 00 01 2c 00 ] x200_psoc.bin noprompt",
                       }));
    for (const char* output : {"arrconf_list.log", "getconfigpd_1", "inq_1_2_0", "expanderupgrade_1_2_0",
                               "write_buffer_1_2_0", "inq_1_2_2", "expanderupgrade_1_2_2", "write_buffer_1_2_2"})
        EXPECT_TRUE(exists(output)) << output;
    const std::vector<std::string> log = log_lines();
    EXPECT_TRUE(has_run(log, {"adapters count = 0"}));
    EXPECT_TRUE(has_run(log, {"Command: = arcconf.exe  list > arrconf_list.log 2>&1", "Result: = 0"}));
    EXPECT_TRUE(has_run(log, {"installed version: = 1.02"}));
    EXPECT_TRUE(has_run(log, {"result = 0", "**********Process End ******* "}));

    // A replay reads the files the run left and starts no tool.
    const RunResult replay = run("-T --psoc 1 -p profile.txt");
    EXPECT_EQ(replay.exit_code, 0);
    EXPECT_EQ(replay.console, BANNER + written);
    EXPECT_EQ(calls().size(), 8u);

    labctl("powercycle");
    const RunResult again = run("--psoc 1 -p profile.txt");
    EXPECT_EQ(again.exit_code, 0);
    EXPECT_EQ(again.console, BANNER + shown("X100", "1.04", "1.04") + UP_TO_DATE +
                                 shown("X200", "2.20", "2.20") + UP_TO_DATE + DASHES + "\n" +
                                 "All expanders' firmware are up-to-date.\n");
}

TEST_F(ArcconfTest, AStorcliServerWithNothingToDoFallsBackAndReadsTheProfileTwice)
{
    server("storcli-controller product=\"Tarvex 9500-16i HBA\" subvendor=0x1F3A subdevice=0x4110 driver=tvsas3\n"
           "enclosure eid=2 product=ABC36X version=1.2.3\n");
    install_storcli();

    // Each family reads the profile and says it cannot.
    const RunResult missing = this->run("-p missing.txt");
    EXPECT_EQ(missing.exit_code, 174);
    const std::string told = "ERROR: Could not open profile file missing.txt!\nProfile information is not supported.\n";
    EXPECT_EQ(missing.console, BANNER + told + told);

    std::filesystem::remove(dir() / "log.txt");
    const RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.console, BANNER + shown("X100", "1.02", "1.04") + WRITTEN + shown("X200", "2.00", "2.20") +
                               WRITTEN + DASHES + "\n" + ALL_WRITTEN);
    const std::vector<std::string> log = log_lines();
    EXPECT_TRUE(has_run(log, {"profiles number: = 2"}));
    EXPECT_TRUE(has_run(log, {"profiles number: = 4"}));
    // Without --psoc no write buffer is sent.
    for (const std::string& call : calls())
        EXPECT_EQ(call.find(" write "), std::string::npos) << call;
}

TEST_F(ArcconfTest, ForceAndTheFailuresOfEachStep)
{
    server("fail tool=arcconf match=\"expanderupgrade 1 enclosure 0 2 0*\" status=5 once\n"
           "fail tool=arcconf match=\"PASSTHROUGH 1 2 2 write*\" status=6 once\n");
    RunResult run = this->run("-f --psoc 1 -p profile.txt");
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.console, BANNER + shown("X100", "1.02", "1.04") +
                               " Start to download expander firmware image...\n"
                               " Firmware image download Fail.\n" +
                               shown("X200", "2.00", "2.20") +
                               " Start to download expander firmware image...\n"
                               " Firmware image download success.\n"
                               " Start to download psoc firmware image...\n"
                               " PSOC image download Fail.\n" +
                               DASHES + "\n" + "2 expander(s) firmware download fail.\n");

    // One success beside a failure is still 1; an inquiry that fails shows
    // nothing of its device on the console.
    put_file("lab.scenario", file("lab.scenario") + "fail tool=arcconf match=\"PASSTHROUGH 1 2 0 read*\" status=3\n");
    labctl("reset");
    run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.console, BANNER + shown("X200", "2.00", "2.20") + WRITTEN + DASHES + "\n" +
                               "1 expander(s) firmware download fail.\n"
                               "1 expander(s) firmware download success.\n");
    EXPECT_TRUE(has_run(log_lines(), {"Result = 3", "**********MCHP_DEVICE::scsi_inquery End ******* ",
                                      "Fail to get inquery data"}));
}

TEST_F(ArcconfTest, AModelThatOnlyContainsTheProductIdMatchesNothing)
{
    server("", "X10,aux,1.04,x100_fw.bin,aux,x100_psoc.bin,E,2,1\nx200,aux,9,f,a,p,E,2,0\n");
    const RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 171);
    EXPECT_EQ(run.console, BANNER + DASHES + "\n" + NOTHING_FOUND);
}

TEST_F(ArcconfTest, AnUnusableProfileEndsWithTheReadersCode)
{
    server();
    RunResult run = this->run("-p missing.txt");
    EXPECT_EQ(run.exit_code, 174);
    EXPECT_EQ(run.console, BANNER + "ERROR: Could not open profile file missing.txt!\n"
                                    "Profile information is not supported.\n");

    put_file("short.txt", "X100,aux,1.04,x100_fw.bin,aux,x100_psoc.bin,E,2,1\nX200,aux\n");
    run = this->run("-p short.txt");
    EXPECT_EQ(run.exit_code, 161);
    EXPECT_EQ(run.console, BANNER + "Invalid support file format.\nProfile information is not supported.\n");

    put_file("empty.txt", "\r\n\r\n");
    run = this->run("-p empty.txt");
    EXPECT_EQ(run.exit_code, 162);
    EXPECT_EQ(run.console, BANNER + "Invalid support file format.\nProfile information is not supported.\n");
    // No device was looked for.
    for (const std::string& call : calls())
        EXPECT_EQ(call.find("getconfig"), std::string::npos) << call;
}

TEST_F(ArcconfTest, AFailedListingOrDeviceReportFindsNothing)
{
    server("fail tool=arcconf match=\"getconfig 1 PD\" status=3\n");
    RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 171);
    EXPECT_EQ(run.console, BANNER + NOTHING_FOUND);
    EXPECT_TRUE(has_run(log_lines(), {"Expander number = 0", "result = 171"}));

    server("fail tool=arcconf match=\"list\" status=3\n");
    labctl("reset");
    run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 171);
    EXPECT_EQ(run.console, BANNER + NOTHING_FOUND);
    EXPECT_EQ(calls(), std::vector<std::string>{"arcconf.exe list"});
}
