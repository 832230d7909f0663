#include <gtest/gtest.h>
#include <string_view>

#include <corvane/platform/MessageBox.h>
#include <corvane/platform/Unknown.h>

#include "emulation/UserInterface.h"
#include "support/MessageRecorder.h"

namespace {

using namespace corvane::emulation;

TEST(MessageBox, GoesToTheSinkAndOtherwiseToStandardError) {
    {
        const MessageRecorder recorder;
        AfxMessageBox(u"text", 16);
        AfxMessageBox(nullptr);
        messageBox(u"a\nb", u"caption", kMessageIconError | kMessageTaskModal);
        ASSERT_EQ(recorder.shown.size(), 3U);
        EXPECT_EQ(recorder.shown[0].text, u"text");
        EXPECT_EQ(recorder.shown[1].text, u"");
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
