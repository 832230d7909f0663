#include <gtest/gtest.h>
#include <memory>
#include <tuple>
#include <vector>

#include <corvane/platform/Dialog.h>
#include <corvane/platform/LoadedModule.h>

#include "support/EnvironmentScope.h"
#include "support/Programs.h"

namespace {

namespace message = corvane::message;

// Hands out messages, the last one first, and keeps what is left to it.
struct TestHost : corvane::DialogHost {
    bool open(CDialog&, unsigned templateNumber) override { return templateNumber == 310; }
    void close(CDialog&) override { ++closed; }
    bool next(MSG& message) override {
        if (messages.empty()) return false;
        message = messages.back();
        messages.pop_back();
        return true;
    }
    bool translate(CDialog&, const MSG& message) override { return message.message == 256; }
    std::intptr_t process(CWnd& window, const MSG& message) override {
        processed.emplace_back(&window, message.message, message.wParam, message.lParam);
        return 5;
    }

    std::vector<MSG> messages;
    std::vector<std::tuple<CWnd*, unsigned, std::uintptr_t, std::intptr_t>> processed;
    int closed = 0;
};

// The dialogs come out of a module that was built apart from the library.
TEST(RuleDialog, ShowsItsTopicForTheKeyAndTheHelpButtonAndPassesTheRestOn) {
    const TemporaryFolder folder;
    const EnvironmentScope path("PATH", folder.path());
    const EnvironmentScope registry("CORVANE_REGISTRY_DIR", folder.path());
    const EnvironmentScope site("CORVANE_CUSTOMIZED_HELP_FOLDER_PATH", nullptr);
    folder.write("rules.chm", "");
    writeProgram(folder, "xchm");
    const corvane::LoadedModule module(u"RuleDialogProbe.dll");
    const auto make =
        module.function<CDialog* (*)(bool mapped, const char16_t* helpFile)>("MakeProbeDialog");
    const std::string topic = "xchm|--contextid=12|" + folder.path("rules.chm") + "\n";
    const std::unique_ptr<CDialog> dialog(make(true, folder.wide("rules.chm")));
    const std::unique_ptr<CDialog> plain(make(false, folder.wide("rules.chm")));
    CWnd control(dialog.get());
    MSG key{&control, message::kKeyF1, 0, 0};
    EXPECT_EQ(dialog->DoModal(), CDialog::kNotShown);
    EXPECT_EQ(dialog->SendMessage(275), 0);

    TestHost host;
    corvane::SetDialogHost(&host);
    EXPECT_EQ(CDialog(99).DoModal(), CDialog::kNotShown);
    for (CDialog* each : {dialog.get(), plain.get()}) {
        EXPECT_EQ(each->PreTranslateMessage(&key), 1);
        EXPECT_EQ(startedIn(folder), topic);
    }
    dialog->SendMessage(message::kNcLButtonDown, corvane::kHitHelp);
    EXPECT_EQ(startedIn(folder), topic);
    EXPECT_EQ(plain->SendMessage(message::kNcLButtonDown, corvane::kHitHelp, -3), 5);
    std::filesystem::remove(folder.path("rules.chm"));
    host.messages = {{nullptr, 275, 0, 0},
                     {nullptr, message::kCommand, CDialog::kOk, 0},
                     {nullptr, message::kCommand, 0x10001, 0},
                     {nullptr, message::kCommand, 40, 0},
                     {nullptr, 256, 27, 1},
                     {&control, 275, 0xFFFFFFFF, -1},
                     {nullptr, message::kNcLButtonDown, 2, 0x00020001},
                     key};
    EXPECT_EQ(dialog->DoModal(), CDialog::kOk);
    EXPECT_EQ(dialog->DoModal(), CDialog::kCancel);
    EXPECT_EQ(host.closed, 2);
    EXPECT_EQ(host.processed,
              (decltype(host.processed){{plain.get(), message::kNcLButtonDown, 21, -3},
                                        {dialog.get(), message::kNcLButtonDown, 2, 0x00020001},
                                        {&control, 275, 0xFFFFFFFF, -1},
                                        {dialog.get(), message::kCommand, 0x10001, 0},
                                        {dialog.get(), 275, 0, 0}}));
    EXPECT_EQ(corvane::SetDialogHost(nullptr), &host);
}

}  // namespace
