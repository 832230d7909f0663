#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <corvane/platform/MessageBox.h>
#include <corvane/platform/Unknown.h>

#include "platform/MessageBox.h"
#include "platform/Paths.h"
#include "platform/Unicode.h"
#include "platform/posix/ModuleNames.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace corvane::platform;

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

TEST(MessageBox, GoesToTheSinkAndOtherwiseToStandardError) {
    {
        const MessageRecorder recorder;
        AfxMessageBox(u"text", 16);
        AfxMessageBox(nullptr);
        messageBox(u"a\nb", u"caption", kMessageIconError | kMessageTaskModal);
        ASSERT_EQ(recorder.shown.size(), 3U);
        EXPECT_EQ(recorder.shown[0].text + recorder.shown[1].text, u"text");
        EXPECT_EQ(recorder.shown[2].caption, u"caption");
        EXPECT_EQ(recorder.shown[2].style, 8208U);
    }
    testing::internal::CaptureStderr();
    messageBox(u"a\n\tb\x1B[31m", u"caption", 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "caption: a\n\tb\xEF\xBF\xBD[31m\n");
}

TEST(MessageBox, LetsASinkReplaceItself) {
    std::u16string shown;
    corvane::SetMessageSink([&shown](const corvane::Message& message) {
        corvane::SetMessageSink({});
        shown = message.text;
    });
    AfxMessageBox(u"text");
    EXPECT_EQ(shown, u"text");
}

TEST(SystemString, CopiesTextAndKeepsItsLength) {
    const BSTR text = SysAllocString(u"a\u00E4\U0001F600");
    EXPECT_EQ(std::u16string_view(text), u"a\u00E4\U0001F600");
    EXPECT_EQ(SysStringLen(text), 4U);
    SysFreeString(text);
    EXPECT_EQ(SysStringLen(SysAllocString(nullptr)), 0U);
}

}  // namespace
