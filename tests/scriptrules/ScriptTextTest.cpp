#include <gtest/gtest.h>
#include <utility>

#include "scriptrules/ScriptText.h"
#include "support/Text.h"

namespace {

using namespace std::string_view_literals;

TEST(ScriptText, IsAsLongAsTheBytesLessTheMarks) {
    const std::pair<std::string_view, std::u16string_view> cases[] = {
        {"", u""},
        {"ab\r\ncd\r\n", u"ab\ncd\n  "},
        {"a\rb\n\rc\r\r\nd\r", u"a\rb\n\rc\r\nd\r "},
        {"x=1\x1Ay=2", u"x=1    "},
        {"a\0b"sv, u"a\uFFFDb"},
        {"\xF0\x9F\x98\x80", u"\U0001F600  "},
        {"a\xE4\nc", u"a\uFFFD\nc"},
        {"abc\xE4\xB8", u"abc\uFFFD "},
        {"\xEF\xBB\xBFprint()", u"print()  "},
        {"\xFF\xFEx\0\r\0\n\0"sv, u"x\n     "},
        {"\xFE\xFF\0x\0\r\0\n"sv, u"x\n     "},
        {"\xFF\xFEx\0y"sv, u"x\uFFFD  "},
        {"\xC3\xBEx\xC3\xAF-\xC2\xBBx\xC3\xBFy", u"x-x\u00FFy    "},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(corvane::scriptrules::scriptText(bytes), text) << bytes;
}

}  // namespace
