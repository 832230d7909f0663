#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include <corvane/text/CStringW.h>

#include "support/Text.h"
#include "system/Unicode.h"

namespace {

using corvane::system::fromUtf8;
using corvane::system::isUtf8;
using corvane::system::toUtf8;

TEST(Unicode, CarriesEveryScalarValueBothWays) {
    for (char32_t point = 0; point <= 0x10FFFF; point += point < 0x3000 ? 1 : 251) {
        if (point >= 0xD800 && point <= 0xDFFF) continue;
        std::u16string text;
        if (point < 0x10000) {
            text += static_cast<char16_t>(point);
        } else {
            text += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
            text += static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
        }
        const std::string bytes = toUtf8(text);
        ASSERT_TRUE(isUtf8(bytes)) << static_cast<unsigned>(point);
        ASSERT_EQ(fromUtf8(bytes), text) << static_cast<unsigned>(point);
    }
}

TEST(Unicode, ReplacesWhatIsIllFormed) {
    struct Case {
        std::string_view bytes;
        std::u16string_view text;
    };
    const Case cases[] = {
        {"a\xFFz", u"a\uFFFDz"},                            // no lead byte
        {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // overlong
        {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},            // overlong
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // surrogate
        {"\xE4\xB8", u"\uFFFD"},                            // cut at the end
        {"\xF0\x9F\x98z", u"\uFFFDz"},                      // cut inside
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond U+10FFFF
    };
    for (const Case& c : cases) {
        EXPECT_EQ(fromUtf8(c.bytes), c.text);
        EXPECT_FALSE(isUtf8(c.bytes));
    }
    EXPECT_EQ(toUtf8(std::u16string{u'a', char16_t{0xD800}, u'b'}),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(toUtf8(std::u16string{char16_t{0xDC00}, char16_t{0xD800}}),
              "\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
