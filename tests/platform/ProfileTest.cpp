#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "platform/Profile.h"
#include "platform/Unicode.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace corvane::platform;
using namespace std::string_literals;

class Profile : public testing::Test {
protected:
    std::string value(const std::string& bytes, std::u16string_view section = u"S",
                      std::u16string_view key = u"k", std::size_t capacity = 260) const {
        folder_.write("p.ini", bytes);
        return toUtf8(profileText(section, key, fromUtf8(folder_.path("p.ini")), capacity));
    }

    TemporaryFolder folder_;
};

TEST_F(Profile, ReadsEveryFormOfLine) {
    const std::pair<std::string, std::string> cases[] = {
        {"k = a b \t", "a b"},
        {"k=", ""},
        {"k=  ", ""},
        {"k", ""},
        {"K=v", "v"},
        {"k=\"v\"", "v"},
        {"k=' v '", " v "},
        {"k=\"v", "\"v"},
        {"k='v\"", "'v\""},
        {"k=\"\"", ""},
        {"k=\"'v'\"", "'v'"},
        {"k=\"a\"b\"", "a\"b"},
        {"k=a=b", "a=b"},
        {"k==b", "=b"},
        {"k=v;c # d", "v;c # d"},
        {"k=[x]", "[x]"},
        {"k=a\\\nb", "a\\"},
        {";k=v", ""},
        {"k=1\nk=2", "1"},
        {"j=1\r\rk=2\r\n", "2"},
        {"[s]\nk=v", ""},
        {"k=a\0b"s, "a"},
        {"k=\xC3\xA4", "\xC3\xA4"},
        {"=1\nk=2", "2"},
        {"\n\n  k=v", "v"},
        {"k=\"", "\""},
    };
    for (const auto& [lines, expected] : cases)
        EXPECT_EQ(value("[S]\n" + lines), expected) << lines;
}

TEST_F(Profile, FindsTheFirstSectionOfTheName) {
    const std::pair<std::string, std::string> cases[] = {
        {"[s]\nk=v", "v"},           {"  [ S ]x\nk=v", "v"}, {"[S\nk=v", ""},
        {"[S]]\nk=v", ""},           {"[[S]]\nk=v", ""},     {"[S]k=v", ""},
        {";[S]\nk=v", ""},           {"[T]\nk=1", ""},       {"[S]\n[T]\n[S]\nk=1", ""},
        {"[T]\nk=1\n[S]\nk=2", "2"}, {"k=1\n[S]\nk=2", "2"},
    };
    for (const auto& [file, expected] : cases)
        EXPECT_EQ(value(file), expected) << file;
    EXPECT_EQ(value("[S]\n;k=v", u" S ", u" ;K "), "v");
    EXPECT_EQ(value("k=v\n[S]\nk=w", u""), "v");
}

TEST_F(Profile, ReadsMarkedFilesAndCutsLongValues) {
    EXPECT_EQ(value("\xEF\xBB\xBF[S]\nk=v"), "v");
    EXPECT_EQ(value("\xFF\xFE[\0S\0]\0\n\0k\0=\0\xE4\0"s), "\xC3\xA4");
    EXPECT_EQ(value("\xFE\xFF\0[\0S\0]\0\n\0k\0=\0\xE4"s), "\xC3\xA4");
    EXPECT_EQ(value("[\0S\0]\0\n\0k\0=\0v\0"s), "");
    EXPECT_EQ(value("[S]\nk=\"" + std::string(300, 'x') + "\"\nj=1"), std::string(259, 'x'));
    EXPECT_EQ(value("[S]\nk=abc", u"S", u"k", 3), "ab");
    EXPECT_EQ(value("[S]\nk=abc", u"S", u"k", 1), "");
    EXPECT_EQ(value("[S]\nk=abc", u"S", u"k", 0), "");
    EXPECT_EQ(profileText(u"S", u"k", fromUtf8(folder_.path("missing"))), u"");
    EXPECT_EQ(profileText(u"S", u"k", fromUtf8(folder_.path())), u"");
}

}  // namespace
