// The lab as operators meet it: faulty scenarios and states, what the
// stand-ins answer and refuse, injected failures, staging and the power
// cycle, the call record, line ends and labctl's output.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "lab.h"
#include "lab_error.h"
#include "labctl.h"
#include "support.h"

namespace {

namespace fs = std::filesystem;
using lab_test::fixture;
using lab_test::has_line;

// The message of the LabError that parsing throws, or "" when it parses.
std::string parse_fault(const std::string& text)
{
    try {
        lab::parse_scenario(text, "server.scenario");
    } catch (const lab::LabError& error) {
        return error.what();
    }
    return "";
}

std::string with_crlf(const std::string& text)
{
    std::string converted;
    for (char c : text)
        converted += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return converted;
}

// Lines without the blanks that pad labctl's table rows.
std::vector<std::string> trimmed_lines(const std::string& text)
{
    std::vector<std::string> lines = text_lines(text);
    for (std::string& line : lines)
        line = lab::trim(line);
    return lines;
}

std::vector<std::string> fields_of(const std::string& line)
{
    std::vector<std::string> fields;
    std::size_t from = 0;
    for (std::size_t bar; (bar = line.find(" | ", from)) != std::string::npos; from = bar + 3)
        fields.push_back(line.substr(from, bar - from));
    fields.push_back(line.substr(from));
    return fields;
}

struct FaultCase {
    std::string expected;
    std::string text;
};

// fixtures/faulty-scenarios.txt: each case the message, then the
// scenario's lines, each behind "> ".
std::vector<FaultCase> fault_cases()
{
    std::vector<FaultCase> cases;
    for (const std::string& line : text_lines(fixture("faulty-scenarios.txt"))) {
        if (line.rfind(">", 0) == 0 && !cases.empty())
            cases.back().text += (line.size() > 2 ? line.substr(2) : "") + "\n";
        else if (!line.empty() && line[0] != '#')
            cases.push_back({line, ""});
    }
    return cases;
}

TEST(Scenario, FaultsNameFileLineAndFault)
{
    const std::vector<FaultCase> cases = fault_cases();
    ASSERT_GE(cases.size(), 19u);
    for (const FaultCase& c : cases) {
        EXPECT_EQ(parse_fault(c.text), c.expected) << c.text;
        EXPECT_EQ(parse_fault(with_crlf(c.text)), c.expected) << "with CR LF:\n" << c.text;
    }
}

TEST(Scenario, ShippedScenariosLoad)
{
    for (const char* name :
         {"storcli-hba-raid.scenario", "arcconf-server.scenario", "storcli-faults.scenario"})
        EXPECT_NO_THROW(lab::load_scenario(std::string(LAB_SCENARIO_DIR) + "/" + name)) << name;
}

class Lab : public lab_test::LabTest {
protected:
    int labctl(const std::string& command)
    {
        std::ostringstream out, err;
        int status = lab::run_labctl({command}, scenario, out, err);
        output = out.str();
        errors = err.str();
        return status;
    }

    // labctl's output equals the fixture, with SCENARIO for the scenario's path.
    void expect_labctl(const std::string& command, const std::string& expected)
    {
        ASSERT_EQ(labctl(command), 0) << errors;
        for (std::size_t at = output.find(scenario); at != std::string::npos;
             at = output.find(scenario))
            output.replace(at, scenario.size(), "SCENARIO");
        EXPECT_EQ(trimmed_lines(output), trimmed_lines(fixture(expected))) << "labctl " << command;
    }

    // Runs the calls of a script fixture, one a line:
    // "tool | arguments | exit status | text the output holds".
    void run_script(const std::string& name)
    {
        for (const std::string& line : text_lines(fixture(name))) {
            if (line.empty() || line[0] == '#')
                continue;
            std::vector<std::string> fields = fields_of(line);
            ASSERT_EQ(fields.size(), 4u) << line;
            lab::Tool tool = fields[0] == "arcconf" ? lab::Tool::Arcconf : lab::Tool::Storcli;
            lab::ToolRun call = run(tool, fields[1]);
            EXPECT_EQ(call.status, std::stoi(fields[2])) << line;
            EXPECT_NE(call.output.find(fields[3]), std::string::npos) << line << "\n"
                                                                      << call.output;
            // A refusal has the shape of the tool's failure report.
            const char* failed =
                tool == lab::Tool::Arcconf ? "Command aborted." : "Status = Failure";
            EXPECT_EQ(has_line(call.output, failed), call.status != 0) << line << "\n"
                                                                       << call.output;
        }
    }

