// The command line's words and values, and the log's value forms.
#include "diagnostics/log.h"
#include "run/command_line.h"

#include "run/run_state.h"
#include "test_support.h"

#include <sstream>

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

namespace {

// parseArgs over `arguments`, behind the program's name.
std::int32_t parse(const Lines& arguments)
{
    Lines texts{"sasfwctl.exe"};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& text : texts)
        argv.push_back(&text[0]);
    return parseArgs(static_cast<int>(argv.size()), argv.data(), Options);
}

// Every target of a switch, in one line.
std::string switch_targets()
{
    std::ostringstream text;
    text << "p=" << Options.profile_file << " l=" << Options.log_file << " T=" << Options.test
         << " f=" << Options.force << " d=" << Options.debug << " V=" << Options.verbose
         << " s=" << WAIT_SECONDS << " psoc=" << PSOC_UPDATE_FLAG << " FA=" << FORCE_ACTIVATE_FLAG;
    return text.str();
}

}  // namespace

class RunTest : public ScratchTest { };

TEST_F(RunTest, CommandLines)
{
    struct Case {
        Lines arguments;
        std::int32_t result;
        std::string targets;  // see switch_targets
    };
    const std::string none = "T=0 f=0 d=0 V=0 s=0 psoc=0 FA=0";
    const std::vector<Case> cases = {
        {{"-d", "-32i", "-36i", "-V", "-T", "-f", "-l", "run.log", "-p", "p.txt", "-s", "5x",
          "--psoc", "2", "--FA"},
         0,
         "p=p.txt l=run.log T=1 f=1 d=1 V=1 s=5 psoc=1 FA=1"},
        // A value is taken as it comes, even when it looks like a switch.
        {{"-p", "-T", "-l", "-p"}, 0, "p=-T l=-p " + none},
        // Switches are whole, case-sensitive words; the last -p wins.
        {{"-x", "5", "-p", "a", "b", "-p", "c", "-P", "d", "-ps", "e", "--fa", "-t", "-F"},
         0,
         "p=c l= " + none},
        // -s and --psoc without a value set nothing and are no failure.
        {{"-s", "3", "--psoc", "1", "-s"}, 0, "p= l= T=0 f=0 d=0 V=0 s=3 psoc=1 FA=0"},
        {{"--psoc", "1", "--psoc"}, 0, "p= l= T=0 f=0 d=0 V=0 s=0 psoc=1 FA=0"},
        // Numbers read like atoi.
        {{"-s", "abc", "--psoc", "abc"}, 0, "p= l= " + none},
        {{"--psoc", "1", "--psoc", "0"}, 0, "p= l= " + none},
        {{"--psoc", "-3"}, 0, "p= l= T=0 f=0 d=0 V=0 s=0 psoc=1 FA=0"},
        // Waits up to 4294967 seconds stand; beyond, or below 0, none.
        {{"-s", "4294967"}, 0, "p= l= T=0 f=0 d=0 V=0 s=4294967 psoc=0 FA=0"},
        {{"-s", "7", "-s", "4294968"}, 0, "p= l= " + none},
        {{"-s", "7", "-s", "-1"}, 0, "p= l= " + none},
        // A lost value fails only once every word is read.
        {{"-p", "p.txt", "-f", "-l"}, 1, "p=p.txt l= T=0 f=1 d=0 V=0 s=0 psoc=0 FA=0"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.arguments));
        start_row();
        EXPECT_EQ(parse(c.arguments), c.result);
        EXPECT_EQ(switch_targets(), c.targets);
    }
}

TEST_F(RunTest, LogValueForms)
{
    write_file("log.txt", "earlier run\n");
    logBegin("parseArgs");
    logEnd("flash");
    logValue("signed", std::int32_t{-1});
    logValue("unsigned", static_cast<std::uint32_t>(-1));
    logValue("size", std::uint64_t{18446744073709551615u});
    logValue("psoc update:%d", true);
    logValue("text", std::string("a\nb"));
    logValue("literal", "x");
    logMessage("No any adapters found.");
    EXPECT_EQ(
        logged(),
        (Lines{"earlier run", "**********parseArgs Begin ******* ", "**********flash End ******* ",
               "signed = -1", "unsigned = 4294967295", "size = 18446744073709551615",
               "psoc update:%d = 1", "text = a", "b", "literal = x", "No any adapters found."}));
}

// A copy that cannot be opened is ignored; the log goes on.
TEST_F(RunTest, ALogCopyThatCannotBeOpenedIsNoFailure)
{
    logAlsoTo("no/such/dir/run.log");
    logMessage("after");
    EXPECT_EQ(logged(), Lines{"after"});
    EXPECT_FALSE(fs::exists("no"));
}
