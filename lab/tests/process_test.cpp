// The built programs as the utility meets them: started by the command
// processor, their output redirected into files.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "lab.h"
#include "platform/platform.h"
#include "support.h"

namespace fs = std::filesystem;

namespace {

using lab_test::fixture;
using lab_test::has_line;

const std::string INQUIRY = "PASSTHROUGH 1 2 0 read 512 [ 12 00 00 02 00 00 ] rawhex noprompt";

// putenv keeps the text it is given on some platforms, so it stays in one place.
void set_scenario_variable(const std::string& path)
{
    static char setting[4096];
    std::snprintf(setting, sizeof setting, "SASFWCTL_LAB_SCENARIO=%s", path.c_str());
    putenv(setting);
}

class Programs : public lab_test::LabTest {
protected:
    void SetUp() override
    {
        LabTest::SetUp();
        previous_ = fs::current_path();
        fs::current_path(dir);
        set_scenario_variable("");
        write_scenario("line-ends crlf\n" + fixture("server.scenario"));
    }

    void TearDown() override { fs::current_path(previous_); }

    // Runs a program in the scratch folder, its streams going to "out" and "err".
    int run_program(const char* program, const std::string& args)
    {
        std::string command =
            fs::absolute(program).make_preferred().string() + " " + args + " > out 2> err";
        return platform::run_shell(command);
    }

private:
    fs::path previous_;
};

TEST_F(Programs, ReportsReachTheirFilesByteForByte)
{
    ASSERT_EQ(run_program(LAB_STORCLI, "/c0/eall show"), 0);
    EXPECT_EQ(read_file("out"), run(lab::Tool::Storcli, "/c0/eall show").output);
    ASSERT_EQ(run_program(LAB_ARCCONF, INQUIRY), 0);
    EXPECT_EQ(read_file("out"), run(lab::Tool::Arcconf, INQUIRY).output);
}

TEST_F(Programs, ExitStatusesAndFaultsReachTheCommandProcessor)
{
    EXPECT_EQ(run_program(LAB_STORCLI, "/c1/e62 download src=fw.rom"), 4);
    EXPECT_TRUE(has_line(read_file("out"), "Description = Enclosure is busy"));
    EXPECT_EQ(run_program(LAB_STORCLI, "/c1/e62 download src=fw.rom"), 0);
    EXPECT_EQ(run_program(LAB_LABCTL, "powercycle"), 0);
    EXPECT_EQ(text_lines(read_file("out")).at(0), "Activated storcli/c1/e62 main 1.2.4 (fw.rom)");
    EXPECT_EQ(run_program(LAB_LABCTL, "restart"), 2);

    write_scenario("line-ends crlf\nenclosure eid=2 product=ABC36X\n");
    EXPECT_EQ(run_program(LAB_ARCCONF, "list"), 2);
    EXPECT_EQ(read_file("out"), "");
    EXPECT_EQ(text_lines(read_file("err")),
              std::vector<std::string>{
                  "arcconf.exe (lab): lab.scenario:2: enclosure: needs a storcli-controller line "
                  "above it"});
}

TEST_F(Programs, ScenarioNamedByTheEnvironment)
{
    fs::create_directories("elsewhere");
    fs::rename("lab.scenario", "elsewhere/server.scenario");
    const std::string named = (fs::current_path() / "elsewhere" / "server.scenario").string();
    set_scenario_variable(named);
    EXPECT_EQ(lab::find_scenario_path(), named);
    ASSERT_EQ(run_program(LAB_STORCLI, "show ctrlcount"), 0);
    EXPECT_TRUE(has_line(read_file("out"), "Controller Count = 2"));
    EXPECT_TRUE(fs::exists(lab::calls_path(named)));
    EXPECT_FALSE(fs::exists("lab.scenario.calls"));
    set_scenario_variable("");
    EXPECT_EQ(lab::find_scenario_path(), "lab.scenario");
}

}  // namespace