    std::string output, errors;
};

TEST_F(Lab, RefusalsNameTheirReasonAndStageNothing)
{
    run_script("refusals.txt");
    EXPECT_TRUE(lab::load_state(lab::state_path(scenario)).expanders.empty());
}

TEST_F(Lab, InjectedFailuresFireBeforeTheCommandDoesAnything)
{
    run_script("injected-failures.txt");
    expect_labctl("show", "show-after-failures.txt");
}

TEST_F(Lab, DownloadsStageUntilThePowerCycle)
{
    run_script("downloads.txt");
    expect_labctl("show", "show-staged.txt");
    expect_labctl("powercycle", "powercycle.txt");
    expect_labctl("show", "show-cycled.txt");
    run_script("after-powercycle.txt");

    ASSERT_EQ(labctl("reset"), 0);
    EXPECT_EQ(output, "Lab state and call record of " + scenario + " removed.\n");
    EXPECT_FALSE(fs::exists(lab::state_path(scenario)));
    EXPECT_FALSE(fs::exists(lab::calls_path(scenario)));
    EXPECT_NE(run(lab::Tool::Storcli, "/c0/eall show").output.find("ABC36X 1.2.3"),
              std::string::npos)
        << "the lab forgets the power cycle, and keeps the operator's scenario";
}

TEST_F(Lab, LabctlTellsFaultsOnStandardError)
{
    EXPECT_EQ(labctl("reboot"), 2);
    EXPECT_EQ(text_lines(errors).at(0), "usage: labctl show | powercycle | reset");

    std::ofstream(lab::state_path(scenario)) << "# state\nstaged storcli/c0/e2 main\n";
    EXPECT_EQ(labctl("powercycle"), 2);
    EXPECT_EQ(errors,
              "labctl: " + scenario + ".state:2: not a state line; 'labctl reset' starts afresh\n");

    fs::remove(scenario);
    EXPECT_EQ(labctl("show"), 2);
    EXPECT_EQ(errors, "labctl: " + scenario + ": cannot open the scenario file\n");
}

TEST_F(Lab, EveryCallIsRecordedWithToolDirectoryAndArguments)
{
    run(lab::Tool::Storcli, "show ctrlcount");
    run(lab::Tool::Storcli, "/c9 show");  // refused, and recorded all the same
    lab::run_tool(lab::Tool::Arcconf, scenario, dir, {"list", "", "two words"});
    EXPECT_EQ(text_lines(read_file("lab.scenario.calls")),
              (std::vector<std::string>{"storcli64.exe\t" + dir + "\tshow ctrlcount",
                                        "storcli64.exe\t" + dir + "\t/c9 show",
                                        "arcconf.exe\t" + dir + "\tlist \"\" \"two words\""}));
}

std::size_t count_of(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST_F(Lab, ReportsTakeTheScenariosLineEnds)
{
    const std::string server = fixture("server.scenario");
    for (const std::string choice : {"line-ends crlf\n", "line-ends lf\n", ""}) {
        write_scenario(choice + server);
        const std::size_t crlf = choice == "line-ends crlf\n" ? 1 : 0;
        std::string reports = run(lab::Tool::Storcli, "/c0 show").output +
                              run(lab::Tool::Arcconf, "getconfig 1 PD").output;
        EXPECT_GT(count_of(reports, "\n"), 40u);
        EXPECT_EQ(count_of(reports, "\r"), crlf * count_of(reports, "\n")) << choice;
        EXPECT_EQ(count_of(reports, "\r\n"), crlf * count_of(reports, "\n")) << choice;
        // The inquiry data is a last line without a line end.
        std::string inquiry =
            run(lab::Tool::Arcconf,
                "PASSTHROUGH 1 2 0 read 512 [ 12 00 00 02 00 00 ] rawhex noprompt")
                .output;
        EXPECT_EQ(count_of(inquiry, "\n"), 1u) << choice;
        EXPECT_EQ(count_of(inquiry, "\r\n"), crlf) << choice;
        EXPECT_EQ(inquiry.substr(inquiry.size() - 3), " 00") << choice;
    }
}

}  // namespace
