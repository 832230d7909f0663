#pragma once

#include <cstdint>

/// The category of a rule. The numbers pass between separately built modules; rule modules give
/// them their meaning, and the string resources their text. 11 and 14 have no text.
enum QORRuleCategory_e : std::int32_t {
    QORRuleCategory_0 = 0,
    QORRuleCategory_1 = 1,
    QORRuleCategory_2 = 2,
    QORRuleCategory_3 = 3,
    QORRuleCategory_4 = 4,
    QORRuleCategory_5 = 5,
    QORRuleCategory_6 = 6,
    QORRuleCategory_7 = 7,
    QORRuleCategory_8 = 8,
    QORRuleCategory_9 = 9,
    QORRuleCategory_10 = 10,
    QORRuleCategory_11 = 11,
    QORRuleCategory_12 = 12,
    QORRuleCategory_13 = 13,
    QORRuleCategory_14 = 14,
    QORRuleCategory_15 = 15,
    QORRuleCategory_16 = 16,
    QORRuleCategory_17 = 17,
    QORRuleCategory_18 = 18,
    QORRuleCategory_19 = 19,
    QORRuleCategory_20 = 20,
};
