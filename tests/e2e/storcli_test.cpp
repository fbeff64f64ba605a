// The storcli family against the lab's simulated servers: discovery, the
// update sequence, the summary and its exit codes, and -T replays.
#include "e2e_support.h"

namespace {

const std::string DASHES = "------------------------------------";
const std::string WRITTEN =
    "Start to download firmware image, please wait....\n"
    "Image download success.\n"
    "Start to download PSoc firmware image, please wait...\n"
    "Image download success.\n";
const std::string MAIN_FAILED =
    "Start to download firmware image, please wait....\n"
    "Image download fail.\n";
const std::string UP_TO_DATE = "Firmware version is up-to-date.\n";
const std::string ALL_WRITTEN =
    "All expander(s) firmware download success.\n"
    "System power cycle is required to activate the download firmware images\n";
const std::string ALL_UP_TO_DATE = "All expanders' firmware are up-to-date.\n";

const std::string HBA =
    "storcli-controller product=\"Tarvex 9500-16i HBA\" subvendor=0x1F3A subdevice=0x4110 driver=tvsas3\n";
const std::string RAID =
    "storcli-controller product=\"Tarvex 9560-8i RAID\" subvendor=0x1F3A subdevice=0x4212 driver=tvraid6\n";
const std::string IMAGES =
    "image file=abc36x_fw.rom   version=1.2.4\n"
    "image file=abc36x_psoc.rom version=1.0 kind=psoc\n"
    "image file=abc24x_fw.rom   version=1.2.4\n"
    "image file=abc24x_psoc.rom version=1.0 kind=psoc\n";
const std::string PROFILE =
    "ABC36X,aux,1.2.4,abc36x_fw.rom,aux,abc36x_psoc.rom,E,2,0\n"
    "ABC24X,aux,1.2.4,abc24x_fw.rom,aux,abc24x_psoc.rom,E,2,0\n";

// The four lines that introduce an expander, then what became of it.
std::string expander(const std::string& product, const std::string& eid,
                     const std::string& installed, const std::string& outcome)
{
    return "\n" + DASHES + "\n" + "Product ID: " + product + "\n" + "EID:        " + eid + "\n" +
           "Installed Version:" + installed + "\n" + "Target Version:   1.2.4\n" + outcome;
}

std::string console(const std::vector<std::string>& expanders, const std::string& ending)
{
    std::string text = BANNER + std::to_string(expanders.size()) + " Expander(s) Found.\n\n";
    for (const std::string& e : expanders)
        text += e;
    return text + DASHES + "\n\n" + ending;
}

}  // namespace

class StorcliTest : public E2ETest {
protected:
    // A server of this family in the working directory, with its images.
    void server(const std::string& scenario, const std::string& profile = PROFILE)
    {
        put_file("lab.scenario", "line-ends crlf\n" + scenario + IMAGES);
        put_file("profile.txt", profile);
        for (const char* image : {"abc36x_fw.rom", "abc36x_psoc.rom", "abc24x_fw.rom", "abc24x_psoc.rom"})
            put_file(image, "image data");
        install_storcli();
        arcconf_on_path();
    }
};

