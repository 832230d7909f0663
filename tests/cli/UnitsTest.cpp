#include <algorithm>
#include <gmock/gmock.h>

#include "CommandLine.h"

namespace {

using testing::HasSubstr;

TEST(Units, ValuesConvertBetweenUnitsOfOneQuantity) {
    const CommandLine corvane;
    const EnvironmentScope german("LC_ALL", "de_DE.UTF-8");
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"25.4", "mm", "in"}, "0.9999999999999877\n"},
        {{"90", "degree", "rad"}, "1.5707963267949054\n"},
        {{"-40", "mm", "in"}, "-1.57480314960628\n"},
        {{"--", "-0.5e-3", "meter", "\xC2\xB5m"}, "-500\n"},
        {{"-.5", "m", "mm"}, "-500\n"},
        {{"1", "ft^2", "m\xC2\xB2"}, "0.09290304000000132\n"},
        {{"+5", "lb", "kg"}, "2.267962\n"},
        {{"1", "kg/m3", "lb/in3"}, "3.6127292e-05\n"},
    };
    for (const auto& [arguments, printed] : cases) {
        const ProcessResult result = corvane("units", arguments);
        EXPECT_EQ(result.out, printed);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }
    const std::string list = corvane("units", {"--list"}).out;
    EXPECT_THAT(list, HasSubstr("\nlength    9     mil     thousandth of an inch\n"));
    EXPECT_EQ(std::ranges::count(list, '\n'), 1 + 2 * 11 + 4 + 4 + 2);
}

TEST(Units, WhatCannotBeConvertedIsToldAndGivesStatusTwo) {
    const CommandLine corvane;
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"1", "MM", "in"}, "'MM' is no unit"},
        {{"1", "mm", "kg"}, "mm is a unit of length and kg one of mass"},
        {{"25,4", "mm", "in"}, "'25,4' is no number"},
        {{"inf", "mm", "in"}, "'inf' is no number"},
        {{"1e308", "m", "nm"}, "too large"},
        {{"1", "mm"}, "VALUE FROM TO"},
        {{"--list", "1", "mm", "in"}, "excludes"},
        {{"1", "mm", "in", "ft"}, "ft"},
        {{"-.5", "mm"}, "-.5"},
    };
    for (const auto& [arguments, told] : cases) {
        const ProcessResult result = corvane("units", arguments);
        EXPECT_THAT(result.err, HasSubstr(told));
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.status, 2);
    }
}

}  // namespace
