#include <clocale>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include <corvane/text/CStringW.h>

#include "support/Text.h"
#include "text/Numbers.h"

namespace {

template <typename... Arguments>
CStringW formatted(std::u16string_view format, const Arguments&... arguments) {
    CStringW text;
    text.Format(format, arguments...);
    return text;
}

TEST(Format, PrintsWholeNumbersAsPrintfDoes) {
    EXPECT_EQ(formatted(u"%d %i %ld", -5, 7, std::int32_t{-2147483647 - 1}), u"-5 7 -2147483648");
    EXPECT_EQ(formatted(u"%u", 4294967295U), u"4294967295");
    EXPECT_EQ(formatted(u"%x %X %#x %o", -1, 171, 255, 8), u"ffffffff AB 0xff 10");
    EXPECT_EQ(formatted(u"[%5d] [%-5d] [%05d] [%+d] [% d]", 42, 42, -42, 42, 42),
              u"[   42] [42   ] [-0042] [+42] [ 42]");
    EXPECT_EQ(formatted(u"%.3d|%.0d|%*d|%-*d|", 7, 0, 4, 1, 3, 2), u"007||   1|2  |");
    EXPECT_EQ(formatted(u"[%08.3d] [%08.3x]", 7, 10), u"[     007] [     00a]");
    EXPECT_EQ(formatted(u"%#.3o|%#.0o|%#.0x|%#o", 8, 0, 0, 0), u"010|0||0");
    EXPECT_EQ(formatted(u"%lld %I64d", std::numeric_limits<long long>::min(), -1LL),
              u"-9223372036854775808 -1");
    EXPECT_EQ(formatted(u"%c%c", u'a', 'b'), u"ab");
}

TEST(Format, PrintsFloatingPointExactly) {
    EXPECT_EQ(formatted(u"%f %lf", 2.5, 1e-7), u"2.500000 0.000000");
    EXPECT_EQ(formatted(u"%.2f %8.3f|%-8.1f|%08.1f", 0.125, 3.14159, 2.0, -2.0),
              u"0.12    3.142|2.0     |-00002.0");
    EXPECT_EQ(formatted(u"%f", 1e23), u"99999999999999991611392.000000");
    EXPECT_EQ(formatted(u"%f", std::numeric_limits<double>::max()).GetLength(), 316);
    EXPECT_EQ(formatted(u"%e %G", 12345.678, 1e-10), u"1.234568e+04 1E-10");
    EXPECT_EQ(formatted(u"%#.0f %#.0e %#g %#.0g", 3.0, 3.0, 1.5, 2.0), u"3. 3.e+00 1.50000 2.");
    EXPECT_EQ(formatted(u"%#g %#G %#.3g", 0.0, 1e-10, 999.9), u"0.00000 1.00000E-10 1.00e+03");
    EXPECT_EQ(formatted(u"%f %f %f", INFINITY, -INFINITY, -0.0), u"inf -inf -0.000000");
}

TEST(Format, TakesTextOfEitherWidth) {
    EXPECT_EQ(formatted(u"%s %S %ls %hs", u"wide", "narrow", CStringW(u"w"), "n"),
              u"wide narrow w n");
    EXPECT_EQ(formatted(u"%.2s|%5s|%-4s|", u"abc", u"x", "y"), u"ab|    x|y   |");
    EXPECT_EQ(formatted(u"%s", static_cast<const char16_t*>(nullptr)), u"(null)");
    CStringW self(u"a");
    self.Format(u"%s%s", self, self);
    EXPECT_EQ(self, u"aa");
}

TEST(Format, SurvivesFormatsThatDoNotFitTheirArguments) {
    EXPECT_EQ(formatted(u"%s and %d."), u" and .");
    EXPECT_EQ(formatted(u"%d|%s|%f", u"text", 1, 2), u"||");
    EXPECT_EQ(formatted(u"100%% %"), u"100% %");
    EXPECT_EQ(formatted(u"%y %5", 1), u"%y %5");
    EXPECT_EQ(formatted(u"%999999999d", 1).GetLength(), 4096);
    EXPECT_EQ(formatted(u"%n%d", 3), u"%n3");
}

TEST(Scan, ReadsWholeNumbersFromTheStartOfTheText) {
    using corvane::text::ScanResult;
    struct Case {
        std::u16string_view text;
        ScanResult result;
        std::int32_t value;
    };
    const Case cases[] = {
        {u"12abc", ScanResult::Matched, 12},
        {u" \t\n\u00A0+5", ScanResult::Matched, 5},
        {u"-5", ScanResult::Matched, -5},
        {u"010", ScanResult::Matched, 10},
        {u"0x10", ScanResult::Matched, 0},
        {u"1e3", ScanResult::Matched, 1},
        {u"4294967295", ScanResult::Matched, -1},
        {u"-2147483649", ScanResult::Matched, 2147483647},
        {u"99999999999999999999", ScanResult::Matched, 1661992959},
        {u"abc", ScanResult::NoMatch, 77},
        {u"- 5", ScanResult::NoMatch, 77},
        {u"+", ScanResult::NoMatch, 77},
        {u"\uFF15", ScanResult::NoMatch, 77},
        {u"", ScanResult::EndOfInput, 77},
        {u"  \r\n", ScanResult::EndOfInput, 77},
    };
    for (const Case& c : cases) {
        std::int32_t value = 77;
        EXPECT_EQ(corvane::text::scanInt32(c.text, value), c.result) << CStringW(c.text).ToUtf8();
        EXPECT_EQ(value, c.value) << CStringW(c.text).ToUtf8();
    }
}

TEST(Scan, ReadsFloatingPointWithAPointInEveryLocale) {
    using corvane::text::ScanResult;
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    struct Case {
        std::u16string_view text;
        ScanResult result;
        double value;
    };
    const Case cases[] = {
        {u"1.5", ScanResult::Matched, 1.5},
        {u" +.5e1x", ScanResult::Matched, 5},
        {u"5.", ScanResult::Matched, 5},
        {u"1,5", ScanResult::Matched, 1},
        {u"1.5.5", ScanResult::Matched, 1.5},
        {u"1e", ScanResult::Matched, 1},
        {u"-0x10", ScanResult::Matched, -0.0},
        {u"1e400", ScanResult::Matched, INFINITY},
        {u"-1e400", ScanResult::Matched, -INFINITY},
        {u"1e-400", ScanResult::Matched, 0},
        {u"inf", ScanResult::NoMatch, 77},
        {u"-nano", ScanResult::NoMatch, 77},
        {u".", ScanResult::NoMatch, 77},
        {u"+-1", ScanResult::NoMatch, 77},
        {u"abc", ScanResult::NoMatch, 77},
        {u"", ScanResult::EndOfInput, 77},
        {u"   ", ScanResult::EndOfInput, 77},
    };
    for (const Case& c : cases) {
        double value = 77;
        EXPECT_EQ(corvane::text::scanDouble(c.text, value), c.result) << CStringW(c.text).ToUtf8();
        EXPECT_EQ(value, c.value) << CStringW(c.text).ToUtf8();
    }
    const std::u16string zeros(400, u'0');
    const std::pair<std::u16string, double> outOfRange[] = {
        {u"1" + zeros, INFINITY},
        {u"1" + zeros + u"e-5", INFINITY},
        {u"-0." + zeros + u"1", -0.0},
        {u"-0." + zeros + u"1e+5", -0.0},
        {u"1e" + std::u16string(30, u'9'), INFINITY},
    };
    for (const auto& [text, expected] : outOfRange) {
        double value = 77;
        EXPECT_EQ(corvane::text::scanDouble(text, value), ScanResult::Matched);
        EXPECT_EQ(value, expected) << CStringW(text).ToUtf8();
    }
    std::setlocale(LC_ALL, "C");
}

}  // namespace
