#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <sys/stat.h>

#include "config/CIniFile.h"
#include "support/FaultySaves.h"

namespace {

std::string shown(const CIniFile::Record& record) {
    return record.Comments + record.Commented + record.Section + "|" + record.Key + "|" +
           record.Value + "\n";
}

TEST(IniFile, TakesRecordsFromLinesAsTheFormatSays) {
    const std::pair<std::string, std::string> cases[] = {
        {"[S]\nk=v", " S||\n"},
        {"[S]\r\n \tk=v \r\n", " S||\n S|k|v\n"},
        {"[S]\nk = v = w\n", " S||\n S|k | v = w\n"},
        {"k=v\n", " |k|v\n"},
        {"[S]\nk=v\n;[T]\nm=\n", " S||\n S|k|v\n;T||\n T|m|\n"},
        {"# a=b\n", "#|a|b\n"},
        {"  #  one \n;two\n\n[S]\nk=v\n", "#  one\n;two\n S||\n S|k|v\n"},
        {"[S]\n# lost\n", " S||\n"},
        {"[S]\n#c\nnothing\nk=v\n", " S||\n#c\n S|k|v\n"},
        {"[S]\nnothing\nk=v\n", " S||\n ||\n S|k|v\n"},
        {"#c\nkey=[x]\nm=n\n", " ey=[x|ey|[x\n ey=[x|m|n\n"},
        {"x[S]y\n", " [S||\n"},
        {"[[S]]\n", " [S||\n"},
        {"[S]k=v\nm=n\n", " S||\n S|m|n\n"},
        {"\xEF\xBB\xBF[S]\nk=v\n", " \xBB\xBF[S||\n \xBB\xBF[S|k|v\n"},
        {"[S\nk=v\n", " S||\n S|k|v\n"},
        {"[S]\nk=[x\n]m=a[\n", " S||\n S|k|[x\n S|]m|a[\n"},
        {"[\n][\n]k=[\n", " ||\n ||\n |]k|[\n"},
        {";[a\n;k=[\n", ";a||\n;a|k|[\n"},
        {"[S]\n;=\n", " S||\n;S||\n"},
        {"[S]\n=v\n", " S||\n S||v\n"},
    };
    for (const auto& [text, expected] : cases) {
        corvane::config::IniReader reader(text);
        std::string records;
        while (const auto record = reader.next())
            records += shown(*record);
        EXPECT_EQ(records, expected) << text;
    }
}

class IniFileOperations : public testing::Test {
protected:
    TemporaryFolder folder_;
    const std::string file_ = folder_.path("a.ini");
    CIniFile ini_;
};

TEST_F(IniFileOperations, ChangeWhatTheySayAndWriteSectionsInOnePiece) {
    const std::string start = "#c\n[S]\nk=v\n;[T]\nm=n\n[S]\nk=w\n#end\n";
    const std::string s = "#c\n [S]\n k=v\n [S]\n k=w\n";
    const std::string t = ";[T]\n m=n\n";
    struct Case {
        const char* what;
        std::function<bool()> operation;
        std::string expected;  // what was there: the operation fails
    };
    const Case cases[] = {
        {"create", [&] { return ini_.Create(file_); }, ""},
        {"section", [&] { return ini_.AddSection("S", file_); }, s + " [S]\n" + t},
        {"record", [&] { return ini_.AddRecord("a", "b", "U", file_); }, s + t + " a=b\n"},
        {"old key", [&] { return ini_.SetValue("m", "x", "T", file_); }, s + ";[T]\n m=x\n"},
        {"new key", [&] { return ini_.SetValue("a", "b", "T", file_); }, s + ";[T]\n a=b\n m=n\n"},
        {"new section", [&] { return ini_.SetValue("a", "b", "U", file_); },
         s + t + " [U]\n a=b\n"},
        {"delete", [&] { return ini_.DeleteRecord("m", "T", file_); }, s + ";[T]\n"},
        {"delete nothing", [&] { return ini_.DeleteRecord("M", "T", file_); }, start},
        {"delete section", [&] { return ini_.DeleteSection("S", file_); }, t},
        {"delete no section", [&] { return ini_.DeleteSection("U", file_); }, s + t},
        {"rename", [&] { return ini_.RenameSection("S", "T", file_); },
         "#c\n [T]\n k=v\n;[T]\n m=n\n [T]\n k=w\n"},
        {"comment", [&] { return ini_.CommentRecord('#', "m", "T", file_); }, s + ";[T]\n#m=n\n"},
        {"uncomment", [&] { return ini_.UnCommentSection("T", file_); }, s + " [T]\n m=n\n"},
        {"remark", [&] { return ini_.SetRecordComments(";x", "m", "T", file_); },
         s + ";[T]\n;x\n m=n\n"},
        {"no remark", [&] { return ini_.SetSectionComments("", "S", file_); }, s.substr(3) + t},
        {"remark on nothing", [&] { return ini_.SetSectionComments("x", "U", file_); }, start},
        {"sort", [&] { return ini_.Sort(file_, true); },
         t + "#c\n [S]\n k=v\n k=w\n [S]\n k=v\n k=w\n"},
    };
    for (const Case& test : cases) {
        folder_.write("a.ini", start);
        EXPECT_EQ(test.operation(), test.expected != start) << test.what;
        EXPECT_EQ(folder_.read("a.ini"), test.expected) << test.what;
    }
    folder_.write("a.ini", "x=0\n[b]\nz=1\na=2\n[a]\n");
    EXPECT_TRUE(ini_.Sort(file_, false));
    EXPECT_EQ(folder_.read("a.ini"), " [a]\n [b]\n a=2\n z=1\n");
    folder_.write("a.ini", "b=1\n");
    EXPECT_FALSE(ini_.Sort(file_, false));
}

TEST_F(IniFileOperations, ReadWithoutRegardToWhatIsCommentedOut) {
    folder_.write("a.ini", "#c\n[S]\n;k=v\n;[T]\n#m=\n[S]\nk=w\n");
    EXPECT_EQ(ini_.Content(file_), "#c\n[S]\n;k=v\n;[T]\n#m=\n[S]\nk=w");
    EXPECT_EQ(ini_.GetValue("k", "S", file_), "v");
    EXPECT_EQ(ini_.GetSection("S", file_).size(), 2U);
    EXPECT_EQ(ini_.GetSectionNames(file_), (std::vector<std::string>{"S", "T", "S"}));
    EXPECT_TRUE(ini_.SectionExists("T", file_));
    EXPECT_TRUE(ini_.RecordExists("m", "T", file_));
    EXPECT_FALSE(ini_.SectionExists("t", file_));
    EXPECT_FALSE(ini_.RecordExists("m", "S", file_));
}

TEST_F(IniFileOperations, AreQuietAboutWhatCannotBeRead) {
    folder_.write("sub/huge.ini", "[S]\nk=v\n");
    std::filesystem::resize_file(folder_.path("sub/huge.ini"), std::uintmax_t{1} << 33);
    ASSERT_EQ(mkfifo(folder_.path("pipe").c_str(), 0600), 0);
    for (const char* name : {"missing", "sub", "pipe", "sub/huge.ini"}) {
        const std::string file = folder_.path(name);
        EXPECT_FALSE(ini_.FileExists(file)) << name;
        EXPECT_EQ(ini_.Content(file), "") << name;
        EXPECT_EQ(ini_.GetValue("k", "S", file), "") << name;
        EXPECT_FALSE(ini_.SetValue("k", "w", "S", file)) << name;
        EXPECT_FALSE(ini_.Sort(file, false)) << name;
    }
    EXPECT_FALSE(ini_.Create(folder_.path("sub")));
    EXPECT_FALSE(ini_.Create(folder_.path("pipe")));
    EXPECT_TRUE(ini_.Create(folder_.path("missing")));
    EXPECT_TRUE(ini_.FileExists(folder_.path("missing")));
}

TEST_F(IniFileOperations, TakeFileNamesThatAreNoUtf8) {
    for (const char* name : {"\xE4.ini", "\xC3\xA4\xE4\xFF.ini", "\xED\xB2\x80.ini"}) {
        folder_.write(name, "[S]\nk=v\n");
        const std::string file = folder_.path(name);
        EXPECT_EQ(ini_.GetValue("k", "S", file), "v");
        EXPECT_TRUE(ini_.SetValue("k", "w", "S", file));
        EXPECT_EQ(folder_.read(name), " [S]\n k=w\n");
    }
}

TEST_F(IniFileOperations, KeepEveryValueThroughAnySequenceOfChanges) {
    std::mt19937 random(7);
    const auto below = [&](std::size_t count) { return random() % count; };
    ASSERT_TRUE(ini_.Create(file_));
    std::map<std::pair<std::string, std::string>, std::string> model;
    for (int step = 0; step < 400; ++step) {
        const std::string section(1 + below(3), "ab "[below(2)]);
        const std::string key(1 + below(3), "k\xE4"[below(2)]);
        const std::string value = "v=" + std::to_string(random());
        switch (below(4)) {
            case 0:
                EXPECT_EQ(ini_.DeleteRecord(key, section, file_), model.erase({section, key}) == 1);
                break;
            case 1:
                EXPECT_TRUE(ini_.CommentSection("#; "[below(3)], section, file_));
                break;
            default:
                EXPECT_TRUE(ini_.SetValue(key, value, section, file_));
                model[{section, key}] = value;
        }
        for (const auto& [place, expected] : model)
            ASSERT_EQ(ini_.GetValue(place.second, place.first, file_), expected) << step;
    }
}

TEST(IniFile, HoldsTheOldOrTheNewSettingsWhateverFails) {
    const TemporaryFolder folder;
    expectTheOldOrTheNewFile(folder, "settings.ini", "[S]\nk=1\n", [&folder] {
        CIniFile file;
        return file.SetValue("k", "2", "S", folder.path("settings.ini"));
    });
}

}  // namespace