TEST_F(StorcliTest, TwoExpandersOnTwoControllersAreWrittenAndUpToDateAfterAPowerCycle)
{
    server(HBA + "enclosure eid=2 product=ABC36X version=1.2.3 psoc=0.9 slots=36 pd=12\n" + RAID +
           "enclosure eid=62 product=ABC24X version=1.1.0 psoc=0.8 slots=24 pd=10\n"
           "enclosure eid=69 product=SGPIO slots=8 sim=1\n");
    const RunResult live = run("-p profile.txt");
    const std::string written = console({expander("ABC36X", "2", "1.2.3", WRITTEN),
                                         expander("ABC24X", "62", "1.1.0", WRITTEN)},
                                        ALL_WRITTEN);
    EXPECT_EQ(live.exit_code, 0);
    EXPECT_EQ(live.console, written);
    EXPECT_EQ(calls(), (std::vector<std::string>{
                           "storcli64.exe show ctrlcount",
                           "storcli64.exe /c0 show",
                           "storcli64.exe /c0/eall show",
                           "storcli64.exe /c1 show",
                           "storcli64.exe /c1/eall show",
                           "storcli64.exe /c0/e2 download src=abc36x_fw.rom mode=E offline bufferid=0",
                           "storcli64.exe /c0/e2 download src=abc36x_psoc.rom mode=E offline bufferid=2",
                           "storcli64.exe /c1/e62 download src=abc24x_fw.rom",
                           "storcli64.exe /c1/e62 download src=abc24x_psoc.rom mode=E offline bufferid=2",
                       }));
    for (const char* output : {"ctrlcount.rst", "show_0_log", "show_eall_1_log", "fw_download_log_0_2",
                               "psoc_download_log_0_2_t0", "fw_download_log_1_62", "psoc_download_log_1_62_t0"})
        EXPECT_TRUE(exists(output)) << output;
    EXPECT_FALSE(exists("psoc_download_log_0_2_t1"));
    const std::vector<std::string> log = log_lines();
    EXPECT_TRUE(has_run(log, {"**********exec_command Begin ******* ",
                              "Exec Command = .\\storcli64.exe /c0 show  >show_0_log 2>&1",
                              "Exec result = 0", "**********exec_command End ******* "}));
    EXPECT_TRUE(has_run(log, {"result = 0", "**********Process End ******* "}));

    // A replay reads the files this run left and starts no tool.
    const RunResult replay = run("-T -p profile.txt");
    EXPECT_EQ(replay.exit_code, 0);
    EXPECT_EQ(replay.console, written);
    EXPECT_EQ(calls().size(), 9u);

    labctl("powercycle");
    const RunResult again = run("-p profile.txt");
    EXPECT_EQ(again.exit_code, 0);
    EXPECT_EQ(again.console, console({expander("ABC36X", "2", "1.2.4", UP_TO_DATE),
                                      expander("ABC24X", "62", "1.2.4", UP_TO_DATE)},
                                     ALL_UP_TO_DATE));
    // A run that had expanders to work on never asks the other family.
    for (const std::string& call : calls())
        EXPECT_EQ(call.find("arcconf"), std::string::npos) << call;
}

TEST_F(StorcliTest, ForceWritesOverAnUpToDateExpanderAndForceActivateShowsInThePsocForm)
{
    server(HBA + "enclosure eid=2 product=ABC36X version=1.2.4 psoc=1.0\n");
    const RunResult run = this->run("-f --FA -p profile.txt");
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.console, console({expander("ABC36X", "2", "1.2.4", WRITTEN)}, ALL_WRITTEN));
    EXPECT_EQ(calls().back(),
              "storcli64.exe /c0/e2 download src=abc36x_psoc.rom mode=E offline forceActivate bufferid=2");
    EXPECT_TRUE(has_run(log_lines(), {"force = 1", "installed: = 1.2.4", "target: = 1.2.4",
                                      "need to download FW"}));
}

TEST_F(StorcliTest, APsocFirstFormThatFailsIsRetriedInTheSecondForm)
{
    server(HBA + "enclosure eid=2 product=ABC36X version=1.2.3 psoc=0.9 psoc-mode=5\n");
    const RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.console, console({expander("ABC36X", "2", "1.2.3", WRITTEN)}, ALL_WRITTEN));
    const std::vector<std::string> calls = this->calls();
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[calls.size() - 2], "storcli64.exe /c0/e2 download src=abc36x_psoc.rom mode=E offline bufferid=2");
    EXPECT_EQ(calls.back(), "storcli64.exe /c0/e2 download src=abc36x_psoc.rom forceActivate mode=5 bufferid=2");
    EXPECT_TRUE(exists("psoc_download_log_0_2_t0"));
    EXPECT_TRUE(exists("psoc_download_log_0_2_t1"));
}

TEST_F(StorcliTest, AFailedMainImageEndsWithItsStatusWhenNothingWasWritten)
{
    server(HBA + "enclosure eid=2 product=ABC36X version=1.2.3\n"
                 "fail tool=storcli match=\"*download src=abc36x_fw.rom*\" status=255\n");
    const RunResult run = this->run("-s 1 -p profile.txt");
    EXPECT_EQ(run.exit_code, 255);
    EXPECT_EQ(run.console, console({expander("ABC36X", "2", "1.2.3", MAIN_FAILED)},
                                   "1 expander(s) firmware download fail.\n"));
    EXPECT_EQ(calls().back(), "storcli64.exe /c0/e2 download src=abc36x_fw.rom mode=E offline bufferid=0");
    EXPECT_TRUE(has_run(log_lines(), {"Exec result = 255", "**********exec_command End ******* ",
                                      "Download fw image fail", "**********flash End ******* "}));
}

