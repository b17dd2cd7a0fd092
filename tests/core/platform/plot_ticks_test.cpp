#include "core/platform/plot_ticks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ostrel {
namespace {

// Each range and step with the labels its ticks get, in order. Steps that a double does not
// hold exactly must still give a zero that reads as zero.
TEST(StepTicks, LabelEveryMultipleWithTheStepsDecimals) {
    struct Case {
        double lo, hi, step;
        std::vector<std::string> texts;
    };
    const Case cases[] = {
        {-0.7, 0.9, 0.2, {"-0.6", "-0.4", "-0.2", "0.0", "0.2", "0.4", "0.6", "0.8"}},
        {-0.6000000000000001,
         0.6000000000000001,
         0.2,
         {"-0.6", "-0.4", "-0.2", "0.0", "0.2", "0.4", "0.6"}},
        {-0.31, 0.0, 0.1, {"-0.3", "-0.2", "-0.1", "0.0"}},
        {-0.05, 0.45, 0.2, {"0.0", "0.2", "0.4"}},  // the first multiple is minus zero
        {-0.15, 0.15, 0.05, {"-0.15", "-0.10", "-0.05", "0.00", "0.05", "0.10", "0.15"}},
        {380, 1010, 200, {"400", "600", "800", "1000"}},
        {-1.2, 1.2, 0.5, {"-1.0", "-0.5", "0.0", "0.5", "1.0"}},
        {1.478, 1.5412, 0.02, {"1.48", "1.50", "1.52", "1.54"}},
        {0.0, 0.0, 1, {"0"}},
        {1, 0, 1, {}},    // an empty range
        {0, 1e9, 1, {}},  // too many ticks to draw
        {0, 1, 0, {}},    // no step
    };
    for (const Case& c : cases) {
        std::vector<std::string> texts;
        for (const StepTick& t : StepTicks(c.lo, c.hi, c.step)) texts.push_back(t.text);
        EXPECT_EQ(texts, c.texts) << c.lo << " to " << c.hi << " by " << c.step;
    }
}

}  // namespace
}  // namespace ostrel
