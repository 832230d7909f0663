#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/TemporaryFolder.h"
#include "system/Paths.h"
#include "system/Unicode.h"
#include "system/posix/ModuleFiles.h"

namespace {

using namespace corvane::system;

TEST(Paths, AreCutAtEitherSeparatorAndJoinedWithOne) {
    const std::array<std::u16string_view, 3> cases[] = {{u"/a/b\\c.txt", u"/a/b", u"c.txt"},
                                                        {u"a\\", u"a", u""},
                                                        {u"/a", u"", u"a"},
                                                        {u"a", u"", u"a"},
                                                        {u"", u"", u""},
                                                        {u"a//b", u"a/", u"b"}};
    for (const auto& [path, folder, name] : cases) {
        EXPECT_EQ(parentFolder(path), folder) << toUtf8(path);
        EXPECT_EQ(fileName(path), name) << toUtf8(path);
    }
    EXPECT_EQ(normalise(join(u"C:\\a\\", u"b\\c")), u"C:/a//b/c");
}

TEST(ModuleNames, FindTheBestFileWhateverItsCase) {
    const std::pair<std::vector<const char*>, const char*> cases[] = {
        {{"datau.SO", "libDatau.so", "DATAU.so"}, "DATAU.so"},
        {{"DATAU.SO", "Datau.so", "datau.so"}, "Datau.so"},
        {{"Datau.so.1.2", "Datau.so.x", "libDatau.so"}, "Datau.so.1.2"},
        {{"LIBdatau.So.3"}, "LIBdatau.So.3"},
        {{"Datau.dll"}, "Datau.dll"},
        {{"Datau.dll.1", "Datau", "xDatau.so", "Datau.so.", "Datau.soo"}, "Datau.so."},
        {{"Datau.so/folder"}, ""}};
    for (const auto& [files, found] : cases) {
        const TemporaryFolder folder;
        for (const char* file : files)
            folder.write(file, "");
        const std::string expected = *found ? folder.path(found) : "";
        EXPECT_EQ(findModuleInFolder(folder.path(), "Datau.dll").value_or(""), expected);
    }
}

}  // namespace
