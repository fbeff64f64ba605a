#include "profile/version.h"

#include "test_support.h"

namespace {

struct Ordering {
    const char* lower;
    const char* higher;
};

struct Equal {
    const char* a;
    const char* b;
};

}  // namespace

class VersionTest : public ScratchTest {};

// Each ordering is checked in both directions.
TEST_F(VersionTest, OrdersPartsNumericallyAndByCount)
{
    const Ordering cases[] = {
        {"1.9", "1.10"},      // numbers, not text
        {"1.2", "1.2.0"},     // a further part counts even when it is 0
        {"1.9.9", "2.0"},     // the first difference decides
        {"", "0"},            // one part against none
        {"", "1.2.3"},        // an empty installed version is always behind
        {"1.2", "1.2."},      // a trailing dot makes an empty third part
        {"-1", "0"},          // a sign is honoured
        {"1.2.3", "1.2.4"},
    };
    for (const Ordering& c : cases) {
        EXPECT_EQ(compare_version(c.lower, c.higher), -1) << c.lower << " < " << c.higher;
        EXPECT_EQ(compare_version(c.higher, c.lower), 1) << c.higher << " > " << c.lower;
    }
}

TEST_F(VersionTest, EqualVersionsReadPartsLikeAtoi)
{
    const Equal cases[] = {
        {"1.2.3", "1.2.3"},
        {"01.002", "1.2"},
        {"1..2", "1.0.2"},
        {"1.2.", "1.2.0"},
        {"1.2a", "1.2"},
        {"1.x", "1.0"},
        {"x2.0", "0.0"},
        {"1.2.3 foo", "1.2.3"},
        {"99999999999", "2147483647"},
        {" 1. 2", "1.2"},
        {"", ""},
    };
    for (const Equal& c : cases) {
        EXPECT_EQ(compare_version(c.a, c.b), 0) << c.a << " == " << c.b;
        EXPECT_EQ(compare_version(c.b, c.a), 0) << c.b << " == " << c.a;
    }
}

TEST_F(VersionTest, LogsPartCountsAndStopsAtTheFirstDifference)
{
    compare_version("2.0", "1.9.9");
    EXPECT_EQ(log_lines(), (std::vector<std::string>{
                               "**********compare_version Begin ******* ",
                               "installed version parts num = 2",
                               "profile version parts num = 3",
                               "num1 = 2",
                               "num2 = 1",
                               "**********compare_version End ******* ",
                           }));
}
