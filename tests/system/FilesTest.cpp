#include <cerrno>
#include <csignal>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <tuple>
#include <unistd.h>

#include "support/FaultySaves.h"
#include "support/TemporaryFolder.h"
#include "system/Files.h"
#include "system/Paths.h"
#include "system/Unicode.h"

namespace {

using namespace corvane::system;
namespace fs = std::filesystem;

class Files : public testing::Test {
protected:
    std::u16string at(std::string_view name = {}) const { return fromUtf8(folder_.path(name)); }

    // How many entries the folder has: a temporary file must not stay.
    std::ptrdiff_t entries() const {
        return std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator());
    }

    // Runs in a process of its own and tells whether the result was true.
    static bool inChild(const std::function<bool()>& action) {
        const pid_t child = fork();
        if (child == 0) _exit(action() ? 0 : 1);
        int status = -1;
        waitpid(child, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    // The same as somebody whom permissions bind.
    static bool asUser(const std::function<bool()>& action) {
        constexpr uid_t kNobody = 65534;
        return inChild([&] { return (geteuid() != 0 || seteuid(kNobody) == 0) && action(); });
    }

    // What a full disk does to a writer.
    static bool refusesOnFullDisk(const std::u16string& path) {
        const rlimit limit{1000, 1000};
        std::signal(SIGXFSZ, SIG_IGN);
        return setrlimit(RLIMIT_FSIZE, &limit) == 0 && !replaceFile(path, std::string(5000, 'n'));
    }

    TemporaryFolder folder_;
};

TEST_F(Files, AreReplacedWithModeAndLinkKept) {
    folder_.write("real/file", "old");
    fs::permissions(folder_.path("real/file"), fs::perms(0640));
    fs::create_symlink("real/file", folder_.path("link"));
    fs::create_symlink("real/new", folder_.path("dangling"));
    EXPECT_TRUE(replaceFile(at("link"), "new"));
    EXPECT_TRUE(replaceFile(at("dangling"), ""));
    EXPECT_TRUE(replaceFile(at("real\\third"), std::string(100'000, 't')));
    EXPECT_EQ(folder_.read("real/file"), "new");
    EXPECT_EQ(fs::status(folder_.path("real/file")).permissions(), fs::perms(0640));
    EXPECT_TRUE(fs::is_symlink(folder_.path("link")));
    EXPECT_TRUE(fs::is_symlink(folder_.path("dangling")));
    EXPECT_EQ(readFile(at("real/new")), "");
    EXPECT_EQ(readFile(at("real/third")), std::string(100'000, 't'));
    EXPECT_EQ(entries(), 3);
}

TEST_F(Files, AreReplacedPieceByPieceOrNotAtAll) {
    folder_.write("file", "old");
    const auto content = [](bool whole) {
        return [whole](const corvane::system::ByteSink& sink) {
            return sink("one") && sink("") && sink("two") && whole;
        };
    };
    EXPECT_FALSE(replaceFile(at("file"), content(false)));
    EXPECT_EQ(folder_.read("file"), "old");
    EXPECT_TRUE(replaceFile(at("file"), content(true)));
    EXPECT_EQ(folder_.read("file"), "onetwo");
    EXPECT_EQ(entries(), 1);
}

// As for somebody who may not give a file away, or not to that group.
TEST_F(Files, AreNotOpenedToTheMembersOfAnotherGroup) {
    struct Owners : FileFaults {
        explicit Owners(int count) : refusals(count) {}
        int changeOwner(int descriptor, uid_t user, gid_t group) override {
            if (refusals-- <= 0) return FileFaults::changeOwner(descriptor, user, group);
            errno = EPERM;
            return -1;
        }
        int refusals;
    };
    const struct {
        int refusals;
        unsigned before;
        unsigned after;
    } cases[] = {{0, 01764, 01764}, {1, 01764, 0764}, {2, 01764, 0744},
                 {2, 0640, 0600},   {2, 0646, 0646},  {2, 0673, 0633}};
    for (const auto& [refusals, before, after] : cases) {
        folder_.write("file", "old");
        fs::permissions(folder_.path("file"), fs::perms(before));
        const Owners owners(refusals);
        EXPECT_TRUE(replaceFile(at("file"), "new"));
        EXPECT_EQ(fs::status(folder_.path("file")).permissions(), fs::perms(after)) << before;
    }
}

TEST_F(Files, KeepTheirContentWhereANewOneCannotHaveTheirMode) {
    struct Modes : FileFaults {
        int changeMode(int, mode_t) override {
            errno = EPERM;
            return -1;
        }
    };
    folder_.write("file", "old");
    const Modes modes;
    EXPECT_FALSE(replaceFile(at("file"), "new"));
    EXPECT_EQ(folder_.read("file"), "old");
}

TEST_F(Files, AreNotReplacedWhereTheyAreNoRegularFiles) {
    mkfifo(folder_.path("pipe").c_str(), 0600);
    fs::create_symlink("loop", folder_.path("loop"));
    fs::create_directory(folder_.path("folder"));
    for (const char* name : {"pipe", "loop", "folder", "folder/", "missing/file", "pipe/file"})
        EXPECT_FALSE(replaceFile(at(name), "new")) << name;
    EXPECT_FALSE(replaceFile(u"", "new"));
    EXPECT_FALSE(replaceFile(at("a") + u'\0' + u"b", "new"));
    EXPECT_EQ(entries(), 3);
}

TEST_F(Files, StayWholeOnAFullDisk) {
    folder_.write("file", "old");
    EXPECT_TRUE(inChild([this] { return refusesOnFullDisk(at("file")); }));
    EXPECT_EQ(folder_.read("file"), "old");
    EXPECT_EQ(entries(), 1);
}

TEST_F(Files, HoldTheOldOrTheNewContentWhateverFails) {
    expectTheOldOrTheNewFile(folder_, "file", "old",
                             [this] { return replaceFile(at("file"), "new"); });
}

TEST_F(Files, AreWrittenInPlaceWhereTheFolderIsProtected) {
    fs::permissions(folder_.path(), fs::perms(0755));
    // A folder without write permission, and a sticky one, which keeps what others own.
    for (const auto mode : {fs::perms(0555), fs::perms(01777)}) {
        fs::create_directory(folder_.path("f"));
        folder_.write("f/file", "older");
        folder_.write("f/protected", "old");
        fs::permissions(folder_.path("f/file"), fs::perms(0666));
        fs::permissions(folder_.path("f/protected"), fs::perms(0444));
        fs::permissions(folder_.path("f"), mode);
        EXPECT_TRUE(asUser([this] { return replaceFile(at("f/file"), "new"); }));
        EXPECT_EQ(folder_.read("f/file"), "new");
        EXPECT_TRUE(asUser([this] {
            return replaceFile(at("f/file"), [](const corvane::system::ByteSink& sink) {
                return sink("n") && sink("ew");
            });
        }));
        EXPECT_TRUE(asUser([this] { return !replaceFile(at("f/protected"), "new"); }));
        EXPECT_TRUE(asUser([this] { return refusesOnFullDisk(at("f/file")); }));
        EXPECT_EQ(folder_.read("f/file"), "new");
        fs::permissions(folder_.path("f"), fs::perms(0755));
        EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path("f")), {}), 2);
        fs::remove_all(folder_.path("f"));
    }
    fs::create_directory(folder_.path("f"));
    fs::permissions(folder_.path("f"), fs::perms(0555));
    EXPECT_TRUE(asUser([this] { return !replaceFile(at("f/none"), "new"); }));
}

TEST_F(Files, AreReadWithinTheirLimit) {
    folder_.write("file", "12345");
    mkfifo(folder_.path("pipe").c_str(), 0600);
    EXPECT_EQ(readFile(at("file"), 5), "12345");
    EXPECT_EQ(readFile(at("file"), 4), std::nullopt);
    // The system gives this one the size 0.
    EXPECT_GT(readFile(u"/proc/self/maps").value_or("").size(), 100U);
    EXPECT_EQ(readFile(u"/proc/self/maps", 100), std::nullopt);
    for (const char* name : {"pipe", "missing", "file/", ""})
        EXPECT_EQ(readFile(at(name)), std::nullopt) << name;
}

TEST_F(Files, LieInFoldersThatAreMadeWithTheirParents) {
    folder_.write("file", "");
    EXPECT_TRUE(createFolders(at("a\\b/c/")));
    EXPECT_TRUE(createFolders(at("a/b")));
    EXPECT_TRUE(folderExists(at("a\\b\\c")));
    EXPECT_FALSE(createFolders(at("file/a")));
    EXPECT_FALSE(createFolders(at("file")));
    for (const std::u16string_view path : {u"", u"relative", u"./a"})
        EXPECT_FALSE(createFolders(path)) << toUtf8(path);
    EXPECT_TRUE(pathExists(at("file")));
    EXPECT_FALSE(folderExists(at("file")));
    EXPECT_FALSE(pathExists(at("file/")));
    EXPECT_FALSE(pathExists(u""));
}

TEST_F(Files, AreKnownAgainByTheirStampOnceTheyHaveSettled) {
    const auto proves = [](std::u16string_view path) {
        return FileStamp::of(path).proves(FileStamp::of(path));
    };
    folder_.write("file", "new");
    EXPECT_FALSE(proves(at("file"))) << "another change may get the same time";
    EXPECT_TRUE(proves(u"/bin/sh"));
    EXPECT_TRUE(proves(at("missing")));
    EXPECT_FALSE(FileStamp::of(u"/bin/sh").proves(FileStamp::of(at("missing"))));
}

TEST(FilePattern, MatchesAWholeName) {
    const std::tuple<std::u16string_view, std::u16string_view, bool> cases[] = {
        {u"QORProeAddinCreo*u.dll", u"qorproeaddincreo5U.DLL", true},
        {u"a*u.so", u"au.so", true},
        {u"a*u.so", u"auu.sox", false},
        {u"*a*b*", u"xxaxxbxx", true},
        {u"*a*b*", u"xxbxxaxx", false},
        {u"a?c", u"ac", false},
        {u"a?", u"a\u00E4", true},
        {u"\u00C4*", u"\u00E4", true},
        {u"", u"", true},
        {u"", u"a", false},
        {u"**", u"", true}};
    for (const auto& [pattern, name, matches] : cases)
        EXPECT_EQ(matchesPattern(name, pattern), matches) << toUtf8(pattern);
}

}  // namespace
