#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "emulation/Profile.h"
#include "support/TemporaryFolder.h"
#include "system/Unicode.h"

namespace {

using namespace corvane::emulation;
using namespace corvane::system;
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
    for (const std::string kept : {"\"v", "'v\"", "\"v\" x", "a b", "a=b", "=b", "v;c # d", "[x]",
                                   "\"", "%A%\\", "\xC3\xA4"})
        EXPECT_EQ(value("[S]\n k =\t" + kept + " \nb=1"), kept);
    for (const std::string quoted : {"v", " v ", "", "\"v\"", "a'b"})
        EXPECT_EQ(value("[S]\rK='" + quoted + "'\r\r\n"), quoted);
    for (const std::string empty : {"k=", "k=  ", "k", ";k=v", "[s]\nk=v", "=v\nkk=v", ""})
        EXPECT_EQ(value("[S]\n" + empty), "") << empty;
    EXPECT_EQ(value("[S]\nk=1\nk=2"), "1");
    EXPECT_EQ(value("[S]\nk=a\0b"s), "a");
    EXPECT_EQ(value("[S]\n;k=v", u" s ", u" ;K "), "v");
}

TEST_F(Profile, FindsTheFirstSectionOfTheName) {
    for (const char* found : {"[s]\nk=v", "  [ S ]x\nk=v", "[T]\nk=1\n[S]\nk=v", "k=1\n[S]\nk=v"})
        EXPECT_EQ(value(found), "v") << found;
    for (const char* missing : {"[S\nk=v", "[S]]\nk=v", "[[S]]\nk=v", "[S]k=v", ";[S]\nk=v",
                                "[T]\nk=1", "[S]\n[T]\n[S]\nk=1"})
        EXPECT_EQ(value(missing), "") << missing;
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
