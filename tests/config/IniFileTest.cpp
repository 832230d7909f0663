#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <sys/stat.h>

#include "config/CIniFile.h"
#include "support/TemporaryFolder.h"

namespace {

std::string shown(const CIniFile::Record& record) {
    return record.Comments + record.Commented + record.Section + "|" + record.Key + "|" +
           record.Value + "\n";
}

TEST(IniFile, TakesRecordsFromLinesAsTheFormatSays) {
    const std::array<std::pair<std::string, std::string>, 22> cases{{
        {"", ""},
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
    }};
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
    // The file after an operation on it; "failed" when it gave false and left the file alone.
    std::string after(std::string_view text, const std::function<bool(std::string)>& operation) {
        folder_.write("a.ini", text);
        const bool succeeded = operation(folder_.path("a.ini"));
        const std::string now = folder_.read("a.ini");
        return succeeded || now != text ? now : "failed";
    }

    TemporaryFolder folder_;
    CIniFile ini_;
};

TEST_F(IniFileOperations, ChangeWhatTheySayAndWriteSectionsInOnePiece) {
    const std::string start = "#c\n[S]\nk=v\n;[T]\nm=n\n[S]\nk=w\n#end\n";
    const auto on = [&](const std::function<bool(std::string)>& operation) {
        return after(start, operation);
    };
    const std::string same = "#c\n [S]\n k=v\n [S]\n k=w\n;[T]\n m=n\n";
    EXPECT_EQ(on([&](auto f) { return ini_.Create(f); }), "");
    EXPECT_EQ(on([&](auto f) { return ini_.AddSection("S", f); }),
              "#c\n [S]\n k=v\n [S]\n k=w\n [S]\n;[T]\n m=n\n");
    EXPECT_EQ(on([&](auto f) { return ini_.AddRecord("a", "b", "U", f); }), same + " a=b\n");
    EXPECT_EQ(on([&](auto f) { return ini_.SetValue("k", "x", "S", f); }),
              "#c\n [S]\n k=x\n [S]\n k=w\n;[T]\n m=n\n");
    EXPECT_EQ(on([&](auto f) { return ini_.SetValue("a", "b", "S", f); }),
              "#c\n [S]\n a=b\n k=v\n [S]\n k=w\n;[T]\n m=n\n");
    EXPECT_EQ(on([&](auto f) { return ini_.SetValue("a", "b", "U", f); }), same + " [U]\n a=b\n");
    EXPECT_EQ(on([&](auto f) { return ini_.DeleteRecord("k", "S", f); }),
              "#c\n [S]\n [S]\n k=w\n;[T]\n m=n\n");
    EXPECT_EQ(on([&](auto f) { return ini_.DeleteRecord("K", "S", f); }), "failed");
    EXPECT_EQ(on([&](auto f) { return ini_.DeleteSection("S", f); }), ";[T]\n m=n\n");
    EXPECT_EQ(on([&](auto f) { return ini_.DeleteSection("U", f); }), same);
    EXPECT_EQ(on([&](auto f) { return ini_.RenameSection("S", "T", f); }),
              "#c\n [T]\n k=v\n;[T]\n m=n\n [T]\n k=w\n");
    EXPECT_EQ(on([&](auto f) { return ini_.CommentRecord(';', "k", "S", f); }),
              "#c\n [S]\n;k=v\n [S]\n k=w\n;[T]\n m=n\n");
    EXPECT_EQ(on([&](auto f) { return ini_.CommentSection('#', "T", f); }),
              "#c\n [S]\n k=v\n [S]\n k=w\n#[T]\n#m=n\n");
    EXPECT_EQ(on([&](auto f) { return ini_.UnCommentSection("T", f); }),
              "#c\n [S]\n k=v\n [S]\n k=w\n [T]\n m=n\n");
    EXPECT_EQ(on([&](auto f) { return ini_.UnCommentRecord("k", "U", f); }), "failed");
    EXPECT_EQ(on([&](auto f) { return ini_.SetRecordComments(";x", "m", "T", f); }),
              "#c\n [S]\n k=v\n [S]\n k=w\n;[T]\n;x\n m=n\n");
    EXPECT_EQ(on([&](auto f) { return ini_.SetSectionComments("", "S", f); }), same.substr(3));
    EXPECT_EQ(on([&](auto f) { return ini_.SetSectionComments("x", "U", f); }), "failed");
    EXPECT_EQ(on([&](auto f) { return ini_.Sort(f, true); }),
              ";[T]\n m=n\n#c\n [S]\n k=v\n k=w\n [S]\n k=v\n k=w\n");
    EXPECT_EQ(after("b=1\n", [&](auto f) { return ini_.Sort(f, false); }), "failed");
    EXPECT_EQ(after("x=0\n[b]\nz=1\na=2\n[a]\n", [&](auto f) { return ini_.Sort(f, false); }),
              " [a]\n [b]\n a=2\n z=1\n");
}

TEST_F(IniFileOperations, ReadWithoutRegardToWhatIsCommentedOut) {
    folder_.write("a.ini", "#c\n[S]\n;k=v\n;[T]\n#m=\n[S]\nk=w\n");
    const std::string file = folder_.path("a.ini");
    EXPECT_EQ(ini_.Content(file), "#c\n[S]\n;k=v\n;[T]\n#m=\n[S]\nk=w");
    EXPECT_EQ(ini_.GetValue("k", "S", file), "v");
    EXPECT_EQ(ini_.GetRecord("k", "S", file).size(), 1U);
    EXPECT_EQ(ini_.GetSection("S", file).size(), 2U);
    EXPECT_EQ(ini_.GetSectionNames(file), (std::vector<std::string>{"S", "T", "S"}));
    EXPECT_TRUE(ini_.SectionExists("T", file) && ini_.RecordExists("m", "T", file));
    EXPECT_FALSE(ini_.SectionExists("t", file) || ini_.RecordExists("m", "S", file));
}

TEST_F(IniFileOperations, AreQuietAboutWhatCannotBeRead) {
    folder_.write("sub/huge.ini", "[S]\nk=v\n");
    std::filesystem::resize_file(folder_.path("sub/huge.ini"), std::uintmax_t{1} << 33);
    ASSERT_EQ(mkfifo(folder_.path("pipe").c_str(), 0600), 0);
    for (const char* name : {"missing", "sub", "pipe", "sub/huge.ini", "no/such/folder"}) {
        const std::string file = folder_.path(name);
        EXPECT_FALSE(ini_.FileExists(file)) << name;
        EXPECT_EQ(ini_.Content(file) + ini_.GetValue("k", "S", file), "") << name;
        EXPECT_FALSE(ini_.SetValue("k", "w", "S", file) || ini_.Sort(file, false)) << name;
    }
    EXPECT_FALSE(ini_.Create(folder_.path("sub")) || ini_.Create(folder_.path("pipe")));
    EXPECT_TRUE(ini_.Create(folder_.path("missing")) && ini_.FileExists(folder_.path("missing")));
}

TEST_F(IniFileOperations, KeepEveryValueThroughAnySequenceOfChanges) {
    std::mt19937 random(7);
    const auto below = [&](std::size_t count) { return random() % count; };
    const std::string file = folder_.path("a.ini");
    ASSERT_TRUE(ini_.Create(file));
    std::map<std::pair<std::string, std::string>, std::string> model;
    for (int step = 0; step < 400; ++step) {
        const std::string section(1 + below(3), "ab "[below(2)]);
        const std::string key(1 + below(3), "k\xE4"[below(2)]);
        const std::string value = "v=" + std::to_string(random());
        switch (below(4)) {
            case 0:
                EXPECT_EQ(ini_.DeleteRecord(key, section, file), model.erase({section, key}) == 1);
                break;
            case 1:
                EXPECT_TRUE(ini_.CommentSection("#; "[below(3)], section, file));
                break;
            default:
                EXPECT_TRUE(ini_.SetValue(key, value, section, file));
                model[{section, key}] = value;
        }
        for (const auto& [place, expected] : model)
            ASSERT_EQ(ini_.GetValue(place.second, place.first, file), expected) << step;
    }
}

TEST_F(IniFileOperations, HandleManyRecordsOfManySections) {
    std::string text;
    for (int i = 0; i < 100000; ++i)
        text += "[s" + std::to_string(i % 1000) + "]\nk=v\n";
    folder_.write("a.ini", text);
    EXPECT_TRUE(ini_.DeleteSection("s7", folder_.path("a.ini")));
    EXPECT_EQ(ini_.GetSections(folder_.path("a.ini")).size(), 99900U);
}

}  // namespace
