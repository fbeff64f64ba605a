#include "arcconf/ARCCONF_UTL.h"

#include "test_support.h"

#include <chrono>

namespace {

std::vector<std::string> adapter_numbers()
{
    std::vector<std::string> numbers;
    for (const MCHP_ADAPTER* adapter : ARCCONF_UTL::adapters)
        numbers.push_back(adapter->adapterIndex);
    return numbers;
}

}  // namespace

class ArcconfControllerListTest : public ScratchTest {
protected:
    void SetUp() override
    {
        ScratchTest::SetUp();
        ARCCONF_UTL::test_mode = true;
    }

    // The controllers of a prepared listing, read under -T.
    static std::vector<std::string> listed(const std::string& listing)
    {
        reset_run_state();
        ARCCONF_UTL::test_mode = true;
        std::filesystem::remove("log.txt");
        write_file("arrconf_list.log", listing);
        ARCCONF_UTL::getAdapterList();
        return adapter_numbers();
    }
};

TEST_F(ArcconfControllerListTest, TheCountGivesControllersNumberedFromOne)
{
    EXPECT_EQ(listed("Controllers found: 2\r\n"), (std::vector<std::string>{"1", "2"}));
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::getAdapterList Begin ******* ",
                             "Command: = arcconf.exe  list > arrconf_list.log 2>&1", "Result: = 0",
                             "**********ARCCONF_UTL::parse_list Begin ******* ",
                             "lineStr:%s = Controllers found: 2", "num = 2",
                             "**********ARCCONF_UTL::parse_list End ******* ",
                             "**********ARCCONF_UTL::getAdapterList End ******* "}));

    EXPECT_EQ(listed("Controllers found: 2 extra\n").size(), 2u);
    EXPECT_EQ(listed("  Controllers found:    2").size(), 2u);
    EXPECT_EQ(listed("Adapter list. Controllers found: 3 (of 3)\n").size(), 3u);
    EXPECT_EQ(listed("Controllers found: 10\n").back(), "10");
}

TEST_F(ArcconfControllerListTest, TheLastMatchingLineDecides)
{
    EXPECT_EQ(listed("Controllers found: 1\nController 1: ok\nControllers found: 3\n").size(), 3u);
    EXPECT_EQ(listed("Controllers found: 3\nController 1: ok\nControllers found: 1\n").size(), 1u);
    // A key with nothing behind it empties the count text again.
    EXPECT_TRUE(listed("Controllers found: 2\nControllers found:\n").empty());
    EXPECT_TRUE(log_has_run({"lineStr:%s = Controllers found:", "num = "}));
    // Within a line the first occurrence counts.
    EXPECT_EQ(listed("Controllers found: 1 Controllers found: 4\n").size(), 1u);
}

TEST_F(ArcconfControllerListTest, NoExactKeyOrNoNumberListsNothing)
{
    for (const char* listing : {"controllers found: 2\n", "Controllers found 2\n",
                                "Controllers Found: 2\n", "Controllers found: two\n",
                                "Controllers found: 0\n", ""}) {
        EXPECT_TRUE(listed(listing).empty()) << listing;
        EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::parse_list End ******* "})) << listing;
        // No controller record was ever made, so none was destroyed.
        EXPECT_FALSE(log_has_run({"**********MCHP_ADAPTER::~MCHP_ADAPTER Begin ******* "}));
    }
}

TEST_F(ArcconfControllerListTest, ANegativeOrHugeCountListsAtOnce)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(listed("Controllers found: -1\n").empty());
    EXPECT_TRUE(log_has_run({"num = -1", "Controller count is negative, no controller listed",
                             "**********ARCCONF_UTL::parse_list End ******* "}));
    EXPECT_TRUE(listed("Controllers found: -2147483649\n").empty());

    EXPECT_EQ(listed("Controllers found: 1000\n").size(), 1000u);
    EXPECT_FALSE(log_has_run({"Controller count above 1000, controllers from 1001 on are not listed"}));
    const std::vector<std::string> numbers = listed("Controllers found: 2147483647\n");
    ASSERT_EQ(numbers.size(), 1000u);
    EXPECT_EQ(numbers.back(), "1000");
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::parse_list End ******* ",
                             "Controller count above 1000, controllers from 1001 on are not listed"}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(ArcconfControllerListTest, AListingThatCannotBeOpenedLeavesTheCountAlone)
{
    ARCCONF_UTL::getAdapterList();
    EXPECT_TRUE(ARCCONF_UTL::adapters.empty());
    EXPECT_TRUE(log_has_run({"**********ARCCONF_UTL::parse_list Begin ******* ", "Open log file fail.",
                             "**********ARCCONF_UTL::parse_list End ******* "}));
    EXPECT_FALSE(log_has_run({"num = "}));

    std::uint32_t count = 7;
    ARCCONF_UTL::parse_list("missing.log", count);
    EXPECT_EQ(count, 7u);

    write_file("other.log", "no key here\n");
    ARCCONF_UTL::parse_list("other.log", count);
    EXPECT_EQ(count, 0u);
}