TEST_F(StorcliTest, MixedOutcomesGiveOneOr163)
{
    server(HBA + "enclosure eid=2 product=ABC36X version=1.2.3\n"
                 "enclosure eid=3 product=ABC24X version=1.2.3\n"
                 "fail tool=storcli match=\"*download src=abc36x_fw.rom*\" status=4\n");
    RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.console, console({expander("ABC36X", "2", "1.2.3", MAIN_FAILED),
                                    expander("ABC24X", "3", "1.2.3", WRITTEN)},
                                   "1 expander(s) firmware download fail.\n"
                                   "1 expander(s) firmware download success.\n"));

    // The second expander is now up to date: the last update's 163 stands.
    labctl("powercycle");
    run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 163);
    EXPECT_EQ(run.console, console({expander("ABC36X", "2", "1.2.3", MAIN_FAILED),
                                    expander("ABC24X", "3", "1.2.4", UP_TO_DATE)},
                                   "1 expander(s) firmware download fail.\n"));
}

TEST_F(StorcliTest, RefusedAndFailingControllersLeaveTheOthersServed)
{
    server("storcli-controller product=\"Other HBA\" subvendor=0x1000 subdevice=0x3090 driver=x\n"
           "enclosure eid=5 product=ABC36X version=1.0\n" +
           HBA + "enclosure eid=2 product=ABC36X version=1.2.4\n" + RAID +
           "enclosure eid=7 product=ABC24X version=1.0\n"
           "fail tool=storcli match=\"/c2/eall show\" status=3\n");
    const RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.console, console({expander("ABC36X", "2", "1.2.4", UP_TO_DATE)}, ALL_UP_TO_DATE));
    const std::vector<std::string> calls = this->calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "storcli64.exe /c0/eall show"), 0);
    const std::string log = file("log.txt");
    EXPECT_NE(log.find("]  SVID is not match Tarvex SVID, Not Supported adapter.["), std::string::npos);
    EXPECT_NE(log.find("]  get controller info fail["), std::string::npos);
}

TEST_F(StorcliTest, NoMatchingExpanderAsksTheArcconfFamilyAndEnds171)
{
    server(HBA + "enclosure eid=2 product=ABC36X version=1.2.3\n",
           "XYZ99,aux,1.0,x.rom,aux,y.rom,E,2,0\n");
    RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 171);
    EXPECT_EQ(run.console, BANNER + "No expander devices found.\n\n\n");
    EXPECT_EQ(calls().back(), "arcconf.exe list");

    // An unreadable profile is told on the console and the controllers are
    // still asked; nothing can match, so the end is the same.
    run = this->run("-p missing.txt");
    EXPECT_EQ(run.exit_code, 171);
    EXPECT_EQ(run.console, BANNER + "ERROR: Could not open profile file missing.txt!\n"
                                    "Profile information is not supported.\n"
                                    "No expander devices found.\n\n\n");
}

TEST_F(StorcliTest, AMissingToolCountsNoControllers)
{
    put_file("profile.txt", PROFILE);
    const RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 171);
    EXPECT_EQ(run.console, BANNER + "No expander devices found.\n\n\n");
    EXPECT_TRUE(has_run(log_lines(), {"**********getAdapterCount Begin ******* ",
                                      "command = .\\storcli64.exe  show ctrlcount  >ctrlcount.rst"}));
}

TEST_F(StorcliTest, AHugeProfileIsReadWholeAndItsLastRowServes)
{
    std::string profile;
    for (int i = 0; i < 100000; ++i)
        profile += "P" + std::to_string(i) + "X,aux,1.0,f.rom,aux,p.rom,E,2,1\n";
    profile += std::string(1 << 20, 'x') + ",aux,1.0,f.rom,aux,p.rom,E,2,0\r\n";
    profile += "ABC36X,aux,1.2.4,abc36x_fw.rom,aux,abc36x_psoc.rom,E,2,0\n";
    server(HBA + "enclosure eid=2 product=ABC36X version=1.2.4\n", profile);
    const RunResult run = this->run("-p profile.txt");
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.console, console({expander("ABC36X", "2", "1.2.4", UP_TO_DATE)}, ALL_UP_TO_DATE));
    EXPECT_TRUE(has_run(log_lines(), {"profiles number: = 100002", "**********read_profiles End ******* "}));
}
